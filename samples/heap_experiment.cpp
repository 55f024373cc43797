#include "samples/heap_experiment.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr double Gravity = 9.81;
constexpr double Density = 2600.0;
constexpr double MeanRadius = 0.005;
constexpr double RadiusSpread = 0.15;
constexpr double Stiffness = 3000.0;
constexpr double BoxLength = 0.8;
constexpr double GatePosition = 0.08;
constexpr int Columns = 7;
constexpr int Rows = 14;
constexpr double RestTime = 0.3;
constexpr double Skin = 0.3 * MeanRadius;

double sphereMass(double radius)
{
    return Density * 4.0 / 3.0 * Pi * radius * radius * radius;
}

double smallestEffectiveMass()
{
    return 0.5 * sphereMass(MeanRadius * (1.0 - RadiusSpread));
}

// The column rests before it collapses; how it came to rest must not differ from case to case.
SContactValues restingValues()
{
    SContactValues values;
    values.restitution = 0.1;
    values.staticFriction = 0.3;
    return values;
}

// A generator of our own, since the standard distributions differ between libraries.
class CUniform
{
public:
    explicit CUniform(unsigned seed)
        : m_state(seed * 2654435761U + 12345U)
    {
    }

    double between(double low, double high)
    {
        m_state = m_state * 1664525U + 1013904223U;
        return low + (high - low) * static_cast<double>(m_state >> 8U) / 16777216.0;
    }

private:
    unsigned m_state;
};

} // namespace

CHeapExperiment::CHeapExperiment(const SCaseValues& values, unsigned seed)
    : m_particleLaw(restingValues(), Stiffness)
    , m_wallLaw(restingValues(), Stiffness)
{
    fillColumn(seed);
    refreshPairs();
    settle();
    m_gateClosed = false;
    m_particleLaw = CContactLaw(values.particles, Stiffness);
    m_wallLaw = CContactLaw(values.walls, Stiffness);
}

void CHeapExperiment::advance(unsigned long steps, double timeStep)
{
    for (unsigned long i = 0; i < steps; ++i)
        step(timeStep);
}

double CHeapExperiment::longestTimeStep()
{
    return CContactLaw::contactTime(smallestEffectiveMass(), Stiffness) / 10.0;
}

double CHeapExperiment::automaticTimeStep()
{
    return CContactLaw::contactTime(smallestEffectiveMass(), Stiffness) / 20.0;
}

void CHeapExperiment::fillColumn(unsigned seed)
{
    CUniform uniform(seed);
    const double pitch = GatePosition / Columns;
    for (int row = 0; row < Rows; ++row) {
        for (int column = 0; column < Columns; ++column) {
            SBody body;
            body.radius = MeanRadius * uniform.between(1.0 - RadiusSpread, 1.0 + RadiusSpread);
            body.mass = sphereMass(body.radius);
            body.x = pitch * (column + 0.5) + uniform.between(-0.05, 0.05) * body.radius;
            body.y = 2.4 * MeanRadius * (row + 0.5) + uniform.between(-0.05, 0.05) * body.radius;
            m_bodies.push_back(body);
        }
    }
    for (std::vector<SContactHistory>& history : m_wallHistory)
        history.resize(m_bodies.size());
}

void CHeapExperiment::settle()
{
    const double timeStep = automaticTimeStep();
    advance(static_cast<unsigned long>(RestTime / timeStep), timeStep);
}

void CHeapExperiment::step(double timeStep)
{
    if (pairsAreStale())
        refreshPairs();
    applyWeight();
    applyPairs(timeStep);
    applyWalls(timeStep);
    integrate(timeStep);
}

void CHeapExperiment::applyWeight()
{
    for (SBody& body : m_bodies) {
        body.forceX = 0.0;
        body.forceY = -body.mass * Gravity;
        body.torque = 0.0;
    }
}

void CHeapExperiment::applyPairs(double timeStep)
{
    for (SPair& pair : m_pairs)
        applyPair(pair, timeStep);
}

