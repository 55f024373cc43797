#include "platform/file_copy.h"

namespace platform {

void copyFile(const std::filesystem::path& from, const std::filesystem::path& to,
              std::filesystem::copy_options options, std::error_code& error)
{
    std::filesystem::copy_file(from, to, options, error);
}

} // namespace platform
