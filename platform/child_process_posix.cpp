#include "platform/child_process.h"

#include <csignal>
#include <pthread.h>
#ifdef __linux__
#include <sys/prctl.h>
#endif
#include <unistd.h>

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace fs = std::filesystem;

namespace {

pid_t startingProcess = 0;

/// Runs in the child right behind the fork. Between that and the start of its program the child
/// waits for its parent; without one it would wait for ever, and hold what it inherited.
void endWithParent()
{
#ifdef __linux__
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != startingProcess) {
        ::_exit(1);
    }
#endif
}

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

CChildProcess::CChildProcess() = default;

CChildProcess::~CChildProcess() = default;

// Runs in the child between fork and exec: only what is safe there.
void CChildProcess::setupChildProcess()
{
    ::setpgid(0, 0);
    // Said again for the case that Qt found another way to fork than the one that has handlers.
    if (startingProcess != 0) {
        endWithParent();
    }
}

void CChildProcess::endWithStartingThreads()
{
    if (startingProcess == 0) {
        startingProcess = ::getpid();
        ::pthread_atfork(nullptr, nullptr, &endWithParent);
    }
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
    const pid_t child = static_cast<pid_t>(m_processId);
    if (m_wish == Wish::End) {
        endTree(child);
        return;
    }
    ::kill(-child, SIGTERM);
    ::kill(child, SIGTERM);
}
