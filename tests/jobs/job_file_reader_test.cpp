#include "jobs/job_file_reader.h"

#include "deck/deck_store.h"
#include "tests/jobs/job_fixture.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QtTest>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstring>
#include <iterator>
#include <random>

namespace {

/// TARNEL_LOAD=full takes sizes for which the usual run has no time.
bool takesAll()
{
    return qgetenv("TARNEL_LOAD") == "full";
}

std::string shortest(double value)
{
    char digits[32];
    return std::string(digits, std::to_chars(std::begin(digits), std::end(digits), value).ptr);
}

/// Texts of numbers, of near numbers and of numbers at the edge of what a double holds.
std::vector<std::string> numberTexts(std::size_t count)
{
    std::vector<std::string> texts = {
        "0",      "-0",     "+1",     "1.",       ".5",       "-.5",    ".",      "-",
        "e5",     "1e",     "1e+",    "1e5",      "1E5",      "1e+05",  "01",     "00.50",
        "inf",    "-inf",   "nan",    "infinity", "NaN",      "0x10",   "1e308",  "1.8e308",
        "-1e400", "1e-307", "1e-310", "4.9e-324", "2.4e-324", "1e-400", "0e5",    "1 2",
        "1_000",  "1'000",  "1d5",    "1e5.5",    "--1",      "1e--5",  "1e0005", "\xd9\xa1"};
    std::mt19937_64 generator(7);
    const std::string letters = "0123456789012345678901234567890.eE+- x";
    while (texts.size() < count) {
        const std::uint64_t bits = generator();
        double value = 0.0;
        std::memcpy(&value, &bits, sizeof value);
        texts.push_back(shortest(value));
        texts.push_back(shortest(static_cast<double>(generator() % 1000000) * 0.001));
        std::string text;
        for (std::size_t length = 1 + generator() % 24; text.size() < length;) {
            text += letters[generator() % letters.size()];
        }
        texts.push_back(text);
    }
    return texts;
}

} // namespace

class JobFileReaderTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void rowsLoseCaseNumberAndOptions();
    void caseNumbersOfTheFileDontCount();
    void wordsBecomeFlagsAndOnlyThose_data();
    void wordsBecomeFlagsAndOnlyThose();
    void optionsComeFromTheLastLine();
    void commaInTheOptionsShortensThemAndAddsAColumn();
    void windowsLineEndsReadAlike();
    void lastLineNeedsNoLineEnd();
    void emptyFileChangesNothing();
    void missingFileChangesNothing();
    void headingAloneMakesNoCase();
    void linesOfOneFieldAreNotCounted();
    void twoFieldsMakeACaseWithoutValues();
    void emptyFieldCountsAsZero();
    void anyTextReadsAsQtReadsIt();

private:
    CaseMatrix read(const std::string& content);
    static std::string options() { return CDeckStore::instance()->simulatorOptions(); }

    std::unique_ptr<CJobFixture> m_fixture;
};

void JobFileReaderTest::init()
{
    m_fixture = std::make_unique<CJobFixture>();
    CDeckStore::instance()->setSimulatorOptions("before");
}

CaseMatrix JobFileReaderTest::read(const std::string& content)
{
    return CJobFileReader().readJobMatrix(m_fixture->writeFile("matrix.csv", content));
}

void JobFileReaderTest::rowsLoseCaseNumberAndOptions()
{
    const CaseMatrix cases =
        read("Job ID#,a,b,Simulator Options\n0,1.5,true, -c \n1,2.5,false, -c \n");
    QVERIFY(cases == CaseMatrix({{1.5, true}, {2.5, false}}));
    QCOMPARE(options(), std::string(" -c "));
}

void JobFileReaderTest::caseNumbersOfTheFileDontCount()
{
    const CaseMatrix cases = read("h\n7,1,o\nfour,2,o\n,3,o\n");
    QVERIFY(cases == CaseMatrix({{1.0}, {2.0}, {3.0}}));
}

void JobFileReaderTest::wordsBecomeFlagsAndOnlyThose_data()
{
    QTest::addColumn<QString>("field");
    QTest::addColumn<int>("alternative");
    QTest::addColumn<double>("number");
    QTest::newRow("true") << "true" << 1 << 1.0;
    QTest::newRow("false") << "false" << 1 << 0.0;
    QTest::newRow("True") << "True" << 0 << 0.0;
    QTest::newRow("true and a blank") << "true " << 0 << 0.0;
    QTest::newRow("text") << "abc" << 0 << 0.0;
    QTest::newRow("number and text") << "1.5x" << 0 << 0.0;
    QTest::newRow("exponent") << "1.23457e+06" << 0 << 1234570.0;
    QTest::newRow("blanks around") << " 2.5 " << 0 << 2.5;
    QTest::newRow("negative") << "-0.25" << 0 << -0.25;
}

