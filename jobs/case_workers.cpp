#include "jobs/case_workers.h"

#include "jobs/case_execution.h"
#include "jobs/coupling_thread.h"
#include "jobs/python_thread.h"
#include "platform/child_process.h"

#include <QtConcurrent>

#include <algorithm>
#include <limits>
#include <utility>

CCaseWorkers::CCaseWorkers() = default;

CCaseWorkers::~CCaseWorkers()
{
    cancel(std::numeric_limits<int>::max());
    waitForTasks();
}

void CCaseWorkers::start(const CaseTask& task)
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        ++m_iTasks;
        m_waiting.push_back(task);
    }
    QtConcurrent::run(this, &CCaseWorkers::runNext);
}

CaseTask CCaseWorkers::takeWaiting()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    CaseTask task = std::move(m_waiting.front());
    m_waiting.pop_front();
    return task;
}

void CCaseWorkers::runNext()
{
    const CaseTask task = takeWaiting();
    const int exitCode = CaseExecution::run(task, *this);
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_ended.push_back({task, exitCode});
    }
    emit caseEnded();
    // The last touch: nobody may find the count at 0 before this thread lets go of the lock.
    const std::lock_guard<std::mutex> lock(m_mutex);
    --m_iTasks;
    m_taskEnded.notify_all();
}

void CCaseWorkers::waitForTasks()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    m_taskEnded.wait(lock, [this] { return m_iTasks == 0; });
}

void CCaseWorkers::cancel(int run)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_iCancelledRun = std::max(m_iCancelledRun, run);
    for (const auto& [child, runOfChild] : m_children) {
        if (runOfChild <= run) {
            child->end();
        }
    }
}

std::vector<EndedCase> CCaseWorkers::takeEnded()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return std::exchange(m_ended, {});
}

bool CCaseWorkers::isCancelled(int run) const
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return run <= m_iCancelledRun;
}

void CCaseWorkers::attach(CKillSwitch* child, int run)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_children[child] = run;
    if (run <= m_iCancelledRun) {
        child->end();
    }
}

void CCaseWorkers::detach(CKillSwitch* child)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_children.erase(child);
}

void CCaseWorkers::keep(const std::shared_ptr<CCouplingThread>& thread)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    const auto ended = [](const auto& kept) { return kept->isFinished(); };
    m_couplingThreads.erase(
        std::remove_if(m_couplingThreads.begin(), m_couplingThreads.end(), ended),
        m_couplingThreads.end());
    m_couplingThreads.push_back(thread);
    thread->start();
}

void CCaseWorkers::keep(std::unique_ptr<CPythonThread> thread)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_pythonThreads.push_back(std::move(thread));
    m_pythonThreads.back()->start();
}
