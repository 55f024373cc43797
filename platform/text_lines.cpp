#include "platform/text_lines.h"

#include "platform/text_end.h"

#include <fstream>

namespace platform {

bool readLine(std::istream& stream, std::string& line)
{
    if (!std::getline(stream, line)) {
        return false;
    }
    if (const std::size_t textEnd = platform::textEnd(line); textEnd != std::string::npos) {
        line.resize(textEnd);
        stream.setstate(std::ios::eofbit);
        return !line.empty();
    }
    // At the end of the file no LF was read, so a CR there belongs to the text.
    if (!stream.eof() && !line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    return true;
}

bool takeLine(std::string_view& rest, std::string_view& line)
{
    if (rest.empty()) {
        return false;
    }
    const std::size_t end = rest.find('\n');
    line = rest.substr(0, end);
    if (const std::size_t textEnd = platform::textEnd(line); textEnd != std::string_view::npos) {
        line = line.substr(0, textEnd);
        rest = {};
        return !line.empty();
    }
    if (end == std::string_view::npos) {
        rest = {};
        return true;
    }
    rest.remove_prefix(end + 1);
    if (!line.empty() && line.back() == '\r') {
        line.remove_suffix(1);
    }
    return true;
}

std::vector<std::string> readLines(const std::string& path)
{
    // Not in text mode, which would take the CR before readLine does.
    std::ifstream stream(path, std::ios::binary);
    std::vector<std::string> lines;
    for (std::string line; readLine(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::vector<std::string> splitAt(const std::string& text, char separator)
{
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t end = text.find(separator); end != std::string::npos;
         end = text.find(separator, start)) {
        parts.push_back(text.substr(start, end - start));
        start = end + 1;
    }
    parts.push_back(text.substr(start));
    return parts;
}

} // namespace platform
