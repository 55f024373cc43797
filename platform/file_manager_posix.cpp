#include "platform/file_manager.h"

#include <cstdlib>

namespace platform {
namespace {

/// The text as one word of the shell.
std::string singleQuoted(const std::string& text)
{
    std::string word = "'";
    for (const char letter : text) {
        word += letter == '\'' ? std::string("'\\''") : std::string(1, letter);
    }
    return word + "'";
}

} // namespace

void openFolder(const std::string& folder)
{
    const std::string command = "if command -v xdg-open >/dev/null 2>&1; then xdg-open " +
                                singleQuoted(folder) +
                                " >/dev/null 2>&1 & else echo 'No file manager was found: xdg-open "
                                "is not on the PATH' >&2; fi";
    [[maybe_unused]] const int ignored = std::system(command.c_str());
}

} // namespace platform
