#pragma once

#include "platform/path_argument.h"

namespace platform {

/// Whether a file or folder of that path exists. A path that can't be there (a missing or closed
/// parent, a name that is no name) doesn't; any other failure to ask raises
/// std::filesystem::filesystem_error with "exists".
bool exists(const CPathArgument& path);

} // namespace platform
