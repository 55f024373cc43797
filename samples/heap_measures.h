#pragma once

#include "samples/heap_experiment.h"

#include <vector>

/// What an observer measures on the heap at one time. Lengths in metres, from the left wall and
/// from the floor.
struct SHeapMeasures
{
    double runOut = 0.0;        ///< 95 of 100 parts of the mass lie left of it
    double height = 0.0;        ///< the heap's top along the left wall
    double centreHeight = 0.0;  ///< of the centre of mass
    double reposeAngle = 0.0;   ///< degrees, of a line fitted to the surface
    double kineticEnergy = 0.0; ///< J, mean over the bodies, rotation included
};

SHeapMeasures measureHeap(const std::vector<SBody>& bodies);

/// Mean of several columns' measures, so that a single column's chance counts less.
SHeapMeasures meanOf(const std::vector<SHeapMeasures>& measures);
