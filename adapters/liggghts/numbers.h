#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace liggghts {

/// The finite number that the whole of a text says.
std::optional<double> numberFrom(const std::string& text);

/// Nine significant digits, as engine inputs and results have them.
std::string numberText(double value);

/// Without white space at both ends.
std::string trimmed(const std::string& text);

/// The trimmed parts between the separators; none where the text is blank.
std::vector<std::string> partsOf(const std::string& text, char separator);

bool isPrime(unsigned long number);

/// `count` primes from `first` on, upwards.
std::vector<unsigned long> primesFrom(unsigned long first, std::size_t count);

} // namespace liggghts
