#include "tests/support/own_methods.h"
#include "tests/support/test_environment.h"
#include "tests/widgets/minutes.h"
#include "tests/widgets/scroll_page.h"
#include "tests/widgets/wheel.h"
#include "widgets/integer_spin_box.h"
#include "widgets/units_none.h"

#include <QApplication>
#include <QLineEdit>
#include <QSignalSpy>
#include <QtTest>

#include <limits>

namespace {

constexpr int HIGHEST = std::numeric_limits<int>::max();

} // namespace

class CIntegerBox : public CIntegerSpinBox
{
public:
    explicit CIntegerBox(int minimum, int maximum, CUnitsConverter* units = CUnitsNone::instance())
    {
        setup(minimum, maximum, units);
    }

    using CIntegerSpinBox::lineEdit;

    void type(const QString& number)
    {
        selectAll();
        QTest::keyClicks(this, number);
    }

    void sendFocus(QEvent::Type type)
    {
        QFocusEvent event(type, Qt::MouseFocusReason);
        QApplication::sendEvent(this, &event);
    }
};

class IntegerSpinBoxTest : public QObject
{
    Q_OBJECT

private slots:
    void startsWithItsShownValue();
    void suffixIsABlankAndTheUnit();
    void setValueEmitsNoCommit();
    void valueBeyondTheRangeStaysUntilItIsEdited();
    void typingCommitsOnReturn();
    void editingFinishedWithoutChangeEmitsNothing();
    void emptiedBoxGoesBackToItsValue();
    void lettersCannotBeTyped();
    void numberBeyondTheRangeCannotBeTyped();
    void blankSuffixIsRestored();
    void caretAndSelectionStopAtTheSuffix();
    void selectedDigitGivesTheStep();
    void selectedSignKeepsTheStep();
    void enteringSetsTheStepToOne();
    void stepOfAnyCountIsOneStep();
    void stepsAreNotClamped();
    void stepLeavesWhatWasTypedOut();
    void stepsEndWithTheNumbersThatThereAre();
    void wheelChangesTheValue();
    void minutesAreTruncated();
    void changeOfUnitReachesTheBox();
    void boxThatWasNeverSetUpCanDie();
    void boxHasItsSignalAndItsSlotsInOrder();
};

void IntegerSpinBoxTest::startsWithItsShownValue()
{
    CIntegerBox box(1, HIGHEST);
    QCOMPARE(box.storedValue(), 1);
    QCOMPARE(box.value(), 1);
    QCOMPARE(box.maximum(), HIGHEST);
}

void IntegerSpinBoxTest::suffixIsABlankAndTheUnit()
{
    CIntegerBox box(0, 99);
    QCOMPARE(box.suffix(), QStringLiteral(" "));
    QCOMPARE(box.text(), QStringLiteral("0 "));
}

void IntegerSpinBoxTest::setValueEmitsNoCommit()
{
    CIntegerBox box(0, 99);
    QSignalSpy modified(&box, &CIntegerSpinBox::valueModified);
    QSignalSpy changed(&box, QOverload<int>::of(&QSpinBox::valueChanged));
    box.setValue(7);
    QCOMPARE(box.storedValue(), 7);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(modified.count(), 0);
}

void IntegerSpinBoxTest::valueBeyondTheRangeStaysUntilItIsEdited()
{
    CIntegerBox box(0, 99);
    box.setValue(250);
    QSignalSpy modified(&box, &CIntegerSpinBox::valueModified);
    box.sendFocus(QEvent::FocusOut);
    QTest::keyClick(&box, Qt::Key_Return);
    QCOMPARE(box.storedValue(), 250);
    QCOMPARE(box.value(), 99);
    QCOMPARE(modified.count(), 0);
    box.type(QStringLiteral("99"));
    QTest::keyClick(&box, Qt::Key_Return);
    QCOMPARE(box.storedValue(), 99);
    QCOMPARE(modified.count(), 1);
}

