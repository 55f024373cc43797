#include "tests/support/test_environment.h"
#include "tests/widgets/double_box.h"
#include "tests/widgets/minutes.h"

#include <QApplication>
#include <QSignalSpy>
#include <QtTest>

class DoubleSpinBoxSteppingTest : public QObject
{
    Q_OBJECT

private slots:
    void selectedDigitGivesTheStep_data();
    void selectedDigitGivesTheStep();
    void selectedSignOrPointKeepsTheStep();
    void selectionKeepsTextAndSelection();
    void selectionKeepsTheTextOfAValueOutOfBounds();
    void caretAloneKeepsTheStep();
    void enteringTakesTheDigit_data();
    void enteringTakesTheDigit();
    void stepDownToZeroSnaps();
    void stepDownToNearlyZeroSnaps();
    void snapGoesNoFurtherThanTheBounds();
    void stepsBelowOneReachValueAndListeners();
    void stepGoesToTheBoundOnly();
    void stepOfAnyCountIsOneStep();
    void arrowKeysStep();
    void stepLeavesWhatWasTypedOut();
    void stepKeepsDigitsThatAreNotShown();
    void stepKeepsTheCaret();
    void stepIsInTheUnitInUse();
    void unboundedStepStoresTheBoundOnly();
};

void DoubleSpinBoxSteppingTest::selectedDigitGivesTheStep_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<int>("pos");
    QTest::addColumn<double>("step");

    QTest::newRow("tens of 123.45") << 123.45 << 1 << 10.0;
    QTest::newRow("first decimal of 123.45") << 123.45 << 4 << 0.1;
    QTest::newRow("leading digit of 1.5e-05") << 1.5e-05 << 0 << 1e-05;
    QTest::newRow("last digit of 1.5e-05") << 1.5e-05 << 2 << 1e-06;
    QTest::newRow("exponent of 1.5e-05") << 1.5e-05 << 6 << 1.0;
    QTest::newRow("whole number") << 450.0 << 1 << 10.0;
}

void DoubleSpinBoxSteppingTest::selectedDigitGivesTheStep()
{
    QFETCH(double, number);
    QFETCH(int, pos);
    CDoubleBox box(0, 1000, 12);
    box.setValue(number);
    box.lineEdit()->setSelection(pos, 1);
    QTEST(box.singleStep(), "step");
    QFETCH(double, step);
    box.stepUp();
    QCOMPARE(box.storedValue(), number + step);
}

void DoubleSpinBoxSteppingTest::selectedSignOrPointKeepsTheStep()
{
    CDoubleBox box(-1000, 1000, 12);
    box.setValue(-123.45);
    box.lineEdit()->setSelection(0, 1);
    QCOMPARE(box.singleStep(), 1.0);
    box.lineEdit()->setSelection(4, 1);
    QCOMPARE(box.singleStep(), 1.0);
    box.setValue(1e-7);
    box.lineEdit()->setSelection(1, 1);
    QCOMPARE(box.singleStep(), 1.0);
    box.lineEdit()->setSelection(2, 1);
    QCOMPARE(box.singleStep(), 1.0);
}

void DoubleSpinBoxSteppingTest::selectionKeepsTextAndSelection()
{
    CDoubleBox box(0, 1000);
    box.type(QStringLiteral("123.4567890"));
    box.lineEdit()->setSelection(1, 1);
    QCOMPARE(box.text(), QStringLiteral("123.4567890 "));
    QCOMPARE(box.lineEdit()->selectionStart(), 1);
    QCOMPARE(box.lineEdit()->selectedText(), QStringLiteral("2"));
    QCOMPARE(box.singleStep(), 10.0);
}

void DoubleSpinBoxSteppingTest::selectionKeepsTheTextOfAValueOutOfBounds()
{
    CDoubleBox box(1, 2);
    box.setValue(0.5);
    box.lineEdit()->setSelection(3, -1);
    QCOMPARE(box.text(), QStringLiteral("0.5 "));
    QCOMPARE(box.lineEdit()->selectedText(), QStringLiteral("5"));
    QCOMPARE(box.lineEdit()->cursorPosition(), 2);
    QCOMPARE(box.singleStep(), 0.1);
}

void DoubleSpinBoxSteppingTest::caretAloneKeepsTheStep()
{
    CDoubleBox box(0, 1000);
    box.setValue(123.45);
    box.lineEdit()->setCursorPosition(1);
    QCOMPARE(box.singleStep(), 1.0);
}

void DoubleSpinBoxSteppingTest::enteringTakesTheDigit_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<double>("step");

    QTest::newRow("leading digit of a whole number") << 450.0 << 100.0;
    QTest::newRow("leading digit behind a sign") << -450.0 << 100.0;
    QTest::newRow("last significant digit of a fraction") << 0.052 << 0.001;
    QTest::newRow("digit of a small number") << 1e-07 << 1e-07;
    QTest::newRow("number with point and exponent") << 1.5e-05 << 1.0;
}

void DoubleSpinBoxSteppingTest::enteringTakesTheDigit()
{
    QFETCH(double, number);
    CDoubleBox box(-1000, 1000, 12);
    box.setValue(number);
    box.enter();
    QTEST(box.singleStep(), "step");
}

void DoubleSpinBoxSteppingTest::stepDownToZeroSnaps()
{
    CDoubleBox box(0, 10);
    box.setValue(0.1);
    box.enter();
    QCOMPARE(box.singleStep(), 0.1);
    box.stepDown();
    QVERIFY(box.storedValue() == 0.0);
    QVERIFY(box.value() == 0.0);
    QCOMPARE(box.text(), QStringLiteral("0 "));
}

