#include "platform/text_end.h"

std::string_view::size_type platform::textEnd(std::string_view text)
{
    constexpr char CTRL_Z = '\x1a';
    return text.find(CTRL_Z);
}
