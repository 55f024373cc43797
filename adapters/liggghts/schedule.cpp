#include "adapters/liggghts/schedule.h"

#include "adapters/liggghts/adapter_error.h"
#include "adapters/liggghts/numbers.h"

#include <algorithm>
#include <cmath>

namespace liggghts {
namespace {

constexpr double Pi = 3.14159265358979323846;

/// Shares of the Rayleigh time. A collision's restitution is right within 0.5 % with the second
/// alone; with the first a heap stays within its seeds' spread of one with a third of that step.
constexpr double AutomaticShare = 0.13;
constexpr double CollisionShare = 0.005;
constexpr double LongestShare = 0.3;

constexpr double SettleLookSeconds = 0.05;
constexpr double MostSettleSeconds = 10.0;
constexpr double SurelyMovingSeconds = 0.1;
constexpr double LookSeconds = 0.05; ///< where only the end is saved
constexpr double SamplingSeconds = 0.002;
constexpr double SingleSamplingSeconds = 0.0005;

double shearModulus(const SMaterial& material)
{
    return material.youngsModulus / (2.0 * (1.0 + material.poissonsRatio));
}

unsigned long stepsIn(double seconds, double timeStep)
{
    return std::max(1UL, static_cast<unsigned long>(std::lround(seconds / timeStep)));
}

/// A whole number of equal steps for a save interval, so that saved times are what was asked for.
double automaticTimeStep(const SExperiment& experiment, double interval)
{
    const double share =
        experiment.kind == EExperiment::Collision ? CollisionShare : AutomaticShare;
    return interval / std::ceil(interval / (share * rayleighTime(experiment)));
}

double checkedTimeStep(const SCommandLine& line, const SExperiment& experiment, double interval)
{
    if (line.timeStep <= 0.0) {
        return automaticTimeStep(experiment, interval);
    }
    const double longest = LongestShare * rayleighTime(experiment);
    if (line.timeStep > longest) {
        throw CAdapterError(CAdapterError::BadCommandLine,
                            "The time step of " + numberText(line.timeStep) +
                                " s behind -t is longer than the " + numberText(longest) +
                                " s that resolve a contact of these particles.");
    }
    return line.timeStep;
}

} // namespace

double rayleighTime(const SExperiment& experiment)
{
    const SMaterial& material = experiment.particles;
    return Pi * experiment.smallestRadius() *
           std::sqrt(experiment.density / shearModulus(material)) /
           (0.1631 * material.poissonsRatio + 0.8766);
}

SSchedule scheduleOf(const SCommandLine& line, const SExperiment& experiment)
{
    const double wanted = line.saveInterval > 0.0 ? line.saveInterval : LookSeconds;
    const double interval = std::min(wanted, line.totalTime);
    SSchedule schedule;
    schedule.timeStep = checkedTimeStep(line, experiment, interval);
    schedule.saveSteps = stepsIn(interval, schedule.timeStep);
    const double saved = static_cast<double>(schedule.saveSteps) * schedule.timeStep;
    schedule.saveTurns = stepsIn(line.totalTime, saved);
    schedule.surelyMoving = static_cast<unsigned long>(std::ceil(SurelyMovingSeconds / saved));
    schedule.settleSteps = stepsIn(SettleLookSeconds, schedule.timeStep);
    schedule.settleTurns = stepsIn(MostSettleSeconds, SettleLookSeconds);
    schedule.samplingSteps =
        stepsIn(experiment.isHeap() ? SamplingSeconds : SingleSamplingSeconds, schedule.timeStep);
    return schedule;
}

} // namespace liggghts
