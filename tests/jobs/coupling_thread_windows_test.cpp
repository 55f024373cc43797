#include "jobs/coupling_thread.h"

#include "jobs/case_output.h"
#include "tests/support/job_maker.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

/// The server in a command interpreter that stays open behind it. Without a console, as here, the
/// interpreter ends with its input.
class CouplingThreadWindowsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void startsTheServerWhateverWasPrintedUntilItRuns();
    void leavesTheServerOutWhereNoClientIsAwaitedAtFirst();
    void endsAtItsNextLookWhenTheSimulatorPrintsAnythingElse_data();
    void endsAtItsNextLookWhenTheSimulatorPrintsAnythingElse();
    void startsTheServerAgainWhileAClientIsAwaited();
    void looksAgainAfterFiveSeconds();
    void stopLeavesTheInterpreterToTheUser();
    void stopBeforeTheStartLeavesTheServerOut();

private:
    std::string command(const QByteArray& script = QByteArray()) const;
    int starts() const { return readFile(m_folder->filePath("log")).count('\n'); }

    std::unique_ptr<QTemporaryDir> m_folder;
    std::shared_ptr<CCaseOutput> m_lastOutput;
};

void CouplingThreadWindowsTest::init()
{
    m_folder = std::make_unique<QTemporaryDir>();
    m_lastOutput = std::make_shared<CCaseOutput>("Awaiting Client connection...\r\n");
}

std::string CouplingThreadWindowsTest::command(const QByteArray& script) const
{
    const QString path = m_folder->filePath(QStringLiteral("server.bat"));
    writeFile(path, "@echo started>>\"%~dp0log\"\r\n" + script);
    return "\"" + path.toStdString() + "\"";
}

void CouplingThreadWindowsTest::startsTheServerWhateverWasPrintedUntilItRuns()
{
    CCouplingThread thread(command(), m_lastOutput, std::chrono::milliseconds(10));
    m_lastOutput->assign("Simulating\r\n");
    thread.start();
    QVERIFY(thread.wait(5000));
    QCOMPARE(starts(), 1);
}

void CouplingThreadWindowsTest::leavesTheServerOutWhereNoClientIsAwaitedAtFirst()
{
    m_lastOutput->assign("Simulating\r\n");
    CCouplingThread thread(command(), m_lastOutput, std::chrono::milliseconds(10));
    thread.start();
    QVERIFY(thread.wait(5000));
    QCOMPARE(starts(), 0);
}

void CouplingThreadWindowsTest::endsAtItsNextLookWhenTheSimulatorPrintsAnythingElse_data()
{
    QTest::addColumn<QByteArray>("output");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("another line") << QByteArray("Simulating\r\n");
    QTest::newRow("one more line") << QByteArray("Awaiting Client connection...\r\nSimulating\r\n");
    QTest::newRow("other line end") << QByteArray("Awaiting Client connection...\n");
}

void CouplingThreadWindowsTest::endsAtItsNextLookWhenTheSimulatorPrintsAnythingElse()
{
    QFETCH(QByteArray, output);
    CCouplingThread thread(command(), m_lastOutput, std::chrono::milliseconds(1000));
    thread.start();
    QTRY_COMPARE(starts(), 1);
    m_lastOutput->assign(output.toStdString());
    QTRY_VERIFY(thread.isFinished());
    QCOMPARE(starts(), 1);
}

void CouplingThreadWindowsTest::startsTheServerAgainWhileAClientIsAwaited()
{
    CCouplingThread thread(command(), m_lastOutput, std::chrono::milliseconds(10));
    thread.start();
    QTRY_VERIFY(starts() >= 3);
}

void CouplingThreadWindowsTest::looksAgainAfterFiveSeconds()
{
    CCouplingThread thread(command(), m_lastOutput);
    QElapsedTimer clock;
    clock.start();
    thread.start();
    QTRY_COMPARE_WITH_TIMEOUT(starts(), 2, 9000);
    QVERIFY(clock.elapsed() >= 5000);
}

void CouplingThreadWindowsTest::stopLeavesTheInterpreterToTheUser()
{
    // Waits until it finds the gate.
    CCouplingThread thread(command(":again\r\n@if exist \"%~dp0gate\" goto end\r\n"
                                   "@goto again\r\n:end\r\n@echo ended>\"%~dp0ended\"\r\n"),
                           m_lastOutput);
    thread.start();
    QTRY_COMPARE(starts(), 1);
    thread.stop();
    QVERIFY(thread.wait(1000));
    QVERIFY(!QFileInfo::exists(m_folder->filePath("ended")));
    writeFile(m_folder->filePath("gate"), "");
    QTRY_VERIFY(QFileInfo::exists(m_folder->filePath("ended")));
}

void CouplingThreadWindowsTest::stopBeforeTheStartLeavesTheServerOut()
{
    CCouplingThread thread(command(), m_lastOutput);
    thread.stop();
    thread.start();
    QVERIFY(thread.wait(1000));
    QCOMPARE(starts(), 0);
}

TARNEL_TEST_MAIN(CouplingThreadWindowsTest)

#include "coupling_thread_windows_test.moc"
