#include "platform/child_process.h"

#include "tests/support/test_environment.h"

#include <QApplication>
#include <QTest>

#include <thread>

class ChildProcessWindowsTest : public QObject
{
    Q_OBJECT

private slots:
    void endsAChildThatRunsWithExitCodeZero();
    void endsAChildThatIsArmedLater();
    void leavesAChildThatDidNotStart();
    void leavesAProcessThatTakesTheNumberLater();
    void endsFromAnotherThread();
    void doesNotAskAChildToEnd();
};

namespace {

void startSleeper(CChildProcess& process)
{
    process.start(QStringLiteral(TARNEL_FAKE_SIMULATOR), {QStringLiteral("--child")});
    QVERIFY(process.waitForStarted());
}

} // namespace

void ChildProcessWindowsTest::endsAChildThatRunsWithExitCodeZero()
{
    CChildProcess process;
    startSleeper(process);
    CKillSwitch kill;
    kill.arm(process.processId());
    kill.end();
    QVERIFY(process.waitForFinished(2000));
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 0);
}

void ChildProcessWindowsTest::endsAChildThatIsArmedLater()
{
    CKillSwitch kill;
    kill.end();
    CChildProcess process;
    startSleeper(process);
    kill.arm(process.processId());
    QVERIFY(process.waitForFinished(2000));
}

void ChildProcessWindowsTest::leavesAChildThatDidNotStart()
{
    CKillSwitch kill;
    kill.arm(0);
    kill.end();
    kill.askToEnd();
}

void ChildProcessWindowsTest::leavesAProcessThatTakesTheNumberLater()
{
    CChildProcess process;
    startSleeper(process);
    CKillSwitch kill;
    kill.arm(process.processId());
    kill.disarm();
    kill.end();
    QVERIFY(!process.waitForFinished(50));
    process.kill();
    QVERIFY(process.waitForFinished(2000));
}

void ChildProcessWindowsTest::endsFromAnotherThread()
{
    CChildProcess process;
    startSleeper(process);
    CKillSwitch kill;
    kill.arm(process.processId());
    std::thread other([&kill] { kill.end(); });
    QVERIFY(process.waitForFinished(2000));
    other.join();
}

void ChildProcessWindowsTest::doesNotAskAChildToEnd()
{
    CChildProcess process;
    startSleeper(process);
    CKillSwitch kill;
    kill.arm(process.processId());
    kill.askToEnd();
    QVERIFY(!process.waitForFinished(100));
    kill.end();
    QVERIFY(process.waitForFinished(2000));
}

TARNEL_TEST_MAIN(ChildProcessWindowsTest)

#include "child_process_windows_test.moc"
