#include "tests/support/test_environment.h"
#include "tests/widgets/double_box.h"
#include "tests/widgets/scroll_page.h"
#include "tests/widgets/wheel.h"
#include "widgets/units_time.h"

#include <QApplication>
#include <QSignalBlocker>
#include <QSignalSpy>
#include <QtTest>

class DoubleSpinBoxEditingTest : public QObject
{
    Q_OBJECT

private slots:
    void editingFinishedWithoutChangeEmitsNothing();
    void leavingKeepsDigitsThatAreNotShown_data();
    void leavingKeepsDigitsThatAreNotShown();
    void leavingKeepsAValueOutOfBounds();
    void typingReachesValueButCommitsNothing();
    void returnCommitsWhatWasTyped();
    void leavingCommitsWhatWasTyped();
    void typedBoundIsACommitThoughTheRangeHeldIt();
    void typedNumberBeyondTheRangeIsHeldInIt();
    void typingTheShownTextAgainChangesNothing();
    void typingTheShownValueOutOfBoundsAgainChangesNothing();
    void emptiedBoxGoesBackToItsValue();
    void valueSetFromOutsideIsCommittedByReturn();
    void lettersCannotBeTyped();
    void exponentCanBeTyped();
    void suffixCannotBeDeleted();
    void blankSuffixIsRestored();
    void caretCannotEnterTheSuffix();
    void selectionStopsAtTheSuffix();
    void wheelScrollsTheParentWithFocus();
    void wheelWithoutParentIsIgnored();
};

void DoubleSpinBoxEditingTest::editingFinishedWithoutChangeEmitsNothing()
{
    CDoubleBox box(0, 10);
    box.setValue(0.1);
    QSignalSpy modified(&box, &CDoubleSpinBox::valueModified);
    QSignalSpy changed(&box, QOverload<double>::of(&QDoubleSpinBox::valueChanged));
    box.leave();
    box.onEditingFinished();
    QCOMPARE(modified.count() + changed.count(), 0);
    box.pressReturn();
    QCOMPARE(modified.count(), 0);
}

void DoubleSpinBoxEditingTest::leavingKeepsDigitsThatAreNotShown_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<QString>("text");

    QTest::newRow("below one") << 0.123456789 << "0.123457 s";
    QTest::newRow("above one") << 1.23456789 << "1.23457 s";
    QTest::newRow("with an exponent") << 1234567.5 << "1.23457e+06 s";
}

void DoubleSpinBoxEditingTest::leavingKeepsDigitsThatAreNotShown()
{
    QFETCH(double, number);
    CDoubleBox box(0, 1e9, 6, CUnitsTime::instance());
    box.setValue(number);
    QSignalSpy modified(&box, &CDoubleSpinBox::valueModified);
    box.leave();
    box.pressReturn();
    box.leave();
    QVERIFY(box.storedValue() == number);
    QTEST(box.text(), "text");
    QCOMPARE(modified.count(), 0);
}

void DoubleSpinBoxEditingTest::leavingKeepsAValueOutOfBounds()
{
    CDoubleBox box(1, 2);
    box.setValue(0);
    QSignalSpy modified(&box, &CDoubleSpinBox::valueModified);
    box.leave();
    box.pressReturn();
    box.leave();
    QCOMPARE(box.storedValue(), 0.0);
    QCOMPARE(box.text(), QStringLiteral("0 "));
    QVERIFY(box.isRed());
    QCOMPARE(modified.count(), 0);
}

void DoubleSpinBoxEditingTest::typingReachesValueButCommitsNothing()
{
    CDoubleBox box(0, 10, 6, CUnitsTime::instance());
    box.setValue(5);
    QSignalSpy modified(&box, &CDoubleSpinBox::valueModified);
    QSignalSpy changed(&box, QOverload<double>::of(&QDoubleSpinBox::valueChanged));
    box.type(QStringLiteral("0.05"));
    QCOMPARE(box.text(), QStringLiteral("0.05 s"));
    QCOMPARE(box.value(), 0.05);
    QCOMPARE(changed.last()[0].toDouble(), 0.05);
    QCOMPARE(modified.count(), 0);
    QCOMPARE(box.storedValue(), 5.0);
}

