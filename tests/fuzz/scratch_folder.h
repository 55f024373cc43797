#pragma once

#include <filesystem>
#include <string_view>

/// Where a target lays its files: in memory where the system has such a folder, gone at the end.
namespace ScratchFolder {

const std::filesystem::path& path();

/// Writes the file over any before it and returns its path.
std::filesystem::path write(const std::filesystem::path& name, std::string_view bytes);

} // namespace ScratchFolder
