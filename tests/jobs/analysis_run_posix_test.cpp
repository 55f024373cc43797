#include "tests/jobs/analysis_run_rules.h"
#include "tests/support/processes.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTest>

/// Local runs with a Python analysis or a coupling server.
class AnalysisRunPosixTest : public CAnalysisRunRules
{
    Q_OBJECT

private slots:
    void startsTheAnalysisOfEachCaseInItsFolder();
    void startsEachInterpreterAtTheRoot();
    void takesPython3WhereThereIsNoPython();
    void keepsCondaOffTheCommandsOfTheInterpreter();
    void doesNotWaitForTheAnalysis();
    void endsTheInterpretersWithThePage();

    void namesAFolderThatCannotBeAskedAndLooksOn();

    void startsTheCouplingServerWithTheCase();
    void endsTheCouplingServerWithTheCase();
    void endsTheCouplingServerOfACancelledCase();
    void startsTheCouplingServerAgainWhileAClientIsAwaited();

private:
    QString toolFolder(CPageFixture& fixture, bool python, bool conda) const override;
    void setPath(const QString& front) const override;
};

namespace {

const char* const python = "#!/bin/sh\n"
                           "(echo \"$0\" \"$@\"; pwd) > analysis.txt\n"
                           "echo $PPID > interpreter.pid\n";

/// Tells in its own folder what it was asked and what it could read.
const char* const conda = "#!/bin/sh\n"
                          "here=$(dirname \"$0\")\n"
                          "echo \"$@\" >> \"$here/calls\"\n"
                          "cat >> \"$here/eaten\"\n";

const char* const server = "#!/bin/sh\n"
                           "folder=$(dirname \"$0\")\n"
                           "pwd > \"$folder/server.cwd\"\n"
                           "echo \"$@\" > \"$folder/server.arguments\"\n"
                           "echo $$ > \"$folder/server.pid.part\"\n"
                           "mv \"$folder/server.pid.part\" \"$folder/server.pid\"\n"
                           "sleep 30\n";

JobDescription coupledJob()
{
    JobDescription description;
    description.cases = 1;
    description.couplingFile = QStringLiteral("server.sh");
    description.couplingText = QString::fromLatin1(server);
    description.couplingCommand = QStringLiteral("--port 3");
    return description;
}

} // namespace

QString AnalysisRunPosixTest::toolFolder(CPageFixture& fixture, bool withPython,
                                         bool withConda) const
{
    const QString folder = fixture.newFolder();
    if (withPython) {
        writeFile(folder + QStringLiteral("/python"), python, true);
    }
    if (withConda) {
        writeFile(folder + QStringLiteral("/conda"), conda, true);
    }
    return folder;
}

void AnalysisRunPosixTest::setPath(const QString& front) const
{
    qputenv("PATH", front.toLocal8Bit() + ":/usr/bin:/bin");
}

void AnalysisRunPosixTest::startsTheAnalysisOfEachCaseInItsFolder()
{
    CPageFixture fixture;
    fixture.behave("print:simulated");
    const QString tools = toolFolder(fixture, true, true);
    setPath(tools);
    const QString job = fixture.loadJob(pythonJob(fixture, 2));
    QVERIFY(fixture.run(2));
    for (int number = 0; number < 2; ++number) {
        QCOMPARE(fixture.output(number), QByteArray("simulated\nRunning Python analysis\n"));
        const QString folder = QStringLiteral("%1/JobFileLocation/Job%2").arg(job).arg(number);
        const QString expected =
            QStringLiteral("%1/python the script.py --deck %2/deck%3.zek x y\n%2\n")
                .arg(tools, folder)
                .arg(number);
        QTRY_COMPARE(QString::fromUtf8(ofCase(job, number, "analysis.txt")), expected);
        QVERIFY(!ofCase(job, number, "the script.py").isEmpty());
    }
    QTRY_COMPARE(readFile(tools + QStringLiteral("/calls")).count("deactivate\n"), 2);
    QCOMPARE(readFile(tools + QStringLiteral("/calls")).count("shell.posix hook\n"), 2);
}

void AnalysisRunPosixTest::startsEachInterpreterAtTheRoot()
{
    CPageFixture fixture;
    const QString tools = toolFolder(fixture, true, true);
    writeFile(tools + QStringLiteral("/conda"), "#!/bin/sh\npwd >> \"$(dirname \"$0\")/folders\"\n",
              true);
    setPath(tools);
    const QString job = fixture.loadJob(pythonJob(fixture, 2));
    QVERIFY(fixture.run());
    QTRY_COMPARE(readFile(tools + QStringLiteral("/folders")).count('\n'), 6);
    QCOMPARE(readFile(tools + QStringLiteral("/folders")).split('\n').count("/"), 2);
    const QByteArray first = ofCase(job, 0, "interpreter.pid");
    QVERIFY(first.toInt() > 0);
    QVERIFY(first != ofCase(job, 1, "interpreter.pid"));
}

void AnalysisRunPosixTest::takesPython3WhereThereIsNoPython()
{
    CPageFixture fixture;
    const QString tools = toolFolder(fixture, false, true);
    writeFile(tools + QStringLiteral("/python3"), python, true);
    setPath(tools);
    const QString job = fixture.loadJob(pythonJob(fixture, 1));
    QVERIFY(fixture.run());
    QTRY_VERIFY(ofCase(job, 0, "analysis.txt").startsWith(tools.toUtf8() + "/python3 "));
}

void AnalysisRunPosixTest::keepsCondaOffTheCommandsOfTheInterpreter()
{
    CPageFixture fixture;
    const QString tools = toolFolder(fixture, true, true);
    setPath(tools);
    const QString job = fixture.loadJob(pythonJob(fixture, 1));
    QVERIFY(fixture.run());
    // With a standard input of the interpreter's, the first conda would wait for its end.
    QTRY_VERIFY(readFile(tools + QStringLiteral("/calls")).contains("deactivate"));
    QCOMPARE(readFile(tools + QStringLiteral("/eaten")), QByteArray());
}

