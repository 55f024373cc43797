#include "setup/dfg_line.h"

#include <algorithm>

namespace DfgLine {
namespace {

constexpr std::string_view WHITE_SPACE = " \t\n\v\f\r";
constexpr std::string_view DIGITS = "0123456789";
constexpr auto NONE = std::string_view::npos;

/// What is left of `text` behind its leading characters out of `set`.
std::string_view behind(std::string_view text, std::string_view set)
{
    const std::size_t first = text.find_first_not_of(set);
    return first == NONE ? std::string_view() : text.substr(first);
}

bool startsWith(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

/// Whether `text` starts with `count` numbers with a dot between each two.
bool startsWithNumbers(std::string_view text, int count)
{
    for (int number = 0; number < count; ++number) {
        if (number > 0) {
            if (!startsWith(text, ".")) {
                return false;
            }
            text.remove_prefix(1);
        }
        const std::string_view rest = behind(text, DIGITS);
        if (rest.size() == text.size()) {
            return false;
        }
        text = rest;
    }
    return true;
}

bool hasVersion(std::string_view line, std::string_view prefix, int count)
{
    for (std::size_t at = line.find(prefix); at != NONE; at = line.find(prefix, at + 1)) {
        if (startsWithNumbers(line.substr(at + prefix.size()), count)) {
            return true;
        }
    }
    return false;
}

/// First equals sign with a character of the text before it that is no backslash.
std::size_t findSeparator(std::string_view text)
{
    for (std::size_t at = text.find('=', 1); at != NONE; at = text.find('=', at + 1)) {
        if (text[at - 1] != '\\') {
            return at;
        }
    }
    return NONE;
}

std::optional<SFields> splitAt(std::string_view text, std::size_t separator)
{
    std::string_view rest = text.substr(separator + 1);
    rest = rest.substr(0, rest.find('\r'));
    const std::size_t colon = rest.find(':');
    if (colon == NONE) {
        return std::nullopt;
    }
    return SFields{text.substr(0, separator), rest.substr(0, colon), rest.substr(colon + 1)};
}

/// The match that begins at the start of `text`, whose first carriage return stands at `end`.
std::optional<SFields> fieldsFromStart(std::string_view text, std::size_t end)
{
    const std::size_t separator = findSeparator(text.substr(0, end));
    if (separator != NONE) {
        // A later equals sign before `end` has no colon behind it where this one has none.
        if (const auto found = splitAt(text, separator)) {
            return found;
        }
    }
    // The carriage return itself may be the one character before the equals sign.
    const bool separatorBehindEnd = end < text.size() && startsWith(text.substr(end + 1), "=");
    return separatorBehindEnd ? splitAt(text, end + 1) : std::nullopt;
}

} // namespace

bool isFormat(std::string_view line)
{
    constexpr std::string_view START = "A!format=KEYPATHVALUE";
    return startsWith(line, START) && behind(line.substr(START.size()), WHITE_SPACE) == "z";
}

bool hasFormatVersion(std::string_view line)
{
    return hasVersion(line, "A!format-version=", 4);
}

bool hasFileVersion(std::string_view line)
{
    return hasVersion(line, "A!file-version=", 3);
}

bool isBlank(std::string_view line)
{
    for (std::size_t at = line.find('A'); at != NONE; at = line.find('A', at + 1)) {
        if (startsWith(behind(line.substr(at + 1), WHITE_SPACE), "z")) {
            return true;
        }
    }
    return false;
}

std::optional<SFields> fields(std::string_view line)
{
    while (true) {
        const std::size_t end = std::min(line.find('\r'), line.size());
        if (const auto found = fieldsFromStart(line, end)) {
            return found;
        }
        if (end == line.size()) {
            return std::nullopt;
        }
        line.remove_prefix(end + 1);
    }
}

std::string withEscapesReplaced(std::string_view keyPath)
{
    std::string replaced(keyPath);
    for (std::size_t at = replaced.find("\\="); at != std::string::npos;
         at = replaced.find("\\=", at + 2)) {
        replaced[at + 1] = '1';
    }
    return replaced;
}

} // namespace DfgLine
