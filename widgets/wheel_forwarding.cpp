#include "widgets/wheel_forwarding.h"

bool forwardWheel(const QObject& widget, QEvent* wheel)
{
    QObject* parent = widget.parent();
    if (parent == nullptr) {
        wheel->ignore();
        return false;
    }
    return parent->event(wheel);
}
