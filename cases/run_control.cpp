#include "cases/run_control.h"

namespace cases {

bool CRunControl::isStoppedWithin(std::chrono::milliseconds patience)
{
    std::unique_lock<std::mutex> lock(m_mutex);
    return m_stop.wait_for(lock, patience, [this] { return m_stopped.load(); });
}

void CRunControl::stop()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_stopped = true;
    m_stop.notify_all();
    for (CKillSwitch* child : m_children) {
        child->end();
    }
}

void CRunControl::attach(CKillSwitch* child)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_children.insert(child);
    if (m_stopped) {
        child->end();
    }
}

void CRunControl::detach(CKillSwitch* child)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_children.erase(child);
}

} // namespace cases
