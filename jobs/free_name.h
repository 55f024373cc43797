#pragma once

#include <string>

/// `stem` itself, or else `stem` with the first counter from 0 behind it, whichever no file or
/// folder bears: nothing is ever overwritten.
std::string firstFreeName(const std::string& stem);
