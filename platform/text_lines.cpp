#include "platform/text_lines.h"

#include <fstream>

namespace platform {

bool readLine(std::istream& stream, std::string& line)
{
    if (!std::getline(stream, line)) {
        return false;
    }
    // At the end of the file no LF was read, so a CR there belongs to the text.
    if (!stream.eof() && !line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    return true;
}

std::vector<std::string> readLines(const std::string& path)
{
    std::ifstream stream(path);
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
