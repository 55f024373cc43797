#pragma once

#include <optional>
#include <string>

class CJobMatrix;

/// Makes a new job folder below `saveLocation`: the matrix and copies of all that the deck and its
/// analysis need. Returns its path; nothing where there is no such location, no options string or
/// no deck. Throws std::filesystem::filesystem_error "create_directory", "copy_file" or "copy" and
/// leaves the partly filled folder behind.
std::optional<std::string> generateJobFolder(CJobMatrix& matrix, const std::string& saveLocation);
