#include "jobs/coupling_thread.h"
#include "tests/jobs/coupling_thread_rules.h"
#include "tests/support/job_maker.h"
#include "tests/support/processes.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QTest>

#include <memory>

class CouplingThreadPosixTest : public CCouplingThreadRules
{
    Q_OBJECT

private slots:
    void startsTheServerAtOnce();
    void stopEndsTheServerAndTheThread();
    void endsAServerThatDoesNotListen();

private:
    std::string command(const QByteArray& script = QByteArray()) const override;
    std::chrono::milliseconds longestStart() const override
    {
        return std::chrono::milliseconds(100);
    }
};

std::string CouplingThreadPosixTest::command(const QByteArray& script) const
{
    const QString server = path("server");
    writeFile(server, "#!/bin/sh\ncd \"$(dirname \"$0\")\"\necho $$ >> log\n" + script, true);
    return "'" + server.toStdString() + "'";
}

void CouplingThreadPosixTest::startsTheServerAtOnce()
{
    const auto thread = std::make_unique<CCouplingThread>(command("sleep 30\n"), m_lastOutput);
    thread->start();
    QTRY_VERIFY(isAlive(log().trimmed()));
    QVERIFY(thread->isRunning());
}

void CouplingThreadPosixTest::stopEndsTheServerAndTheThread()
{
    const auto thread = std::make_unique<CCouplingThread>(command("sleep 30\n"), m_lastOutput);
    thread->start();
    QTRY_VERIFY(isAlive(log().trimmed()));
    thread->stop();
    QVERIFY(thread->wait(1000));
    QTRY_VERIFY(!isAlive(log().trimmed()));
}

void CouplingThreadPosixTest::endsAServerThatDoesNotListen()
{
    QByteArray server;
    {
        const auto thread = std::make_unique<CCouplingThread>(
            command("trap '' TERM\necho deaf >> log\nwhile :; do sleep 1; done\n"), m_lastOutput);
        thread->start();
        QTRY_VERIFY(log().endsWith("deaf\n"));
        server = log().split('\n').first();
        thread->stop();
        QVERIFY(!thread->wait(100));
    }
    QTRY_VERIFY(!isAlive(server));
}

TARNEL_TEST_MAIN(CouplingThreadPosixTest)

#include "coupling_thread_posix_test.moc"
