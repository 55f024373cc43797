#include "results/result_table.h"

#include "platform/text_end.h"
#include "tests/results/result_tree.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QtTest>

#include <sstream>
#include <stdexcept>

namespace fs = std::filesystem;

class CResultTableTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void writesEachRowAndAnEmptyLineBehindEachCase();
    void casesComeInNumericOrder();
    void theNumberEndsAtTheFirstNonDigit();
    void aScriptsLinesBecomeSingleCells();
    void aScriptsEmptyLinesAreKept();
    void ofTwoFilesOfOneCaseTheFirstIsTaken();
    void aFileThatCannotBeOpenedYieldsNoLines();
    void everyByteIsKept();
    void droppedCellsAreNamed();
    void aFolderWithoutNumberEndsTheGathering();
    void aFolderWithAShortNameEndsTheGathering();
    void theObserverHearsOfEachFile();

private:
    fs::path put(const QString& name, const QByteArray& content) const;
    static std::string written(const ResultTable& table);

    QTemporaryDir m_root;
    QString m_folder;
};

namespace {

const FileObserver nobody = [](int) {};

} // namespace

void CResultTableTest::init()
{
    m_folder = QDir(m_root.path()).filePath(QString::fromLatin1(QTest::currentTestFunction()));
}

fs::path CResultTableTest::put(const QString& name, const QByteArray& content) const
{
    putFile(m_folder, name, content);
    return fs::path(m_folder.toStdString()) / name.toStdString();
}

std::string CResultTableTest::written(const ResultTable& table)
{
    std::ostringstream stream;
    writeResults(table, stream);
    return stream.str();
}

void CResultTableTest::writesEachRowAndAnEmptyLineBehindEachCase()
{
    ResultTable table;
    gatherSimulatorResults(
        {put(QStringLiteral("Job3/out.csv"), "exported results\nEXTRACTED DATA\nName,Mass\n"
                                             "TIME:,0\nTIME,a,b\n0,1,2\n1,3,4\n")},
        nobody, table);
    QCOMPARE(written(table), std::string("3,Name,Mass,\n3,TIME:,0,\n3,TIME,0,1,\n3,a,1,3,\n"
                                         "3,b,2,4,\n\n"));
}

void CResultTableTest::casesComeInNumericOrder()
{
    ResultTable table;
    gatherSimulatorResults({put(QStringLiteral("Job10/x.csv"), "EXTRACTED DATA\nten\n"),
                            put(QStringLiteral("Job9/x.csv"), "EXTRACTED DATA\nnine\n")},
                           nobody, table);
    QCOMPARE(written(table), std::string("9,nine,\n\n10,ten,\n\n"));
}

void CResultTableTest::theNumberEndsAtTheFirstNonDigit()
{
    ResultTable table;
    gatherSimulatorResults({put(QStringLiteral("Job12_retry/x.csv"), "EXTRACTED DATA\na\n")},
                           nobody, table);
    QCOMPARE(written(table), std::string("12,a,\n\n"));
}

void CResultTableTest::aScriptsLinesBecomeSingleCells()
{
    ResultTable table;
    gatherScriptResults({put(QStringLiteral("Job7/x.csv"), "1.5,2\n3\n")}, nobody, table);
    QCOMPARE(written(table), std::string("-1,ID#,\n\n7,1.5,2,\n7,3,\n\n"));
}

void CResultTableTest::aScriptsEmptyLinesAreKept()
{
    ResultTable table;
    gatherScriptResults({put(QStringLiteral("Job7/x.csv"), "\r\na\r\n\n\nb")}, nobody, table);
    QCOMPARE(written(table), std::string("-1,ID#,\n\n7,,\n7,a,\n7,,\n7,,\n7,b,\n\n"));
}

void CResultTableTest::ofTwoFilesOfOneCaseTheFirstIsTaken()
{
    ResultTable table;
    gatherScriptResults({put(QStringLiteral("Job1/b.csv"), "first"),
                         put(QStringLiteral("Job1/a.csv"), "second"),
                         put(QStringLiteral("Job01/a.csv"), "third"),
                         put(QStringLiteral("Job-1/a.csv"), "the heading's own number")},
                        nobody, table);
    QCOMPARE(written(table), std::string("-1,ID#,\n\n1,first,\n\n"));
}