void DoubleSpinBoxEditingTest::returnCommitsWhatWasTyped()
{
    CDoubleBox box(0, 10);
    QSignalSpy modified(&box, &CDoubleSpinBox::valueModified);
    box.type(QStringLiteral("0.123456789"));
    box.pressReturn();
    QCOMPARE(modified.count(), 1);
    QVERIFY(modified[0][0].toDouble() == 0.123456789);
    QVERIFY(box.storedValue() == 0.123456789);
    QVERIFY(box.value() == 0.123456789);
    QCOMPARE(box.text(), QStringLiteral("0.123457 "));
    box.leave();
    QCOMPARE(modified.count(), 1);
}

void DoubleSpinBoxEditingTest::leavingCommitsWhatWasTyped()
{
    CDoubleBox box(0, 10);
    QSignalSpy modified(&box, &CDoubleSpinBox::valueModified);
    box.type(QStringLiteral("1.23456789"));
    box.leave();
    QCOMPARE(modified.count(), 1);
    QVERIFY(box.storedValue() == 1.23456789);
    QCOMPARE(box.text(), QStringLiteral("1.23457 "));
}

void DoubleSpinBoxEditingTest::typedBoundIsACommitThoughTheRangeHeldIt()
{
    CDoubleBox box(1, 2);
    box.setValue(0);
    QSignalSpy modified(&box, &CDoubleSpinBox::valueModified);
    box.type(QStringLiteral("1"));
    box.leave();
    QCOMPARE(modified.count(), 1);
    QCOMPARE(box.storedValue(), 1.0);
    QVERIFY(!box.isRed());
}

void DoubleSpinBoxEditingTest::typedNumberBeyondTheRangeIsHeldInIt()
{
    CDoubleBox box(1, 2);
    box.setValue(2);
    QSignalSpy modified(&box, &CDoubleSpinBox::valueModified);
    box.type(QStringLiteral("5"));
    box.leave();
    QCOMPARE(modified.count(), 0);
    QCOMPARE(box.text(), QStringLiteral("2 "));
    box.type(QStringLiteral("0.5"));
    box.leave();
    QCOMPARE(modified.count(), 1);
    QCOMPARE(box.storedValue(), 1.0);
    QCOMPARE(box.text(), QStringLiteral("1 "));
}

void DoubleSpinBoxEditingTest::typingTheShownTextAgainChangesNothing()
{
    CDoubleBox box(0, 10);
    box.setValue(0.123456789);
    QSignalSpy modified(&box, &CDoubleSpinBox::valueModified);
    box.type(QStringLiteral("0.123457"));
    box.leave();
    QVERIFY(box.storedValue() == 0.123456789);
    QCOMPARE(modified.count(), 0);
}

void DoubleSpinBoxEditingTest::typingTheShownValueOutOfBoundsAgainChangesNothing()
{
    CDoubleBox box(1, 2);
    box.setValue(0);
    QSignalSpy modified(&box, &CDoubleSpinBox::valueModified);
    box.type(QStringLiteral("0"));
    box.leave();
    QCOMPARE(box.storedValue(), 0.0);
    QCOMPARE(box.text(), QStringLiteral("0 "));
    QCOMPARE(modified.count(), 0);
}

void DoubleSpinBoxEditingTest::emptiedBoxGoesBackToItsValue()
{
    CDoubleBox box(1, 2);
    box.setValue(0);
    QSignalSpy modified(&box, &CDoubleSpinBox::valueModified);
    box.selectAll();
    QTest::keyClick(&box, Qt::Key_Delete);
    QCOMPARE(box.text(), QStringLiteral(" "));
    box.leave();
    QCOMPARE(box.text(), QStringLiteral("0 "));
    QCOMPARE(modified.count(), 0);
}

void DoubleSpinBoxEditingTest::valueSetFromOutsideIsCommittedByReturn()
{
    CDoubleBox box(0, 10);
    QSignalSpy modified(&box, &CDoubleSpinBox::valueModified);
    box.QDoubleSpinBox::setValue(3);
    QCOMPARE(box.storedValue(), 0.0);
    box.pressReturn();
    QCOMPARE(modified.count(), 1);
    QCOMPARE(box.storedValue(), 3.0);
    box.lineEdit()->setText(QStringLiteral("0.25"));
    QCOMPARE(box.value(), 0.25);
    box.pressReturn();
    QCOMPARE(box.storedValue(), 0.25);
    QCOMPARE(box.text(), QStringLiteral("0.25 "));
}

