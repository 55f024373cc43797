#include "adapters/liggghts/experiment.h"

#include <algorithm>
#include <cmath>

namespace liggghts {
namespace {

constexpr double Pi = 3.14159265358979323846;

bool isSmaller(const SRadius& left, const SRadius& right)
{
    return left.radius < right.radius;
}

} // namespace

double SExperiment::smallestRadius() const
{
    return std::min_element(radii.begin(), radii.end(), isSmaller)->radius;
}

double SExperiment::largestRadius() const
{
    return std::max_element(radii.begin(), radii.end(), isSmaller)->radius;
}

double SExperiment::meanVolume() const
{
    double volume = 0.0;
    for (const SRadius& one : radii) {
        volume += one.share * 4.0 / 3.0 * Pi * std::pow(one.radius, 3);
    }
    return volume;
}

} // namespace liggghts
