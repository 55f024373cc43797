#include "app/constants/icons.h"
#include "deck/app_settings.h"
#include "deck/deck_store.h"
#include "jobs/case_reduction.h"
#include "jobs/case_task.h"
#include "jobs/simulation_list_item.h"
#include "tests/jobs/page_fixture.h"
#include "tests/support/test_environment.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QFileInfo>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QPushButton>
#include <QTest>
#include <QTextEdit>
#include <QThreadPool>

#include <filesystem>

class LocalRunTest : public QObject
{
    Q_OBJECT

private slots:
    void runsTwoOfFiveCasesAtOnceAndEndsTheBarAtFive();
    void animatesTheIconOfARunningRow();
    void startsTheNextCaseAfterAFailedOne();
    void showsACrashAsAFailureAndGoesOn();
    void showsASimulatorThatDoesNotStartAsAFailure();
    void doesNothingWithNoConcurrentSimulations();
    void runsAJobWithoutCases();
    void givesTheSimulatorItsCommandInTheCaseRoot();
    void runsASimulatorWhoseLocationHasBlanks();
    void preparesANewCaseRootForEachRun();
    void countsTheCasesOfEachRunAnew();
    void disablesThePageDuringARunAndEnablesItAfterwards();
    void takesTheConcurrencyAsSizeOfTheThreadPool();
    void leavesTheProcessorToTheSimulations();

    void showsNotFinishedForAWaitingRow();
    void showsNotFinishedForAFinishedRowWithoutOutput();
    void showsTheOutputOfACaseAsPlainText();
    void keepsCharactersThatArriveInPieces();
    void keepsOutputWithoutNewline();
    void keepsLongOutput();
    void keepsStandardErrorOut();
    void showsWhatWasThereAtTheClick();
    void addsUpTheOutputOfAllRuns();

    void keepsTimeStepsOfACase();
    void reducesTheDataFolderOfASuccessfulAndOfAFailedCase();
    void namesTheStepThatFailsInAReduction_data();
    void namesTheStepThatFailsInAReduction();
};

void LocalRunTest::runsTwoOfFiveCasesAtOnceAndEndsTheBarAtFive()
{
    CPageFixture fixture;
    const QString gate = fixture.newFolder() + QStringLiteral("/gate");
    fixture.behave("started;wait for:" + gate.toUtf8());
    const QString job = fixture.loadJob(5);
    fixture.when(
        [&] {
            return fixture.runningRows() == 2 &&
                   !caseFile(job, "JobFileLocation", 1, "started").isEmpty();
        },
        [&] {
            QVERIFY(fixture.isRunning(0) && fixture.isRunning(1));
            QVERIFY(fixture.isWaiting(2) && fixture.isWaiting(3) && fixture.isWaiting(4));
            QCOMPARE(fixture.progress(), 0);
            QVERIFY(caseFile(job, "JobFileLocation", 2, "started").isEmpty());
            writeFile(gate, "");
        });
    QVERIFY(fixture.run(2));
    QCOMPARE(fixture.progress(), 5);
    QCOMPARE(fixture.widget<QProgressBar>("m_progBarCompletedSimulations")->maximum(), 5);
    for (int number = 0; number < 5; ++number) {
        QVERIFY(fixture.hasSucceeded(number));
    }
}

void LocalRunTest::animatesTheIconOfARunningRow()
{
    CPageFixture fixture;
    fixture.behave("sleep:400");
    fixture.loadJob(1);
    QMovie movie(Icons::PeriSimPath);
    movie.jumpToFrame(0);
    QVERIFY(!movie.currentPixmap().isNull());
    qint64 firstIcon = 0;
    fixture.when([&] { return fixture.isRunning(0); },
                 [&] {
                     firstIcon = fixture.row(0)->icon().cacheKey();
                     QCOMPARE(fixture.row(0)->icon().pixmap(32).toImage(),
                              movie.currentPixmap().toImage());
                 });
    fixture.when([&] { return fixture.row(0)->icon().cacheKey() != firstIcon; },
                 [&] { QVERIFY(fixture.isRunning(0)); });
    QVERIFY(fixture.run());
    QVERIFY(fixture.hasSucceeded(0));
}

void LocalRunTest::startsTheNextCaseAfterAFailedOne()
{
    CPageFixture fixture;
    fixture.behave("exit:0");
    fixture.behave(0, "exit:3");
    fixture.loadJob(2);
    QVERIFY(fixture.run());
    QVERIFY(fixture.hasFailed(0));
    QVERIFY(fixture.hasSucceeded(1));
    QCOMPARE(fixture.progress(), 2);
}

