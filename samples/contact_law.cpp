#include "samples/contact_law.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr double TangentialShare = 2.0 / 7.0;
constexpr double RollingShare = 0.4;
constexpr double RollingDampingRatio = 0.3;

double dampingRatioOf(double restitution)
{
    const double logarithm = std::log(std::max(restitution, 1e-4));
    return -logarithm / std::sqrt(logarithm * logarithm + Pi * Pi);
}

} // namespace

CContactLaw::CContactLaw(const SContactValues& values, double stiffness)
    : m_values(values)
    , m_stiffness(stiffness)
    , m_dampingRatio(dampingRatioOf(values.restitution))
{
}

SContactForce CContactLaw::force(const SContactState& state, SContactHistory& history,
                                 double timeStep) const
{
    const double dashpot = 2.0 * m_dampingRatio * std::sqrt(m_stiffness * state.effectiveMass);
    const double push = m_stiffness * state.overlap + dashpot * state.approachSpeed;
    const double load = std::max(push, 0.0);

    SContactForce result;
    result.normal = push - attraction(state);
    result.tangential = slide(state, history, timeStep, m_values.staticFriction * load);
    result.torque =
        roll(state, history, timeStep, m_values.rollingFriction * state.effectiveRadius * load);
    return result;
}

double CContactLaw::contactTime(double effectiveMass, double stiffness)
{
    return Pi * std::sqrt(effectiveMass / stiffness);
}

double CContactLaw::attraction(const SContactState& state) const
{
    const double pullOff = 1.5 * Pi * m_values.surfaceEnergy * state.effectiveRadius;
    const double contactArea = 2.0 * Pi * state.effectiveRadius * state.overlap;
    return pullOff + m_values.energyDensity * contactArea;
}

double CContactLaw::slide(const SContactState& state, SContactHistory& history, double timeStep,
                          double limit) const
{
    const double stiffness = TangentialShare * m_stiffness;
    const double dashpot = 2.0 * m_dampingRatio * std::sqrt(stiffness * state.effectiveMass);
    history.slip += state.slipSpeed * timeStep;
    const double wanted = -stiffness * history.slip - dashpot * state.slipSpeed;
    if (std::abs(wanted) <= limit)
        return wanted;
    const double sliding = std::copysign(limit, wanted);
    history.slip = -sliding / stiffness;
    return sliding;
}

double CContactLaw::roll(const SContactState& state, SContactHistory& history, double timeStep,
                         double limit) const
{
    if (limit <= 0.0)
        return 0.0;
    const double arm = state.effectiveRadius * state.effectiveRadius;
    const double stiffness = RollingShare * m_stiffness * arm;
    const double dashpot =
        2.0 * RollingDampingRatio * std::sqrt(stiffness * RollingShare * state.effectiveMass * arm);
    history.roll += state.rollSpeed * timeStep;
    const double wanted = -stiffness * history.roll - dashpot * state.rollSpeed;
    if (std::abs(wanted) <= limit)
        return wanted;
    const double yielding = std::copysign(limit, wanted);
    history.roll = -yielding / stiffness;
    return yielding;
}
