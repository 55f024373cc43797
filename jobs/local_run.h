#pragma once

#include "jobs/case_task.h"

#include <list>
#include <mutex>
#include <string>
#include <vector>

/// A case that waits for its turn.
struct QueuedCase
{
    int m_iCaseNumber;
    CaseCommands m_commands;
};

/// The queue and the counters of a local run, one run after the other. Lives on the GUI thread.
class CLocalRun
{
public:
    /// Begins the next run. The last element of `commands` belongs to no case and isn't queued.
    void begin(const std::vector<CaseCommands>& commands, std::string caseRoot, std::string deck,
               int concurrency);

    /// The cases of the run that haven't ended belong to an earlier run from now on.
    void leave() { ++m_iRun; }

    /// Number of the run, higher than those of all before.
    int number() const { return m_iRun; }

    void cancel() { m_bCancelRequested = 1; }
    void clearCancel() { m_bCancelRequested = 0; }
    bool isCancelled() const { return m_bCancelRequested != 0; }

    bool hasQueued() const { return !m_queue.empty(); }
    int queuedCount() const { return static_cast<int>(m_queue.size()); }
    /// Whether a case is queued and a slot is free for it.
    bool canStart() const;

    /// Takes the head off the queue, which must not be empty, and counts it as running.
    QueuedCase takeHead();

    /// The task of a case of this run.
    CaseTask task(int caseNumber) const;

    /// Counts a case that was running as completed.
    void countEnded();
    int completedCases() const;

private:
    int m_iRun = 0;
    int m_iConcurrency = 0;
    int m_bCancelRequested = 0;
    mutable std::mutex m_trackerMutex;
    int m_iRunningCases = 0;
    int m_iCompletedCases = 0;
    std::list<QueuedCase> m_queue;
    std::string m_caseRoot;
    std::string m_deck;
};
