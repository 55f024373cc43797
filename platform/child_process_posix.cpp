#include "platform/child_process.h"

#include <pthread.h>
#include <signal.h>
#ifdef __linux__
#include <sys/prctl.h>
#endif
#include <unistd.h>

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
    const int signalNumber = m_wish == Wish::End ? SIGKILL : SIGTERM;
    const pid_t child = static_cast<pid_t>(m_processId);
    ::kill(-child, signalNumber);
    ::kill(child, signalNumber);
}
