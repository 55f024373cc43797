#include "deck/creator_data.h"

CCreatorData::CCreatorData(std::string name)
    : m_sName(std::move(name))
{
}

namespace {

auto tied(const CModelSet& set)
{
    return std::tie(set.m_hertzMindlinJkr, set.m_linearSpringValue, set.m_linearSpring,
                    set.m_hystereticInteractions, set.m_hystereticYields, set.m_edinburghAdhesion,
                    set.m_hertzMindlinJkrV2, set.m_bUndampedForceOnly,
                    set.m_bTangentialRotationOnly, set.m_rollingViscousDampingRatio,
                    set.m_coefficientOfRollingStiffness, set.m_linearCohesionV2,
                    set.m_sprayCoating);
}

auto tied(const CSurfaceSurfaceModels& models)
{
    return std::tie(static_cast<const CModelSet&>(models), models.m_bonding,
                    models.m_bondingTorqueFeedback, models.m_bondingStartTime, models.m_bondingV2,
                    models.m_bondingV2TorqueFeedback, models.m_bondingV2StartTime,
                    models.m_heatConduction);
}

auto tied(const CSurfaceGeometryModels& models)
{
    return std::tie(static_cast<const CModelSet&>(models), models.m_standardRollingFriction,
                    models.m_heatConductionParticle, models.m_heatConductionGeometry,
                    models.m_archardWear, models.m_archardDeformation, models.m_okaWear,
                    models.m_okaDeformation);
}

auto tied(const CForce& force)
{
    return std::tie(force.m_sName, force.m_usingSteadyFlow, force.m_steadyFlowVelocity,
                    force.m_viscosity, force.m_fieldScale, force.m_density);
}

auto tied(const CShapeForce& force)
{
    return std::tie(static_cast<const CForce&>(force), force.m_shapeFactors);
}

auto tied(const CExternalForces& forces)
{
    return std::tie(forces.m_ganserDrag, forces.m_haiderLevenspielDrag, forces.m_magnusLift,
                    forces.m_morsiAlexanderDrag, forces.m_saffmanLift, forces.m_schillerNaumannDrag,
                    forces.m_temperatureUpdate);
}

auto tied(const CCreatorData& data)
{
    return std::tie(data.m_sName, data.m_interactions, data.m_externalForces, data.m_surfaceSurface,
                    data.m_surfaceGeometry);
}

} // namespace

bool operator==(const CModelSet& left, const CModelSet& right)
{
    return tied(left) == tied(right);
}

bool operator==(const CSurfaceSurfaceModels& left, const CSurfaceSurfaceModels& right)
{
    return tied(left) == tied(right);
}

bool operator==(const CSurfaceGeometryModels& left, const CSurfaceGeometryModels& right)
{
    return tied(left) == tied(right);
}

bool operator==(const CForce& left, const CForce& right)
{
    return tied(left) == tied(right);
}

bool operator==(const CShapeForce& left, const CShapeForce& right)
{
    return tied(left) == tied(right);
}

bool operator==(const CExternalForces& left, const CExternalForces& right)
{
    return tied(left) == tied(right);
}

bool operator==(const CCreatorData& left, const CCreatorData& right)
{
    return tied(left) == tied(right);
}

bool operator!=(const CCreatorData& left, const CCreatorData& right)
{
    return !(left == right);
}
