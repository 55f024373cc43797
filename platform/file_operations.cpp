#include "platform/file_operations.h"

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

void createDirectory(const fs::path& folder)
{
    std::error_code error;
    fs::create_directory(folder, error);
    raiseOn(error, "create_directory", folder);
}

void copyFileUpdating(const fs::path& from, const fs::path& to)
{
    std::error_code error;
    fs::copy_file(from, to, fs::copy_options::update_existing, error);
    raiseOn(error, "copy_file", from, to);
}

void copyNewFile(const fs::path& from, const fs::path& to)
{
    std::error_code error;
    fs::copy_file(from, to, fs::copy_options::none, error);
    raiseOn(error, "copy_file", from, to);
}

void copyIntoFolder(const fs::path& file, const fs::path& folder)
{
    std::error_code error;
    fs::copy(file, folder, error);
    raiseOn(error, "copy", file, folder);
}

void renamePath(const fs::path& from, const fs::path& to)
{
    std::error_code error;
    fs::rename(from, to, error);
    raiseOn(error, "rename", from, to);
}

void removeTree(const fs::path& path)
{
    std::error_code error;
    fs::remove_all(path, error);
    raiseOn(error, "remove_all", path);
}

} // namespace platform
