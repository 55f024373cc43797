#pragma once

#include "samples/contact_law.h"

#include <array>
#include <cstddef>
#include <vector>

/// One body: a sphere that moves in the upright plane.
struct SBody
{
    double radius = 0.0; ///< m
    double mass = 0.0;   ///< kg
    double x = 0.0, y = 0.0;
    double speedX = 0.0, speedY = 0.0;
    double spin = 0.0; ///< rad/s, counter-clockwise
    double forceX = 0.0, forceY = 0.0;
    double torque = 0.0;

    double inertia() const { return 0.4 * mass * radius * radius; }
};

/// The values of a case, for the contacts among the bodies and with the box.
struct SCaseValues
{
    SContactValues particles;
    SContactValues walls;
};

/// A column of bodies against the left wall of a box, held by a gate. The column comes to rest
/// before time 0 in the same way for all cases; at time 0 the gate is gone and the column collapses
/// under the case's values. The same seed gives the same column, to the last bit.
class CHeapExperiment
{
public:
    CHeapExperiment(const SCaseValues& values, unsigned seed);

    /// Steps of `timeStep` seconds each.
    void advance(unsigned long steps, double timeStep);

    const std::vector<SBody>& bodies() const { return m_bodies; }

    /// Longest step in seconds that still resolves a collision.
    static double longestTimeStep();
    static double automaticTimeStep();

private:
    enum EWall { Floor, LeftWall, RightWall, Gate, WallCount };

    struct SPair
    {
        std::size_t first;
        std::size_t second;
        SContactHistory history;
    };

    void fillColumn(unsigned seed);
    void settle();
    void step(double timeStep);
    void applyWeight();
    void applyPairs(double timeStep);
    void applyPair(SPair& pair, double timeStep);
    void applyWalls(double timeStep);
    void applyWall(EWall wall, std::size_t index, double timeStep);
    void integrate(double timeStep);
    void refreshPairs();
    bool pairsAreStale() const;

    CContactLaw m_particleLaw;
    CContactLaw m_wallLaw;
    bool m_gateClosed = true;
    std::vector<SBody> m_bodies;
    std::vector<SPair> m_pairs;
    std::vector<std::array<double, 2>> m_pairPositions;
    std::array<std::vector<SContactHistory>, WallCount> m_wallHistory;
};
