#pragma once

#include <istream>
#include <string>
#include <string_view>
#include <vector>

namespace platform {

/// As std::getline on a stream in text mode: files from Windows read alike everywhere, so one CR
/// before the LF is dropped; what ends a text file on this platform ends the stream.
bool readLine(std::istream& stream, std::string& line);

/// As `readLine` on a text that is in memory: takes the first line off the front of `rest`.
bool takeLine(std::string_view& rest, std::string_view& line);

/// All lines of a text file; none where the file can't be opened.
std::vector<std::string> readLines(const std::string& path);

/// The parts of `text` between the separators, empty ones included; never less than one.
std::vector<std::string> splitAt(const std::string& text, char separator);

} // namespace platform
