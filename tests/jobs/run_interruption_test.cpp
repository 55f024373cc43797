#include "deck/deck_store.h"
#include "jobs/simulation_list_item.h"
#include "tests/jobs/page_fixture.h"
#include "tests/support/native.h"
#include "tests/support/processes.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QThread>
#include <QVBoxLayout>

class RunInterruptionTest : public QObject
{
    Q_OBJECT

private slots:
    void cancelShowsAllRowsAsFailedAndEmptiesTheBar();
    void cancelEndsTheChildAndItsGroupAtOnce();
    void cancelLeavesNoZombie();
    void cancelNeverStartsAQueuedCase();
    void lateEndsOfACancelledRunStayFailedAndLeaveTheBar();
    void caseThatEndedWellBeforeTheCancelWasSeenStaysFailed();
    void lateEndsOfACancelledRunStillReduceTheirFolders();
    void childThatOutlivesItsCaseIsLeftAlone();
    void startAgainAfterCancelTouchesNoRowOfTheNewRun();
    void cancelThatCameBeforeARunDoesNotCancelIt();

    void loadingAJobAfterACancelLeavesItsRowsWaiting();
    void loadingAJobDuringARunLetsTheRunEnd();
    void loadingAnotherJobKeepsTheRunsFoldersApart();
    void loadingASmallerJobLeavesTheRunWithoutRows();
    void startIsDeafWhileARunGoesOn();

    void closingTheWindowCancelsTheRun();
    void destroyingThePageEndsItsChildren();
};

namespace {

QByteArray pidOf(const QString& job, int caseNumber, const char* name = "simulator.pid")
{
    return caseFile(job, "JobFileLocation", caseNumber, name);
}

} // namespace

void RunInterruptionTest::cancelShowsAllRowsAsFailedAndEmptiesTheBar()
{
    CPageFixture fixture;
    fixture.behave("hang");
    fixture.behave(0, "exit:0");
    fixture.loadJob(4);
    fixture.when([&] { return fixture.hasSucceeded(0) && fixture.isRunning(1); },
                 [&] {
                     QCOMPARE(fixture.progress(), 1);
                     fixture.click("m_pbCancelSimulating");
                 });
    QVERIFY(fixture.run());
    for (int number = 0; number < 4; ++number) {
        QVERIFY(fixture.hasFailed(number));
    }
    QCOMPARE(fixture.progress(), 0);
    QVERIFY(fixture.widget<QPushButton>("m_pbStartSimulating")->isVisible());
}

void RunInterruptionTest::cancelEndsTheChildAndItsGroupAtOnce()
{
    CPageFixture fixture;
    fixture.behave("leave a child;pid;hang");
    const QString job = fixture.loadJob(1);
    QElapsedTimer sinceClick;
    fixture.when([&] { return !pidOf(job, 0).isEmpty(); },
                 [&] {
                     QVERIFY(processExists(pidOf(job, 0, "child.pid")));
                     sinceClick.start();
                     fixture.click("m_pbCancelSimulating");
                 });
    QVERIFY(fixture.run());
    QVERIFY(sinceClick.elapsed() < 1000);
    QTRY_VERIFY(!processExists(pidOf(job, 0)));
    QTRY_COMPARE(isAlive(pidOf(job, 0, "child.pid")), !Native::endsDescendants());
    endProcess(pidOf(job, 0, "child.pid"));
}

void RunInterruptionTest::cancelLeavesNoZombie()
{
    CPageFixture fixture;
    fixture.behave("pid;hang");
    const QString job = fixture.loadJob(2);
    fixture.when([&] { return !pidOf(job, 0).isEmpty() && !pidOf(job, 1).isEmpty(); },
                 [&] { fixture.click("m_pbCancelSimulating"); });
    QVERIFY(fixture.run(2));
    QTRY_VERIFY(!processExists(pidOf(job, 0)) && !processExists(pidOf(job, 1)));
}

