#include "deck/app_settings.h"
#include "deck/deck_store.h"
#include "jobs/simulation_list_item.h"
#include "platform/interpreter.h"
#include "tests/deck/stream_capture.h"
#include "tests/jobs/page_fixture.h"
#include "tests/support/native.h"
#include "tests/support/processes.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <filesystem>

/// What a simulator can do wrong while cases run, and what others can do to it and its folders.
class SimulatorFaultsTest : public QObject
{
    Q_OBJECT

private slots:
    void simulatorThatSomebodyKillsIsAFailureAndTheNextCaseRuns();
    void fileThatIsNoProgramIsAFailure_data();
    void fileThatIsNoProgramIsAFailure();
    void simulatorThatVanishesBetweenTwoCasesFailsTheSecond();
    void simulatorThatClosesItsOutputRunsOn();
    void simulatorThatClosedItsOutputAndHangsIsCancelled();
    void hundredMegabytesWithoutALineEndAreKeptWhileTheWindowLives();
    void severalChildrenThatOutliveTheirCasesHoldNothingUp();
    void cancelEndsAllProcessesWithinASecondAndLeavesNoZombie();
    void caseRootThatIsRemovedFailsTheCasesBehind();
    void foldersOfWaitingCasesThatAreRemovedFailThoseCases();
    void jobThatIsRemovedRefusesTheNextRun();
    void dataFolderThatIsRemovedNamesTheRename();

private:
    QString newProgram(CPageFixture& fixture, const QByteArray& text, bool executable) const;
};

namespace {

QString caseRoot(const QString& job)
{
    return job + QStringLiteral("/JobFileLocation");
}

bool hasStarted(const QString& job, int caseNumber)
{
    return !caseFile(job, "JobFileLocation", caseNumber, "started").isEmpty();
}

QByteArray pidOf(const QString& job, int caseNumber, const char* name = "simulator.pid")
{
    return caseFile(job, "JobFileLocation", caseNumber, name);
}

void useSimulator(const QString& path)
{
    CAppSettings::instance()->setValue(CAppSettings::OrvaExeLocation, path);
}

} // namespace

QString SimulatorFaultsTest::newProgram(CPageFixture& fixture, const QByteArray& text,
                                        bool executable) const
{
    const QString path = fixture.newFolder() + QStringLiteral("/simulator");
    writeFile(path, text, executable);
    useSimulator(path);
    return path;
}

void SimulatorFaultsTest::simulatorThatSomebodyKillsIsAFailureAndTheNextCaseRuns()
{
    CPageFixture fixture;
    fixture.behave("print:fine");
    fixture.behave(0, "print:half;pid;hang");
    const QString job = fixture.loadJob(2);
    fixture.when([&] { return !pidOf(job, 0).isEmpty() && fixture.output(0) == "half\n"; },
                 [&] { endProcess(pidOf(job, 0)); });
    QVERIFY(fixture.run());
    QVERIFY(fixture.hasFailed(0));
    QCOMPARE(fixture.output(0), QByteArray("half\n"));
    QVERIFY(fixture.hasSucceeded(1));
    QCOMPARE(fixture.progress(), 2);
    QVERIFY(zombies().isEmpty());
}

void SimulatorFaultsTest::fileThatIsNoProgramIsAFailure_data()
{
    QTest::addColumn<QString>("kind");
    QTest::newRow("not executable") << "file";
    QTest::newRow("a folder") << "folder";
    QTest::newRow("nothing") << "nothing";
    if (!platform::speaksBatch()) {
        QTest::newRow("a link to nothing") << "link";
        QTest::newRow("an interpreter that is missing") << "script";
    }
}

void SimulatorFaultsTest::fileThatIsNoProgramIsAFailure()
{
    QFETCH(QString, kind);
    CPageFixture fixture;
    if (kind == QLatin1String("folder")) {
        useSimulator(fixture.newFolder());
    } else if (kind == QLatin1String("link")) {
        const QString link = fixture.newFolder() + QStringLiteral("/simulator");
        std::filesystem::create_symlink("/no/such/simulator", link.toStdString());
        useSimulator(link);
    } else if (kind == QLatin1String("nothing")) {
        useSimulator(fixture.newFolder() + QStringLiteral("/simulator"));
    } else {
        newProgram(fixture, "#!/no/such/interpreter\n", kind == QLatin1String("script"));
    }
    fixture.loadJob(2);
    CStreamCapture errors(CStreamCapture::Error);
    const bool ended = fixture.run();
    const QByteArray printed = errors.text();
    QVERIFY(ended);
    const QByteArray program =
        CAppSettings::instance()->text(CAppSettings::OrvaExeLocation).toUtf8() + ": ";
    QVERIFY2(printed.contains("Case 0: " + program) && printed.contains("Case 1: " + program),
             printed.constData());
    QVERIFY(fixture.hasFailed(0) && fixture.hasFailed(1));
    QCOMPARE(fixture.progress(), 2);
    QVERIFY(fixture.output(0).isEmpty());
    QVERIFY(zombies().isEmpty());
}

