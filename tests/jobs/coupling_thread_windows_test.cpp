#include "jobs/coupling_thread.h"
#include "tests/jobs/coupling_thread_rules.h"
#include "tests/support/job_maker.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QFileInfo>
#include <QTest>

#include <memory>

/// The server in a command interpreter that stays open behind it. Without a console, as here, the
/// interpreter ends with its input.
class CouplingThreadWindowsTest : public CCouplingThreadRules
{
    Q_OBJECT

private slots:
    void stopLeavesTheInterpreterToTheUser();

private:
    std::string command(const QByteArray& script = QByteArray()) const override;
    std::chrono::milliseconds longestStart() const override
    {
        return std::chrono::milliseconds(1000);
    }
};

std::string CouplingThreadWindowsTest::command(const QByteArray& script) const
{
    const QString server = path("server.bat");
    writeFile(server, "@echo started>>\"%~dp0log\"\r\n" + script);
    return "\"" + server.toStdString() + "\"";
}

void CouplingThreadWindowsTest::stopLeavesTheInterpreterToTheUser()
{
    // Waits until it finds the gate.
    const auto thread = std::make_unique<CCouplingThread>(
        command(":again\r\n@if exist \"%~dp0gate\" goto end\r\n"
                "@goto again\r\n:end\r\n@echo ended>\"%~dp0ended\"\r\n"),
        m_lastOutput);
    thread->start();
    QTRY_COMPARE(starts(), 1);
    thread->stop();
    QVERIFY(thread->wait(1000));
    QVERIFY(!QFileInfo::exists(path("ended")));
    writeFile(path("gate"), "");
    QTRY_VERIFY(QFileInfo::exists(path("ended")));
}

TARNEL_TEST_MAIN(CouplingThreadWindowsTest)

#include "coupling_thread_windows_test.moc"
