#include "platform/existence.h"

#include <windows.h>

#include <system_error>

namespace platform {

bool exists(const CPathArgument& path)
{
    WIN32_FILE_ATTRIBUTE_DATA attributes = {};
    if (::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &attributes) != 0) {
        return true;
    }
    const DWORD error = ::GetLastError();
    if (error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND ||
        error == ERROR_BAD_NETPATH || error == ERROR_INVALID_NAME) {
        return false;
    }
    throw std::filesystem::filesystem_error(
        "exists", path, std::error_code(static_cast<int>(error), std::system_category()));
}

} // namespace platform
