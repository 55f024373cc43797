#include "jobs/job_matrix.h"

#include "deck/deck_store.h"
#include "parameters/parameter_entry.h"
#include "samples/player/modal_watcher.h"
#include "tests/jobs/job_fixture.h"
#include "tests/support/native.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QtTest>

#include <cfloat>
#include <cmath>
#include <cstring>
#include <limits>
#include <random>
#include <sstream>

namespace {

const char* const PlainHeading =
    "Job ID#,glass<>glass Restitution,glass<>glass Static Friction,glass<>glass Rolling Friction,"
    "glass<>steel Restitution,glass<>steel Static Friction,glass<>steel Rolling Friction,"
    "Simulator Options\n";

/// The stream's own rendering, which the matrix has to match; on Windows this one loses the sign of
/// what is no number.
std::string rendered(double value)
{
    if (std::isnan(value)) {
        return std::signbit(value) ? "-nan" : "nan";
    }
    std::ostringstream stream;
    stream << std::boolalpha << value;
    return stream.str();
}

std::vector<double> randomDoubles(std::size_t count, unsigned int seed)
{
    std::mt19937_64 generator(20240229 + seed);
    std::vector<double> values;
    while (values.size() < count) {
        const std::uint64_t bits = generator();
        double value = 0.0;
        std::memcpy(&value, &bits, sizeof value);
        values.push_back(value);
        values.push_back(std::uniform_real_distribution<double>(-1e6, 1e6)(generator));
        values.push_back(static_cast<double>(generator() % 100000000) / 8.0);
    }
    return values;
}

} // namespace

class JobMatrixTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void variedFieldLeavesOutTheDecksValue();
    void constantFieldKeepsTheDecksValue();
    void columnsFollowEntriesKeysAndFields();
    void buildingAgainReplacesTheCases();
    void noEntriesMakeOneCaseWithoutColumns();

    void matrixHoldsHeadingRowsAndOptions();
    void linesEndAsThePlatformsTextDoes();
    void numbersHaveSixDigitsAndFlagsAreWords_data();
    void numbersHaveSixDigitsAndFlagsAreWords();
    void anyNumberReadsAsTheStreamWritesIt();
    void recordsFollowTheDeck();
    void withoutOptionsTheFileIsEmpty();
    void withoutDeckTheFileHoldsItsHeadingOnly();
    void deckWithoutForcesHas42ColumnsMore();
    void fileIsCompleteWhenTheFirstBoxComesUp();
    void commaInTheOptionsIsWrittenAsItStands();
    void recordWithoutDeckIsOutOfRange();
    void largeMatrixIsWrittenQuickly();

private:
    std::string written(bool expected = true);
    void compareWithTheStream(std::vector<double> values);

    std::unique_ptr<CJobFixture> m_fixture;
    CJobMatrix m_matrix;
};

void JobMatrixTest::init()
{
    m_fixture = std::make_unique<CJobFixture>();
    m_matrix = CJobMatrix();
    CDeckStore::instance()->setSimulatorOptions(" -c  -r 1.000000");
}

std::string JobMatrixTest::written(bool expected)
{
    const std::string folder = m_fixture->folder("job");
    const bool result = m_matrix.writeJobMatrix(folder);
    return result == expected ? contentOf(folder + "/input_jobID-Matrix.csv") : "wrong result";
}

void JobMatrixTest::variedFieldLeavesOutTheDecksValue()
{
    pushEntry("Interactions", {{"a<>b", {{0.1, 5.0}}}});
    m_matrix.buildCases();
    QVERIFY(m_matrix.cases() == CaseMatrix({{5.0}}));
}

void JobMatrixTest::constantFieldKeepsTheDecksValue()
{
    pushEntry("Interactions", {{"a<>b", {{0.1, 5.0, 6.0}, {0.25}}}});
    m_matrix.buildCases();
    QVERIFY(m_matrix.cases() == CaseMatrix({{5.0, 0.25}, {6.0, 0.25}}));
}

void JobMatrixTest::columnsFollowEntriesKeysAndFields()
{
    pushEntry("first", {{"k1", {{1.0}, {2.0}}}, {"k2", {{3.0}}}});
    pushEntry("second", {{"k1", {{4.0}, {false}}}});
    m_matrix.buildCases();
    QVERIFY(m_matrix.cases() == CaseMatrix({{1.0, 2.0, 3.0, 4.0, false}}));
}

void JobMatrixTest::buildingAgainReplacesTheCases()
{
    pushEntry("first", {{"k", {{1.0}}}});
    m_matrix.buildCases();
    pushEntry("second", {{"k", {{0.0, 2.0, 3.0}}}});
    m_matrix.buildCases();
    QVERIFY(m_matrix.cases() == CaseMatrix({{1.0, 2.0}, {1.0, 3.0}}));
}

