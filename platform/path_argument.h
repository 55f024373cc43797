#pragma once

#include <filesystem>
#include <string>
#include <utility>

namespace platform {

/// A path as the routines of this folder take it. A text is narrow: in the system's ANSI code page
/// on Windows, where the standard libraries disagree on what a narrow path is; as it stands
/// elsewhere.
class CPathArgument
{
public:
    CPathArgument(std::filesystem::path path)
        : m_path(std::move(path))
    {
    }

    CPathArgument(const std::string& text);

    CPathArgument(const char* text)
        : CPathArgument(std::string(text))
    {
    }

    operator const std::filesystem::path&() const { return m_path; }

    auto c_str() const { return m_path.c_str(); }

private:
    std::filesystem::path m_path;
};

} // namespace platform
