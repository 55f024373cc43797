#include "tests/jobs/coupling_thread_rules.h"

#include "jobs/coupling_thread.h"
#include "tests/support/job_maker.h"

#include <QElapsedTimer>
#include <QTest>

#include <memory>

using std::chrono::milliseconds;

void CCouplingThreadRules::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_lastOutput = std::make_shared<CCaseOutput>("Awaiting Client connection...\r\n");
}

QString CCouplingThreadRules::path(const char* name) const
{
    return m_folder->filePath(QString::fromLatin1(name));
}

QByteArray CCouplingThreadRules::log() const
{
    return readFile(path("log"));
}

void CCouplingThreadRules::startsTheServerWhateverWasPrintedUntilItRuns()
{
    const auto thread =
        std::make_unique<CCouplingThread>(command(), m_lastOutput, milliseconds(10));
    m_lastOutput->assign("Simulating\r\n");
    thread->start();
    QVERIFY(thread->wait(5000));
    QCOMPARE(starts(), 1);
}

void CCouplingThreadRules::leavesTheServerOutWhereNoClientIsAwaitedAtFirst()
{
    m_lastOutput->assign("Simulating\r\n");
    const auto thread =
        std::make_unique<CCouplingThread>(command(), m_lastOutput, milliseconds(10));
    thread->start();
    QVERIFY(thread->wait(5000));
    QCOMPARE(starts(), 0);
}

void CCouplingThreadRules::endsAtItsNextLookWhenTheSimulatorPrintsAnythingElse_data()
{
    QTest::addColumn<QByteArray>("output");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("another line") << QByteArray("Simulating\r\n");
    QTest::newRow("one more line") << QByteArray("Awaiting Client connection...\r\nSimulating\r\n");
    QTest::newRow("other line end") << QByteArray("Awaiting Client connection...\n");
}

void CCouplingThreadRules::endsAtItsNextLookWhenTheSimulatorPrintsAnythingElse()
{
    QFETCH(QByteArray, output);
    const auto thread = std::make_unique<CCouplingThread>(command(), m_lastOutput, longestStart());
    thread->start();
    QTRY_COMPARE(starts(), 1);
    m_lastOutput->assign(output.toStdString());
    QTRY_VERIFY(thread->isFinished());
    QCOMPARE(starts(), 1);
}

void CCouplingThreadRules::startsTheServerAgainWhileAClientIsAwaited()
{
    const auto thread =
        std::make_unique<CCouplingThread>(command(), m_lastOutput, milliseconds(10));
    thread->start();
    QTRY_VERIFY(starts() >= 3);
}

void CCouplingThreadRules::looksAgainAfterFiveSeconds()
{
    const auto thread = std::make_unique<CCouplingThread>(command(), m_lastOutput);
    QElapsedTimer clock;
    clock.start();
    thread->start();
    QTRY_COMPARE_WITH_TIMEOUT(starts(), 2, 9000);
    QVERIFY(clock.elapsed() >= 5000);
}

void CCouplingThreadRules::stopBeforeTheStartLeavesTheServerOut()
{
    const auto thread = std::make_unique<CCouplingThread>(command(), m_lastOutput);
    thread->stop();
    thread->start();
    QVERIFY(thread->wait(1000));
    QCOMPARE(starts(), 0);
}
