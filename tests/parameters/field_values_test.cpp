#include "parameters/field_values.h"

#include "tests/support/test_environment.h"

#include <QApplication>
#include <QTest>

#include <limits>

using Values = std::vector<CaseValue>;

namespace {

constexpr double NotANumber = std::numeric_limits<double>::quiet_NaN();
constexpr double Infinity = std::numeric_limits<double>::infinity();

CParameterFields fieldOf(Values values)
{
    return CParameterFields{nullptr, 0, "Restitution", std::move(values)};
}

FieldValues::Flags flagsOf(const CParameterFields& field)
{
    return {std::vector<bool>(field.m_values.size(), true)};
}

} // namespace

class CFieldValuesTest : public QObject
{
    Q_OBJECT

private slots:
    void doublesAreNearBelowAMillionth();
    void flagsAreNearWhenEqual();
    void mixedAlternativesRaise();
    void theDeckValueIsNotLookedAt();
    void anEditWithinAMillionthAddsNothing();
    void anEditGathersEveryDistinctValue();
    void valuesThatNoColumnShowsStay();
    void aToggledFlagVarianceRaises();
    void removeNeedsTheExactValue();
    void removeTakesTheFirstEqualVariance();
    void theDeckValueIsNeverRemoved();
    void aNumberThatIsNoneIsTakenUpAndGivenUpAtOnce();
    void bitsAreNotTakenFromAFieldThatHasNone();
    void anEditOfAnInfiniteFieldLosesEvenTheDeckValue();
    void aCopyOfAnInfiniteDeckValueStays();
    void nothingIsRemovedFromAFieldWithoutValues();
    void noVarianceCountsAsNoCase();
    void oneVarianceTurnsTheCountIntoOne();
    void threeAndTwoVariancesMakeSixCases();
    void theCountWrapsAround();
};

void CFieldValuesTest::doublesAreNearBelowAMillionth()
{
    QVERIFY(FieldValues::isNear(1.0, 1.0 + 9e-07));
    QVERIFY(!FieldValues::isNear(1.0, 1.0 + 1.1e-06));
    QVERIFY(FieldValues::isNear(-2.0, -2.0));
}

void CFieldValuesTest::flagsAreNearWhenEqual()
{
    QVERIFY(FieldValues::isNear(true, true));
    QVERIFY(!FieldValues::isNear(true, false));
}

void CFieldValuesTest::mixedAlternativesRaise()
{
    QVERIFY_EXCEPTION_THROWN(FieldValues::isNear(1.0, true), std::bad_variant_access);
    QVERIFY_EXCEPTION_THROWN(FieldValues::isNear(true, 1.0), std::bad_variant_access);
}

void CFieldValuesTest::theDeckValueIsNotLookedAt()
{
    QVERIFY(FieldValues::isNewValue(Values{0.5}, 0.5));
    QVERIFY(!FieldValues::isNewValue(Values{0.5, 0.7}, 0.7));
}

void CFieldValuesTest::anEditWithinAMillionthAddsNothing()
{
    CParameterFields field = fieldOf({0.5, 0.7});
    FieldValues::Flags flags = flagsOf(field);
    QCOMPARE(FieldValues::edit(field, flags, 0.7 + 5e-07, {0.5, 0.7 + 5e-07}), 0);
    QVERIFY(field.m_values == Values({0.5, 0.7}));
    QVERIFY(!FieldValues::remove(field, flags, 0.7 + 5e-07));
    QCOMPARE(flags.front().size(), std::size_t(2));
}

void CFieldValuesTest::anEditGathersEveryDistinctValue()
{
    CParameterFields field = fieldOf({0.5});
    FieldValues::Flags flags = flagsOf(field);
    QCOMPARE(FieldValues::edit(field, flags, 0.5, {0.5, 0.5}), 1);
    QVERIFY(field.m_values == Values({0.5, 0.5}));
    QCOMPARE(FieldValues::edit(field, flags, 0.6, {0.5, 0.6}), 1);
    QVERIFY(field.m_values == Values({0.5, 0.5, 0.6}));
    QCOMPARE(flags.front().size(), std::size_t(3));
}

void CFieldValuesTest::valuesThatNoColumnShowsStay()
{
    CParameterFields field = fieldOf({0.5, 0.5, 0.6, 0.7});
    FieldValues::Flags flags = flagsOf(field);
    QCOMPARE(FieldValues::edit(field, flags, 0.8, {0.5, 0.6, 0.8}), 1);
    QVERIFY(field.m_values == Values({0.5, 0.5, 0.6, 0.7, 0.8}));
}

void CFieldValuesTest::aToggledFlagVarianceRaises()
{
    CParameterFields field = fieldOf({false, false});
    FieldValues::Flags flags = flagsOf(field);
    QVERIFY_EXCEPTION_THROWN(FieldValues::edit(field, flags, 1.0, {false, 1.0}),
                             std::bad_variant_access);
    QVERIFY(field.m_values == Values({false, false}));
}