void JobMatrixTest::noEntriesMakeOneCaseWithoutColumns()
{
    m_matrix.buildCases();
    QCOMPARE(m_matrix.cases().size(), std::size_t(1));
    QVERIFY(m_matrix.cases().front().empty());
}

void JobMatrixTest::matrixHoldsHeadingRowsAndOptions()
{
    m_fixture->chooseDeck(plainDeck(3));
    pushEntry("Interactions", {{"glass<>glass", {{0.75, 0.1, 0.2}, {0.25}, {0.02}}},
                               {"glass<>steel", {{0.5}, {0.4}, {0.01, 1.0, 2.0}}}});
    const std::string expected = std::string(PlainHeading) +
                                 "0,0.1,0.25,0.02,0.5,0.4,1, -c  -r 1.000000\n"
                                 "1,0.1,0.25,0.02,0.5,0.4,2, -c  -r 1.000000\n"
                                 "2,0.2,0.25,0.02,0.5,0.4,1, -c  -r 1.000000\n"
                                 "3,0.2,0.25,0.02,0.5,0.4,2, -c  -r 1.000000\n";
    QCOMPARE(QString::fromStdString(written()), QString::fromStdString(expected));
}

void JobMatrixTest::linesEndAsThePlatformsTextDoes()
{
    m_fixture->chooseDeck(plainDeck(3));
    pushEntry("Interactions", {{"glass<>glass", {{0.75, 0.1}, {0.25}, {0.02}}}});
    const std::string lines = written();
    QVERIFY(lines.find('\r') == std::string::npos);
    QFile file(QString::fromStdString(m_fixture->path("job/input_jobID-Matrix.csv")));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), Native::inTextMode(QByteArray::fromStdString(lines)));
}

void JobMatrixTest::numbersHaveSixDigitsAndFlagsAreWords_data()
{
    QTest::addColumn<double>("value");
    QTest::addColumn<QString>("expected");
    QTest::newRow("million") << 1234567.0 << "1.23457e+06";
    QTest::newRow("small") << 0.000123456789 << "0.000123457";
    QTest::newRow("smaller") << 0.0000123456789 << "1.23457e-05";
    QTest::newRow("whole") << 100000.0 << "100000";
    QTest::newRow("seven digits") << 1000000.0 << "1e+06";
    QTest::newRow("negative zero") << -0.0 << "-0";
    QTest::newRow("largest") << std::numeric_limits<double>::max() << "1.79769e+308";
    QTest::newRow("denormal") << 4.9e-324 << "4.94066e-324";
}

void JobMatrixTest::numbersHaveSixDigitsAndFlagsAreWords()
{
    QFETCH(double, value);
    QFETCH(QString, expected);
    m_fixture->chooseDeck(plainDeck(3));
    pushEntry("any", {{"k", {{value}, {true}, {false}, {1.0}, {1.0}, {1.0}}}});
    const CModalWatcher watcher;
    const QString line = QString::fromStdString(written()).section('\n', 1, 1);
    QCOMPARE(line, "0," + expected + ",true,false,1,1,1, -c  -r 1.000000");
}

void JobMatrixTest::anyNumberReadsAsTheStreamWritesIt()
{
    // TARNEL_LOAD=full takes ten million; in parts, since each makes a record.
    const bool all = qgetenv("TARNEL_LOAD") == "full";
    for (unsigned int part = 0; part < (all ? 100 : 1); ++part) {
        init();
        compareWithTheStream(randomDoubles(all ? 100000 : 30000, part));
    }
}

void JobMatrixTest::compareWithTheStream(std::vector<double> values)
{
    values.insert(values.end(), {std::nan(""), -std::nan(""), HUGE_VAL, -HUGE_VAL, 0.0, -0.0, 0.0,
                                 999999.5, 999999.5, DBL_MIN, -DBL_MIN, DBL_MAX, DBL_TRUE_MIN});
    CDeckStore::instance()->creatorData() = {CCreatorData("bed")};
    ValueList varied = {0.0};
    varied.insert(varied.end(), values.begin(), values.end());
    pushEntry("any", {{"k", {varied}}});
    std::istringstream lines(written());
    std::string line;
    std::getline(lines, line);
    for (std::size_t number = 0; number < values.size(); ++number) {
        QVERIFY(std::getline(lines, line));
        const std::string expected =
            std::to_string(number) + "," + rendered(values[number]) + ", -c  -r 1.000000";
        if (line != expected) {
            QCOMPARE(QString::fromStdString(line), QString::fromStdString(expected));
        }
    }
}