void RunInterruptionTest::cancelNeverStartsAQueuedCase()
{
    CPageFixture fixture;
    fixture.behave("started;hang");
    const QString job = fixture.loadJob(5);
    fixture.when([&] { return !caseFile(job, "JobFileLocation", 0, "started").isEmpty(); },
                 [&] { fixture.click("m_pbCancelSimulating"); });
    QVERIFY(fixture.run());
    QTest::qWait(50);
    for (int number = 1; number < 5; ++number) {
        QVERIFY(caseFile(job, "JobFileLocation", number, "started").isEmpty());
    }
}

void RunInterruptionTest::lateEndsOfACancelledRunStayFailedAndLeaveTheBar()
{
    CPageFixture fixture;
    fixture.behave("started;hang");
    const QString job = fixture.loadJob(2);
    fixture.when([&] { return !caseFile(job, "JobFileLocation", 1, "started").isEmpty(); },
                 [&] { fixture.click("m_pbCancelSimulating"); });
    QVERIFY(fixture.run(2));
    QTest::qWait(100);
    QVERIFY(fixture.hasFailed(0) && fixture.hasFailed(1));
    QCOMPARE(fixture.progress(), 0);
}

void RunInterruptionTest::caseThatEndedWellBeforeTheCancelWasSeenStaysFailed()
{
    CPageFixture fixture;
    const QString gate = fixture.newFolder() + QStringLiteral("/gate");
    fixture.behave("pid;wait for:" + gate.toUtf8());
    const QString job = fixture.loadJob(1);
    fixture.when([&] { return !pidOf(job, 0).isEmpty(); },
                 [&] {
                     writeFile(gate, "");
                     // No event is handled here: the end is reported, but nobody has heard of it.
                     while (processExists(pidOf(job, 0))) {
                         QThread::msleep(1);
                     }
                     QThread::msleep(50);
                     QVERIFY(fixture.isRunning(0));
                     fixture.click("m_pbCancelSimulating");
                 });
    QVERIFY(fixture.run());
    QTest::qWait(50);
    QVERIFY(fixture.hasFailed(0));
    QCOMPARE(fixture.progress(), 0);
}

void RunInterruptionTest::lateEndsOfACancelledRunStillReduceTheirFolders()
{
    CPageFixture fixture;
    fixture.behave("time step;started;hang");
    const QString job = fixture.loadJob(1);
    CDeckStore::instance()->setSimulationOutputs(true);
    fixture.when([&] { return !caseFile(job, "JobFileLocation", 0, "started").isEmpty(); },
                 [&] { fixture.click("m_pbCancelSimulating"); });
    QVERIFY(fixture.run());
    const QString folder = job + QStringLiteral("/JobFileLocation/Job0/deck0_data");
    QTRY_VERIFY(!QFileInfo::exists(folder + QStringLiteral("/1.h5")));
    QTRY_VERIFY(QFileInfo::exists(folder + QStringLiteral("/0.h5")));
}

void RunInterruptionTest::childThatOutlivesItsCaseIsLeftAlone()
{
    CPageFixture fixture;
    fixture.behave("leave a child;print:done");
    const QString job = fixture.loadJob(1);
    QVERIFY(fixture.run());
    QVERIFY(fixture.hasSucceeded(0));
    QCOMPARE(fixture.output(0), QByteArray("done\n"));
    const QByteArray child = pidOf(job, 0, "child.pid");
    QVERIFY(isAlive(child));
    endProcess(child);
}