void LocalRunTest::showsACrashAsAFailureAndGoesOn()
{
    CPageFixture fixture;
    fixture.behave("time step");
    fixture.behave(0, "time step;print:before the crash;crash");
    const QString job = fixture.loadJob(2);
    QVERIFY(fixture.run());
    QVERIFY(fixture.hasFailed(0));
    QCOMPARE(fixture.output(0), QByteArray("before the crash\n"));
    QCOMPARE(caseFile(job, "JobFileLocation", 0, "deck0_data/1.h5"), QByteArray("a time step"));
    QVERIFY(fixture.hasSucceeded(1));
}

void LocalRunTest::showsASimulatorThatDoesNotStartAsAFailure()
{
    CPageFixture fixture;
    CAppSettings::instance()->setValue(CAppSettings::OrvaExeLocation,
                                       QStringLiteral("/no/such/simulator"));
    fixture.loadJob(2);
    QVERIFY(fixture.run());
    QVERIFY(fixture.hasFailed(0) && fixture.hasFailed(1));
    QCOMPARE(fixture.progress(), 2);
    QCOMPARE(fixture.inspected(0), QStringLiteral("Not finished..."));
}

void LocalRunTest::doesNothingWithNoConcurrentSimulations()
{
    CPageFixture fixture;
    const QString job = fixture.loadJob(2);
    QVERIFY(fixture.run(0));
    QVERIFY(fixture.isWaiting(0) && fixture.isWaiting(1));
    QVERIFY(!QFileInfo::exists(job + QStringLiteral("/JobFileLocation")));
    QVERIFY(fixture.widget<QPushButton>("m_pbStartSimulating")->isVisible());
}

void LocalRunTest::runsAJobWithoutCases()
{
    CPageFixture fixture;
    const QString job = fixture.loadJob(0);
    QVERIFY(fixture.run());
    QVERIFY(QFileInfo::exists(job + QStringLiteral("/JobFileLocation")));
    QVERIFY(fixture.widget<QPushButton>("m_pbStartSimulating")->isEnabled());
}

void LocalRunTest::givesTheSimulatorItsCommandInTheCaseRoot()
{
    CPageFixture fixture;
    fixture.behave("arguments");
    JobDescription description;
    description.cases = 2;
    description.options = QStringLiteral(" -c  -r 1.5 --note \"two words\"");
    const QString job = fixture.loadJob(description);
    QVERIFY(fixture.run());
    const QString root = job + QStringLiteral("/JobFileLocation");
    const QString expected =
        QStringLiteral("%1|-i|%2/Job1/deck1.zek|-c|-r|1.5|--note|two words\n%2\n")
            .arg(CPageFixture::simulator(), root);
    QCOMPARE(QDir::fromNativeSeparators(
                 QString::fromUtf8(caseFile(job, "JobFileLocation", 1, "arguments"))),
             expected);
}

void LocalRunTest::runsASimulatorWhoseLocationHasBlanks()
{
    CPageFixture fixture;
    const QString folder = fixture.newFolder() + QStringLiteral("/a folder  of blanks");
    QVERIFY(QDir().mkpath(folder));
    const QString simulator = folder + QStringLiteral("/the simulator");
    QVERIFY(QFile::copy(CPageFixture::simulator(), simulator));
    CAppSettings::instance()->setValue(CAppSettings::OrvaExeLocation, simulator);
    fixture.loadJob(1);
    QVERIFY(fixture.run());
    QVERIFY(fixture.hasSucceeded(0));
}

void LocalRunTest::preparesANewCaseRootForEachRun()
{
    CPageFixture fixture;
    fixture.behave("exit:1");
    const QString job = fixture.loadJob(2);
    QVERIFY(fixture.run());
    QVERIFY(fixture.hasFailed(0) && fixture.hasFailed(1));
    fixture.behave("started");
    fixture.when([&] { return fixture.isRunning(0); },
                 // A row keeps its icon until it runs again.
                 [&] { QVERIFY(fixture.hasFailed(1)); });
    QVERIFY(fixture.run());
    QVERIFY(fixture.hasSucceeded(0) && fixture.hasSucceeded(1));
    QVERIFY(caseFile(job, "JobFileLocation", 0, "started").isEmpty());
    QVERIFY(!caseFile(job, "JobFileLocation0", 1, "started").isEmpty());
}

