#include "platform/paths.h"

#include <filesystem>

namespace platform {

std::string withNativeSeparators(std::string path)
{
    return path;
}

std::string joinAsPath(const std::string& folder, const std::string& name)
{
    return (std::filesystem::path(folder) / name).string();
}

} // namespace platform
