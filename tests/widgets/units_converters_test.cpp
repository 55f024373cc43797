#include "tests/support/test_environment.h"
#include "tests/widgets/minutes.h"
#include "widgets/unit_vocabulary.h"
#include "widgets/units_none.h"
#include "widgets/units_time.h"

#include <QApplication>
#include <QtTest>

#include <algorithm>

class UnitsConvertersTest : public QObject
{
    Q_OBJECT

private slots:
    void timeConvertsMinutesByTheGivenUnit();
    void timeConvertsMinutesByTheUnitInUse();
    void timePassesSecondsUnchanged();
    void noneConvertsNothing();
    void labelsNameTheUnitInUse();
    void eachConverterIsMadeOnce();
    void vocabularyHoldsTheFamiliesInOrder();
    void vocabularyHoldsTheLabelsInOrder();
};

void UnitsConvertersTest::timeConvertsMinutesByTheGivenUnit()
{
    QCOMPARE(CUnitsTime::instance()->toBase(2.0, 1), 120.0);
    QCOMPARE(CUnitsTime::instance()->toBase(2.0, 0), 2.0);
    QCOMPARE(CUnitsTime::instance()->toBase(2.0, 7), 2.0);
}

void UnitsConvertersTest::timeConvertsMinutesByTheUnitInUse()
{
    CMinutes minutes;
    QCOMPARE(minutes.toDisplay(120.0), 2.0);
    QCOMPARE(minutes.toBase(2.0), 120.0);
    QCOMPARE(minutes.toBase(2.0, 0), 2.0);
}

void UnitsConvertersTest::timePassesSecondsUnchanged()
{
    QCOMPARE(CUnitsTime::instance()->toDisplay(0.1), 0.1);
    QCOMPARE(CUnitsTime::instance()->toBase(0.1), 0.1);
}

void UnitsConvertersTest::noneConvertsNothing()
{
    QCOMPARE(CUnitsNone::instance()->toDisplay(120.0), 120.0);
    QCOMPARE(CUnitsNone::instance()->toBase(120.0), 120.0);
    QCOMPARE(CUnitsNone::instance()->toBase(120.0, 1), 120.0);
}

void UnitsConvertersTest::labelsNameTheUnitInUse()
{
    QVERIFY(CUnitsNone::instance()->label().isEmpty());
    QCOMPARE(CUnitsTime::instance()->label(), QStringLiteral("s"));
    QCOMPARE(CMinutes().label(), QStringLiteral("min"));
}

void UnitsConvertersTest::eachConverterIsMadeOnce()
{
    QCOMPARE(CUnitsNone::instance(), CUnitsNone::instance());
    QCOMPARE(CUnitsTime::instance(), CUnitsTime::instance());
}

void UnitsConvertersTest::vocabularyHoldsTheFamiliesInOrder()
{
    const auto& families = UnitVocabulary::FAMILIES;
    QCOMPARE(families.front(), QStringLiteral("Other"));
    QCOMPARE(families[15], QStringLiteral("Time"));
    QCOMPARE(families.back(), QStringLiteral("Wear Constant"));
    QCOMPARE(std::count(families.begin(), families.end(), QString()), 0);
}

void UnitsConvertersTest::vocabularyHoldsTheLabelsInOrder()
{
    const auto& labels = UnitVocabulary::LABELS;
    QCOMPARE(labels.front(), QStringLiteral("C"));
    QCOMPARE(labels[4], QStringLiteral("\u00b0C"));
    QCOMPARE(labels[74], UnitVocabulary::MINUTE);
    QCOMPARE(labels.back(), QStringLiteral("mHz"));
    QCOMPARE(std::count(labels.begin(), labels.end(), QStringLiteral("J")), 2);
    QCOMPARE(std::count(labels.begin(), labels.end(), QString()), 0);
}

TARNEL_TEST_MAIN(UnitsConvertersTest)
#include "units_converters_test.moc"
