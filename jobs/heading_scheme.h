#pragma once

#include "deck/creator_data.h"
#include "parameters/parameter_catalogue.h"

#include <string>

/// The one order in which the headings of the job matrix are written and the values of a case are
/// taken. A visitor is told of each group, with the deck's side of it, which has the keys and the
/// tags, and the case's side, which gets the values:
///
///   keyed(deckMap, caseMap, labels)                 every key of a map, some numbers each
///   tagged(deckValue, caseValue, label, headingTag) a single value, if the deck's tag is set
///   force(deckForce, caseForce)                     seven values, if the deck holds the force
///   shapeForce(deckForce, caseForce)                the shape factors before those seven
///
/// A tagged value is taken by its own tag, but its heading depends on `headingTag`. The headings of
/// a force stand in the order of its labels, three velocities before the flag, while its values are
/// taken in the order of the parameter entries, the flag before the velocities.
namespace HeadingScheme {

template <class Value, class Visitor>
void walkTagged(const CTaggedValue<Value>& deck, CTaggedValue<Value>& record,
                const std::string& label, Visitor& visitor)
{
    visitor.tagged(deck, record, label, deck.first);
}

template <class Visitor>
void walkModelSet(const CModelSet& deck, CModelSet& record, Visitor& visitor)
{
    namespace Labels = ParameterCatalogue;
    visitor.keyed(deck.m_hertzMindlinJkr, record.m_hertzMindlinJkr, {Labels::SurfaceEnergy});
    visitor.keyed(deck.m_hertzMindlinJkrV2, record.m_hertzMindlinJkrV2,
                  {Labels::InterfacialSurfaceEnergy});
    walkTagged(deck.m_linearSpringValue, record.m_linearSpringValue, Labels::CharacteristicVelocity,
               visitor);
    visitor.keyed(deck.m_linearSpring, record.m_linearSpring, {Labels::CharacteristicVelocity});
    visitor.keyed(deck.m_hystereticInteractions, record.m_hystereticInteractions,
                  Labels::HystereticParameters);
    visitor.keyed(deck.m_hystereticYields, record.m_hystereticYields, {Labels::YieldStrength});
    visitor.keyed(deck.m_edinburghAdhesion, record.m_edinburghAdhesion,
                  Labels::EdinburghParameters);
}

/// Both headings of a bonding hang on the tag of its start time, and those of the second version
/// each on the tag of the other.
template <class Visitor>
void walkBonding(const CSurfaceSurfaceModels& deck, CSurfaceSurfaceModels& record, Visitor& visitor)
{
    namespace Labels = ParameterCatalogue;
    visitor.keyed(deck.m_bonding, record.m_bonding, Labels::BondingParameters);
    visitor.tagged(deck.m_bondingTorqueFeedback, record.m_bondingTorqueFeedback,
                   Labels::TorqueFeedback, deck.m_bondingStartTime.first);
    visitor.tagged(deck.m_bondingStartTime, record.m_bondingStartTime, Labels::StartTime,
                   deck.m_bondingStartTime.first);
    visitor.keyed(deck.m_bondingV2, record.m_bondingV2, Labels::BondingV2Parameters);
    visitor.tagged(deck.m_bondingV2TorqueFeedback, record.m_bondingV2TorqueFeedback,
                   Labels::TorqueFeedback, deck.m_bondingV2StartTime.first);
    visitor.tagged(deck.m_bondingV2StartTime, record.m_bondingV2StartTime, Labels::StartTime,
                   deck.m_bondingV2TorqueFeedback.first);
}

template <class Visitor>
void walkSurfaceSurface(const CSurfaceSurfaceModels& deck, CSurfaceSurfaceModels& record,
                        Visitor& visitor)
{
    namespace Labels = ParameterCatalogue;
    walkModelSet(deck, record, visitor);
    walkBonding(deck, record, visitor);
    visitor.keyed(deck.m_heatConduction, record.m_heatConduction, {Labels::ThermalConductivity});
    visitor.keyed(deck.m_linearCohesionV2, record.m_linearCohesionV2, {Labels::EnergyDensity});
}

template <class Visitor>
void walkSurfaceGeometry(const CSurfaceGeometryModels& deck, CSurfaceGeometryModels& record,
                         Visitor& visitor)
{
    namespace Labels = ParameterCatalogue;
    walkModelSet(deck, record, visitor);
    walkTagged(deck.m_standardRollingFriction, record.m_standardRollingFriction,
               Labels::EnableRollingFriction, visitor);
    visitor.keyed(deck.m_linearCohesionV2, record.m_linearCohesionV2, {Labels::EnergyDensity});
    visitor.keyed(deck.m_heatConductionParticle, record.m_heatConductionParticle,
                  {Labels::ThermalConductivity});
    visitor.keyed(deck.m_heatConductionGeometry, record.m_heatConductionGeometry,
                  {Labels::ThermalConductivity, Labels::GeometryTemperature});
    visitor.keyed(deck.m_archardWear, record.m_archardWear, {Labels::WearConstant});
}

template <class Visitor>
void walkExternalForces(const CExternalForces& deck, CExternalForces& record, Visitor& visitor)
{
    visitor.keyed(deck.m_temperatureUpdate, record.m_temperatureUpdate,
                  {ParameterCatalogue::HeatCapacity});
    visitor.shapeForce(deck.m_ganserDrag, record.m_ganserDrag);
    visitor.shapeForce(deck.m_haiderLevenspielDrag, record.m_haiderLevenspielDrag);
    visitor.force(deck.m_magnusLift, record.m_magnusLift);
    visitor.force(deck.m_morsiAlexanderDrag, record.m_morsiAlexanderDrag);
    visitor.force(deck.m_saffmanLift, record.m_saffmanLift);
    visitor.force(deck.m_schillerNaumannDrag, record.m_schillerNaumannDrag);
}

template <class Visitor>
void walk(const CCreatorData& deck, CCreatorData& record, Visitor& visitor)
{
    visitor.keyed(deck.m_interactions, record.m_interactions,
                  ParameterCatalogue::InteractionParameters);
    walkSurfaceSurface(deck.m_surfaceSurface, record.m_surfaceSurface, visitor);
    walkSurfaceGeometry(deck.m_surfaceGeometry, record.m_surfaceGeometry, visitor);
    walkExternalForces(deck.m_externalForces, record.m_externalForces, visitor);
}

} // namespace HeadingScheme
