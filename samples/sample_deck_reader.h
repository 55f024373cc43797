#pragma once

#include "samples/heap_experiment.h"

#include <filesystem>
#include <string>

/// The values of a deck that the experiment uses, and between which materials they hold.
struct SSampleDeck
{
    std::string particleMaterial;
    std::string wallMaterial;
    SCaseValues values;
};

/// Files that belong to a deck, by the deck's path.
std::filesystem::path dataFolderOf(const std::filesystem::path& deck);
std::filesystem::path besideDeck(const std::filesystem::path& deck, const std::string& ending);

/// Reads `<deck>_data/0.h5` without changing it. The particles are of the first material, by name,
/// that has an interaction with itself; the box is of the first other material that has one with
/// it. Throws CSampleError with BadDeck.
SSampleDeck readSampleDeck(const std::filesystem::path& deck);
