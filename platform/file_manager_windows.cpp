#include "platform/file_manager.h"

#include "platform/paths.h"

#include <cstdlib>

namespace platform {

void openFolder(const std::string& folder)
{
    const std::string command = "explorer " + withNativeSeparators(folder);
    std::system(command.c_str());
}

} // namespace platform
