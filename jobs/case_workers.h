#pragma once

#include "jobs/case_task.h"

#include <QObject>

#include <condition_variable>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <vector>

class CCouplingThread;
class CKillSwitch;
class CPythonThread;

/// All that runs beside the GUI thread for the cases of a page: the tasks on the global thread
/// pool, their children, and the threads that accompany them. Destroying it ends the children and
/// waits for the tasks and the threads.
class CCaseWorkers : public QObject
{
    Q_OBJECT

public:
    CCaseWorkers();
    ~CCaseWorkers() override;

    /// Runs the case on a thread of the global pool.
    void start(const CaseTask& task);

    /// Ends the children of that run and of those before it at once; tasks of theirs that haven't
    /// come to start a child won't start it.
    void cancel(int run);

    /// The cases that have ended since the last call, in that order.
    std::vector<EndedCase> takeEnded();

    /// For the task itself, on its thread:
    bool isCancelled(int run) const;
    /// `child` is ended when its run is cancelled, now if it was already.
    void attach(CKillSwitch* child, int run);
    void detach(CKillSwitch* child);
    /// Starts the thread and keeps it until it has ended.
    void keep(const std::shared_ptr<CCouplingThread>& thread);
    /// Starts the thread and keeps it as long as the workers live.
    void keep(std::unique_ptr<CPythonThread> thread);

signals:
    /// Emitted on the thread of the case: connect it queued.
    void caseEnded();

private:
    void runNext();
    CaseTask takeWaiting();
    void waitForTasks();

    mutable std::mutex m_mutex;
    std::condition_variable m_taskEnded;
    int m_iTasks = 0;
    std::deque<CaseTask> m_waiting; ///< for a thread of the pool
    int m_iCancelledRun = 0;
    std::map<CKillSwitch*, int> m_children; ///< with the run of each
    std::vector<EndedCase> m_ended;
    std::vector<std::shared_ptr<CCouplingThread>> m_couplingThreads;
    std::vector<std::unique_ptr<CPythonThread>> m_pythonThreads;
};