void DoubleSpinBoxEditingTest::lettersCannotBeTyped()
{
    CDoubleBox box(0, 10, 6, CUnitsTime::instance());
    box.setValue(0.5);
    box.type(QStringLiteral("1x.s 5?"));
    QCOMPARE(box.text(), QStringLiteral("1.5 s"));
    QCOMPARE(box.value(), 1.5);
}

void DoubleSpinBoxEditingTest::exponentCanBeTyped()
{
    CDoubleBox box(0, 10, 12);
    box.type(QStringLiteral("2.5e-8"));
    box.pressReturn();
    QCOMPARE(box.storedValue(), 2.5e-8);
    QCOMPARE(box.text(), QStringLiteral("2.5e-08 "));
}

void DoubleSpinBoxEditingTest::suffixCannotBeDeleted()
{
    CDoubleBox box(0, 10, 6, CUnitsTime::instance());
    box.setValue(5);
    {
        const QSignalBlocker blocker(box.lineEdit());
        box.lineEdit()->setCursorPosition(3);
    }
    QTest::keyClick(box.lineEdit(), Qt::Key_Backspace);
    QCOMPARE(box.text(), QStringLiteral("5 s"));
    box.lineEdit()->setText(QStringLiteral("5 "));
    box.onTextEdited(QStringLiteral("5 "));
    QCOMPARE(box.text(), QStringLiteral("5 s"));
}

void DoubleSpinBoxEditingTest::blankSuffixIsRestored()
{
    CDoubleBox box(0, 100);
    box.setValue(12);
    box.lineEdit()->setCursorPosition(2);
    QTest::keyClick(box.lineEdit(), Qt::Key_Delete);
    QCOMPARE(box.text(), QStringLiteral("12 "));
    QCOMPARE(box.value(), 12.0);
}

void DoubleSpinBoxEditingTest::caretCannotEnterTheSuffix()
{
    CDoubleBox box(0, 100, 6, CUnitsTime::instance());
    box.setValue(12);
    QTest::keyClick(&box, Qt::Key_End);
    QCOMPARE(box.lineEdit()->cursorPosition(), 2);
    QTest::keyClick(&box, Qt::Key_Right);
    QCOMPARE(box.lineEdit()->cursorPosition(), 2);
    box.lineEdit()->setCursorPosition(3);
    QCOMPARE(box.lineEdit()->cursorPosition(), 2);
}

void DoubleSpinBoxEditingTest::selectionStopsAtTheSuffix()
{
    CDoubleBox box(0, 100, 6, CUnitsTime::instance());
    box.setValue(12);
    box.lineEdit()->selectAll();
    QCOMPARE(box.lineEdit()->selectedText(), QStringLiteral("12"));
    box.lineEdit()->setSelection(4, -3);
    QCOMPARE(box.lineEdit()->selectedText(), QStringLiteral("2"));
    QCOMPARE(box.lineEdit()->cursorPosition(), 1);
    box.lineEdit()->setSelection(2, 2);
    QVERIFY(!box.lineEdit()->hasSelectedText());
    QCOMPARE(box.lineEdit()->cursorPosition(), 2);
}

void DoubleSpinBoxEditingTest::wheelScrollsTheParentWithFocus()
{
    SScrollPage<CDoubleSpinBox> scene;
    scene.widget->setup(0, 10, CUnitsNone::instance(), 6, false, false);
    scene.widget->setValue(5);
    scene.widget->setFocus();
    QVERIFY(scene.widget->hasFocus());
    turnWheel(*scene.widget);
    QCOMPARE(scene.widget->value(), 5.0);
    QVERIFY(scene.scrolled() > 0);
}

void DoubleSpinBoxEditingTest::wheelWithoutParentIsIgnored()
{
    CDoubleBox box(0, 10);
    box.setValue(5);
    QVERIFY(!turnWheel(box));
    QCOMPARE(box.value(), 5.0);
    QWheelEvent turn = notchDown(box);
    QVERIFY(!box.event(&turn));
    QVERIFY(!turn.isAccepted());
}

TARNEL_TEST_MAIN(DoubleSpinBoxEditingTest)
#include "double_spin_box_editing_test.moc"
