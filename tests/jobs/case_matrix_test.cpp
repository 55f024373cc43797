#include "jobs/case_matrix.h"

#include "tests/support/test_environment.h"

#include <QApplication>
#include <QtTest>

class CaseMatrixTest : public QObject
{
    Q_OBJECT

private slots:
    void lastListChangesFastest();
    void threeTimesThreeValuesMakeNineCases();
    void singleListMakesACasePerValue();
    void anEmptyListAnywhereMakesNoCase_data();
    void anEmptyListAnywhereMakesNoCase();
    void noListMakesOneCaseWithoutValues();
    void flagsStayFlags();
    void manyConstantColumnsMakeOneCase();
};

void CaseMatrixTest::lastListChangesFastest()
{
    const CaseMatrix expected = {{10.0, 1.0}, {10.0, 2.0}, {10.0, 3.0},
                                 {20.0, 1.0}, {20.0, 2.0}, {20.0, 3.0}};
    QVERIFY(expandCases({{10.0, 20.0}, {1.0, 2.0, 3.0}}) == expected);
}

void CaseMatrixTest::threeTimesThreeValuesMakeNineCases()
{
    const CaseMatrix cases = expandCases({{1.0, 2.0, 3.0}, {4.0, 5.0, 6.0}});
    QCOMPARE(cases.size(), std::size_t(9));
    for (std::size_t number = 0; number < 3; ++number) {
        QCOMPARE(std::get<double>(cases[number][0]), 1.0);
        QCOMPARE(std::get<double>(cases[number][1]), 4.0 + static_cast<double>(number));
    }
    QCOMPARE(std::get<double>(cases[3][0]), 2.0);
}

void CaseMatrixTest::singleListMakesACasePerValue()
{
    QVERIFY(expandCases({{5.0}}) == CaseMatrix({{5.0}}));
    QVERIFY(expandCases({{5.0, 6.0}}) == CaseMatrix({{5.0}, {6.0}}));
}

void CaseMatrixTest::anEmptyListAnywhereMakesNoCase_data()
{
    QTest::addColumn<int>("position");
    QTest::newRow("first") << 0;
    QTest::newRow("middle") << 1;
    QTest::newRow("last") << 2;
}

void CaseMatrixTest::anEmptyListAnywhereMakesNoCase()
{
    QFETCH(int, position);
    std::vector<ValueList> lists(3, {1.0, 2.0});
    lists[static_cast<std::size_t>(position)].clear();
    QVERIFY(expandCases(lists).empty());
}

void CaseMatrixTest::noListMakesOneCaseWithoutValues()
{
    const CaseMatrix cases = expandCases({});
    QCOMPARE(cases.size(), std::size_t(1));
    QVERIFY(cases.front().empty());
}

void CaseMatrixTest::flagsStayFlags()
{
    const CaseMatrix cases = expandCases({{true, 1.0}, {false}});
    QCOMPARE(cases.size(), std::size_t(2));
    QCOMPARE(cases[0][0].index(), std::size_t(1));
    QCOMPARE(cases[1][0].index(), std::size_t(0));
    QCOMPARE(std::get<bool>(cases[1][1]), false);
}

void CaseMatrixTest::manyConstantColumnsMakeOneCase()
{
    const std::size_t columns = 200000;
    const CaseMatrix cases = expandCases(std::vector<ValueList>(columns, {0.5}));
    QCOMPARE(cases.size(), std::size_t(1));
    QCOMPARE(cases.front().size(), columns);
}

TARNEL_TEST_MAIN(CaseMatrixTest)
#include "case_matrix_test.moc"
