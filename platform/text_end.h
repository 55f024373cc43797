#pragma once

#include <string_view>

namespace platform {

/// Where the text of a file in text mode ends: at its first Ctrl-Z on Windows; npos where nothing
/// in `text` ends it.
std::string_view::size_type textEnd(std::string_view text);

} // namespace platform
