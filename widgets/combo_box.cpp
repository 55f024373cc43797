#include "widgets/combo_box.h"

#include "widgets/wheel_forwarding.h"

CComboBox::CComboBox(QWidget* parent)
    : QComboBox(parent)
{
    setFocusPolicy(Qt::StrongFocus);
}

bool CComboBox::event(QEvent* e)
{
    if (e->type() == QEvent::Wheel && !hasFocus()) {
        return forwardWheel(*this, e);
    }
    return QComboBox::event(e);
}
