#include "adapters/liggghts/measurements.h"

#include "adapters/liggghts/heap_shape.h"

#include <algorithm>
#include <cmath>

namespace liggghts {
namespace {

using Samples = std::vector<std::pair<double, double>>;

/// Shares of the discharged mass between which the flow is steady.
constexpr double SteadyFrom = 0.1;
constexpr double SteadyTo = 0.9;
constexpr std::size_t FewestPoints = 3;

Samples samplesWithin(const Samples& samples, double least, double most)
{
    Samples within;
    std::copy_if(samples.begin(), samples.end(), std::back_inserter(within),
                 [least, most](const std::pair<double, double>& sample) {
                     return sample.second >= least && sample.second <= most;
                 });
    return within;
}

double slopeOf(const Samples& samples)
{
    return samples.size() < FewestPoints ? 0.0 : lineThrough(samples).slope;
}

/// kg/s and kg at that time since the start.
std::vector<double> discharge(const Samples& samples, double time)
{
    Samples past;
    std::copy_if(samples.begin(), samples.end(), std::back_inserter(past),
                 [time](const std::pair<double, double>& sample) { return sample.first <= time; });
    if (past.empty()) {
        return {0.0, 0.0};
    }
    const double mass = past.back().second;
    return {slopeOf(samplesWithin(past, SteadyFrom * mass, SteadyTo * mass)), mass};
}

/// Speed along the line of a head-on collision, of the second body against the first or of the one
/// body against a plane.
double closingSpeed(const SState& state)
{
    const std::vector<SSphere>& spheres = state.spheres;
    return spheres.size() == 1 ? spheres[0].speed[2]
                               : spheres.at(1).speed[2] - spheres.at(0).speed[2];
}

double restitution(const SRunRecord& run, std::size_t index)
{
    const double after = closingSpeed(run.states[index]);
    return std::max(0.0, -after / closingSpeed(run.states.front()));
}

/// A sphere that slides loses the friction's share of gravity.
double slidingFriction(const SExperiment& experiment, const Samples& samples)
{
    const double speed = experiment.speed;
    return std::abs(slopeOf(samplesWithin(samples, 0.75 * speed, 0.98 * speed))) /
           experiment.gravity;
}

/// A rolling one loses 5/7 of it, since its spin is to be slowed down as well.
double rollingFriction(const SExperiment& experiment, const Samples& samples)
{
    const double speed = experiment.speed;
    return 1.4 * std::abs(slopeOf(samplesWithin(samples, 0.15 * speed, 0.95 * speed))) /
           experiment.gravity;
}

} // namespace

double SRunRecord::timeOf(std::size_t index) const
{
    return static_cast<double>(states[index].step - states.front().step) * timeStep;
}

std::vector<double> measure(const SExperiment& experiment, const SRunRecord& run, std::size_t index)
{
    const std::size_t at = std::min(index, run.states.size() - 1);
    const SState& state = run.states[at];
    switch (experiment.kind) {
    case EExperiment::AngleOfRepose: {
        const SRoundHeap heap = roundHeapOf(state.spheres);
        return {heap.angle, heap.height, heap.radius90};
    }
    case EExperiment::DrawDown:
        return discharge(run.samples, static_cast<double>(state.step) * run.timeStep);
    case EExperiment::Collapse: {
        const SLeaningHeap heap = leaningHeapOf(state.spheres);
        return {heap.runOut, heap.height, heap.angle};
    }
    case EExperiment::Collision:
        return {restitution(run, at)};
    case EExperiment::SlidingSphere:
        return {slidingFriction(experiment, run.samples)};
    case EExperiment::RollingSphere:
        return {rollingFriction(experiment, run.samples)};
    }
    return {};
}

double meanKineticEnergy(const SExperiment& experiment, const SState& state)
{
    double sum = 0.0;
    for (const SSphere& sphere : state.spheres) {
        const double mass =
            experiment.density * 4.0 / 3.0 * std::acos(-1.0) * std::pow(sphere.radius, 3);
        for (const double speed : sphere.speed) {
            sum += 0.5 * mass * speed * speed;
        }
    }
    return sum / static_cast<double>(std::max<std::size_t>(1, state.spheres.size()));
}

SSpread spreadOf(const std::vector<double>& numbers)
{
    SSpread spread;
    const auto count = static_cast<double>(numbers.size());
    for (const double number : numbers) {
        spread.mean += number / count;
    }
    if (numbers.size() > 1) {
        double squares = 0.0;
        for (const double number : numbers) {
            squares += (number - spread.mean) * (number - spread.mean);
        }
        spread.deviation = std::sqrt(squares / (count - 1.0));
    }
    return spread;
}

} // namespace liggghts
