#pragma once

#include <QString>

#include <string>

/// The paths and names that follow from a deck's path as text.
namespace DeckFiles {

/// The deck's HDF5 file: the first ".zek" becomes "_data/0.h5", separators become native.
std::string dataFile(std::string deckPath);

/// The deck's path with every ".zek" replaced by `extension`, wherever it stands.
QString companion(const QString& deckPath, const std::string& extension);

/// Last component of the path with every ".zek" removed.
std::string deckName(const std::string& deckPath);

} // namespace DeckFiles
