#pragma once

#include <filesystem>

/// Operations whose failure raises std::filesystem::filesystem_error with the operation's name
/// ("copy_file", "copy", "create_directory", "rename", "remove_all") and the paths, whatever the
/// standard library would say.
namespace platform {

void createDirectory(const std::filesystem::path& folder);

/// Replaces an existing `to` only where `from` is newer.
void copyFileUpdating(const std::filesystem::path& from, const std::filesystem::path& to);

/// An existing `to` is an error.
void copyNewFile(const std::filesystem::path& from, const std::filesystem::path& to);

/// Copies a file into a folder under its own name.
void copyIntoFolder(const std::filesystem::path& file, const std::filesystem::path& folder);

void renamePath(const std::filesystem::path& from, const std::filesystem::path& to);
void removeTree(const std::filesystem::path& path);

} // namespace platform
