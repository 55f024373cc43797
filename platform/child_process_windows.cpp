#include "platform/child_process.h"

#include <windows.h>

CChildProcess::CChildProcess() = default;

CChildProcess::~CChildProcess() = default;

void CChildProcess::setupChildProcess() {}

CKillSwitch::~CKillSwitch()
{
    disarm();
}

void CKillSwitch::arm(qint64 processId)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_processId = processId;
    if (m_processId > 0) {
        m_handle = ::OpenProcess(PROCESS_ALL_ACCESS, TRUE, static_cast<DWORD>(m_processId));
    }
    fulfil();
}

void CKillSwitch::disarm()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_handle != nullptr) {
        ::CloseHandle(m_handle);
    }
    m_handle = nullptr;
    m_processId = 0;
}

void CKillSwitch::end()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_wish = Wish::End;
    fulfil();
}

// There is no request that a program without a window would understand.
void CKillSwitch::askToEnd() {}

void CKillSwitch::fulfil()
{
    if (m_wish == Wish::End && m_handle != nullptr) {
        ::TerminateProcess(m_handle, 0);
    }
}
