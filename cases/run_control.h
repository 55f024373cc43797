#pragma once

#include "platform/child_process.h"

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <set>

namespace cases {

/// The hand on all children of a run; any thread may stop the run at any time.
class CRunControl
{
public:
    bool isStopped() const { return m_stopped; }

    /// Waits a little for a stop that may be on its way; whether it came.
    bool isStoppedWithin(std::chrono::milliseconds patience);

    /// Ends every child, those included that are about to start.
    void stop();

    void attach(CKillSwitch* child);
    void detach(CKillSwitch* child);

private:
    std::mutex m_mutex;
    std::condition_variable m_stop;
    std::set<CKillSwitch*> m_children;
    std::atomic<bool> m_stopped{false};
};

} // namespace cases
