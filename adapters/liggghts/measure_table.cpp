#include "adapters/liggghts/measure_table.h"

namespace liggghts {

std::vector<SMeasure> measuresOf(EExperiment kind)
{
    switch (kind) {
    case EExperiment::AngleOfRepose:
        return {{"angle", "Angle of repose (deg)"},
                {"height", "Heap height (m)"},
                {"radius 90", "Radius of 90 % (m)"}};
    case EExperiment::DrawDown:
        return {{"rate", "Discharge rate (kg/s)"}, {"mass", "Discharged mass (kg)"}};
    case EExperiment::Collapse:
        return {{"run-out", "Run-out (m)"},
                {"height", "Heap height (m)"},
                {"angle", "Angle of repose (deg)"}};
    case EExperiment::Collision:
        return {{"restitution", "Restitution"}};
    case EExperiment::SlidingSphere:
        return {{"static friction", "Static friction"}};
    case EExperiment::RollingSphere:
        return {{"rolling friction", "Rolling friction"}};
    }
    return {};
}

} // namespace liggghts
