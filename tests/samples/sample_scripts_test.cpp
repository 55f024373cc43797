#include "tests/samples/sample_case.h"

#include "tests/support/test_environment.h"

#include <QApplication>
#include <QImage>
#include <QStandardPaths>
#include <QtTest>

namespace {

QString python()
{
    const QString found = QStandardPaths::findExecutable(QStringLiteral("python3"));
    return found.isEmpty() ? QStandardPaths::findExecutable(QStringLiteral("python")) : found;
}

void writeText(const QString& file, const QByteArray& text)
{
    QFile target(file);
    QVERIFY(target.open(QIODevice::WriteOnly));
    target.write(text);
}

const QByteArray Summary = "# ORVA sample: summary of case\n"
                           "# time run_out heap_height centre_height repose_angle kinetic_energy\n"
                           "0 0.1 0.2 0.1 60 0\n"
                           "0.5 0.2 0.15 0.08 40 0.01\n"
                           "1 0.25 0.14 0.07 30 0.002\n"
                           "1.5 0.26 0.14 0.07 29 0.00001\n";

const QByteArray Matrix = "Job ID#,A Restitution,A Static Friction,Flag,Simulator Options\r\n"
                          "0,0.5,0.1,true, -c  -r 1.000000\r\n"
                          "1,0.5,0.2,true, -c  -r 1.000000\r\n"
                          "2,0.5,0.3,true,0,0,false, -c  -r 1.000000\r\n";

const QByteArray ExportResults = "0,Name,deck0,\r\n0,Settling time (s),0.7,\r\n0,TIME:,0,\r\n"
                                 "0,TIME,0,1,\r\n0,Run-out (m),0.1,0.4,\r\n\r\n"
                                 "1,TIME:,0,\r\n1,TIME,0,1,\r\n1,Run-out (m),0.1,0.3,\r\n\r\n"
                                 "\r\n";

const QByteArray ScriptResults = "-1,ID#,\n\n"
                                 "0,run_out,heap_height,\n0,0.4,0.1,\n\n"
                                 "1,run_out,heap_height,\n1,0.3,0.2,\n\n"
                                 "2,run_out,heap_height,\n2,0.2,0.3,\n\n";

} // namespace

class SampleScriptsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void analysisTakesTheLastStateAndTheSettlingTime();
    void analysisTakesTheOnlyDeckWithoutOneBeingNamed();
    void analysisTakesTheShareThatCountsAsRest();
    void analysisOfADeckNamedByItsWholePathWritesBesideIt();
    void analysisFollowsARunOfTheStandIn();
    void analysisWithoutResultsFails();
    void joiningTheSimulatorsLayoutTakesTheLastValue();
    void joiningTheScriptsLayoutTakesItsColumns();
    void joiningNamesTheCaseNearestToTheMeasuredValue();
    void joiningRefusesAnUnknownResponse();
    void joiningWithoutResultsFails();
    void aPlotShowsTheMeasuredValue();
    void aPlotNeedsAParameterThatVaries();

private:
    SProgramEnd runScript(const char* name, const QStringList& arguments) const;
    SProgramEnd joinWith(const QByteArray& results, const QStringList& further) const;
    QString file(const QString& name) const { return m_folder->filePath(name); }

    QScopedPointer<QTemporaryDir> m_folder;
};

void SampleScriptsTest::initTestCase()
{
    QVERIFY2(!python().isEmpty(), "the scripts of the sample need python3");
}

void SampleScriptsTest::init()
{
    m_folder.reset(new QTemporaryDir);
}

SProgramEnd SampleScriptsTest::runScript(const char* name, const QStringList& arguments) const
{
    const QString script = QStringLiteral(SAMPLE_FOLDER "/") + QLatin1String(name);
    return SampleCase::run(python(), QStringList{script} + arguments, m_folder->path());
}

SProgramEnd SampleScriptsTest::joinWith(const QByteArray& results, const QStringList& further) const
{
    writeText(file(QStringLiteral("matrix.csv")), Matrix);
    writeText(file(QStringLiteral("results.csv")), results);
    return runScript("join_results.py", QStringList{"matrix.csv", "results.csv"} + further);
}

void SampleScriptsTest::analysisTakesTheLastStateAndTheSettlingTime()
{
    writeText(file(QStringLiteral("case.zek")), "deck");
    writeText(file(QStringLiteral("case_summary.txt")), Summary);
    const SProgramEnd end = runScript("analyse.py", {"-d", "case.zek"});
    QVERIFY2(end.exitCode == 0, end.errors.constData());
    QCOMPARE(SampleCase::contentOf(file(QStringLiteral("case_analysis.csv"))),
             QByteArray("run_out,heap_height,repose_angle,settling_time\n0.26,0.14,29,1\n"));
}

void SampleScriptsTest::analysisTakesTheOnlyDeckWithoutOneBeingNamed()
{
    writeText(file(QStringLiteral("case.zek")), "deck");
    writeText(file(QStringLiteral("case_summary.txt")), Summary);
    QCOMPARE(runScript("analyse.py", {}).exitCode, 0);
    QVERIFY(QFile::exists(file(QStringLiteral("case_analysis.csv"))));
    writeText(file(QStringLiteral("second.zek")), "deck");
    QCOMPARE(runScript("analyse.py", {}).exitCode, 1);
}

void SampleScriptsTest::analysisTakesTheShareThatCountsAsRest()
{
    writeText(file(QStringLiteral("case_summary.txt")), Summary);
    QCOMPARE(runScript("analyse.py", {"-d", "case.zek", "--rest", "0.5"}).exitCode, 0);
    const QStringList lines = SampleCase::linesOf(file(QStringLiteral("case_analysis.csv")));
    QVERIFY2(lines.last().endsWith(QLatin1String(",0.5")), qPrintable(lines.last()));
}