void CResultTableTest::aFileThatCannotBeOpenedYieldsNoLines()
{
    const fs::path gone = fs::path(m_folder.toStdString()) / "Job1" / "gone.csv";
    ResultTable table;
    gatherSimulatorResults({gone}, nobody, table);
    QCOMPARE(written(table), std::string("\n"));
    QCOMPARE(table.count(1), std::size_t(1));
}

void CResultTableTest::everyByteIsKept()
{
    QByteArray bytes;
    for (int byte = 0; byte < 256; ++byte) {
        const char letter = static_cast<char>(byte);
        if (letter != '\n' && platform::textEnd({&letter, 1}) != 0) {
            bytes += letter;
        }
    }
    ResultTable table;
    gatherScriptResults({put(QStringLiteral("Job1/x.csv"), bytes + '\n')}, nobody, table);
    QCOMPARE(QByteArray::fromStdString(written(table)), "-1,ID#,\n\n1," + bytes + ",\n\n");
}

void CResultTableTest::droppedCellsAreNamed()
{
    const fs::path file = put(QStringLiteral("Job1/x.csv"), "EXTRACTED DATA\nTIME\n0,1,2\n");
    const CCapturedErrors errors;
    ResultTable table;
    gatherSimulatorResults({file}, nobody, table);
    QCOMPARE(written(table), std::string("1,TIME,0,\n\n"));
    QVERIFY(errors.text().contains(QString::fromStdString(file.string())));
    QVERIFY(errors.text().contains(QLatin1String("2 cells")));
}

void CResultTableTest::aFolderWithoutNumberEndsTheGathering()
{
    const std::vector<fs::path> files = {put(QStringLiteral("Job1/x.csv"), "a"),
                                         put(QStringLiteral("JobFileLocation/old.csv"), "b"),
                                         put(QStringLiteral("Job2/x.csv"), "c")};
    const CCapturedErrors errors;
    ResultTable table;
    QVERIFY_EXCEPTION_THROWN(gatherScriptResults(files, nobody, table), std::invalid_argument);
    QCOMPARE(written(table), std::string("-1,ID#,\n\n1,a,\n\n"));
    QVERIFY(errors.text().contains(QLatin1String("JobFileLocation/old.csv")));
}

void CResultTableTest::aFolderWithAShortNameEndsTheGathering()
{
    const fs::path shortName = put(QStringLiteral("ab/x.csv"), "a");
    const fs::path threeCharacters = put(QStringLiteral("Job/x.csv"), "a");
    const fs::path tooLarge = put(QStringLiteral("Job99999999999/x.csv"), "a");
    const CCapturedErrors errors;
    ResultTable table;
    QVERIFY_EXCEPTION_THROWN(gatherSimulatorResults({shortName}, nobody, table), std::out_of_range);
    QVERIFY(errors.text().contains(QLatin1String("ab/x.csv")));
    QVERIFY_EXCEPTION_THROWN(gatherSimulatorResults({threeCharacters}, nobody, table),
                             std::invalid_argument);
    QVERIFY_EXCEPTION_THROWN(gatherSimulatorResults({tooLarge}, nobody, table), std::out_of_range);
    QVERIFY(table.empty());
}

void CResultTableTest::theObserverHearsOfEachFile()
{
    const std::vector<fs::path> files = {put(QStringLiteral("Job5/x.csv"), "a"),
                                         put(QStringLiteral("Job5/y.csv"), "a"),
                                         put(QStringLiteral("Job6/x.csv"), "a")};
    std::vector<int> heard;
    ResultTable table;
    gatherScriptResults(
        files, [&heard](int index) { heard.push_back(index); }, table);
    QCOMPARE(heard, std::vector<int>({0, 1, 2}));
}

TARNEL_TEST_MAIN(CResultTableTest)
#include "result_table_test.moc"
