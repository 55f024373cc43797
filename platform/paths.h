#pragma once

#include <string>

namespace platform {

/// Every "/" turned into a backslash on Windows; the text itself elsewhere.
std::string withNativeSeparators(std::string path);

/// `name` below `folder`, with the native separator between them.
std::string joinAsPath(const std::string& folder, const std::string& name);

} // namespace platform
