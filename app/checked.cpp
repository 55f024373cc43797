#include "app/checked.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <limits>

namespace checked {
namespace {

[[noreturn]] void failInvalid(const char* function)
{
    throw std::invalid_argument(std::string("invalid ") + function + " argument");
}

[[noreturn]] void failRange(const char* function)
{
    throw std::out_of_range(std::string(function) + " argument out of range");
}

template <class Number>
Number convert(const char* function, const std::string& text, Number (*parse)(const char*, char**))
{
    char* end = nullptr;
    errno = 0;
    const Number number = parse(text.c_str(), &end);
    if (end == text.c_str()) {
        failInvalid(function);
    }
    if (errno == ERANGE) {
        failRange(function);
    }
    return number;
}

} // namespace

int stoi(const std::string& text)
{
    const auto number = convert<long long>(
        "stoi", text, [](const char* begin, char** end) { return std::strtoll(begin, end, 10); });
    if (number < std::numeric_limits<int>::min() || number > std::numeric_limits<int>::max()) {
        failRange("stoi");
    }
    return static_cast<int>(number);
}

unsigned long stoul(const std::string& text)
{
    // The sign is taken off first, so that the limit of 32 bits applies to the magnitude.
    const std::size_t first = text.find_first_not_of(" \t\n\v\f\r");
    const bool negative = first != std::string::npos && text[first] == '-';
    const std::string magnitudeText = negative ? text.substr(first + 1) : text;
    if (negative && std::strchr("0123456789", magnitudeText.c_str()[0]) == nullptr) {
        failInvalid("stoul");
    }
    const auto magnitude =
        convert<unsigned long long>("stoul", magnitudeText, [](const char* begin, char** end) {
            return std::strtoull(begin, end, 10);
        });
    if (magnitude > std::numeric_limits<unsigned int>::max()) {
        failRange("stoul");
    }
    const auto narrow = static_cast<unsigned int>(magnitude);
    return negative ? 0U - narrow : narrow;
}

double stod(const std::string& text)
{
    return convert<double>("stod", text, &std::strtod);
}

} // namespace checked
