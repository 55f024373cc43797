#include "cases/case_selection.h"

#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDir>
#include <QtTest>

using namespace cases;

namespace {

std::vector<SBatchCase> fourCases()
{
    std::vector<SBatchCase> all(4);
    for (std::size_t number = 0; number < all.size(); ++number) {
        all[number].number = number;
        all[number].deck = "d";
    }
    return all;
}

void note(const QString& root, int number, CaseState state)
{
    const QString folder = QDir(root).filePath(QString("Job%1").arg(number));
    QDir().mkpath(folder);
    SCaseNote entry;
    entry.state = state;
    entry.start = entry.end = QDateTime::currentDateTimeUtc();
    QVERIFY(writeNote(folder.toStdString(), entry));
}

std::string selectedBy(const std::string& text, const QString& root)
{
    std::vector<std::size_t> numbers;
    for (const SBatchCase& batchCase :
         CCaseSelection::fromText(text).select(fourCases(), root.toStdString())) {
        numbers.push_back(batchCase.number);
    }
    return listText(numbers);
}

} // namespace

class CaseSelectionTest : public QObject
{
    Q_OBJECT

private slots:
    void missingIsAllThatIsNotDone();
    void failedIsWhatFailedOrWasInterrupted();
    void allIsAll();
    void listNamesNumbersAndRanges();
    void listWithAnUnknownCaseIsRefused();
    void otherTextsAreRefused_data();
    void otherTextsAreRefused();
    void listTextJoinsNeighbours_data();
    void listTextJoinsNeighbours();

private:
    QTemporaryDir m_root;
};

void CaseSelectionTest::missingIsAllThatIsNotDone()
{
    note(m_root.path(), 0, CaseState::Done);
    note(m_root.path(), 1, CaseState::Failed);
    note(m_root.path(), 2, CaseState::Running); // nobody holds it: interrupted
    QCOMPARE(selectedBy("missing", m_root.path()), std::string("1-3"));
}

void CaseSelectionTest::failedIsWhatFailedOrWasInterrupted()
{
    QCOMPARE(selectedBy("failed", m_root.path()), std::string("1-2"));
}

void CaseSelectionTest::allIsAll()
{
    QCOMPARE(selectedBy("all", m_root.path()), std::string("0-3"));
}

void CaseSelectionTest::listNamesNumbersAndRanges()
{
    QCOMPARE(selectedBy("0", m_root.path()), std::string("0"));
    QCOMPARE(selectedBy("3,0-1", m_root.path()), std::string("0-1,3"));
}

void CaseSelectionTest::listWithAnUnknownCaseIsRefused()
{
    QVERIFY_EXCEPTION_THROWN(selectedBy("2-4", m_root.path()), std::invalid_argument);
}

void CaseSelectionTest::otherTextsAreRefused_data()
{
    QTest::addColumn<QString>("text");
    for (const char* text : {"", "some", "1,", "-1", "3-1", "1-", "1;2", "0x3", "0-99999999999"}) {
        QTest::newRow(text) << text;
    }
}

void CaseSelectionTest::otherTextsAreRefused()
{
    QFETCH(QString, text);
    QVERIFY_EXCEPTION_THROWN(CCaseSelection::fromText(text.toStdString()), std::invalid_argument);
}

void CaseSelectionTest::listTextJoinsNeighbours_data()
{
    QTest::addColumn<QVector<int>>("numbers");
    QTest::addColumn<QString>("expected");
    QTest::newRow("none") << QVector<int>{} << "";
    QTest::newRow("one") << QVector<int>{7} << "7";
    QTest::newRow("two") << QVector<int>{7, 8} << "7-8";
    QTest::newRow("gaps") << QVector<int>{0, 3, 5, 6, 7, 9} << "0,3,5-7,9";
}

void CaseSelectionTest::listTextJoinsNeighbours()
{
    QFETCH(QVector<int>, numbers);
    QFETCH(QString, expected);
    QCOMPARE(QString::fromStdString(listText({numbers.begin(), numbers.end()})), expected);
}

TARNEL_TEST_MAIN(CaseSelectionTest)
#include "case_selection_test.moc"
