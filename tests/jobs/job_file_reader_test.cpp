#include "jobs/job_file_reader.h"

#include "deck/deck_store.h"
#include "tests/jobs/job_fixture.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QtTest>

#include <cmath>

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

TARNEL_TEST_MAIN(JobFileReaderTest)
#include "job_file_reader_test.moc"
