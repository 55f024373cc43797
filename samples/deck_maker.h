#pragma once

#include "samples/deck_description.h"

#include <filesystem>

/// The files of a deck that was written.
struct DeckPaths
{
    std::filesystem::path deck;      ///< <stem>.zek
    std::filesystem::path companion; ///< <stem>.ynd
    std::filesystem::path dataFile;  ///< <stem>_data/0.h5
};

/// Writes a deck with its companion and its data file into an existing folder, over files of the
/// same names. Throws std::runtime_error for files that can't be written or names that don't fit,
/// and H5::Exception where the data file fails.
DeckPaths writeDeck(const DeckDescription& description, const std::filesystem::path& folder,
                    const std::string& stem);
