#include "platform/paths.h"

#include "platform/path_argument.h"

namespace platform {

CPathArgument::CPathArgument(const std::string& text)
    : m_path(pathOf(text))
{
}

std::filesystem::path pathOf(const std::string& text)
{
    return text;
}

std::string textOf(const std::filesystem::path& path)
{
    return path.string();
}

std::string withNativeSeparators(std::string path)
{
    return path;
}

std::string joinAsPath(const std::string& folder, const std::string& name)
{
    return (std::filesystem::path(folder) / name).string();
}

} // namespace platform