void JobFileReaderTest::wordsBecomeFlagsAndOnlyThose()
{
    QFETCH(QString, field);
    QFETCH(int, alternative);
    QFETCH(double, number);
    const CaseMatrix cases = read("h\n0," + field.toStdString() + ",o\n");
    QCOMPARE(cases.size(), std::size_t(1));
    const CaseValue& value = cases.front().front();
    QCOMPARE(static_cast<int>(value.index()), alternative);
    QCOMPARE(alternative == 1 ? static_cast<double>(std::get<bool>(value))
                              : std::get<double>(value),
             number);
}

void JobFileReaderTest::optionsComeFromTheLastLine()
{
    QCOMPARE(read("h\n0,1,first\n1,2,last\n").size(), std::size_t(2));
    QCOMPARE(options(), std::string("last"));
}

void JobFileReaderTest::commaInTheOptionsShortensThemAndAddsAColumn()
{
    const CaseMatrix cases = read("h\n0,1, -c  -D 0,1 -r \n");
    QVERIFY(cases == CaseMatrix({{1.0, 0.0}}));
    QCOMPARE(options(), std::string("1 -r "));
}

void JobFileReaderTest::windowsLineEndsReadAlike()
{
    const CaseMatrix cases = read("h,a,b\r\n0,1.5,true, -c \r\n1,2.5,false, -c \r\n");
    QVERIFY(cases == CaseMatrix({{1.5, true}, {2.5, false}}));
    QCOMPARE(options(), std::string(" -c "));
}

void JobFileReaderTest::lastLineNeedsNoLineEnd()
{
    QVERIFY(read("h\n0,1,o") == CaseMatrix({{1.0}}));
    QCOMPARE(options(), std::string("o"));
}

void JobFileReaderTest::emptyFileChangesNothing()
{
    QVERIFY(read("").empty());
    QCOMPARE(options(), std::string("before"));
}

void JobFileReaderTest::missingFileChangesNothing()
{
    QVERIFY(CJobFileReader().readJobMatrix(m_fixture->path("none.csv")).empty());
    QCOMPARE(options(), std::string("before"));
}

void JobFileReaderTest::headingAloneMakesNoCase()
{
    QVERIFY(read("Job ID#,a,Simulator Options\n").empty());
    QCOMPARE(options(), std::string("Simulator Options"));
}

void JobFileReaderTest::linesOfOneFieldAreNotCounted()
{
    const CaseMatrix cases = read("h\n0,1,o\nsingle\n\n1,2,o\n");
    QVERIFY(cases == CaseMatrix({{1.0}, {2.0}}));
}

void JobFileReaderTest::twoFieldsMakeACaseWithoutValues()
{
    const CaseMatrix cases = read("h\n0,o\n");
    QCOMPARE(cases.size(), std::size_t(1));
    QVERIFY(cases.front().empty());
    QCOMPARE(options(), std::string("o"));
}

void JobFileReaderTest::emptyFieldCountsAsZero()
{
    QVERIFY(read("h\n0,,o\n") == CaseMatrix({{0.0}}));
}

void JobFileReaderTest::anyTextReadsAsQtReadsIt()
{
    const std::vector<std::string> fields = numberTexts(takesAll() ? 3000000 : 60000);
    for (std::size_t begin = 0; begin < fields.size(); begin += 1000) {
        std::string line = "h\n0,";
        const std::size_t end = std::min(begin + 1000, fields.size());
        for (std::size_t index = begin; index < end; ++index) {
            line += fields[index] + ",";
        }
        const CaseMatrix cases = read(line + "o\n");
        QCOMPARE(cases.front().size(), end - begin);
        for (std::size_t index = begin; index < end; ++index) {
            const QString text = QString::fromStdString(fields[index]);
            const double expected = text.toDouble();
            const double number = std::get<double>(cases.front()[index - begin]);
            QVERIFY2(std::memcmp(&number, &expected, sizeof number) == 0, qPrintable(text));
        }
    }
}

TARNEL_TEST_MAIN(JobFileReaderTest)
#include "job_file_reader_test.moc"
