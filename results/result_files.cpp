#include "results/result_files.h"

#include "app/constants/file_names.h"

#include <algorithm>
#include <functional>
#include <system_error>

namespace fs = std::filesystem;

namespace {

constexpr const char* OPEN_TREE = "recursive_directory_iterator::recursive_directory_iterator";
constexpr const char* WALK_ON = "recursive_directory_iterator::operator++";

/// Takes a regular file; false ends the walk.
using Visitor = std::function<bool(const fs::path& file)>;

bool isRegularFile(const fs::directory_entry& entry)
{
    std::error_code error;
    const fs::file_type type = entry.status(error).type();
    if (type == fs::file_type::none) {
        throw fs::filesystem_error("status", entry.path(), error);
    }
    return type == fs::file_type::regular;
}

bool isFolder(const fs::directory_entry& entry)
{
    std::error_code error;
    return fs::is_directory(entry.symlink_status(error));
}

bool walkBelow(const fs::path& folder, fs::directory_iterator entry, const Visitor& visit);

// A running case renames and deletes folders, so one that has just been listed may be gone.
bool walkSubfolder(const fs::path& folder, const Visitor& visit)
{
    std::error_code error;
    fs::directory_iterator entries(folder, error);
    if (error == std::errc::no_such_file_or_directory) {
        return true;
    }
    if (error) {
        throw fs::filesystem_error(WALK_ON, folder, error);
    }
    return walkBelow(folder, std::move(entries), visit);
}

bool takeEntry(const fs::directory_entry& entry, const Visitor& visit)
{
    if (isRegularFile(entry)) {
        return visit(entry.path());
    }
    return !isFolder(entry) || walkSubfolder(entry.path(), visit);
}

bool walkBelow(const fs::path& folder, fs::directory_iterator entry, const Visitor& visit)
{
    while (entry != fs::directory_iterator()) {
        if (!takeEntry(*entry, visit)) {
            return false;
        }
        std::error_code error;
        entry.increment(error);
        if (error) {
            throw fs::filesystem_error(WALK_ON, folder, error);
        }
    }
    return true;
}

void walk(const fs::path& folder, const Visitor& visit)
{
    std::error_code error;
    fs::directory_iterator entries(folder, error);
    if (error) {
        throw fs::filesystem_error(OPEN_TREE, folder, error);
    }
    walkBelow(folder, std::move(entries), visit);
}

} // namespace

namespace ResultFiles {

std::vector<fs::path> csvFiles(const fs::path& folder)
{
    std::vector<fs::path> files;
    walk(folder, [&files](const fs::path& file) {
        if (file.extension() == FileNames::CsvExtension) {
            files.push_back(file);
        }
        return true;
    });
    const fs::path own = (folder / "").parent_path();
    std::stable_partition(files.begin(), files.end(),
                          [&own](const fs::path& file) { return file.parent_path() != own; });
    return files;
}

bool hasScript(const fs::path& folder)
{
    bool found = false;
    walk(folder, [&found](const fs::path& file) {
        found = file.extension() == FileNames::PythonExtension;
        return !found;
    });
    return found;
}

} // namespace ResultFiles
