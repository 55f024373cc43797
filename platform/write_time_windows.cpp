#include "platform/write_time.h"

#include <windows.h>

#include <utility>

namespace platform {

// libstdc++ knows whole seconds only.
CWriteTime::CWriteTime(CPathArgument file)
    : m_file(std::move(file))
{
    WIN32_FILE_ATTRIBUTE_DATA attributes = {};
    m_bKnown = ::GetFileAttributesExW(m_file.c_str(), GetFileExInfoStandard, &attributes) != 0;
    m_time = (static_cast<std::int64_t>(attributes.ftLastWriteTime.dwHighDateTime) << 32) |
             attributes.ftLastWriteTime.dwLowDateTime;
}

void CWriteTime::putBack() const
{
    const HANDLE handle =
        m_bKnown ? ::CreateFileW(m_file.c_str(), FILE_WRITE_ATTRIBUTES,
                                 FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                 OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr)
                 : INVALID_HANDLE_VALUE;
    if (handle == INVALID_HANDLE_VALUE) {
        return;
    }
    const FILETIME time = {static_cast<DWORD>(m_time & 0xFFFFFFFF),
                           static_cast<DWORD>(m_time >> 32)};
    ::SetFileTime(handle, nullptr, nullptr, &time);
    ::CloseHandle(handle);
}

} // namespace platform
