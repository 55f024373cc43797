#pragma once

#include <string>

namespace platform {

/// Shows a folder in the system's file manager; the result is ignored. Blocks on Windows only.
void openFolder(const std::string& folder);

} // namespace platform
