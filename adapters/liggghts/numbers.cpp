#include "adapters/liggghts/numbers.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>

namespace liggghts {

std::optional<double> numberFrom(const std::string& text)
{
    char* end = nullptr;
    const double number = std::strtod(text.c_str(), &end);
    if (text.empty() || *end != '\0' || !std::isfinite(number)) {
        return std::nullopt;
    }
    return number;
}

std::string numberText(double value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.9g", value);
    return text;
}

std::string trimmed(const std::string& text)
{
    const char* const blanks = " \t\r\n";
    const std::size_t first = text.find_first_not_of(blanks);
    if (first == std::string::npos) {
        return {};
    }
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::vector<std::string> partsOf(const std::string& text, char separator)
{
    std::vector<std::string> parts;
    if (trimmed(text).empty()) {
        return parts;
    }
    std::size_t from = 0;
    for (std::size_t at = text.find(separator); at != std::string::npos;
         at = text.find(separator, from)) {
        parts.push_back(trimmed(text.substr(from, at - from)));
        from = at + 1;
    }
    parts.push_back(trimmed(text.substr(from)));
    return parts;
}

bool isPrime(unsigned long number)
{
    if (number < 2) {
        return false;
    }
    for (unsigned long divisor = 2; divisor * divisor <= number; ++divisor) {
        if (number % divisor == 0) {
            return false;
        }
    }
    return true;
}

std::vector<unsigned long> primesFrom(unsigned long first, std::size_t count)
{
    std::vector<unsigned long> primes;
    for (unsigned long number = first; primes.size() < count; ++number) {
        if (isPrime(number)) {
            primes.push_back(number);
        }
    }
    return primes;
}

} // namespace liggghts