void DoubleSpinBoxSteppingTest::stepDownToNearlyZeroSnaps()
{
    CDoubleBox box(-10, 10);
    box.setValue(0.3);
    box.enter();
    box.stepDown();
    box.stepDown();
    box.stepDown();
    QVERIFY(0.3 - 0.1 - 0.1 - 0.1 != 0.0);
    QVERIFY(box.storedValue() == 0.0);
    QCOMPARE(box.text(), QStringLiteral("0 "));
}

void DoubleSpinBoxSteppingTest::snapGoesNoFurtherThanTheBounds()
{
    CDoubleBox box(1e-13, 10, 14);
    box.setValue(0.1);
    box.enter();
    box.stepDown();
    QCOMPARE(box.storedValue(), 1e-13);
    QVERIFY(!box.isRed());
}

void DoubleSpinBoxSteppingTest::stepsBelowOneReachValueAndListeners()
{
    CDoubleBox box(0, 10);
    box.setValue(0.5);
    box.enter();
    QSignalSpy changed(&box, QOverload<double>::of(&QDoubleSpinBox::valueChanged));
    QSignalSpy modified(&box, &CDoubleSpinBox::valueModified);
    box.stepUp();
    QCOMPARE(box.value(), 0.6);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(changed[0][0].toDouble(), 0.6);
    QCOMPARE(modified.count(), 1);
    QCOMPARE(modified[0][0].toDouble(), 0.6);
    box.leave();
    QCOMPARE(modified.count(), 1);
}

void DoubleSpinBoxSteppingTest::stepGoesToTheBoundOnly()
{
    CDoubleBox box(1, 2);
    box.setValue(5);
    QVERIFY(box.isRed());
    box.stepUp();
    QCOMPARE(box.storedValue(), 2.0);
    QVERIFY(!box.isRed());
    box.setValue(-3);
    box.stepDown();
    QCOMPARE(box.storedValue(), 1.0);
    QCOMPARE(box.text(), QStringLiteral("1 "));
}

void DoubleSpinBoxSteppingTest::stepOfAnyCountIsOneStep()
{
    CDoubleBox box(0, 100);
    box.setValue(50);
    box.stepBy(10);
    QCOMPARE(box.storedValue(), 51.0);
    box.stepBy(0);
    QCOMPARE(box.storedValue(), 52.0);
    box.stepBy(-7);
    QCOMPARE(box.storedValue(), 51.0);
}

void DoubleSpinBoxSteppingTest::arrowKeysStep()
{
    CDoubleBox box(0, 100);
    box.setValue(50);
    box.show();
    QTest::keyClick(&box, Qt::Key_Up);
    QCOMPARE(box.storedValue(), 51.0);
    QTest::keyClick(&box, Qt::Key_PageDown);
    QCOMPARE(box.storedValue(), 50.0);
}

void DoubleSpinBoxSteppingTest::stepLeavesWhatWasTypedOut()
{
    CDoubleBox box(0, 100);
    box.setValue(50);
    box.type(QStringLiteral("7"));
    QCOMPARE(box.value(), 7.0);
    QTest::keyClick(&box, Qt::Key_Up);
    QCOMPARE(box.storedValue(), 51.0);
    QCOMPARE(box.text(), QStringLiteral("51 "));
    QSignalSpy modified(&box, &CDoubleSpinBox::valueModified);
    box.leave();
    QCOMPARE(modified.count(), 0);
}

void DoubleSpinBoxSteppingTest::stepKeepsDigitsThatAreNotShown()
{
    CDoubleBox box(0, 100);
    box.setValue(1.123456789);
    QCOMPARE(box.text(), QStringLiteral("1.12346 "));
    box.stepUp();
    QVERIFY(box.storedValue() == 1.123456789 + 1.0);
    QCOMPARE(box.text(), QStringLiteral("2.12346 "));
}

void DoubleSpinBoxSteppingTest::stepKeepsTheCaret()
{
    CDoubleBox box(0, 100);
    box.setValue(0.52);
    box.enter();
    box.lineEdit()->setCursorPosition(1);
    box.stepUp();
    QCOMPARE(box.text(), QStringLiteral("0.53 "));
    QCOMPARE(box.lineEdit()->cursorPosition(), 1);
}

void DoubleSpinBoxSteppingTest::stepIsInTheUnitInUse()
{
    CMinutes minutes;
    CDoubleBox box(0, 6000, 6, &minutes);
    box.setValue(600);
    box.lineEdit()->setSelection(1, 1);
    QCOMPARE(box.singleStep(), 1.0);
    box.stepUp();
    QCOMPARE(box.storedValue(), 660.0);
    QCOMPARE(box.text(), QStringLiteral("11 min"));
}

void DoubleSpinBoxSteppingTest::unboundedStepStoresTheBoundOnly()
{
    CDoubleBox box;
    box.setup(0, 1, CUnitsNone::instance(), 6, true, false);
    box.setValue(1);
    box.stepUp();
    QCOMPARE(box.storedValue(), 1.0);
    QCOMPARE(box.text(), QStringLiteral("2 "));
    box.leave();
    QCOMPARE(box.text(), QStringLiteral("1 "));
}

TARNEL_TEST_MAIN(DoubleSpinBoxSteppingTest)
#include "double_spin_box_stepping_test.moc"