void SimulatorFaultsTest::simulatorThatVanishesBetweenTwoCasesFailsTheSecond()
{
    CPageFixture fixture;
    const QString gate = fixture.newFolder() + QStringLiteral("/gate");
    const QString program =
        fixture.newFolder() + QStringLiteral("/simulator") + Native::programSuffix();
    QVERIFY(QFile::copy(CPageFixture::simulator(), program));
    useSimulator(program);
    fixture.behave("started;wait for:" + gate.toUtf8());
    const QString job = fixture.loadJob(2);
    fixture.when([&] { return hasStarted(job, 0); },
                 [&] {
                     // A program that runs can be renamed everywhere, but not removed.
                     QVERIFY(QFile::rename(program, program + QStringLiteral(".old")));
                     writeFile(gate, "");
                 });
    QVERIFY(fixture.run());
    QVERIFY(fixture.hasSucceeded(0) && fixture.hasFailed(1));
    QCOMPARE(fixture.progress(), 2);
}

void SimulatorFaultsTest::simulatorThatClosesItsOutputRunsOn()
{
    CPageFixture fixture;
    const QString gate = fixture.newFolder() + QStringLiteral("/gate");
    fixture.behave("print:last words;close output;started;wait for:" + gate.toUtf8() + ";exit:0");
    fixture.behave(1, "close output;exit:5");
    const QString job = fixture.loadJob(2);
    fixture.when([&] { return hasStarted(job, 0) && !fixture.output(0).isEmpty(); },
                 [&] {
                     QTest::qWait(50);
                     QVERIFY(fixture.isRunning(0));
                     writeFile(gate, "");
                 });
    QVERIFY(fixture.run());
    QVERIFY(fixture.hasSucceeded(0) && fixture.hasFailed(1));
    QCOMPARE(fixture.output(0), QByteArray("last words\n"));
}

void SimulatorFaultsTest::simulatorThatClosedItsOutputAndHangsIsCancelled()
{
    CPageFixture fixture;
    fixture.behave("close output;pid;hang");
    const QString job = fixture.loadJob(1);
    fixture.when([&] { return !pidOf(job, 0).isEmpty(); },
                 [&] { fixture.click("m_pbCancelSimulating"); });
    QVERIFY(fixture.run());
    QTRY_VERIFY_WITH_TIMEOUT(!processExists(pidOf(job, 0)), 1000);
    QVERIFY(fixture.hasFailed(0));
}

void SimulatorFaultsTest::hundredMegabytesWithoutALineEndAreKeptWhileTheWindowLives()
{
    CPageFixture fixture;
    constexpr int size = 100000000;
    fixture.behave("long output:" + QByteArray::number(size));
    fixture.loadJob(1);
    int rounds = 0;
    QTimer heart;
    connect(&heart, &QTimer::timeout, this, [&rounds] { ++rounds; });
    heart.start(5);
    QVERIFY(fixture.run());
    QVERIFY(fixture.hasSucceeded(0));
    QCOMPARE(fixture.output(0).size(), size);
    QVERIFY2(rounds > 3, qPrintable(QString::number(rounds)));
}

void SimulatorFaultsTest::severalChildrenThatOutliveTheirCasesHoldNothingUp()
{
    CPageFixture fixture;
    fixture.behave("leave a child;print:done");
    const QString job = fixture.loadJob(3);
    QElapsedTimer sinceTheStart;
    sinceTheStart.start();
    QVERIFY(fixture.run(3));
    QVERIFY(sinceTheStart.elapsed() < 5000);
    for (int number = 0; number < 3; ++number) {
        QVERIFY(fixture.hasSucceeded(number));
        QVERIFY(isAlive(pidOf(job, number, "child.pid")));
        endProcess(pidOf(job, number, "child.pid"));
    }
}

void SimulatorFaultsTest::cancelEndsAllProcessesWithinASecondAndLeavesNoZombie()
{
    CPageFixture fixture;
    fixture.behave("leave a child;pid;hang");
    const QString job = fixture.loadJob(3);
    const auto anyLeft = [&] {
        for (int number = 0; number < 3; ++number) {
            const bool childLeft =
                Native::endsDescendants() && isAlive(pidOf(job, number, "child.pid"));
            if (processExists(pidOf(job, number)) || childLeft) {
                return true;
            }
        }
        return false;
    };
    QElapsedTimer sinceTheClick;
    fixture.when(
        [&] {
            return !pidOf(job, 0).isEmpty() && !pidOf(job, 1).isEmpty() && !pidOf(job, 2).isEmpty();
        },
        [&] {
            QVERIFY(isAlive(pidOf(job, 2, "child.pid")));
            sinceTheClick.start();
            fixture.click("m_pbCancelSimulating");
        });
    QVERIFY(fixture.run(3));
    while (anyLeft() && sinceTheClick.elapsed() < 1000) {
        QTest::qWait(5);
    }
    QVERIFY2(!anyLeft(), "a process outlived the click by a second");
    QVERIFY(zombies().isEmpty());
    for (int number = 0; number < 3; ++number) {
        endProcess(pidOf(job, number, "child.pid"));
    }
}