void IntegerSpinBoxTest::typingCommitsOnReturn()
{
    CIntegerBox box(0, 99);
    QSignalSpy modified(&box, &CIntegerSpinBox::valueModified);
    box.type(QStringLiteral("42"));
    QCOMPARE(box.value(), 42);
    QCOMPARE(modified.count(), 0);
    QTest::keyClick(&box, Qt::Key_Return);
    QCOMPARE(modified.count(), 1);
    QCOMPARE(modified[0][0].toInt(), 42);
    QCOMPARE(box.storedValue(), 42);
}

void IntegerSpinBoxTest::editingFinishedWithoutChangeEmitsNothing()
{
    CIntegerBox box(0, 99);
    box.setValue(42);
    QSignalSpy modified(&box, &CIntegerSpinBox::valueModified);
    box.type(QStringLiteral("42"));
    box.sendFocus(QEvent::FocusOut);
    QTest::keyClick(&box, Qt::Key_Return);
    box.type(QStringLiteral("042"));
    box.sendFocus(QEvent::FocusOut);
    QCOMPARE(box.text(), QStringLiteral("42 "));
    QCOMPARE(modified.count(), 0);
}

void IntegerSpinBoxTest::emptiedBoxGoesBackToItsValue()
{
    CIntegerBox box(0, 99);
    box.setValue(42);
    QSignalSpy modified(&box, &CIntegerSpinBox::valueModified);
    box.selectAll();
    QTest::keyClick(&box, Qt::Key_Delete);
    QCOMPARE(box.text(), QStringLiteral(" "));
    box.sendFocus(QEvent::FocusOut);
    QCOMPARE(box.text(), QStringLiteral("42 "));
    QCOMPARE(modified.count(), 0);
}

void IntegerSpinBoxTest::lettersCannotBeTyped()
{
    CIntegerBox box(0, 999);
    box.type(QStringLiteral("1a.2 e3"));
    QCOMPARE(box.text(), QStringLiteral("123 "));
}

void IntegerSpinBoxTest::numberBeyondTheRangeCannotBeTyped()
{
    CIntegerBox box(0, 99);
    box.type(QStringLiteral("1234"));
    QCOMPARE(box.text(), QStringLiteral("12 "));
    QCOMPARE(box.value(), 12);
}

void IntegerSpinBoxTest::blankSuffixIsRestored()
{
    CIntegerBox box(0, 99);
    box.setValue(42);
    box.lineEdit()->setCursorPosition(2);
    QTest::keyClick(box.lineEdit(), Qt::Key_Delete);
    QCOMPARE(box.text(), QStringLiteral("42 "));
}

void IntegerSpinBoxTest::caretAndSelectionStopAtTheSuffix()
{
    CIntegerBox box(0, 99, CUnitsTime::instance());
    box.setValue(42);
    box.lineEdit()->setCursorPosition(4);
    QCOMPARE(box.lineEdit()->cursorPosition(), 2);
    box.lineEdit()->selectAll();
    QCOMPARE(box.lineEdit()->selectedText(), QStringLiteral("42"));
}

void IntegerSpinBoxTest::selectedDigitGivesTheStep()
{
    CIntegerBox box(0, 9999);
    box.setValue(4567);
    box.lineEdit()->setSelection(1, 1);
    QCOMPARE(box.singleStep(), 100);
    box.stepUp();
    QCOMPARE(box.storedValue(), 4667);
}

void IntegerSpinBoxTest::selectedSignKeepsTheStep()
{
    CIntegerBox box(-99, 99);
    box.setValue(-42);
    box.lineEdit()->setSelection(0, 1);
    QCOMPARE(box.singleStep(), 1);
}

void IntegerSpinBoxTest::enteringSetsTheStepToOne()
{
    CIntegerBox box(0, 9999);
    box.setValue(4567);
    box.lineEdit()->setSelection(0, 1);
    QCOMPARE(box.singleStep(), 1000);
    box.sendFocus(QEvent::FocusIn);
    QCOMPARE(box.singleStep(), 1);
    box.stepDown();
    QCOMPARE(box.storedValue(), 4566);
}

