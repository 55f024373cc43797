#include "jobs/local_run.h"

#include <utility>

void CLocalRun::begin(const std::vector<CaseCommands>& commands, std::string caseRoot,
                      std::string deck, int concurrency)
{
    ++m_iRun;
    m_iConcurrency = concurrency;
    m_caseRoot = std::move(caseRoot);
    m_deck = std::move(deck);
    m_queue.clear();
    for (std::size_t number = 0; number + 1 < commands.size(); ++number) {
        m_queue.push_back({static_cast<int>(number), commands[number]});
    }
    const std::lock_guard<std::mutex> lock(m_trackerMutex);
    m_iRunningCases = 0;
    m_iCompletedCases = 0;
}

bool CLocalRun::canStart() const
{
    const std::lock_guard<std::mutex> lock(m_trackerMutex);
    return !m_queue.empty() && m_iRunningCases < m_iConcurrency;
}

QueuedCase CLocalRun::takeHead()
{
    QueuedCase head = std::move(m_queue.front());
    m_queue.pop_front();
    const std::lock_guard<std::mutex> lock(m_trackerMutex);
    ++m_iRunningCases;
    return head;
}

CaseTask CLocalRun::task(int caseNumber) const
{
    return {m_iRun, caseNumber, m_caseRoot, m_deck, CaseCommands(), nullptr};
}

void CLocalRun::countEnded()
{
    const std::lock_guard<std::mutex> lock(m_trackerMutex);
    --m_iRunningCases;
    ++m_iCompletedCases;
}

int CLocalRun::completedCases() const
{
    const std::lock_guard<std::mutex> lock(m_trackerMutex);
    return m_iCompletedCases;
}
