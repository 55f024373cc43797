#pragma once

#include <optional>
#include <string>

/// The command word of the Python interpreter on the search path. Nothing, after a modal box, where
/// Python or else conda isn't on it; a folder that can't be asked is named in a box and passed
/// over.
std::optional<std::string> findAnalysisTools();