void CFieldValuesTest::removeNeedsTheExactValue()
{
    CParameterFields field = fieldOf({0.5, 0.7});
    FieldValues::Flags flags = flagsOf(field);
    QVERIFY(!FieldValues::remove(field, flags, 0.7000001));
    QVERIFY(FieldValues::remove(field, flags, 0.7));
    QVERIFY(field.m_values == Values({0.5}));
    QCOMPARE(flags.front().size(), std::size_t(1));
}

void CFieldValuesTest::removeTakesTheFirstEqualVariance()
{
    CParameterFields field = fieldOf({1.0, 2.0, 3.0, 2.0});
    FieldValues::Flags flags = flagsOf(field);
    QVERIFY(FieldValues::remove(field, flags, 2.0));
    QVERIFY(field.m_values == Values({1.0, 3.0, 2.0}));
}

void CFieldValuesTest::theDeckValueIsNeverRemoved()
{
    CParameterFields field = fieldOf({0.5});
    FieldValues::Flags flags = flagsOf(field);
    QVERIFY(!FieldValues::remove(field, flags, 0.5));
    QVERIFY(field.m_values == Values({0.5}));
}

void CFieldValuesTest::aNumberThatIsNoneIsTakenUpAndGivenUpAtOnce()
{
    CParameterFields field = fieldOf({NotANumber});
    FieldValues::Flags flags = flagsOf(field);
    QCOMPARE(FieldValues::edit(field, flags, NotANumber, {NotANumber, NotANumber}), 0);
    QCOMPARE(field.m_values.size(), std::size_t(2));
    QCOMPARE(flags.front().size(), std::size_t(1));
}

void CFieldValuesTest::bitsAreNotTakenFromAFieldThatHasNone()
{
    CParameterFields field = fieldOf({NotANumber, NotANumber, 0.7});
    FieldValues::Flags flags = {{}};
    QCOMPARE(FieldValues::edit(field, flags, 0.7, {NotANumber, 0.7}), -1);
    QVERIFY(flags.front().empty());
    QVERIFY(FieldValues::remove(field, flags, 0.7));
    QVERIFY(flags.front().empty());
}

void CFieldValuesTest::anEditOfAnInfiniteFieldLosesEvenTheDeckValue()
{
    CParameterFields field = fieldOf({Infinity, Infinity});
    FieldValues::Flags flags = flagsOf(field);
    QCOMPARE(FieldValues::edit(field, flags, 0.7, {Infinity, 0.7}), -1);
    QVERIFY(field.m_values.empty());
    QCOMPARE(flags.front().size(), std::size_t(1));
}

void CFieldValuesTest::aCopyOfAnInfiniteDeckValueStays()
{
    CParameterFields field = fieldOf({Infinity});
    FieldValues::Flags flags = flagsOf(field);
    QCOMPARE(FieldValues::edit(field, flags, Infinity, {Infinity, Infinity}), 1);
    QVERIFY(field.m_values == Values({Infinity, Infinity}));
    QCOMPARE(flags.front().size(), std::size_t(2));
}

void CFieldValuesTest::nothingIsRemovedFromAFieldWithoutValues()
{
    CParameterFields field = fieldOf({});
    FieldValues::Flags flags = {{true}};
    QVERIFY(!FieldValues::remove(field, flags, 0.7));
    QCOMPARE(flags.front().size(), std::size_t(1));
}

void CFieldValuesTest::noVarianceCountsAsNoCase()
{
    QCOMPARE(FieldValues::caseCount({}), std::uint64_t(0));
    QCOMPARE(FieldValues::caseCount({{true}, {true}}), std::uint64_t(0));
}

void CFieldValuesTest::oneVarianceTurnsTheCountIntoOne()
{
    QCOMPARE(FieldValues::caseCount({{true}, {true, true}}), std::uint64_t(1));
}

void CFieldValuesTest::threeAndTwoVariancesMakeSixCases()
{
    QCOMPARE(FieldValues::caseCount({std::vector<bool>(4, true), {true}, std::vector<bool>(3)}),
             std::uint64_t(6));
}

void CFieldValuesTest::theCountWrapsAround()
{
    // 2^16 - 1 variances and one more: 2^16 per field, so four of them come to 2^64.
    const FieldValues::Flags flags(4, std::vector<bool>(65537, true));
    QCOMPARE(FieldValues::caseCount(flags), std::uint64_t(0));
    const FieldValues::Flags three(3, std::vector<bool>(65537, true));
    QCOMPARE(FieldValues::caseCount(three), std::uint64_t(1) << 48);
}

TARNEL_TEST_MAIN(CFieldValuesTest)
#include "field_values_test.moc"
