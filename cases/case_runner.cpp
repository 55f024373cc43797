#include "cases/case_runner.h"

#include "cases/case_processes.h"
#include "cases/run_control.h"
#include "jobs/case_commands.h"
#include "platform/child_process.h"
#include "platform/interpreter.h"

#include <QProcess>
#include <QStringList>
#include <QSysInfo>

#include <chrono>
#include <csignal>
#include <memory>

namespace fs = std::filesystem;

namespace cases {
namespace {

constexpr int ServerPatienceMs = 5000;
constexpr std::chrono::milliseconds StopPatience(500);

/// What the commands of an analysis call for Python.
const char* const AnalysisFunction = "analysis";

/// A child of the case that a stop of the run ends.
class CControlledChild
{
public:
    CControlledChild(const SBatchCase& batchCase, const SRunSetup& setup, CRunControl& control)
        : m_control(control)
    {
        const fs::path folder = setup.caseRoot / batchCase.folder();
        m_process.setVariable(CaseVariable, QString::fromStdString(folder.string()));
        m_process.setWorkingDirectory(QString::fromStdString(setup.caseRoot.string()));
        m_process.setProcessChannelMode(QProcess::MergedChannels);
    }

    ~CControlledChild()
    {
        m_switch.end();
        finish();
    }

    CControlledChild(const CControlledChild&) = delete;
    CControlledChild& operator=(const CControlledChild&) = delete;

    CChildProcess& process() { return m_process; }

    void start(const QString& program, const QStringList& arguments)
    {
        m_process.start(program, arguments);
        m_switch.arm(m_process.processId());
        m_control.attach(&m_switch);
        m_attached = true;
    }

    bool waitFor(int milliseconds) { return m_process.waitForFinished(milliseconds); }
    void askToEnd() { m_switch.askToEnd(); }

    void finish()
    {
        m_process.waitForFinished(-1);
        m_switch.disarm();
        if (m_attached) {
            m_control.detach(&m_switch);
            m_attached = false;
        }
    }

private:
    CRunControl& m_control;
    CChildProcess m_process;
    CKillSwitch m_switch;
    bool m_attached = false;
};

QString outputFile(const SBatchCase& batchCase, const SRunSetup& setup)
{
    return QString::fromStdString((setup.caseRoot / batchCase.folder() / OutputFileName).string());
}

/// What is to be said of a child that has ended; nothing where it ended well.
QString troubleOf(const CChildProcess& process, const QString& who, SCaseNote& note)
{
    if (process.error() == QProcess::FailedToStart) {
        return who + " didn't start: " + process.errorString();
    }
    if (process.exitStatus() == QProcess::CrashExit) {
        note.signal = process.exitCode();
        return QString("%1 was ended by signal %2").arg(who).arg(note.signal);
    }
    note.exitCode = process.exitCode();
    return note.exitCode == 0 ? QString()
                              : QString("%1 ended with exit code %2").arg(who).arg(note.exitCode);
}

std::unique_ptr<CControlledChild> startServer(const std::string& command,
                                              const SBatchCase& batchCase, const SRunSetup& setup,
                                              CRunControl& control)
{
    if (command.empty()) {
        return nullptr;
    }
    auto server = std::make_unique<CControlledChild>(batchCase, setup, control);
    server->process().setStandardInputFile(QProcess::nullDevice());
    server->process().setStandardOutputFile(
        QString::fromStdString((setup.caseRoot / batchCase.folder() / "coupling.txt").string()));
    // The trap keeps the shell, and with it its group, for as long as the server doesn't end.
    server->start("sh", {"-c", QString::fromStdString("trap : TERM ; " + command)});
    return server;
}

/// The server ends with its case: the next one may want the same port.
void endServer(CControlledChild* server)
{
    if (server != nullptr) {
        server->askToEnd();
        server->waitFor(ServerPatienceMs);
    }
}

/// Runs the analysis; what is to be said of it where it went wrong.
QString analyse(const std::string& command, const SBatchCase& batchCase, const SRunSetup& setup,
                CRunControl& control, SCaseNote& note)
{
    if (command.empty()) {
        return {};
    }
    // The last command of the line is the way back, so the script's own exit code is kept aside.
    const std::string text = AnalysisFunction + ("() { " + setup.python) +
                             " \"$@\"; code=$?; }\ncode=1\n" + command + " ; exit $code" +
                             platform::analysisCommandEnd();
    CControlledChild child(batchCase, setup, control);
    child.process().setStandardOutputFile(outputFile(batchCase, setup), QIODevice::Append);
    child.start(platform::analysisInterpreter(), {});
    child.process().write(QByteArray::fromStdString(text));
    child.process().closeWriteChannel();
    child.finish();
    return troubleOf(child.process(), "the analysis", note);
}

/// A cluster that cancels a task signals all of its processes at once, so that a simulator may end
/// before our own signal has been seen.
void awaitStop(const SCaseNote& note, CRunControl& control)
{
    for (const int number : {SIGINT, SIGTERM, SIGHUP, SIGKILL}) {
        if (note.signal == number) {
            control.isStoppedWithin(StopPatience);
        }
    }
}

void judge(SCaseNote& note, const QString& trouble, bool stopped)
{
    note.end = QDateTime::currentDateTimeUtc();
    note.reason = trouble;
    note.state = trouble.isEmpty() ? CaseState::Done : CaseState::Failed;
    if (stopped && !trouble.isEmpty()) {
        note.state = CaseState::Interrupted;
        note.reason = "the run was stopped";
    }
}

} // namespace

const char* const OutputFileName = "output.txt";

SCaseNote runCase(const SBatchCase& batchCase, const SRunSetup& setup, CRunControl& control,
                  const std::function<void(const SCaseNote&)>& started)
{
    const CaseCommands commands =
        localCommands(batchCase, setup.caseRoot, AnalysisFunction, setup.simulator);
    SCaseNote note;
    note.state = CaseState::Running;
    note.start = QDateTime::currentDateTimeUtc();
    note.host = QSysInfo::machineHostName();
    note.command = QString::fromStdString(commands.m_sSimulator);

    CControlledChild simulator(batchCase, setup, control);
    simulator.process().setStandardInputFile(QProcess::nullDevice());
    simulator.process().setStandardOutputFile(outputFile(batchCase, setup));
    QStringList words = QProcess::splitCommand(note.command);
    const QString program = words.isEmpty() ? QString() : words.takeFirst();
    simulator.start(program, words);
    note.process = simulator.process().processId();
    started(note);
    const auto server = startServer(commands.m_sCoupling, batchCase, setup, control);
    simulator.finish();
    endServer(server.get());

    QString trouble = troubleOf(simulator.process(), "the simulator", note);
    awaitStop(note, control);
    if (trouble.isEmpty() && !control.isStopped()) {
        trouble = analyse(commands.m_sPython, batchCase, setup, control, note);
    } else if (trouble.isEmpty() && !commands.m_sPython.empty()) {
        trouble = "the analysis didn't run";
    }
    if (control.isStopped()) {
        endProcessesOf(setup.caseRoot / batchCase.folder());
    }
    judge(note, trouble, control.isStopped());
    return note;
}

} // namespace cases
