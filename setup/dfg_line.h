#pragma once

#include <optional>
#include <string>
#include <string_view>

/// One line of a .dfg file, without its line end. The matching is that of these ECMAScript
/// patterns, done by hand: a regular expression machine that recurses per character overflows its
/// stack on long values. In that grammar `\A` and `\z` are the letters A and z.
namespace DfgLine {

/// Views into the line; the separators "=" and ":" belong to no field.
struct SFields
{
    std::string_view keyPath;
    std::string_view dataType;
    std::string_view value;
};

/// Whole line: `\A!format=KEYPATHVALUE\s*\z`
bool isFormat(std::string_view line);

/// Anywhere: `\A!format-version=([0-9]+\.[0-9]+\.[0-9]+\.[0-9]+)`
bool hasFormatVersion(std::string_view line);

/// Anywhere: `\A!file-version=([0-9]+\.[0-9]+\.[0-9]+)`
bool hasFileVersion(std::string_view line);

/// Anywhere: `\A\s*\z`
bool isBlank(std::string_view line);

/// Anywhere: `(.*?[^\\]=)(.*?:)(.*)`; a dot stands for any byte but a carriage return. Nothing
/// where the pattern finds nothing.
std::optional<SFields> fields(std::string_view line);

/// Each `\=` turned into a backslash and the digit 1: the default format rules of a replacement
/// know no back-reference `\1`.
std::string withEscapesReplaced(std::string_view keyPath);

} // namespace DfgLine
