#include "platform/text_end.h"

std::string_view::size_type platform::textEnd(std::string_view /*text*/)
{
    return std::string_view::npos;
}