void RunInterruptionTest::startAgainAfterCancelTouchesNoRowOfTheNewRun()
{
    CPageFixture fixture;
    fixture.behave("time step;started;hang");
    const QString job = fixture.loadJob(2);
    CDeckStore::instance()->setSimulationOutputs(true);
    fixture.when([&] { return !caseFile(job, "JobFileLocation", 1, "started").isEmpty(); },
                 [&] { fixture.click("m_pbCancelSimulating"); });
    QVERIFY(fixture.run(2));

    const QString gate = fixture.newFolder() + QStringLiteral("/gate");
    fixture.behave("time step;wait for:" + gate.toUtf8());
    const QString oldStep = job + QStringLiteral("/JobFileLocation/Job1/deck1_data/1.h5");
    const QString newStep = job + QStringLiteral("/JobFileLocation0/Job1/deck1_data/1.h5");
    fixture.when([&] { return QFileInfo::exists(newStep) && !QFileInfo::exists(oldStep); },
                 [&] {
                     QVERIFY(fixture.isRunning(0) && fixture.isRunning(1));
                     QCOMPARE(fixture.progress(), 0);
                     writeFile(gate, "");
                 });
    QVERIFY(fixture.run(2));
    QVERIFY(fixture.hasSucceeded(0) && fixture.hasSucceeded(1));
    QCOMPARE(fixture.progress(), 2);
}

void RunInterruptionTest::cancelThatCameBeforeARunDoesNotCancelIt()
{
    CPageFixture fixture;
    fixture.loadJob(1);
    // A loaded job enables the hidden button.
    fixture.widget<QPushButton>("m_pbCancelSimulating")->click();
    QVERIFY(fixture.run());
    QVERIFY(fixture.hasSucceeded(0));
}

void RunInterruptionTest::loadingAJobAfterACancelLeavesItsRowsWaiting()
{
    CPageFixture fixture;
    fixture.behave("time step;pid;hang");
    const QString job = fixture.loadJob(2);
    CDeckStore::instance()->setSimulationOutputs(true);
    fixture.when([&] { return !pidOf(job, 0).isEmpty() && !pidOf(job, 1).isEmpty(); },
                 [&] { fixture.click("m_pbCancelSimulating"); });
    QVERIFY(fixture.run(2));
    fixture.load(job);
    // The ends of the cases are still to be heard of; they reduce their folders and do no more.
    const QString step = job + QStringLiteral("/JobFileLocation/Job%1/deck%1_data/1.h5");
    QTRY_VERIFY(!QFileInfo::exists(step.arg(0)) && !QFileInfo::exists(step.arg(1)));
    QVERIFY(fixture.isWaiting(0) && fixture.isWaiting(1));
    QCOMPARE(fixture.progress(), 0);
}

void RunInterruptionTest::loadingAJobDuringARunLetsTheRunEnd()
{
    CPageFixture fixture;
    const QString gate = fixture.newFolder() + QStringLiteral("/gate");
    fixture.behave("started;print:before;wait for:" + gate.toUtf8() + ";print:after");
    const QString job = fixture.loadJob(3);
    fixture.when([&] { return fixture.output(0) == "before\n"; },
                 [&] {
                     fixture.load(job);
                     QVERIFY(fixture.output(0).isEmpty());
                     writeFile(gate, "");
                 });
    QVERIFY(fixture.run());
    QCOMPARE(fixture.progress(), 3);
    for (int number = 0; number < 3; ++number) {
        QVERIFY(fixture.hasSucceeded(number));
        QVERIFY(!caseFile(job, "JobFileLocation", number, "started").isEmpty());
    }
    QCOMPARE(fixture.output(2), QByteArray("before\nafter\n"));
}

void RunInterruptionTest::loadingAnotherJobKeepsTheRunsFoldersApart()
{
    CPageFixture fixture;
    const QString gate = fixture.newFolder() + QStringLiteral("/gate");
    fixture.behave("time step;started;wait for:" + gate.toUtf8());
    const QString first = fixture.loadJob(2);
    CDeckStore::instance()->setSimulationOutputs(true);
    QString second;
    fixture.when([&] { return !caseFile(first, "JobFileLocation", 0, "started").isEmpty(); },
                 [&] {
                     second = fixture.loadJob(2);
                     writeFile(gate, "");
                 });
    QVERIFY(fixture.run());
    QVERIFY(!QFileInfo::exists(second + QStringLiteral("/JobFileLocation")));
    for (int number = 0; number < 2; ++number) {
        QVERIFY(!caseFile(first, "JobFileLocation", number, "started").isEmpty());
        QVERIFY(!QFileInfo::exists(
            QStringLiteral("%1/JobFileLocation/Job%2/deck%2_data/1.h5").arg(first).arg(number)));
    }
    QVERIFY(fixture.run());
    QVERIFY(!caseFile(second, "JobFileLocation", 1, "started").isEmpty());
}

