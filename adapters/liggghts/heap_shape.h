#pragma once

#include "adapters/liggghts/engine_files.h"

#include <utility>
#include <vector>

namespace liggghts {

/// Of a heap that is round about its middle. Lengths in metres.
struct SRoundHeap
{
    double angle = 0.0;    ///< degrees, of a line through the surface
    double height = 0.0;   ///< of the highest sphere's top
    double radius90 = 0.0; ///< about the middle, holds the centres of 90 % of the spheres
};

SRoundHeap roundHeapOf(const std::vector<SSphere>& spheres);

/// Of a heap that leans against the wall at x = 0.
struct SLeaningHeap
{
    double runOut = 0.0; ///< x up to which 95 % of the spheres reach
    double height = 0.0; ///< of the highest sphere's top
    double angle = 0.0;  ///< degrees, of a line through the surface
};

SLeaningHeap leaningHeapOf(const std::vector<SSphere>& spheres);

/// Slope and offset of the straight line with the least squares; a slope of 0 where there is none.
struct SLine
{
    double slope = 0.0;
    double offset = 0.0;
};
SLine lineThrough(const std::vector<std::pair<double, double>>& points);

} // namespace liggghts
