#pragma once

#include "adapters/liggghts/experiment.h"
#include "adapters/liggghts/schedule.h"

#include <filesystem>

namespace liggghts {

/// Where things are in a vessel experiment, in metres. The floor lies at 0, z points upwards.
struct SGeometry
{
    double fillFrom = 0.0; ///< spheres are put in from here
    double fillTo = 0.0;   ///< to here
    double vesselTop = 0.0;
    double reach = 0.0;          ///< of the floor, from the middle or from the column's wall
    double coneHeight = 0.0;     ///< of the hopper
    double binRadius = 0.0;      ///< of what catches a discharge
    unsigned long liftTurns = 0; ///< saved intervals until a lifted cylinder is clear of the heap
    double domainTop = 0.0;
};

SGeometry geometryOf(const SExperiment& experiment, const SSchedule& schedule);

/// Writes the cylinder of a lifted vessel, or the hopper, as a surface of triangles for the engine.
/// Throws CAdapterError with CannotWrite.
void writeVesselMesh(const SExperiment& experiment, const SGeometry& geometry,
                     const std::filesystem::path& file);

/// Whether the vessel is such a surface, which the engine's own shapes can't do.
bool needsMesh(const SExperiment& experiment);

} // namespace liggghts
