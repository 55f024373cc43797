#include "tests/support/own_methods.h"
#include "tests/support/test_environment.h"
#include "tests/widgets/double_box.h"
#include "tests/widgets/minutes.h"

#include <QApplication>
#include <QSignalSpy>
#include <QtTest>

#include <cmath>

namespace {

constexpr double LARGEST = std::numeric_limits<double>::max();

} // namespace

class DoubleSpinBoxValueTest : public QObject
{
    Q_OBJECT

private slots:
    void smallNumberKeepsItsDigits();
    void numberBelowOneReachesValueAndListeners_data();
    void numberBelowOneReachesValueAndListeners();
    void sameTextOfAnotherNumberReachesValue();
    void numberFromOneUpIsShownRounded();
    void valueOutOfBoundsStaysAndIsRed();
    void valueOutOfBoundsAboveOneStaysAndIsRed();
    void valueOutOfBoundsStaysWhenTheBoxIsShownAndDisabled();
    void notANumberIsRedAndStays();
    void boundsBelongToTheGoodValues();
    void nothingStartsRed_data();
    void nothingStartsRed();
    void valueOfTheFormSurvivesSetup();
    void suffixIsABlankAndTheUnit();
    void laterSuffixStays();
    void openRangesDependOnTheSwitches();
    void unboundedBoxColoursWhatIsTyped();
    void minutesAreShownAndStoredAsSeconds();
    void changeOfUnitReachesTheBox();
    void boxThatWasNeverSetUpCanDie();
    void boxHasItsSignalAndItsSlotsInOrder();
};

void DoubleSpinBoxValueTest::smallNumberKeepsItsDigits()
{
    CDoubleBox box(0, 1, 6, CUnitsTime::instance());
    box.setValue(1e-7);
    QCOMPARE(box.text(), QStringLiteral("1e-07 s"));
    QVERIFY(box.storedValue() == 1e-7);
}

void DoubleSpinBoxValueTest::numberBelowOneReachesValueAndListeners_data()
{
    QTest::addColumn<double>("number");
    QTest::addColumn<QString>("text");

    QTest::newRow("fraction") << 0.05 << "0.05 ";
    QTest::newRow("far below the decimals") << 1e-7 << "1e-07 ";
    QTest::newRow("more digits than shown") << 0.123456789 << "0.123457 ";
    QTest::newRow("negative") << -0.25 << "-0.25 ";
    QTest::newRow("zero") << 0.0 << "0 ";
}

void DoubleSpinBoxValueTest::numberBelowOneReachesValueAndListeners()
{
    QFETCH(double, number);
    CDoubleBox box(-10, 10);
    box.setValue(5);
    QSignalSpy changed(&box, QOverload<double>::of(&QDoubleSpinBox::valueChanged));
    QSignalSpy modified(&box, &CDoubleSpinBox::valueModified);
    box.setValue(number);
    QTEST(box.text(), "text");
    QVERIFY(box.value() == number);
    QCOMPARE(changed.count(), 1);
    QVERIFY(changed[0][0].toDouble() == number);
    QCOMPARE(modified.count(), 0);
}

void DoubleSpinBoxValueTest::sameTextOfAnotherNumberReachesValue()
{
    CDoubleBox box;
    box.setValue(0.1234561);
    QSignalSpy changed(&box, QOverload<double>::of(&QDoubleSpinBox::valueChanged));
    box.setValue(0.1234562);
    QVERIFY(box.value() == 0.1234562);
    QCOMPARE(changed.count(), 1);
    QCOMPARE(box.text(), QStringLiteral("0.123456 "));
}

void DoubleSpinBoxValueTest::numberFromOneUpIsShownRounded()
{
    CDoubleBox box;
    box.setValue(1.23456789);
    QCOMPARE(box.text(), QStringLiteral("1.23457 "));
    QCOMPARE(box.value(), 1.234568);
    QVERIFY(box.storedValue() == 1.23456789);
    box.setValue(-2.5);
    QCOMPARE(box.text(), QStringLiteral("-2.5 "));
}

