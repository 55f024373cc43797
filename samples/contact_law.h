#pragma once

/// What a deck says of one kind of contact.
struct SContactValues
{
    double restitution = 0.5;     ///< from just above 0 to 1
    double staticFriction = 0.5;  ///< Coulomb coefficient, from 0
    double rollingFriction = 0.0; ///< rolling coefficient, from 0
    double surfaceEnergy = 0.0;   ///< J/m2, makes a pull-off force
    double energyDensity = 0.0;   ///< J/m3, makes a pull that grows with the contact area
};

/// What two bodies in contact do to one another at one instant; the second body may be a wall.
struct SContactState
{
    double overlap = 0.0;         ///< m, above 0
    double approachSpeed = 0.0;   ///< m/s, above 0 while the bodies come closer
    double slipSpeed = 0.0;       ///< m/s at the contact point, first body against the second
    double rollSpeed = 0.0;       ///< rad/s, first body against the second
    double effectiveMass = 0.0;   ///< kg
    double effectiveRadius = 0.0; ///< m
};

/// Springs that a contact has wound up since it closed.
struct SContactHistory
{
    double slip = 0.0; ///< m
    double roll = 0.0; ///< rad
};

/// Acts on the first body; normal pushes the bodies apart.
struct SContactForce
{
    double normal = 0.0;     ///< N
    double tangential = 0.0; ///< N, along the direction of the slip speed
    double torque = 0.0;     ///< N m of rolling resistance
};

/// Linear springs with dashpots: the normal one loses energy as the restitution says, the
/// tangential one slides at the Coulomb limit, the rolling one at its own.
class CContactLaw
{
public:
    CContactLaw(const SContactValues& values, double stiffness);

    SContactForce force(const SContactState& state, SContactHistory& history,
                        double timeStep) const;

    /// Seconds that a collision of this effective mass lasts without damping.
    static double contactTime(double effectiveMass, double stiffness);

private:
    double attraction(const SContactState& state) const;
    double slide(const SContactState& state, SContactHistory& history, double timeStep,
                 double limit) const;
    double roll(const SContactState& state, SContactHistory& history, double timeStep,
                double limit) const;

    SContactValues m_values;
    double m_stiffness;
    double m_dampingRatio;
};
