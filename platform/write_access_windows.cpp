#include "platform/write_access.h"

#include <windows.h>

namespace platform {

bool canBeWritten(const CPathArgument& file)
{
    const HANDLE handle = ::CreateFileW(file.c_str(), GENERIC_READ | GENERIC_WRITE,
                                        FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING,
                                        FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) {
        return false;
    }
    ::CloseHandle(handle);
    return true;
}

} // namespace platform