void LocalRunTest::countsTheCasesOfEachRunAnew()
{
    CPageFixture fixture;
    const QString gate = fixture.newFolder() + QStringLiteral("/gate");
    fixture.behave("exit:1");
    fixture.loadJob(2);
    QVERIFY(fixture.run());
    QCOMPARE(fixture.progress(), 2);
    fixture.behave(0, "exit:0");
    fixture.behave(1, "wait for:" + gate.toUtf8());
    // The bar stays where it was until the first case has ended.
    fixture.when([&] { return fixture.isRunning(0); }, [&] { QCOMPARE(fixture.progress(), 2); });
    fixture.when([&] { return fixture.isRunning(1); },
                 [&] {
                     QVERIFY(fixture.hasSucceeded(0));
                     QCOMPARE(fixture.progress(), 1);
                     writeFile(gate, "");
                 });
    QVERIFY(fixture.run());
    QCOMPARE(fixture.progress(), 2);
}

void LocalRunTest::disablesThePageDuringARunAndEnablesItAfterwards()
{
    CPageFixture fixture;
    fixture.behave("sleep:50");
    fixture.loadJob(1);
    const auto switched = {
        "m_pbGenerateDistributedFiles",   "m_pbGenerateJob",          "m_pbJobLoadLocationSelect",
        "m_pbJobSaveLocationSelect",      "m_leJobLoadLocation",      "m_leJobSaveLocation",
        "m_gbSimulationExecutionOptions", "m_sbConcurrentSimulations"};
    const auto check = [&](bool running) {
        for (const char* name : switched) {
            QVERIFY2(fixture.widget<QWidget>(name)->isEnabled() != running, name);
        }
        const auto* start = fixture.widget<QPushButton>("m_pbStartSimulating");
        const auto* cancel = fixture.widget<QPushButton>("m_pbCancelSimulating");
        QVERIFY(start->isVisible() != running && start->isEnabled() != running);
        QVERIFY(cancel->isVisible() == running && cancel->isEnabled() == running);
        for (const char* name :
             {"m_pbJobLoad", "m_leORVAExeLocation", "m_pbORVAExeLocationSelect"}) {
            QVERIFY2(fixture.widget<QWidget>(name)->isEnabled(), name);
        }
    };
    fixture.when([&] { return fixture.isRunning(0); }, [&] { check(true); });
    QVERIFY(fixture.run());
    check(false);
}

void LocalRunTest::takesTheConcurrencyAsSizeOfTheThreadPool()
{
    CPageFixture fixture;
    fixture.loadJob(1);
    QVERIFY(fixture.run(7));
    QCOMPARE(QThreadPool::globalInstance()->maxThreadCount(), 7);
}

void LocalRunTest::leavesTheProcessorToTheSimulations()
{
    CPageFixture fixture;
    fixture.behave("sleep:300");
    fixture.loadJob(2);
    // A loop that spins comes round many thousand times in these 0.6 seconds.
    int rounds = 0;
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::awake, this,
            [&rounds] { ++rounds; });
    QVERIFY(fixture.run());
    disconnect(QAbstractEventDispatcher::instance(), nullptr, this, nullptr);
    QVERIFY2(rounds < 1500, qPrintable(QString::number(rounds)));
}

void LocalRunTest::showsNotFinishedForAWaitingRow()
{
    CPageFixture fixture;
    fixture.loadJob(2);
    QCOMPARE(fixture.inspected(1), QStringLiteral("Not finished..."));
    QCOMPARE(fixture.widget<QLabel>("m_lblJobName")->text(),
             QStringLiteral("deck1 finished output"));
}

void LocalRunTest::showsNotFinishedForAFinishedRowWithoutOutput()
{
    CPageFixture fixture;
    fixture.loadJob(1);
    QVERIFY(fixture.run());
    QVERIFY(fixture.hasSucceeded(0));
    QCOMPARE(fixture.inspected(0), QStringLiteral("Not finished..."));
}

void LocalRunTest::showsTheOutputOfACaseAsPlainText()
{
    CPageFixture fixture;
    fixture.behave("print:<b>0.5 % done</b>;slow lines:2");
    fixture.behave(1, "print:other");
    fixture.loadJob(2);
    QVERIFY(fixture.run(2));
    QCOMPARE(fixture.inspected(0), QStringLiteral("<b>0.5 % done</b>\nline 0\nline 1\n"));
    QCOMPARE(fixture.inspected(1), QStringLiteral("other\n"));
}

void LocalRunTest::keepsCharactersThatArriveInPieces()
{
    CPageFixture fixture;
    fixture.behave("print hex:c3;sleep:30;print hex:bc");
    fixture.loadJob(1);
    QVERIFY(fixture.run());
    QCOMPARE(fixture.inspected(0), QString(QChar(0xfc)));
}

