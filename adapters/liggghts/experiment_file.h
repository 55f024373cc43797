#pragma once

#include "adapters/liggghts/experiment.h"

#include <filesystem>
#include <istream>

namespace liggghts {

/// The only file with the ending ".experiment" in the deck's folder. Throws CAdapterError with
/// BadDeck where there is none or more than one.
std::filesystem::path findExperimentFile(const std::filesystem::path& deck);

/// Reads lines of "key = value"; "#" begins a comment. Throws CAdapterError with BadDeck, naming
/// the line, for an unknown key, one that the experiment doesn't know, one that stands twice and a
/// value outside of what the engine takes.
SExperiment readExperiment(std::istream& stream);

/// The same for a file, which has to be there.
SExperiment readExperimentFile(const std::filesystem::path& file);

/// Throws CAdapterError with BadDeck for values that don't go together or that the engine refuses,
/// by name and value.
void checkExperiment(const SExperiment& experiment);

/// "angle of repose" and so on.
const char* nameOf(EExperiment kind);

} // namespace liggghts
