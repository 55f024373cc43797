#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace liggghts {

enum class EExperiment {
    AngleOfRepose, ///< a cylinder on a floor, lifted or removed
    DrawDown,      ///< a cylinder with a cone below, opened at the bottom
    Collapse,      ///< a column between two walls and a gate, which is removed
    Collision,     ///< two spheres, or a sphere and a wall, meet head-on
    SlidingSphere, ///< a sphere thrown over the floor without spin
    RollingSphere  ///< a sphere rolling over the floor
};

/// What the engine has to know of a material and no deck says.
struct SMaterial
{
    std::string name;
    double youngsModulus = 5e6; ///< Pa
    double poissonsRatio = 0.3;
};

/// Spheres of one radius and their share of the number of all.
struct SRadius
{
    double radius = 0.0025; ///< m
    double share = 1.0;     ///< the shares add up to 1
};

/// An experiment as its key file describes it, in SI units.
struct SExperiment
{
    EExperiment kind = EExperiment::AngleOfRepose;
    SMaterial particles;
    SMaterial wall;
    SMaterial floor;
    double density = 2500.0; ///< kg/m3, of the particles
    std::size_t count = 400;
    std::vector<SRadius> radii{SRadius()};

    double vesselRadius = 0.025;   ///< m, of the cylinder
    double columnWidth = 0.03;     ///< m, from the wall to the gate
    double columnDepth = 0.02;     ///< m, between front and back
    double orificeRadius = 0.014;  ///< m
    double coneAngle = 45.0;       ///< degrees, of the hopper's cone against the floor
    double dropHeight = 0.06;      ///< m, from the orifice down to the floor
    bool lifted = false;           ///< the cylinder is lifted, not removed at once
    double liftSpeed = 0.1;        ///< m/s
    double speed = 0.2;            ///< m/s, of the single spheres
    std::string against = "floor"; ///< what a single sphere collides with
    double gravity = 9.81;         ///< m/s2, downwards
    double restSpeed = 0.005;      ///< m/s, root mean square that counts as rest
    std::string rolling = "epsd2"; ///< the engine's rolling model
    std::vector<unsigned long> seeds{15485863, 32452843, 49979687};
    std::vector<std::string> measures; ///< words of the measures; empty for all
    std::vector<std::string> leaveOut; ///< models of the deck that are not to count

    /// Spheres in a vessel, averaged over seeds; else a single contact, which has no chance in it.
    bool isHeap() const
    {
        return kind == EExperiment::AngleOfRepose || kind == EExperiment::DrawDown ||
               kind == EExperiment::Collapse;
    }

    double smallestRadius() const;
    double largestRadius() const;
    /// Mean volume of a sphere, m3.
    double meanVolume() const;
};

} // namespace liggghts