void CHeapExperiment::applyPair(SPair& pair, double timeStep)
{
    SBody& a = m_bodies[pair.first];
    SBody& b = m_bodies[pair.second];
    const double gapX = b.x - a.x;
    const double gapY = b.y - a.y;
    const double reach = a.radius + b.radius;
    const double squared = gapX * gapX + gapY * gapY;
    if (squared >= reach * reach) {
        pair.history = SContactHistory();
        return;
    }
    const double distance = std::sqrt(squared);
    const double normalX = gapX / distance;
    const double normalY = gapY / distance;
    const double speedX = a.speedX - b.speedX;
    const double speedY = a.speedY - b.speedY;

    SContactState state;
    state.overlap = reach - distance;
    state.approachSpeed = speedX * normalX + speedY * normalY;
    state.slipSpeed = -speedX * normalY + speedY * normalX + a.spin * a.radius + b.spin * b.radius;
    state.rollSpeed = a.spin - b.spin;
    state.effectiveMass = a.mass * b.mass / (a.mass + b.mass);
    state.effectiveRadius = a.radius * b.radius / reach;
    const SContactForce force = m_particleLaw.force(state, pair.history, timeStep);

    const double forceX = -force.normal * normalX - force.tangential * normalY;
    const double forceY = -force.normal * normalY + force.tangential * normalX;
    a.forceX += forceX;
    a.forceY += forceY;
    b.forceX -= forceX;
    b.forceY -= forceY;
    a.torque += force.tangential * a.radius + force.torque;
    b.torque += force.tangential * b.radius - force.torque;
}

void CHeapExperiment::applyWalls(double timeStep)
{
    for (std::size_t i = 0; i < m_bodies.size(); ++i) {
        applyWall(Floor, i, timeStep);
        applyWall(LeftWall, i, timeStep);
        applyWall(RightWall, i, timeStep);
        if (m_gateClosed)
            applyWall(Gate, i, timeStep);
    }
}

void CHeapExperiment::applyWall(EWall wall, std::size_t index, double timeStep)
{
    struct SPlane
    {
        double normalX, normalY, offset;
    };
    // A plane's normal points from the body into the wall, and its offset is measured along it.
    static constexpr std::array<SPlane, WallCount> Planes{
        {{0.0, -1.0, 0.0}, {-1.0, 0.0, 0.0}, {1.0, 0.0, BoxLength}, {1.0, 0.0, GatePosition}}};
    SBody& body = m_bodies[index];
    SContactHistory& history = m_wallHistory[wall][index];
    const SPlane& plane = Planes[wall];
    const double depth =
        body.x * plane.normalX + body.y * plane.normalY + body.radius - plane.offset;
    if (depth <= 0.0) {
        history = SContactHistory();
        return;
    }
    SContactState state;
    state.overlap = depth;
    state.approachSpeed = body.speedX * plane.normalX + body.speedY * plane.normalY;
    state.slipSpeed =
        -body.speedX * plane.normalY + body.speedY * plane.normalX + body.spin * body.radius;
    state.rollSpeed = body.spin;
    state.effectiveMass = body.mass;
    state.effectiveRadius = body.radius;
    const SContactForce force = m_wallLaw.force(state, history, timeStep);
    body.forceX += -force.normal * plane.normalX - force.tangential * plane.normalY;
    body.forceY += -force.normal * plane.normalY + force.tangential * plane.normalX;
    body.torque += force.tangential * body.radius + force.torque;
}

void CHeapExperiment::integrate(double timeStep)
{
    for (SBody& body : m_bodies) {
        body.speedX += body.forceX / body.mass * timeStep;
        body.speedY += body.forceY / body.mass * timeStep;
        body.spin += body.torque / body.inertia() * timeStep;
        body.x += body.speedX * timeStep;
        body.y += body.speedY * timeStep;
    }
}

void CHeapExperiment::refreshPairs()
{
    const std::vector<SPair> old = std::move(m_pairs);
    m_pairs.clear();
    m_pairPositions.clear();
    auto known = old.begin();
    for (std::size_t i = 0; i < m_bodies.size(); ++i) {
        m_pairPositions.push_back({m_bodies[i].x, m_bodies[i].y});
        for (std::size_t j = i + 1; j < m_bodies.size(); ++j) {
            const double reach = m_bodies[i].radius + m_bodies[j].radius + Skin;
            const double gapX = m_bodies[j].x - m_bodies[i].x;
            const double gapY = m_bodies[j].y - m_bodies[i].y;
            if (gapX * gapX + gapY * gapY >= reach * reach)
                continue;
            const auto at = std::make_pair(i, j);
            while (known != old.end() && std::make_pair(known->first, known->second) < at)
                ++known;
            const bool same = known != old.end() && known->first == i && known->second == j;
            m_pairs.push_back({i, j, same ? known->history : SContactHistory()});
        }
    }
}

bool CHeapExperiment::pairsAreStale() const
{
    constexpr double allowed = 0.25 * Skin * Skin;
    for (std::size_t i = 0; i < m_bodies.size(); ++i) {
        const double movedX = m_bodies[i].x - m_pairPositions[i][0];
        const double movedY = m_bodies[i].y - m_pairPositions[i][1];
        if (movedX * movedX + movedY * movedY > allowed)
            return true;
    }
    return false;
}