void SampleScriptsTest::analysisOfADeckNamedByItsWholePathWritesBesideIt()
{
    QVERIFY(QDir(m_folder->path()).mkdir(QStringLiteral("Job 0")));
    writeText(file(QStringLiteral("Job 0/case.zek")), "deck");
    writeText(file(QStringLiteral("Job 0/case_summary.txt")), Summary);
    QCOMPARE(runScript("analyse.py", {"-d", file(QStringLiteral("Job 0/case.zek"))}).exitCode, 0);
    QVERIFY(QFile::exists(file(QStringLiteral("Job 0/case_analysis.csv"))));
}

void SampleScriptsTest::analysisFollowsARunOfTheStandIn()
{
    SampleCase::write(SampleCase::deckOf(0.5, 0.5, 0.1), m_folder->path());
    QCOMPARE(SampleCase::run(QStringLiteral(ORVA_SAMPLE), {"-i", "case.zek", "-r", "0.2"},
                             m_folder->path())
                 .exitCode,
             0);
    const SProgramEnd end = runScript("analyse.py", {"-d", "case.zek"});
    QVERIFY2(end.exitCode == 0, end.errors.constData());
    const QStringList values = SampleCase::linesOf(file(QStringLiteral("case_analysis.csv")))
                                   .last()
                                   .split(QLatin1Char(','));
    QCOMPARE(values.size(), 4);
    QVERIFY(values.at(0).toDouble() > 0.1);
    QVERIFY(values.at(1).toDouble() > 0.05);
}

void SampleScriptsTest::analysisWithoutResultsFails()
{
    const SProgramEnd end = runScript("analyse.py", {"-d", "case.zek"});
    QCOMPARE(end.exitCode, 1);
    QCOMPARE(end.errors.count('\n'), 1);
    QVERIFY(!QFile::exists(file(QStringLiteral("case_analysis.csv"))));
}

void SampleScriptsTest::joiningTheSimulatorsLayoutTakesTheLastValue()
{
    const SProgramEnd end = joinWith(ExportResults, {"--response", "Run-out (m)"});
    QVERIFY2(end.exitCode == 0, end.errors.constData());
    QCOMPARE(QByteArray(end.output).replace("\r", ""),
             QByteArray("case\tA Static Friction\tRun-out (m)\n"
                        "0\t0.1\t0.4\n1\t0.2\t0.3\n"));
    QVERIFY(end.errors.contains("case 2 has no results"));
}

void SampleScriptsTest::joiningTheScriptsLayoutTakesItsColumns()
{
    const SProgramEnd end = joinWith(ScriptResults, {"--response", "heap_height"});
    QVERIFY2(end.exitCode == 0, end.errors.constData());
    QCOMPARE(QByteArray(end.output).replace("\r", ""),
             QByteArray("case\tA Static Friction\theap_height\n"
                        "0\t0.1\t0.1\n1\t0.2\t0.2\n2\t0.3\t0.3\n"));
}

void SampleScriptsTest::joiningNamesTheCaseNearestToTheMeasuredValue()
{
    const SProgramEnd end = joinWith(ScriptResults, {"--measured", "0.29"});
    QVERIFY2(end.exitCode == 0, end.errors.constData());
    QVERIFY(end.output.contains("nearest to 0.29: case 1"));
    QVERIFY(end.output.contains("1\t0.2\t0.3\t0.01"));
}

void SampleScriptsTest::joiningRefusesAnUnknownResponse()
{
    const SProgramEnd end = joinWith(ScriptResults, {"--response", "colour"});
    QCOMPARE(end.exitCode, 1);
    QCOMPARE(end.errors.count('\n'), 1);
    QVERIFY(end.errors.contains("run_out, heap_height"));
}

void SampleScriptsTest::joiningWithoutResultsFails()
{
    const SProgramEnd end = joinWith("", {});
    QCOMPARE(end.exitCode, 1);
    QVERIFY(end.errors.contains("no case has results"));
}

void SampleScriptsTest::aPlotShowsTheMeasuredValue()
{
    const SProgramEnd plain = joinWith(ScriptResults, {"--plot", "plain.png"});
    if (plain.errors.contains("matplotlib, which is not installed")) {
        QCOMPARE(plain.exitCode, 1);
        QSKIP("matplotlib is not installed: no plot, and the script has said so");
    }
    QVERIFY2(plain.exitCode == 0, plain.errors.constData());
    QCOMPARE(joinWith(ScriptResults, {"--plot", "line.png", "--measured", "0.29"}).exitCode, 0);
    const QImage without(file(QStringLiteral("plain.png")));
    const QImage with(file(QStringLiteral("line.png")));
    QCOMPARE(without.size(), QSize(450, 400));
    QCOMPARE(with.size(), without.size());
    QVERIFY(with != without);
}

void SampleScriptsTest::aPlotNeedsAParameterThatVaries()
{
    writeText(file(QStringLiteral("matrix.csv")), "Job ID#,A Restitution,Options\n0,0.5, -c \n");
    writeText(file(QStringLiteral("results.csv")), ScriptResults);
    const SProgramEnd end =
        runScript("join_results.py", {"matrix.csv", "results.csv", "--plot", "plot.png"});
    QCOMPARE(end.exitCode, 1);
    QVERIFY(end.errors.contains("nothing to plot against") || end.errors.contains("matplotlib"));
    QVERIFY(!QFile::exists(file(QStringLiteral("plot.png"))));
}

TARNEL_TEST_MAIN(SampleScriptsTest)
#include "sample_scripts_test.moc"
