#include "app/frame.h"

IFrame::IFrame(QWidget* parent)
    : QWidget(parent)
{
}

IFrame::~IFrame() = default;
