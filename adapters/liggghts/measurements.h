#pragma once

#include "adapters/liggghts/engine_files.h"
#include "adapters/liggghts/experiment.h"

#include <cstddef>
#include <utility>
#include <vector>

namespace liggghts {

/// What one run of the engine left: states from the release on, and samples over time.
struct SRunRecord
{
    std::vector<SState> states;
    std::vector<std::pair<double, double>> samples; ///< seconds since the start, value
    double timeStep = 0.0;

    /// Seconds since the release.
    double timeOf(std::size_t index) const;
};

/// The results at a saved state, in the order of measuresOf; a run that has ended stays as it was.
std::vector<double> measure(const SExperiment& experiment, const SRunRecord& run,
                            std::size_t index);

/// Mean kinetic energy of a sphere's motion, J.
double meanKineticEnergy(const SExperiment& experiment, const SState& state);

/// Mean of the numbers, and their standard deviation as of a sample; 0 of a single one.
struct SSpread
{
    double mean = 0.0;
    double deviation = 0.0;
};
SSpread spreadOf(const std::vector<double>& numbers);

} // namespace liggghts
