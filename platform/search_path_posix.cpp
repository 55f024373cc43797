#include "platform/search_path.h"

#include "platform/existence.h"
#include "platform/text_lines.h"

#include <cstdlib>

namespace platform {

std::vector<std::string> searchPath()
{
    const char* path = std::getenv("PATH");
    return splitAt(path == nullptr ? std::string() : std::string(path), ':');
}

std::string pythonIn(const std::string& folder)
{
    for (const char* word : {"python", "python3"}) {
        if (exists(folder + "/" + word)) {
            return word;
        }
    }
    return {};
}

bool condaIn(const std::string& folder)
{
    return exists(folder + "/conda");
}

} // namespace platform
