#pragma once

#include <map>
#include <string>
#include <tuple>
#include <utility>

/// A tag and a value; the tag reads "Active" once the value was read from a deck, and a model whose
/// tag is empty is absent from the deck.
template <class T>
using CTaggedValue = std::pair<std::string, T>;

/// Values by material, by material pair ("first<>second") or by another name, in key order.
using SingleMap = std::map<std::string, double>;
using PairMap = std::map<std::string, std::pair<double, double>>;
using TripleMap = std::map<std::string, std::tuple<double, double, double>>;
using QuintupleMap = std::map<std::string, std::tuple<double, double, double, double, double>>;
using SextupleMap =
    std::map<std::string, std::tuple<double, double, double, double, double, double>>;
using SeptupleMap =
    std::map<std::string, std::tuple<double, double, double, double, double, double, double>>;

/// What the groups "SurfaceSurface/" and "SurfaceGeometry/" have alike.
struct CModelSet
{
    SingleMap m_hertzMindlinJkr;
    CTaggedValue<double> m_linearSpringValue; ///< format below 2
    SingleMap m_linearSpring;                 ///< format 2 on
    PairMap m_hystereticInteractions;         ///< damping, stiffness
    SingleMap m_hystereticYields;             ///< by material
    /// constPullOffForce, surfaceEnergy, contactPlasticityRatio, slopeExponential,
    /// tensileExponential, tangentStiffMultiplier
    SextupleMap m_edinburghAdhesion;
    SingleMap m_hertzMindlinJkrV2;
    bool m_bUndampedForceOnly = false;
    bool m_bTangentialRotationOnly = false;
    double m_rollingViscousDampingRatio = 0.0;
    double m_coefficientOfRollingStiffness = 0.0;
    SingleMap m_linearCohesionV2;
    SingleMap m_sprayCoating; ///< by material, format 11 on
};

struct CSurfaceSurfaceModels : CModelSet
{
    /// normalStiffness, shearStiffness, normalStrength, shearStrength, bondRadius
    QuintupleMap m_bonding;
    CTaggedValue<bool> m_bondingTorqueFeedback;
    CTaggedValue<double> m_bondingStartTime;
    /// normalStiffness, normalRange, tangStiffness, tangRange, normalStrength, shearStrength,
    /// bondDiskScale; format 1 on
    SeptupleMap m_bondingV2;
    CTaggedValue<bool> m_bondingV2TorqueFeedback;
    CTaggedValue<double> m_bondingV2StartTime; ///< format 1 and 2
    SingleMap m_heatConduction;                ///< by material
};

struct CSurfaceGeometryModels : CModelSet
{
    CTaggedValue<bool> m_standardRollingFriction;
    SingleMap m_heatConductionParticle; ///< by material
    PairMap m_heatConductionGeometry;
    SingleMap m_archardWear; ///< by material or by material pair, depending on the format
    CTaggedValue<bool> m_archardDeformation; ///< format 11 on
    TripleMap m_okaWear;                     ///< scalingFactor, vickersHardness, wearConstant
    CTaggedValue<bool> m_okaDeformation;     ///< format 11 on
};

/// One external force model; the name stays empty for a model that the deck doesn't hold.
struct CForce
{
    std::string m_sName;
    double m_usingSteadyFlow = 0.0;
    std::tuple<double, double, double> m_steadyFlowVelocity{0.0, 0.0, 0.0};
    double m_viscosity = 0.0;
    double m_fieldScale = 0.0;
    double m_density = 0.0;
};

struct CShapeForce : CForce
{
    SingleMap m_shapeFactors;
};

struct CExternalForces
{
    CShapeForce m_ganserDrag;
    CShapeForce m_haiderLevenspielDrag;
    CForce m_magnusLift;
    CForce m_morsiAlexanderDrag;
    CForce m_saffmanLift;
    CForce m_schillerNaumannDrag;
    SingleMap m_temperatureUpdate; ///< by material
};

/// The model data of one deck, a plain value. Doubles compare exactly, so a record that holds a NaN
/// is unequal even to its own copy.
struct CCreatorData
{
    CCreatorData() = default;
    explicit CCreatorData(std::string name);

    std::string m_sName;      ///< the deck's file name without ".zek"
    TripleMap m_interactions; ///< restitution, static friction, rolling friction
    CSurfaceSurfaceModels m_surfaceSurface;
    CSurfaceGeometryModels m_surfaceGeometry;
    CExternalForces m_externalForces;
};

bool operator==(const CModelSet& left, const CModelSet& right);
bool operator==(const CSurfaceSurfaceModels& left, const CSurfaceSurfaceModels& right);
bool operator==(const CSurfaceGeometryModels& left, const CSurfaceGeometryModels& right);
bool operator==(const CForce& left, const CForce& right);
bool operator==(const CShapeForce& left, const CShapeForce& right);
bool operator==(const CExternalForces& left, const CExternalForces& right);
bool operator==(const CCreatorData& left, const CCreatorData& right);
bool operator!=(const CCreatorData& left, const CCreatorData& right);