void LocalRunTest::keepsOutputWithoutNewline()
{
    CPageFixture fixture;
    fixture.behave("print without newline:100 %");
    fixture.loadJob(1);
    QVERIFY(fixture.run());
    QCOMPARE(fixture.inspected(0), QStringLiteral("100 %"));
}

void LocalRunTest::keepsLongOutput()
{
    CPageFixture fixture;
    fixture.behave("long output:3000000;print:end");
    fixture.loadJob(1);
    QVERIFY(fixture.run());
    QCOMPARE(fixture.output(0), QByteArray(3000000, 'x') + "end\n");
}

void LocalRunTest::keepsStandardErrorOut()
{
    CPageFixture fixture;
    fixture.behave("complain:what a mess;print:fine");
    fixture.loadJob(1);
    QVERIFY(fixture.run());
    QCOMPARE(fixture.output(0), QByteArray("fine\n"));
}

void LocalRunTest::showsWhatWasThereAtTheClick()
{
    CPageFixture fixture;
    const QString gate = fixture.newFolder() + QStringLiteral("/gate");
    fixture.behave("print:first;wait for:" + gate.toUtf8() + ";print:second");
    fixture.loadJob(1);
    fixture.when([&] { return fixture.output(0) == "first\n"; },
                 [&] {
                     QCOMPARE(fixture.inspected(0), QStringLiteral("first\n"));
                     writeFile(gate, "");
                 });
    QVERIFY(fixture.run());
    QCOMPARE(fixture.widget<QTextEdit>("m_inspectorDetails")->toPlainText(),
             QStringLiteral("first\n"));
    QCOMPARE(fixture.inspected(0), QStringLiteral("first\nsecond\n"));
}

void LocalRunTest::addsUpTheOutputOfAllRuns()
{
    CPageFixture fixture;
    fixture.behave("print:a run");
    fixture.loadJob(1);
    QVERIFY(fixture.run());
    QVERIFY(fixture.run());
    QCOMPARE(fixture.inspected(0), QStringLiteral("a run\na run\n"));
}

void LocalRunTest::keepsTimeStepsOfACase()
{
    CPageFixture fixture;
    fixture.behave("time step;csv");
    const QString job = fixture.loadJob(1);
    QVERIFY(fixture.run());
    QCOMPARE(caseFile(job, "JobFileLocation", 0, "deck0_data/1.h5"), QByteArray("a time step"));
    QVERIFY(!caseFile(job, "JobFileLocation", 0, "results.csv").isEmpty());
}

void LocalRunTest::reducesTheDataFolderOfASuccessfulAndOfAFailedCase()
{
    CPageFixture fixture;
    fixture.behave("time step");
    fixture.behave(1, "time step;exit:4");
    const QString job = fixture.loadJob(2);
    CDeckStore::instance()->setSimulationOutputs(true);
    QVERIFY(fixture.run());
    QVERIFY(fixture.hasSucceeded(0) && fixture.hasFailed(1));
    for (int number = 0; number < 2; ++number) {
        const QString folder =
            QStringLiteral("%1/JobFileLocation/Job%2/deck%2_data").arg(job).arg(number);
        QCOMPARE(QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
                 QStringList(QStringLiteral("0.h5")));
        QVERIFY(QFileInfo(folder + QStringLiteral("/0.h5")).size() > 0);
        QVERIFY(!QFileInfo::exists(folder + QStringLiteral("_to_delete")));
    }
}

void LocalRunTest::namesTheStepThatFailsInAReduction_data()
{
    QTest::addColumn<bool>("dataFolder");
    QTest::addColumn<QString>("step");
    QTest::newRow("no data folder") << false << "rename";
    QTest::newRow("no first file") << true << "copy_file";
}

void LocalRunTest::namesTheStepThatFailsInAReduction()
{
    QFETCH(bool, dataFolder);
    QFETCH(QString, step);
    const QTemporaryDir root;
    if (dataFolder) {
        QVERIFY(QDir(root.path()).mkpath(QStringLiteral("Job4/deck4_data")));
    }
    const CaseTask task{1, 4, root.path().toStdString(), "deck", CaseCommands(), nullptr};
    QString what;
    try {
        reduceToFirstFile(task);
    } catch (const std::filesystem::filesystem_error& error) {
        what = QString::fromUtf8(error.what());
    }
    QVERIFY2(what.contains(step), qPrintable(what));
}

TARNEL_TEST_MAIN(LocalRunTest)

#include "local_run_test.moc"