void JobMatrixTest::recordsFollowTheDeck()
{
    m_fixture->chooseDeck(plainDeck(3));
    pushEntry("Interactions", {{"glass<>glass", {{0.75, 0.1234567891, 0.2}, {0.25}, {0.02}}},
                               {"glass<>steel", {{0.5}, {0.4}, {0.01}}}});
    written();
    const std::vector<CCreatorData>& records = CDeckStore::instance()->creatorData();
    QCOMPARE(records.size(), std::size_t(3));
    QCOMPARE(QString::fromStdString(records[1].m_sName), QStringLiteral("bed1"));
    QCOMPARE(QString::fromStdString(records[2].m_sName), QStringLiteral("bed2"));
    QCOMPARE(std::get<0>(records[1].m_interactions.at("glass<>glass")), 0.1234567891);
    QCOMPARE(std::get<0>(records[2].m_interactions.at("glass<>glass")), 0.2);
    QCOMPARE(std::get<2>(records[2].m_interactions.at("glass<>steel")), 0.01);
}

void JobMatrixTest::withoutOptionsTheFileIsEmpty()
{
    m_fixture->chooseDeck(plainDeck(3));
    pushPlainInteractions();
    CDeckStore::instance()->setSimulatorOptions("");
    QCOMPARE(written(false), std::string());
    QVERIFY(std::filesystem::exists(m_fixture->path("job/input_jobID-Matrix.csv")));
    QCOMPARE(CDeckStore::instance()->creatorData().size(), std::size_t(1));
}

void JobMatrixTest::withoutDeckTheFileHoldsItsHeadingOnly()
{
    pushPlainInteractions();
    QCOMPARE(written(false), std::string("Job ID#,Simulator Options\n"));
    QVERIFY(CDeckStore::instance()->creatorData().empty());
}

void JobMatrixTest::deckWithoutForcesHas42ColumnsMore()
{
    m_fixture->chooseDeck(plainDeck(3));
    pushPlainInteractions();
    for (int force = 0; force < 6; ++force) {
        pushAbsentForce("force");
    }
    const CModalWatcher watcher;
    const QStringList lines = QString::fromStdString(written()).split('\n');
    QCOMPARE(lines[0].split(',').size(), 8);
    QCOMPARE(lines[1].split(',').size(), 8 + 42);
    QVERIFY(lines[1].startsWith("0,0.75,0.25,0.02,0.5,0.4,0.01,0,0,0,false,0,0,0,0,0,0,false,"));
    QCOMPARE(watcher.messages().size(), std::size_t(0));
}

void JobMatrixTest::fileIsCompleteWhenTheFirstBoxComesUp()
{
    m_fixture->chooseDeck(plainDeck(3));
    pushEntry("Interactions", {{"glass<>glass", {{0.75, true, false}, {0.25}, {0.02}}},
                               {"glass<>steel", {{0.5}, {0.4}, {0.01}}}});
    const std::string file = m_fixture->folder("job") + "/input_jobID-Matrix.csv";
    CModalWatcher watcher;
    std::string seen;
    QTimer look;
    connect(&look, &QTimer::timeout, [&] {
        if (seen.empty() && QApplication::activeModalWidget() != nullptr) {
            seen = contentOf(file);
        }
    });
    look.start(0);
    const std::string content = written();
    QCOMPARE(watcher.messages().size(), std::size_t(2));
    QCOMPARE(seen, content);
    QVERIFY(content.find("1,false,") != std::string::npos);
}

void JobMatrixTest::commaInTheOptionsIsWrittenAsItStands()
{
    m_fixture->chooseDeck(plainDeck(3));
    pushPlainInteractions();
    CDeckStore::instance()->setSimulatorOptions(" -c  -D 0,1");
    QVERIFY(QString::fromStdString(written()).endsWith("0.4,0.01, -c  -D 0,1\n"));
}

void JobMatrixTest::recordWithoutDeckIsOutOfRange()
{
    try {
        m_matrix.createCaseRecord({}, 0);
        QFAIL("nothing was thrown");
    } catch (const std::out_of_range& error) {
        QCOMPARE(error.what(), "invalid vector subscript");
    }
}

void JobMatrixTest::largeMatrixIsWrittenQuickly()
{
    CDeckStore::instance()->creatorData() = {CCreatorData("bed")};
    std::vector<ValueList> columns(85, {0.123456789});
    ValueList varied = {0.0};
    for (int value = 0; value < 50000; ++value) {
        varied.push_back(value / 7.0);
    }
    columns.push_back(varied);
    pushEntry("any", {{"k", columns}});
    QElapsedTimer timer;
    timer.start();
    const std::string content = written();
    qInfo("%zu bytes in %lld ms", content.size(), timer.elapsed());
    QCOMPARE(CDeckStore::instance()->creatorData().size(), std::size_t(50001));
    // A bound for slow machines; the figure above is what counts.
    QVERIFY(timer.elapsed() < 20000);
}

TARNEL_TEST_MAIN(JobMatrixTest)
#include "job_matrix_test.moc"
