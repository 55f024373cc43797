#pragma once

#include <istream>
#include <string>
#include <vector>

namespace platform {

/// As std::getline on a stream in text mode: files from Windows read alike everywhere, so one CR
/// before the LF is dropped.
bool readLine(std::istream& stream, std::string& line);

/// All lines of a text file; none where the file can't be opened.
std::vector<std::string> readLines(const std::string& path);

} // namespace platform
