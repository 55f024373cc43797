#include "jobs/coupling_thread.h"

#include "app/constants/file_names.h"
#include "jobs/case_output.h"

#include <utility>

namespace {

constexpr unsigned long graceMilliseconds = 1000;

bool awaitsClient(const CCaseOutput& output)
{
    return output.bytes() == FileNames::AwaitingClient;
}

} // namespace

CCouplingThread::CCouplingThread(std::string command, std::shared_ptr<const CCaseOutput> lastOutput,
                                 std::chrono::nanoseconds pause)
    : m_command(std::move(command))
    , m_lastOutput(std::move(lastOutput))
    , m_bAwaitedAtFirst(awaitsClient(*m_lastOutput))
    , m_pause(pause)
{
}

CCouplingThread::~CCouplingThread()
{
    stop();
    if (!wait(graceMilliseconds)) {
        m_interpreter.end();
        wait();
    }
}

void CCouplingThread::stop()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_bStopped = true;
    }
    m_stopping.notify_all();
    m_interpreter.askToEnd();
}

void CCouplingThread::run()
{
    for (bool awaited = m_bAwaitedAtFirst && !isStopped(); awaited; awaited = isAwaited()) {
        m_interpreter.run(m_command);
        sleepUntilStopped();
    }
}

bool CCouplingThread::isStopped() const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return m_bStopped;
}

bool CCouplingThread::isAwaited() const
{
    return !isStopped() && awaitsClient(*m_lastOutput);
}

void CCouplingThread::sleepUntilStopped()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_stopping.wait_for(lock, m_pause, [this] { return m_bStopped; });
}
