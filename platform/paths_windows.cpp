#include "platform/paths.h"

#include <algorithm>
#include <filesystem>

namespace platform {

std::string withNativeSeparators(std::string path)
{
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

std::string joinAsPath(const std::string& folder, const std::string& name)
{
    return (std::filesystem::path(folder) / name).string();
}

} // namespace platform
