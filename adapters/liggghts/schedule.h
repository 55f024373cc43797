#pragma once

#include "adapters/liggghts/command_line.h"
#include "adapters/liggghts/experiment.h"

namespace liggghts {

/// How the time of one engine run is cut up.
struct SSchedule
{
    double timeStep = 0.0;           ///< s
    unsigned long settleSteps = 0;   ///< from one look at the filled vessel to the next
    unsigned long settleTurns = 0;   ///< looks until the filling is given up
    unsigned long saveSteps = 0;     ///< from one saved time step and look for rest to the next
    unsigned long saveTurns = 0;     ///< saved time steps at most
    unsigned long surelyMoving = 0;  ///< turns behind the release in which nobody looks for rest
    unsigned long samplingSteps = 0; ///< between two samples of a flow or of a speed
};

/// Seconds that a surface wave takes over the smallest particle.
double rayleighTime(const SExperiment& experiment);

/// Throws CAdapterError with BadCommandLine for a time step that doesn't resolve a contact.
SSchedule scheduleOf(const SCommandLine& line, const SExperiment& experiment);

} // namespace liggghts
