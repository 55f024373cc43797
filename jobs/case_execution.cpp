#include "jobs/case_execution.h"

#include "app/constants/file_names.h"
#include "jobs/case_output.h"
#include "jobs/case_task.h"
#include "jobs/case_workers.h"
#include "jobs/coupling_thread.h"
#include "jobs/python_thread.h"
#include "platform/child_process.h"
#include "platform/paths.h"

#include <QStringList>

#include <cstdio>
#include <memory>

namespace {

constexpr int notStarted = -1;

/// One case while its simulator runs.
class Execution
{
public:
    Execution(const CaseTask& task, CCaseWorkers& workers)
        : m_task(task)
        , m_workers(workers)
        , m_lastOutput(std::make_shared<CCaseOutput>(FileNames::AwaitingClient))
    {
    }

    int run()
    {
        startSimulator();
        const std::shared_ptr<CCouplingThread> coupling = startCoupling();
        m_simulator.waitForFinished(-1);
        m_switch.disarm();
        m_workers.detach(&m_switch);
        takeOutput();
        if (coupling != nullptr) {
            coupling->stop();
        }
        startAnalysis();
        return exitCode();
    }

private:
    void startSimulator()
    {
        m_simulator.setWorkingDirectory(QString::fromStdString(m_task.m_sCaseRoot));
        m_simulator.setStandardErrorFile(QProcess::nullDevice());
        m_simulator.setOutputHandler([this] { takeOutput(); });
        QStringList words =
            QProcess::splitCommand(QString::fromStdString(m_task.m_commands.m_sSimulator));
        const QString program = words.isEmpty() ? QString() : words.takeFirst();
        m_simulator.start(program, words);
        m_switch.arm(m_simulator.processId());
        m_workers.attach(&m_switch, m_task.m_iRun);
    }

    void takeOutput()
    {
        const std::string bytes = m_simulator.readAllStandardOutput().toStdString();
        if (m_task.m_output == nullptr || bytes.empty()) {
            return;
        }
        m_task.m_output->append(bytes);
        // One byte more than the line that it is compared with tells as much as all of it.
        m_lastOutput->assign(m_task.m_output->start(FileNames::AwaitingClient.size() + 1));
    }

    std::shared_ptr<CCouplingThread> startCoupling()
    {
        const std::string& command = m_task.m_commands.m_sCoupling;
        if (command.empty()) {
            return nullptr;
        }
        auto thread = std::make_shared<CCouplingThread>(command, m_lastOutput);
        m_workers.keep(thread);
        return thread;
    }

    void startAnalysis()
    {
        const std::string& command = m_task.m_commands.m_sPython;
        if (command.empty()) {
            return;
        }
        const std::string root = platform::textOf(platform::pathOf(m_task.m_sCaseRoot).root_path());
        m_workers.keep(std::make_unique<CPythonThread>(root, command));
        if (m_task.m_output != nullptr) {
            m_task.m_output->append(FileNames::RunningAnalysis);
        }
    }

    int exitCode() const
    {
        if (m_simulator.error() != QProcess::FailedToStart) {
            return m_simulator.exitCode();
        }
        std::fprintf(stderr, "Case %d: %s: %s\n", m_task.m_iCaseNumber,
                     qPrintable(m_simulator.program()), qPrintable(m_simulator.errorString()));
        return notStarted;
    }

    const CaseTask& m_task;
    CCaseWorkers& m_workers;
    const std::shared_ptr<CCaseOutput> m_lastOutput;
    CChildProcess m_simulator;
    CKillSwitch m_switch;
};

} // namespace

int CaseExecution::run(const CaseTask& task, CCaseWorkers& workers)
{
    return workers.isCancelled(task.m_iRun) ? notStarted : Execution(task, workers).run();
}
