#pragma once

#include <filesystem>
#include <system_error>

namespace platform {

/// What std::filesystem::copy_file does with the options `none` and `update_existing`, also where a
/// standard library can't replace a file.
void copyFile(const std::filesystem::path& from, const std::filesystem::path& to,
              std::filesystem::copy_options options, std::error_code& error);

/// What std::filesystem::copy does with a file and a folder.
void copyInto(const std::filesystem::path& file, const std::filesystem::path& folder,
              std::error_code& error);

} // namespace platform
