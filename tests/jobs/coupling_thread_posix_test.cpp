#include "jobs/coupling_thread.h"

#include "jobs/case_output.h"
#include "tests/support/job_maker.h"
#include "tests/support/processes.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

class CouplingThreadPosixTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void startsTheServerAtOnce();
    void startsTheServerWhateverWasPrintedUntilItRuns();
    void leavesTheServerOutWhereNoClientIsAwaitedAtFirst();
    void endsAtItsNextLookWhenTheSimulatorPrintsAnythingElse_data();
    void endsAtItsNextLookWhenTheSimulatorPrintsAnythingElse();
    void startsTheServerAgainWhileAClientIsAwaited();
    void looksAgainAfterFiveSeconds();
    void stopEndsTheServerAndTheThread();
    void stopBeforeTheStartLeavesTheServerOut();
    void endsAServerThatDoesNotListen();

private:
    std::string command(const QByteArray& script);
    QByteArray log() const;

    std::unique_ptr<QTemporaryDir> m_folder;
    std::shared_ptr<CCaseOutput> m_lastOutput;
};

void CouplingThreadPosixTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_lastOutput = std::make_shared<CCaseOutput>("Awaiting Client connection...\r\n");
}

std::string CouplingThreadPosixTest::command(const QByteArray& script)
{
    const QString path = m_folder->filePath(QStringLiteral("server"));
    writeFile(path, "#!/bin/sh\ncd \"$(dirname \"$0\")\"\necho $$ >> log\n" + script, true);
    return "'" + path.toStdString() + "'";
}

QByteArray CouplingThreadPosixTest::log() const
{
    return readFile(m_folder->filePath(QStringLiteral("log")));
}

void CouplingThreadPosixTest::startsTheServerAtOnce()
{
    CCouplingThread thread(command("sleep 30\n"), m_lastOutput);
    thread.start();
    QTRY_VERIFY(isAlive(log().trimmed()));
    QVERIFY(thread.isRunning());
}

void CouplingThreadPosixTest::startsTheServerWhateverWasPrintedUntilItRuns()
{
    CCouplingThread thread(command(""), m_lastOutput, std::chrono::milliseconds(10));
    m_lastOutput->assign("Simulating\r\n");
    thread.start();
    QVERIFY(thread.wait(5000));
    QCOMPARE(log().count('\n'), 1);
}

void CouplingThreadPosixTest::leavesTheServerOutWhereNoClientIsAwaitedAtFirst()
{
    m_lastOutput->assign("Simulating\r\n");
    CCouplingThread thread(command(""), m_lastOutput, std::chrono::milliseconds(10));
    thread.start();
    QVERIFY(thread.wait(5000));
    QVERIFY(log().isEmpty());
}

void CouplingThreadPosixTest::endsAtItsNextLookWhenTheSimulatorPrintsAnythingElse_data()
{
    QTest::addColumn<QByteArray>("output");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("another line") << QByteArray("Simulating\r\n");
    QTest::newRow("one more line") << QByteArray("Awaiting Client connection...\r\nSimulating\r\n");
    QTest::newRow("other line end") << QByteArray("Awaiting Client connection...\n");
}

void CouplingThreadPosixTest::endsAtItsNextLookWhenTheSimulatorPrintsAnythingElse()
{
    QFETCH(QByteArray, output);
    CCouplingThread thread(command(""), m_lastOutput, std::chrono::milliseconds(100));
    thread.start();
    QTRY_VERIFY(!log().isEmpty());
    m_lastOutput->assign(output.toStdString());
    QTRY_VERIFY(thread.isFinished());
    QCOMPARE(log().count('\n'), 1);
}

void CouplingThreadPosixTest::startsTheServerAgainWhileAClientIsAwaited()
{
    CCouplingThread thread(command(""), m_lastOutput, std::chrono::milliseconds(10));
    thread.start();
    QTRY_VERIFY(log().count('\n') >= 3);
}

void CouplingThreadPosixTest::looksAgainAfterFiveSeconds()
{
    CCouplingThread thread(command(""), m_lastOutput);
    QElapsedTimer clock;
    clock.start();
    thread.start();
    QTRY_COMPARE_WITH_TIMEOUT(log().count('\n'), 2, 8000);
    QVERIFY(clock.elapsed() >= 5000);
}

void CouplingThreadPosixTest::stopEndsTheServerAndTheThread()
{
    CCouplingThread thread(command("sleep 30\n"), m_lastOutput);
    thread.start();
    QTRY_VERIFY(isAlive(log().trimmed()));
    thread.stop();
    QVERIFY(thread.wait(1000));
    QTRY_VERIFY(!isAlive(log().trimmed()));
}

void CouplingThreadPosixTest::stopBeforeTheStartLeavesTheServerOut()
{
    CCouplingThread thread(command(""), m_lastOutput);
    thread.stop();
    thread.start();
    QVERIFY(thread.wait(1000));
    QVERIFY(log().isEmpty());
}

void CouplingThreadPosixTest::endsAServerThatDoesNotListen()
{
    QByteArray server;
    {
        CCouplingThread thread(
            command("trap '' TERM\necho deaf >> log\nwhile :; do sleep 1; done\n"), m_lastOutput);
        thread.start();
        QTRY_VERIFY(log().endsWith("deaf\n"));
        server = log().split('\n').first();
        thread.stop();
        QVERIFY(!thread.wait(100));
    }
    QTRY_VERIFY(!isAlive(server));
}

TARNEL_TEST_MAIN(CouplingThreadPosixTest)

#include "coupling_thread_posix_test.moc"
