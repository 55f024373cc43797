#include "platform/search_path.h"

#include "app/constants/file_names.h"
#include "platform/existence.h"
#include "platform/text_lines.h"

#include <cstdlib>

namespace platform {

std::vector<std::string> searchPath()
{
    const char* path = std::getenv("PATH");
    return splitAt(path == nullptr ? std::string() : std::string(path), ';');
}

std::string pythonIn(const std::string& folder)
{
    return exists(folder + FileNames::PythonOnPath) ? FileNames::Python : std::string();
}

bool condaIn(const std::string& folder)
{
    return exists(folder + FileNames::CondaExecutableOnPath) ||
           exists(folder + FileNames::CondaBatchOnPath);
}

} // namespace platform
