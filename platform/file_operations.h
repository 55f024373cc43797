#pragma once

#include "platform/path_argument.h"

/// Operations whose failure raises std::filesystem::filesystem_error with the operation's name
/// ("copy_file", "copy", "create_directory", "rename", "remove_all") and the paths, whatever the
/// standard library would say.
namespace platform {

void createDirectory(const CPathArgument& folder);

/// Replaces an existing `to` only where `from` is newer.
void copyFileUpdating(const CPathArgument& from, const CPathArgument& to);

/// An existing `to` is an error.
void copyNewFile(const CPathArgument& from, const CPathArgument& to);

/// Copies a file into a folder under its own name.
void copyIntoFolder(const CPathArgument& file, const CPathArgument& folder);

void renamePath(const CPathArgument& from, const CPathArgument& to);
void removeTree(const CPathArgument& path);

} // namespace platform
