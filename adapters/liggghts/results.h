#pragma once

#include "adapters/liggghts/experiment.h"
#include "adapters/liggghts/measure_table.h"
#include "adapters/liggghts/measurements.h"

#include <filesystem>
#include <string>
#include <vector>

namespace liggghts {

/// All runs' results at one time.
struct SResultRow
{
    double time = 0.0;           ///< s since the release
    std::vector<SSpread> values; ///< of the measures asked for, in their order
    double kineticEnergy = 0.0;  ///< J, mean over spheres and runs
};

/// The results over time, a row per saved state of the run that took longest.
struct SResultTable
{
    std::vector<SMeasure> measures;
    std::vector<SResultRow> rows;
};

SResultTable resultsOf(const SExperiment& experiment, const std::vector<SRunRecord>& runs);

/// Writers of a case's results. Each replaces its file and throws CAdapterError with CannotWrite.

/// A table in the simulator's export layout: header lines, then one line per time. Every measure
/// has its spread behind it.
void writeExport(const std::filesystem::path& file, const std::string& deckName,
                 const SExperiment& experiment, const SResultTable& table);

/// An HDF5 file with time, radii, positions and velocities; `compress` packs its datasets.
void writeTimeStep(const std::filesystem::path& file, double time, const SState& state,
                   bool compress);

} // namespace liggghts
