#pragma once

#include "widgets/double_spin_box.h"
#include "widgets/units_none.h"

#include <QApplication>
#include <QFocusEvent>
#include <QLineEdit>
#include <QtTest>

#include <limits>

/// A box as the pages set it up: its range is its bounds.
class CDoubleBox : public CDoubleSpinBox
{
public:
    explicit CDoubleBox(double minimum = -std::numeric_limits<double>::max(),
                        double maximum = std::numeric_limits<double>::max(), int numberDecimals = 6,
                        CUnitsConverter* units = CUnitsNone::instance())
    {
        setup(minimum, maximum, units, numberDecimals, false, false);
    }

    using CDoubleSpinBox::event;
    using CDoubleSpinBox::lineEdit;

    bool isRed() const { return styleSheet() == QLatin1String("color: red;"); }

    /// Replaces the number as a user does, keystroke by keystroke, without leaving the box.
    void type(const QString& number)
    {
        selectAll();
        QTest::keyClicks(this, number);
    }

    void pressReturn() { QTest::keyClick(this, Qt::Key_Return); }

    /// What happens when the focus goes to another widget.
    void leave()
    {
        QFocusEvent out(QEvent::FocusOut, Qt::TabFocusReason);
        QApplication::sendEvent(this, &out);
    }

    void enter()
    {
        QFocusEvent in(QEvent::FocusIn, Qt::MouseFocusReason);
        QApplication::sendEvent(this, &in);
    }
};