void SimulatorFaultsTest::caseRootThatIsRemovedFailsTheCasesBehind()
{
    if (platform::speaksBatch()) {
        QSKIP("a folder in which a program runs can't be removed there");
    }
    CPageFixture fixture;
    const QString gate = fixture.newFolder() + QStringLiteral("/gate");
    fixture.behave("started;wait for:" + gate.toUtf8());
    const QString job = fixture.loadJob(3);
    fixture.when([&] { return hasStarted(job, 0); },
                 [&] {
                     QVERIFY(QDir(caseRoot(job)).removeRecursively());
                     writeFile(gate, "");
                 });
    QVERIFY(fixture.run());
    QVERIFY(fixture.hasSucceeded(0));
    QVERIFY(fixture.hasFailed(1) && fixture.hasFailed(2));
    QCOMPARE(fixture.progress(), 3);
    QVERIFY(!QFileInfo::exists(caseRoot(job)));

    QVERIFY(fixture.run());
    QVERIFY(fixture.hasSucceeded(0) && fixture.hasSucceeded(1) && fixture.hasSucceeded(2));
}

void SimulatorFaultsTest::foldersOfWaitingCasesThatAreRemovedFailThoseCases()
{
    CPageFixture fixture;
    const QString gate = fixture.newFolder() + QStringLiteral("/gate");
    fixture.behave("print:here;started;wait for:" + gate.toUtf8());
    const QString job = fixture.loadJob(3);
    fixture.when([&] { return hasStarted(job, 0); },
                 [&] {
                     for (const char* folder : {"/Job1", "/Job2"}) {
                         QVERIFY(QDir(caseRoot(job) + QLatin1String(folder)).removeRecursively());
                     }
                     writeFile(gate, "");
                 });
    QVERIFY(fixture.run());
    QVERIFY(fixture.hasSucceeded(0));
    QVERIFY(fixture.hasFailed(1) && fixture.hasFailed(2));
    QCOMPARE(fixture.output(1), QByteArray("here\n"));
    QCOMPARE(fixture.progress(), 3);
    QCOMPARE(QDir(caseRoot(job)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList("Job0"));

    QVERIFY(fixture.run());
    QVERIFY(fixture.hasSucceeded(0) && fixture.hasSucceeded(1) && fixture.hasSucceeded(2));
    // What is left of the first run stays as it is.
    QCOMPARE(QDir(caseRoot(job)).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList("Job0"));
    for (int number = 0; number < 3; ++number) {
        QCOMPARE(caseFile(job, "JobFileLocation0", number, "started"), QByteArray("yes"));
    }
}

void SimulatorFaultsTest::jobThatIsRemovedRefusesTheNextRun()
{
    CPageFixture fixture;
    const QString job = fixture.loadJob(1);
    QVERIFY(QDir(job).removeRecursively());
    try {
        QMetaObject::invokeMethod(&fixture.page(), "runCasesLocally");
        QFAIL("nothing was raised");
    } catch (const std::filesystem::filesystem_error& error) {
        QVERIFY(QByteArray(error.what()).contains("create_directory"));
    }
}

void SimulatorFaultsTest::dataFolderThatIsRemovedNamesTheRename()
{
    CPageFixture fixture;
    const QString job = fixture.loadJob(1);
    QVERIFY(fixture.run());
    CDeckStore::instance()->setSimulationOutputs(true);
    // The system may hold the simulator's folder a moment longer.
    QTRY_VERIFY(QDir(caseRoot(job)).removeRecursively());
    auto& page = fixture.page();
    const QString expected = caseRoot(job) + QStringLiteral("/Job0/deck0_data");
    try {
        QMetaObject::invokeMethod(&page, "updateLocalSimulationTracker", Q_ARG(int, 0),
                                  Q_ARG(int, 0), Q_ARG(CSimulationListItem*, fixture.row(0)));
        QFAIL("nothing was raised");
    } catch (const std::filesystem::filesystem_error& error) {
        QVERIFY(QByteArray(error.what()).contains("rename"));
        QCOMPARE(QString::fromStdString(error.path1().string()), expected);
    }
}

TARNEL_TEST_MAIN(SimulatorFaultsTest)

#include "simulator_faults_test.moc"
