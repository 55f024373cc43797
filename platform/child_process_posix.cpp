#include "platform/child_process.h"

#include "platform/child_state.h"

#include <QFile>

#include <csignal>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace fs = std::filesystem;

namespace {

/// The parent of a process, 0 where there is none of that name.
pid_t parentOf(const std::string& process)
{
    std::ifstream stream("/proc/" + process + "/stat");
    const std::string text{std::istreambuf_iterator<char>(stream),
                           std::istreambuf_iterator<char>()};
    // State and parent stand behind the name in parentheses, which may hold anything.
    const std::size_t name = text.rfind(')');
    std::istringstream fields(name == std::string::npos ? std::string() : text.substr(name + 1));
    std::string state;
    pid_t parent = 0;
    fields >> state >> parent;
    return parent;
}

/// What a process has started, and what that has started. Nothing where the system has no /proc.
std::vector<pid_t> descendantsOf(pid_t ancestor)
{
    std::multimap<pid_t, pid_t> children;
    std::error_code error;
    for (fs::directory_iterator entry("/proc", error), end; !error && entry != end;
         entry.increment(error)) {
        const std::string name = entry->path().filename().string();
        if (name.find_first_not_of("0123456789") == std::string::npos) {
            children.emplace(parentOf(name), static_cast<pid_t>(std::stol(name)));
        }
    }
    std::vector<pid_t> found{ancestor};
    for (std::size_t index = 0; index < found.size(); ++index) {
        const auto [first, last] = children.equal_range(found[index]);
        for (auto child = first; child != last; ++child) {
            found.push_back(child->second);
        }
    }
    found.erase(found.begin());
    return found;
}

/// The group and what has left it, which a launcher of parallel processes does.
void endTree(pid_t child)
{
    // Stopped, it starts nothing more between the look and the end.
    ::kill(-child, SIGSTOP);
    ::kill(child, SIGSTOP);
    const std::vector<pid_t> descendants = descendantsOf(child);
    ::kill(-child, SIGKILL);
    ::kill(child, SIGKILL);
    for (const pid_t descendant : descendants) {
        ::kill(descendant, SIGKILL);
    }
}

} // namespace

CChildProcess::CChildProcess()
    : m_state(std::make_unique<State>())
{
}

CChildProcess::~CChildProcess()
{
    m_state->outputHandler = nullptr;
    kill();
    waitForFinished(-1);
}

void CChildProcess::endWithStartingThreads()
{
    State::endsWithThreads = true;
}

void CChildProcess::setWorkingDirectory(const QString& folder)
{
    m_state->folder = folder;
}

void CChildProcess::setVariable(const QString& name, const QString& value)
{
    m_state->variables.push_back(QFile::encodeName(name + '=' + value));
}

void CChildProcess::setProcessChannelMode(QProcess::ProcessChannelMode mode)
{
    m_state->mode = mode;
}

void CChildProcess::setStandardInputFile(const QString& file)
{
    m_state->inputFile = file;
}

void CChildProcess::setStandardOutputFile(const QString& file, QIODevice::OpenMode mode)
{
    m_state->outputFile = file;
    m_state->outputMode = mode;
}

void CChildProcess::setStandardErrorFile(const QString& file)
{
    m_state->errorFile = file;
}

void CChildProcess::setOutputHandler(std::function<void()> handler)
{
    m_state->outputHandler = std::move(handler);
}

void CChildProcess::start(const QString& program, const QStringList& arguments)
{
    m_state->program = program;
    m_state->start(arguments);
}

qint64 CChildProcess::processId() const
{
    return m_state->process;
}

QString CChildProcess::program() const
{
    return m_state->program;
}

bool CChildProcess::waitForStarted() const
{
    return m_state->process != 0;
}

bool CChildProcess::waitForReadyRead(int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    m_state->hasNewOutput = false;
    while (!m_state->hasNewOutput && m_state->output.isOpen() && !deadline.hasExpired()) {
        m_state->step(deadline);
    }
    return m_state->hasNewOutput;
}

bool CChildProcess::waitForFinished(int milliseconds)
{
    if (!m_state->running) {
        return false;
    }
    const QDeadlineTimer deadline(milliseconds);
    do {
        m_state->step(deadline);
    } while (m_state->running && !deadline.hasExpired());
    return !m_state->running;
}

bool CChildProcess::canReadLine() const
{
    return m_state->unread.contains('\n');
}

QByteArray CChildProcess::readLine()
{
    const int end = m_state->unread.indexOf('\n');
    QByteArray line = m_state->unread.left(end < 0 ? m_state->unread.size() : end + 1);
    m_state->unread.remove(0, line.size());
    return line;
}

QByteArray CChildProcess::readAllStandardOutput()
{
    return std::exchange(m_state->unread, {});
}

// A child that takes nothing more is no reason for the program to end.
void CChildProcess::write(const QByteArray& bytes)
{
    std::signal(SIGPIPE, SIG_IGN);
    m_state->toWrite.append(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    m_state->writeInput();
}

void CChildProcess::closeWriteChannel()
{
    m_state->closesInput = true;
    m_state->writeInput();
}

void CChildProcess::kill()
{
    if (m_state->running) {
        ::kill(m_state->process, SIGKILL);
    }
}

QProcess::ProcessError CChildProcess::error() const
{
    return m_state->error;
}

QString CChildProcess::errorString() const
{
    return m_state->trouble;
}

QProcess::ExitStatus CChildProcess::exitStatus() const
{
    return m_state->exitStatus;
}

int CChildProcess::exitCode() const
{
    return m_state->exitCode;
}

CKillSwitch::~CKillSwitch() = default;

void CKillSwitch::arm(qint64 processId)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_processId = processId;
    if (m_processId > 0) {
        // Said in the child as well: whoever comes first, the group is there from here on.
        ::setpgid(static_cast<pid_t>(m_processId), static_cast<pid_t>(m_processId));
    }
    fulfil();
}

void CKillSwitch::disarm()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_processId = 0;
}

void CKillSwitch::end()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_wish = Wish::End;
    fulfil();
}

void CKillSwitch::askToEnd()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_wish == Wish::None) {
        m_wish = Wish::Ask;
    }
    fulfil();
}

void CKillSwitch::fulfil()
{
    if (m_wish == Wish::None || m_processId <= 0) {
        return;
    }
    const auto child = static_cast<pid_t>(m_processId);
    if (m_wish == Wish::End) {
        endTree(child);
        return;
    }
    ::kill(-child, SIGTERM);
    ::kill(child, SIGTERM);
}