void IntegerSpinBoxTest::stepOfAnyCountIsOneStep()
{
    CIntegerBox box(0, 99);
    box.setValue(50);
    QSignalSpy modified(&box, &CIntegerSpinBox::valueModified);
    box.stepBy(10);
    QCOMPARE(box.storedValue(), 51);
    box.stepBy(-10);
    QCOMPARE(box.storedValue(), 50);
    box.stepBy(0);
    QCOMPARE(box.storedValue(), 51);
    QCOMPARE(modified.count(), 3);
}

void IntegerSpinBoxTest::stepsAreNotClamped()
{
    CIntegerBox box(0, 99);
    box.setValue(99);
    QSignalSpy modified(&box, &CIntegerSpinBox::valueModified);
    box.stepUp();
    QCOMPARE(box.storedValue(), 100);
    QCOMPARE(box.value(), 99);
    QCOMPARE(modified.count(), 1);
    QCOMPARE(modified[0][0].toInt(), 100);
}

void IntegerSpinBoxTest::stepLeavesWhatWasTypedOut()
{
    CIntegerBox box(0, 99);
    box.setValue(50);
    box.selectAll();
    QTest::keyClicks(&box, QStringLiteral("7"));
    QCOMPARE(box.value(), 7);
    QSignalSpy modified(&box, &CIntegerSpinBox::valueModified);
    QTest::keyClick(&box, Qt::Key_Up);
    QCOMPARE(box.storedValue(), 51);
    QCOMPARE(box.text(), QStringLiteral("51 "));
    box.sendFocus(QEvent::FocusOut);
    QCOMPARE(modified.count(), 1);
}

void IntegerSpinBoxTest::stepsEndWithTheNumbersThatThereAre()
{
    CIntegerBox box(1, HIGHEST);
    box.setValue(HIGHEST);
    box.stepUp();
    QCOMPARE(box.storedValue(), HIGHEST);
}

void IntegerSpinBoxTest::wheelChangesTheValue()
{
    SScrollPage<CIntegerSpinBox> scene;
    scene.widget->setup(0, 99, CUnitsNone::instance());
    scene.widget->setValue(5);
    scene.widget->setFocus();
    QVERIFY(turnWheel(*scene.widget));
    QCOMPARE(scene.widget->storedValue(), 4);
    QCOMPARE(scene.scrolled(), 0);
}

void IntegerSpinBoxTest::minutesAreTruncated()
{
    CMinutes minutes;
    CIntegerBox box(0, 599, &minutes);
    QCOMPARE(box.maximum(), 9);
    box.setValue(150);
    QCOMPARE(box.text(), QStringLiteral("2 min"));
    box.stepUp();
    QCOMPARE(box.storedValue(), 210);
    box.sendFocus(QEvent::FocusOut);
    QCOMPARE(box.storedValue(), 210);
}

void IntegerSpinBoxTest::changeOfUnitReachesTheBox()
{
    CMinutes minutes;
    CIntegerBox box(0, 600, &minutes);
    box.setValue(120);
    minutes.select(0);
    QCOMPARE(box.text(), QStringLiteral("120 s"));
    QCOMPARE(box.storedValue(), 120);
}

void IntegerSpinBoxTest::boxThatWasNeverSetUpCanDie()
{
    CIntegerSpinBox box;
    box.setValue(1);
    QCOMPARE(box.value(), 1);
}

void IntegerSpinBoxTest::boxHasItsSignalAndItsSlotsInOrder()
{
    QCOMPARE(ownMethods(CIntegerSpinBox::staticMetaObject, QMetaMethod::Signal),
             QStringList("valueModified(int)"));
    QCOMPARE(ownMethods(CIntegerSpinBox::staticMetaObject, QMetaMethod::Slot),
             QStringList({"onUpdateUnits(QString)", "onEditingFinished()", "onSelectionChanged()",
                          "onCursorPositionChanged(int,int)", "onTextEdited(QString)", "stepDown()",
                          "stepUp()"}));
}

TARNEL_TEST_MAIN(IntegerSpinBoxTest)
#include "integer_spin_box_test.moc"