void AnalysisRunPosixTest::doesNotWaitForTheAnalysis()
{
    CPageFixture fixture;
    const QString tools = toolFolder(fixture, true, true);
    writeFile(tools + QStringLiteral("/python"), "#!/bin/sh\necho $$ > script.pid\nsleep 30\n",
              true);
    setPath(tools);
    const QString job = fixture.loadJob(pythonJob(fixture, 1));
    QVERIFY(fixture.run());
    QVERIFY(fixture.hasSucceeded(0));
    QTRY_VERIFY(isAlive(ofCase(job, 0, "script.pid").trimmed()));
    fixture.destroyPage();
    QTRY_VERIFY(!isAlive(ofCase(job, 0, "script.pid").trimmed()));
}

void AnalysisRunPosixTest::endsTheInterpretersWithThePage()
{
    CPageFixture fixture;
    setPath(toolFolder(fixture, true, true));
    const QString job = fixture.loadJob(pythonJob(fixture, 1));
    QVERIFY(fixture.run());
    QTRY_VERIFY(!ofCase(job, 0, "interpreter.pid").isEmpty());
    const QByteArray interpreter = ofCase(job, 0, "interpreter.pid").trimmed();
    // The script is long over; the interpreter waits for more.
    QTest::qWait(50);
    QVERIFY(isAlive(interpreter));
    fixture.destroyPage();
    QVERIFY(!processExists(interpreter));
}

void AnalysisRunPosixTest::namesAFolderThatCannotBeAskedAndLooksOn()
{
    CPageFixture fixture;
    const QString loop = fixture.newFolder() + QStringLiteral("/loop");
    QVERIFY(QFile::link(loop, loop));
    const QString tools = toolFolder(fixture, true, true);
    setPath(loop + QLatin1Char(':') + tools);
    const QString job = fixture.loadJob(pythonJob(fixture, 1));
    QVERIFY(fixture.run());
    QCOMPARE(fixture.modals().texts().size(), 1);
    QVERIFY(fixture.modals().texts().front().contains(QStringLiteral("exists")));
    QVERIFY(fixture.modals().texts().front().contains(loop));
    QTRY_VERIFY(!ofCase(job, 0, "analysis.txt").isEmpty());
}

void AnalysisRunPosixTest::startsTheCouplingServerWithTheCase()
{
    CPageFixture fixture;
    const QString gate = fixture.newFolder() + QStringLiteral("/gate");
    fixture.behave("await;wait for:" + gate.toUtf8());
    const QString job = fixture.loadJob(coupledJob());
    fixture.when([&] { return !ofCase(job, 0, "server.pid").isEmpty(); },
                 [&] {
                     QCOMPARE(ofCase(job, 0, "server.arguments"), QByteArray("--port 3\n"));
                     QDir above = QDir::current();
                     QVERIFY(above.cdUp());
                     QCOMPARE(QString::fromUtf8(ofCase(job, 0, "server.cwd")).trimmed(),
                              above.canonicalPath());
                     writeFile(gate, "");
                 });
    QVERIFY(fixture.run());
    QVERIFY(fixture.hasSucceeded(0));
    QCOMPARE(fixture.output(0), QByteArray("Awaiting Client connection...\r\n"));
}

void AnalysisRunPosixTest::endsTheCouplingServerWithTheCase()
{
    CPageFixture fixture;
    const QString gate = fixture.newFolder() + QStringLiteral("/gate");
    fixture.behave("await;wait for:" + gate.toUtf8());
    const QString job = fixture.loadJob(coupledJob());
    QByteArray serverId;
    fixture.when([&] { return !ofCase(job, 0, "server.pid").isEmpty(); },
                 [&] {
                     serverId = ofCase(job, 0, "server.pid").trimmed();
                     QVERIFY(isAlive(serverId));
                     writeFile(gate, "");
                 });
    QVERIFY(fixture.run());
    QTRY_VERIFY(!isAlive(serverId));
}

void AnalysisRunPosixTest::endsTheCouplingServerOfACancelledCase()
{
    CPageFixture fixture;
    fixture.behave("await;hang");
    const QString job = fixture.loadJob(coupledJob());
    fixture.when([&] { return !ofCase(job, 0, "server.pid").isEmpty(); },
                 [&] { fixture.click("m_pbCancelSimulating"); });
    QVERIFY(fixture.run());
    QTRY_VERIFY(!isAlive(ofCase(job, 0, "server.pid").trimmed()));
}

void AnalysisRunPosixTest::startsTheCouplingServerAgainWhileAClientIsAwaited()
{
    CPageFixture fixture;
    // The next look comes five seconds behind the end of the server.
    fixture.behave(0, "await;sleep:6500");
    fixture.behave(1, "sleep:6500");
    fixture.behave(2, "print:Simulating;sleep:6500");
    fixture.behave(3, "await;print:Simulating;sleep:6500");
    JobDescription description = coupledJob();
    description.cases = 4;
    description.couplingText =
        QStringLiteral("#!/bin/sh\necho started >> \"$(dirname \"$0\")/starts\"\n");
    const QString job = fixture.loadJob(description);
    QVERIFY(fixture.run(4));
    const int expected[] = {2, 2, 1, 1};
    for (int number = 0; number < 4; ++number) {
        QCOMPARE(ofCase(job, number, "starts").count('\n'), expected[number]);
    }
}

TARNEL_TEST_MAIN(AnalysisRunPosixTest)

#include "analysis_run_posix_test.moc"
