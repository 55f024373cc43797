#include "platform/paths.h"

#include "platform/path_argument.h"

#include <windows.h>

#include <algorithm>

namespace platform {

CPathArgument::CPathArgument(const std::string& text)
    : m_path(pathOf(text))
{
}

std::filesystem::path pathOf(const std::string& text)
{
    const int size = static_cast<int>(text.size());
    const int length = ::MultiByteToWideChar(CP_ACP, 0, text.data(), size, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(length), L'\0');
    ::MultiByteToWideChar(CP_ACP, 0, text.data(), size, wide.data(), length);
    return wide;
}

std::string textOf(const std::filesystem::path& path)
{
    const std::wstring& wide = path.native();
    const int size = static_cast<int>(wide.size());
    const int length =
        ::WideCharToMultiByte(CP_ACP, 0, wide.data(), size, nullptr, 0, nullptr, nullptr);
    std::string text(static_cast<std::size_t>(length), '\0');
    ::WideCharToMultiByte(CP_ACP, 0, wide.data(), size, text.data(), length, nullptr, nullptr);
    return text;
}

std::string withNativeSeparators(std::string path)
{
    std::replace(path.begin(), path.end(), '/', '\\');
    return path;
}

std::string joinAsPath(const std::string& folder, const std::string& name)
{
    return textOf(pathOf(folder) / pathOf(name));
}

} // namespace platform
