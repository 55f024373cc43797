#pragma once

#include <filesystem>
#include <vector>

/// What the collation finds in a tree of folders. Links to folders are not followed. A walk that
/// fails raises std::filesystem::filesystem_error with
/// "recursive_directory_iterator::recursive_directory_iterator" for the tree's own folder,
/// "recursive_directory_iterator::operator++" below it and "status" for an entry; an entry or a
/// folder that is gone by the time it is looked at is simply passed over.
namespace ResultFiles {

/// The CSV files of the tree in the order of the walk, those of `folder` itself last: an old
/// combined file there ends the gathering and must not cut off the cases behind it.
std::vector<std::filesystem::path> csvFiles(const std::filesystem::path& folder);

/// Whether a Python script lies in the tree, which tells whose CSV files these are.
bool hasScript(const std::filesystem::path& folder);

} // namespace ResultFiles
