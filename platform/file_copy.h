#pragma once

#include <filesystem>
#include <system_error>

namespace platform {

/// What std::filesystem::copy_file does with the options `none` and `update_existing`, also where a
/// standard library can't replace a file.
void copyFile(const std::filesystem::path& from, const std::filesystem::path& to,
              std::filesystem::copy_options options, std::error_code& error);

} // namespace platform
