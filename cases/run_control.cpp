#include "cases/run_control.h"

namespace cases {

void CRunControl::stop()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_stopped = true;
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