void DoubleSpinBoxValueTest::valueOutOfBoundsStaysAndIsRed()
{
    CDoubleBox box(1, 2);
    QVERIFY(!box.isRed());
    QSignalSpy modified(&box, &CDoubleSpinBox::valueModified);
    QSignalSpy changed(&box, QOverload<double>::of(&QDoubleSpinBox::valueChanged));
    box.setValue(0.5);
    QVERIFY(box.storedValue() == 0.5);
    QCOMPARE(box.text(), QStringLiteral("0.5 "));
    QVERIFY(box.isRed());
    QCOMPARE(modified.count() + changed.count(), 0);
}

void DoubleSpinBoxValueTest::valueOutOfBoundsAboveOneStaysAndIsRed()
{
    CDoubleBox box(1, 2);
    box.setValue(5);
    QVERIFY(box.storedValue() == 5.0);
    QCOMPARE(box.value(), 2.0);
    QVERIFY(box.isRed());
    box.setValue(1.5);
    QVERIFY(!box.isRed());
}

void DoubleSpinBoxValueTest::valueOutOfBoundsStaysWhenTheBoxIsShownAndDisabled()
{
    CDoubleBox box(1, 2);
    box.setValue(0);
    box.show();
    QCOMPARE(box.text(), QStringLiteral("0 "));
    QFont struckOut;
    struckOut.setStrikeOut(true);
    box.setFont(struckOut);
    box.setDisabled(true);
    box.setDisabled(false);
    QCOMPARE(box.text(), QStringLiteral("0 "));
    QVERIFY(box.isRed());
}

void DoubleSpinBoxValueTest::notANumberIsRedAndStays()
{
    CDoubleBox box(0, 1);
    box.setValue(std::nan(""));
    QVERIFY(std::isnan(box.storedValue()));
    QVERIFY(box.isRed());
    QCOMPARE(box.text(), QStringLiteral("nan "));
}

void DoubleSpinBoxValueTest::boundsBelongToTheGoodValues()
{
    CDoubleBox box(0.25, 0.75);
    box.setValue(0.25);
    QVERIFY(!box.isRed());
    box.setValue(0.75);
    QVERIFY(!box.isRed());
    box.setValue(0.7500001);
    QVERIFY(box.isRed());
}

void DoubleSpinBoxValueTest::nothingStartsRed_data()
{
    QTest::addColumn<double>("minimum");
    QTest::addColumn<double>("maximum");
    QTest::addColumn<int>("decimals");
    QTest::addColumn<double>("start");
    QTest::addColumn<QString>("text");

    QTest::newRow("fixed time step") << 1e-12 << 1e6 << 12 << 1e-12 << "1e-12 s";
    QTest::newRow("total time") << 1e-6 << 1e5 << 6 << 1e-6 << "1e-06 s";
    QTest::newRow("bound below the decimals") << 1e-12 << 1e6 << 6 << 1e-12 << "1e-12 s";
    QTest::newRow("zero is good") << 0.0 << LARGEST << 12 << 0.0 << "0 s";
    QTest::newRow("negative range") << -8.0 << -2.0 << 6 << -2.0 << "-2 s";
}

void DoubleSpinBoxValueTest::nothingStartsRed()
{
    QFETCH(double, minimum);
    QFETCH(double, maximum);
    QFETCH(int, decimals);
    const CDoubleBox box(minimum, maximum, decimals, CUnitsTime::instance());
    QVERIFY(!box.isRed());
    QTEST(box.storedValue(), "start");
    QTEST(box.value(), "start");
    QTEST(box.text(), "text");
}

void DoubleSpinBoxValueTest::valueOfTheFormSurvivesSetup()
{
    CDoubleSpinBox box;
    box.setValue(2.5);
    box.setup(1e-12, 1e12, CUnitsNone::instance(), 12, false, false);
    QCOMPARE(box.storedValue(), 2.5);
    QCOMPARE(box.text(), QStringLiteral("2.5 "));
}