void RunInterruptionTest::loadingASmallerJobLeavesTheRunWithoutRows()
{
    CPageFixture fixture;
    const QString gate = fixture.newFolder() + QStringLiteral("/gate");
    fixture.behave("started;wait for:" + gate.toUtf8());
    const QString job = fixture.loadJob(3);
    fixture.when([&] { return !caseFile(job, "JobFileLocation", 0, "started").isEmpty(); },
                 [&] {
                     fixture.loadJob(0);
                     writeFile(gate, "");
                 });
    QVERIFY(fixture.run());
    QTRY_VERIFY(!caseFile(job, "JobFileLocation", 2, "started").isEmpty());
    QTRY_COMPARE(fixture.progress(), 3);
    QCOMPARE(fixture.widget<QListWidget>("m_listOngoingSimulations")->count(), 0);
}

void RunInterruptionTest::startIsDeafWhileARunGoesOn()
{
    CPageFixture fixture;
    const QString gate = fixture.newFolder() + QStringLiteral("/gate");
    fixture.behave("started;wait for:" + gate.toUtf8());
    const QString job = fixture.loadJob(1);
    fixture.when([&] { return !caseFile(job, "JobFileLocation", 0, "started").isEmpty(); },
                 [&] {
                     fixture.load(job);
                     fixture.widget<QPushButton>("m_pbStartSimulating")->click();
                     QVERIFY(!QFileInfo::exists(job + QStringLiteral("/JobFileLocation0")));
                     writeFile(gate, "");
                 });
    QVERIFY(fixture.run());
    QVERIFY(fixture.hasSucceeded(0));
}

void RunInterruptionTest::closingTheWindowCancelsTheRun()
{
    CPageFixture fixture;
    QWidget window;
    QVBoxLayout layout(&window);
    layout.addWidget(&fixture.page());
    window.show();
    fixture.behave("pid;hang");
    const QString job = fixture.loadJob(3);
    fixture.when([&] { return !pidOf(job, 0).isEmpty(); }, [&] { window.close(); });
    QVERIFY(fixture.run());
    fixture.page().setParent(nullptr);
    fixture.destroyPage();
    QVERIFY(!processExists(pidOf(job, 0)));
    QVERIFY(pidOf(job, 1).isEmpty());
}

void RunInterruptionTest::destroyingThePageEndsItsChildren()
{
    CPageFixture fixture;
    const QString gate = fixture.newFolder() + QStringLiteral("/gate");
    fixture.behave(0, "started;wait for:" + gate.toUtf8());
    fixture.behave(1, "leave a child;pid;hang");
    const QString job = fixture.loadJob(2);
    // Without a row for the last case the run is left while that case goes on.
    fixture.when([&] { return !caseFile(job, "JobFileLocation", 0, "started").isEmpty(); },
                 [&] {
                     fixture.loadJob(0);
                     writeFile(gate, "");
                 });
    QVERIFY(fixture.run());
    QTRY_VERIFY(isAlive(pidOf(job, 1)));
    QElapsedTimer sinceTheEnd;
    sinceTheEnd.start();
    fixture.destroyPage();
    QVERIFY(sinceTheEnd.elapsed() < 5000);
    QVERIFY(!processExists(pidOf(job, 1)));
    QTRY_COMPARE(isAlive(pidOf(job, 1, "child.pid")), !Native::endsDescendants());
    endProcess(pidOf(job, 1, "child.pid"));
}

TARNEL_TEST_MAIN(RunInterruptionTest)

#include "run_interruption_test.moc"
