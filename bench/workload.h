#pragma once

#include <filesystem>

/// The inputs that the operations work on.
namespace Workload {

/// A deck "deck" with so many rows in each of six datasets.
void writeTableDeck(const std::filesystem::path& folder, int rows);

/// A deck "deck" of 86 columns, whose data file holds so many MiB of particles besides, and three
/// additional files.
void writeJobDeck(const std::filesystem::path& folder, unsigned int megabytes);

/// Makes the deck of that folder the one of the store, enters its parameters and gives three of
/// them so many values that they make `cases` cases, a multiple of 1,000.
void openJobDeck(const std::filesystem::path& folder, int cases);

} // namespace Workload
