#include "platform/file_copy.h"

#include <windows.h>

namespace fs = std::filesystem;

namespace platform {
namespace {

bool isFolder(const WIN32_FILE_ATTRIBUTE_DATA& attributes)
{
    return (attributes.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

/// Whether both are files and `from` isn't newer.
bool isUpToDate(const fs::path& from, const fs::path& to)
{
    WIN32_FILE_ATTRIBUTE_DATA source = {};
    WIN32_FILE_ATTRIBUTE_DATA target = {};
    return ::GetFileAttributesExW(from.c_str(), GetFileExInfoStandard, &source) != 0 &&
           ::GetFileAttributesExW(to.c_str(), GetFileExInfoStandard, &target) != 0 &&
           !isFolder(source) && !isFolder(target) &&
           ::CompareFileTime(&source.ftLastWriteTime, &target.ftLastWriteTime) <= 0;
}

} // namespace

// libstdc++ takes any two files of Windows for the same one, and so never replaces one.
void copyFile(const fs::path& from, const fs::path& to, fs::copy_options options,
              std::error_code& error)
{
    error.clear();
    const bool mayReplace = options == fs::copy_options::update_existing;
    if (mayReplace && isUpToDate(from, to)) {
        return;
    }
    if (::CopyFileW(from.c_str(), to.c_str(), mayReplace ? FALSE : TRUE) == 0) {
        error.assign(static_cast<int>(::GetLastError()), std::system_category());
    }
}

void copyInto(const fs::path& file, const fs::path& folder, std::error_code& error)
{
    std::error_code ignored;
    const fs::path target = fs::is_directory(folder, ignored) ? folder / file.filename() : folder;
    copyFile(file, target, fs::copy_options::none, error);
}

} // namespace platform
