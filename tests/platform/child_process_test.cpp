#include "platform/child_process.h"

#include "tests/support/processes.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTest>

#include <thread>

class ChildProcessTest : public QObject
{
    Q_OBJECT

private slots:
    void endsAChildThatRuns();
    void endsWhatTheChildHasStarted();
    void endsWhatLostItsParentInTheChildsGroup();
    void endsWhatHasLeftTheChildsGroup();
    void endsAChildThatIsArmedLater();
    void asksAChildToEnd();
    void leavesAChildThatDidNotStart();
    void leavesAProcessThatTakesTheNumberLater();
    void endsFromAnotherThread();
};

namespace {

void startShell(CChildProcess& process, const char* script)
{
    process.start(QStringLiteral("sh"), {QStringLiteral("-c"), QString::fromLatin1(script)});
    QVERIFY(process.waitForStarted());
}

/// The first line that the child prints.
QByteArray firstLine(CChildProcess& process)
{
    while (!process.canReadLine() && process.waitForReadyRead()) {
    }
    return process.readLine().trimmed();
}

} // namespace

void ChildProcessTest::endsAChildThatRuns()
{
    CChildProcess process;
    startShell(process, "exec sleep 30");
    CKillSwitch kill;
    kill.arm(process.processId());
    kill.end();
    QVERIFY(process.waitForFinished(1000));
    QVERIFY(process.exitCode() != 0);
    QVERIFY(!processExists(QByteArray::number(process.processId())));
}

void ChildProcessTest::endsWhatTheChildHasStarted()
{
    CChildProcess process;
    startShell(process, "sleep 30 & echo $!; wait");
    CKillSwitch kill;
    kill.arm(process.processId());
    const QByteArray grandchild = firstLine(process);
    QVERIFY(isAlive(grandchild));
    kill.end();
    QVERIFY(process.waitForFinished(1000));
    QTRY_VERIFY(!isAlive(grandchild));
}

void ChildProcessTest::endsWhatLostItsParentInTheChildsGroup()
{
    CChildProcess process;
    startShell(process, "(sleep 30 & echo $!); echo the parent has ended; exec sleep 30");
    CKillSwitch kill;
    kill.arm(process.processId());
    const QByteArray orphan = firstLine(process);
    QCOMPARE(firstLine(process), QByteArray("the parent has ended"));
    QVERIFY(isAlive(orphan));
    kill.end();
    QVERIFY(process.waitForFinished(1000));
    QTRY_VERIFY_WITH_TIMEOUT(!isAlive(orphan), 1000);
}

/// As a launcher of parallel processes starts them.
void ChildProcessTest::endsWhatHasLeftTheChildsGroup()
{
#ifndef __linux__
    QSKIP("only the process group is ended here");
#endif
    CChildProcess process;
    // It tells its number once it has left.
    startShell(process, "setsid sh -c 'echo $$; exec sleep 30' & wait");
    CKillSwitch kill;
    kill.arm(process.processId());
    const QByteArray descendant = firstLine(process);
    QVERIFY(isAlive(descendant));
    kill.end();
    QVERIFY(process.waitForFinished(1000));
    QTRY_VERIFY_WITH_TIMEOUT(!isAlive(descendant), 1000);
}

void ChildProcessTest::endsAChildThatIsArmedLater()
{
    CKillSwitch kill;
    kill.end();
    CChildProcess process;
    startShell(process, "exec sleep 30");
    kill.arm(process.processId());
    QVERIFY(process.waitForFinished(1000));
}

void ChildProcessTest::asksAChildToEnd()
{
    CChildProcess process;
    startShell(process, "trap 'exit 7' TERM; echo ready; while :; do sleep 0.01; done");
    QCOMPARE(firstLine(process), QByteArray("ready"));
    CKillSwitch kill;
    kill.arm(process.processId());
    kill.askToEnd();
    QVERIFY(process.waitForFinished(1000));
    QCOMPARE(process.exitCode(), 7);
}

void ChildProcessTest::leavesAChildThatDidNotStart()
{
    CKillSwitch kill;
    kill.arm(0);
    // A signal to process 0 would reach this very program.
    kill.end();
    kill.askToEnd();
}

void ChildProcessTest::leavesAProcessThatTakesTheNumberLater()
{
    CChildProcess process;
    startShell(process, "exec sleep 30");
    CKillSwitch kill;
    kill.arm(process.processId());
    kill.disarm();
    kill.end();
    QVERIFY(!process.waitForFinished(50));
    process.kill();
    QVERIFY(process.waitForFinished(1000));
}

void ChildProcessTest::endsFromAnotherThread()
{
    CChildProcess process;
    startShell(process, "exec sleep 30");
    CKillSwitch kill;
    kill.arm(process.processId());
    std::thread other([&kill] { kill.end(); });
    QVERIFY(process.waitForFinished(1000));
    other.join();
}

TARNEL_TEST_MAIN(ChildProcessTest)

#include "child_process_test.moc"