void DoubleSpinBoxValueTest::suffixIsABlankAndTheUnit()
{
    QCOMPARE(CDoubleBox(0, 1, 6, CUnitsTime::instance()).suffix(), QStringLiteral(" s"));
    QCOMPARE(CDoubleBox(0, 1, 6, CUnitsNone::instance()).suffix(), QStringLiteral(" "));
}

void DoubleSpinBoxValueTest::laterSuffixStays()
{
    CDoubleBox box(1e-12, 1e12, 12);
    box.setValue(2.5);
    box.setSuffix(QStringLiteral(" R min"));
    QCOMPARE(box.text(), QStringLiteral("2.5 R min"));
    box.setValue(0.05);
    QCOMPARE(box.text(), QStringLiteral("0.05 R min"));
    box.type(QStringLiteral("0.75"));
    QCOMPARE(box.text(), QStringLiteral("0.75 R min"));
    QCOMPARE(box.value(), 0.75);
}

void DoubleSpinBoxValueTest::openRangesDependOnTheSwitches()
{
    CDoubleSpinBox open;
    open.setup(0, 1, CUnitsNone::instance(), 6, true, false);
    QCOMPARE(open.minimum(), -LARGEST);
    QCOMPARE(open.maximum(), LARGEST);
    CDoubleSpinBox nonNegative;
    nonNegative.setup(-1, 1, CUnitsNone::instance(), 6, true, true);
    QCOMPARE(nonNegative.minimum(), 0.0);
    QCOMPARE(nonNegative.maximum(), LARGEST);
    CDoubleBox bounded(-3, 4);
    QCOMPARE(bounded.minimum(), -3.0);
    QCOMPARE(bounded.maximum(), 4.0);
}

void DoubleSpinBoxValueTest::unboundedBoxColoursWhatIsTyped()
{
    CDoubleBox box;
    box.setup(0, 1, CUnitsNone::instance(), 6, true, false);
    box.type(QStringLiteral("7"));
    box.pressReturn();
    QCOMPARE(box.storedValue(), 7.0);
    QVERIFY(box.isRed());
}

void DoubleSpinBoxValueTest::minutesAreShownAndStoredAsSeconds()
{
    CMinutes minutes;
    CDoubleBox box(0, 600, 6, &minutes);
    QCOMPARE(box.maximum(), 10.0);
    box.setValue(120);
    QCOMPARE(box.text(), QStringLiteral("2 min"));
    box.type(QStringLiteral("0.5"));
    box.pressReturn();
    QCOMPARE(box.storedValue(), 30.0);
}

void DoubleSpinBoxValueTest::changeOfUnitReachesTheBox()
{
    CMinutes minutes;
    CDoubleBox box(0, 600, 6, &minutes);
    box.setValue(120);
    QSignalSpy modified(&box, &CDoubleSpinBox::valueModified);
    minutes.select(0);
    QCOMPARE(box.text(), QStringLiteral("120 s"));
    QCOMPARE(box.maximum(), 600.0);
    QCOMPARE(box.storedValue(), 120.0);
    QCOMPARE(modified.count(), 0);
}

void DoubleSpinBoxValueTest::boxThatWasNeverSetUpCanDie()
{
    CDoubleSpinBox box;
    box.setValue(0.125);
    QCOMPARE(box.storedValue(), 0.125);
}

void DoubleSpinBoxValueTest::boxHasItsSignalAndItsSlotsInOrder()
{
    QCOMPARE(ownMethods(CDoubleSpinBox::staticMetaObject, QMetaMethod::Signal),
             QStringList("valueModified(double)"));
    QCOMPARE(ownMethods(CDoubleSpinBox::staticMetaObject, QMetaMethod::Slot),
             QStringList({"onUpdateUnits(QString)", "onEditingFinished()", "onSelectionChanged()",
                          "onCursorPositionChanged(int,int)", "onTextEdited(QString)", "stepDown()",
                          "stepUp()"}));
}

TARNEL_TEST_MAIN(DoubleSpinBoxValueTest)
#include "double_spin_box_value_test.moc"
