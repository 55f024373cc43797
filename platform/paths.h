#pragma once

#include <filesystem>
#include <string>

namespace platform {

/// The path of a narrow text and the narrow text of a path: in the system's ANSI code page on
/// Windows, where a letter that the page doesn't know becomes a stand-in; the same bytes elsewhere.
std::filesystem::path pathOf(const std::string& text);
std::string textOf(const std::filesystem::path& path);

/// Every "/" turned into a backslash on Windows; the text itself elsewhere.
std::string withNativeSeparators(std::string path);

/// `name` below `folder`, with the native separator between them.
std::string joinAsPath(const std::string& folder, const std::string& name);

} // namespace platform
