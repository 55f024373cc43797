#include "platform/file_operations.h"

#include "platform/file_copy.h"

#include <system_error>

namespace fs = std::filesystem;

namespace platform {
namespace {

void raiseOn(const std::error_code& error, const char* operation, const fs::path& first)
{
    if (error) {
        throw fs::filesystem_error(operation, first, error);
    }
}

void raiseOn(const std::error_code& error, const char* operation, const fs::path& first,
             const fs::path& second)
{
    if (error) {
        throw fs::filesystem_error(operation, first, second, error);
    }
}

} // namespace

void createDirectory(const CPathArgument& folder)
{
    std::error_code error;
    fs::create_directory(folder, error);
    raiseOn(error, "create_directory", folder);
}

void copyFileUpdating(const CPathArgument& from, const CPathArgument& to)
{
    std::error_code error;
    copyFile(from, to, fs::copy_options::update_existing, error);
    raiseOn(error, "copy_file", from, to);
}

void copyNewFile(const CPathArgument& from, const CPathArgument& to)
{
    std::error_code error;
    copyFile(from, to, fs::copy_options::none, error);
    raiseOn(error, "copy_file", from, to);
}

void copyIntoFolder(const CPathArgument& file, const CPathArgument& folder)
{
    std::error_code error;
    copyInto(file, folder, error);
    raiseOn(error, "copy", file, folder);
}

void renamePath(const CPathArgument& from, const CPathArgument& to)
{
    std::error_code error;
    fs::rename(from, to, error);
    raiseOn(error, "rename", from, to);
}

void removeTree(const CPathArgument& path)
{
    std::error_code error;
    fs::remove_all(path, error);
    raiseOn(error, "remove_all", path);
}

} // namespace platform
