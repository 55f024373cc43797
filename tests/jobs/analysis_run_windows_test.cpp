#include "tests/jobs/analysis_run_rules.h"
#include "tests/support/processes.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QTest>

/// Local runs with a Python analysis or a coupling server, as cmd.exe takes their commands.
class AnalysisRunWindowsTest : public CAnalysisRunRules
{
    Q_OBJECT

private slots:
    void startsTheAnalysisOfEachCaseInItsFolder();
    void startsEachInterpreterAtTheRootAndEndsItWithThePage();

    void namesAFolderThatCannotBeAskedAndLooksOn();

    void startsTheCouplingServerWithTheCase();

private:
    QString toolFolder(CPageFixture& fixture, bool python, bool conda) const override;
    void setPath(const QString& front) const override;
};

namespace {

/// Tells in the folder of the case what it was asked.
const char* const conda = "@echo %*>>calls\r\n";

} // namespace

QString AnalysisRunWindowsTest::toolFolder(CPageFixture& fixture, bool withPython,
                                           bool withConda) const
{
    const QString folder = fixture.newFolder();
    if (withPython) {
        QFile::copy(QStringLiteral(TARNEL_FAKE_PYTHON), folder + QStringLiteral("/python.exe"));
    }
    if (withConda) {
        writeFile(folder + QStringLiteral("/conda.bat"), conda);
    }
    return folder;
}

void AnalysisRunWindowsTest::setPath(const QString& front) const
{
    qputenv("PATH", QDir::toNativeSeparators(front).toLocal8Bit() + ";" + formerPath());
}

void AnalysisRunWindowsTest::startsTheAnalysisOfEachCaseInItsFolder()
{
    CPageFixture fixture;
    fixture.behave("print:simulated");
    const QString tools = toolFolder(fixture, true, true);
    setPath(tools);
    const QString job = fixture.loadJob(pythonJob(fixture, 2));
    QVERIFY(fixture.run(2));
    for (int number = 0; number < 2; ++number) {
        QVERIFY(fixture.output(number).endsWith("Running Python analysis\n"));
        const QString folder = QStringLiteral("%1/JobFileLocation/Job%2").arg(job).arg(number);
        const QString expected =
            QStringLiteral("the script.py --deck %1/deck%2.zek x y\n%3\n")
                .arg(folder, QString::number(number), QDir::toNativeSeparators(folder));
        QTRY_COMPARE(QString::fromLocal8Bit(ofCase(job, number, "analysis.txt")), expected);
        QVERIFY(!ofCase(job, number, "the script.py").isEmpty());
        // With the blank before the "&" that follows.
        QTRY_COMPARE(ofCase(job, number, "calls"), QByteArray("activate \ndeactivate \n"));
    }
}

void AnalysisRunWindowsTest::startsEachInterpreterAtTheRootAndEndsItWithThePage()
{
    CPageFixture fixture;
    setPath(toolFolder(fixture, true, true));
    const QString job = fixture.loadJob(pythonJob(fixture, 2));
    QVERIFY(fixture.run());
    QTRY_VERIFY(!ofCase(job, 0, "analysis.txt").isEmpty());
    QTRY_VERIFY(!ofCase(job, 1, "analysis.txt").isEmpty());
    const QByteArray first = ofCase(job, 0, "interpreter.pid");
    QVERIFY(first.toInt() > 0);
    QVERIFY(first != ofCase(job, 1, "interpreter.pid"));
    // The script is over; the interpreter waits for more.
    QTest::qWait(50);
    QVERIFY(isAlive(first));
    fixture.destroyPage();
    QTRY_VERIFY(!isAlive(first));
}

void AnalysisRunWindowsTest::namesAFolderThatCannotBeAskedAndLooksOn()
{
    CPageFixture fixture;
    const QString tools = toolFolder(fixture, true, true);
    // The end of this part makes a device of the name behind it.
    setPath(QStringLiteral("\\\\.\\NUL;") + tools);
    const QString job = fixture.loadJob(pythonJob(fixture, 1));
    QVERIFY(fixture.run());
    QCOMPARE(fixture.modals().texts().size(), 1);
    QVERIFY(fixture.modals().texts().front().contains(QStringLiteral("exists")));
    QVERIFY(fixture.modals().texts().front().contains(QStringLiteral("NUL")));
    QTRY_VERIFY(!ofCase(job, 0, "analysis.txt").isEmpty());
}

void AnalysisRunWindowsTest::startsTheCouplingServerWithTheCase()
{
    CPageFixture fixture;
    const QString gate = fixture.newFolder() + QStringLiteral("/gate");
    fixture.behave("await;wait for:" + gate.toUtf8());
    JobDescription description;
    description.cases = 1;
    description.couplingFile = QStringLiteral("server.bat");
    // A number in front of a ">" would say which stream goes into the file.
    description.couplingText =
        QStringLiteral("@cd>\"%~dp0server.cwd\"\r\n@>\"%~dp0server.arguments\" echo %*\r\n");
    description.couplingCommand = QStringLiteral("--port 3");
    const QString job = fixture.loadJob(description);
    fixture.when([&] { return !ofCase(job, 0, "server.arguments").trimmed().isEmpty(); },
                 [&] {
                     QCOMPARE(ofCase(job, 0, "server.arguments"), QByteArray("--port 3\n"));
                     QDir above = QDir::current();
                     QVERIFY(above.cdUp());
                     QCOMPARE(QDir(QString::fromLocal8Bit(ofCase(job, 0, "server.cwd")).trimmed()),
                              above);
                     writeFile(gate, "");
                 });
    QVERIFY(fixture.run());
    QVERIFY(fixture.hasSucceeded(0));
    QCOMPARE(fixture.output(0), QByteArray("Awaiting Client connection...\r\n"));
}

TARNEL_TEST_MAIN(AnalysisRunWindowsTest)

#include "analysis_run_windows_test.moc"
