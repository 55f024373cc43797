#pragma once

#include "adapters/liggghts/deck_values.h"
#include "adapters/liggghts/experiment.h"
#include "adapters/liggghts/geometry.h"
#include "adapters/liggghts/schedule.h"

#include <string>

namespace liggghts {

/// Files that a run reads and leaves in its folder.
namespace EngineFiles {

extern const char* const Input;
extern const char* const Log;
extern const char* const Mesh;
extern const char* const Samples; ///< of a flow or a speed: time and value per line
extern const char* const Final;   ///< the last state; there only if the run came to its end

} // namespace EngineFiles

/// What a run says of itself on lines of its own, each behind "@ ".
namespace EngineWords {

extern const char* const Inserted; ///< with the number of spheres
extern const char* const Settled;
extern const char* const Unsettled; ///< the filled vessel didn't come to rest
extern const char* const Released;
extern const char* const Rested;
extern const char* const Moving; ///< at the end of the time
extern const char* const Done;   ///< the last line

} // namespace EngineWords

/// The engine's input for one seed; a single contact has no use for the seed. Every saved state
/// goes to `save.<step>.dump`.
std::string inputScript(const SExperiment& experiment, const SEngineValues& values,
                        const SSchedule& schedule, const SGeometry& geometry, unsigned long seed);

} // namespace liggghts
