#pragma once

#include "adapters/liggghts/deck_values.h"
#include "adapters/liggghts/experiment.h"
#include "adapters/liggghts/schedule.h"

#include <string>

namespace liggghts {

/// The engine's input for a collision or for a single sphere on the floor.
std::string singleContactScript(const SExperiment& experiment, const SEngineValues& values,
                                const SSchedule& schedule);

} // namespace liggghts
