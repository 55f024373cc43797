#include "tests/deck/expected_record.h"

#include <tuple>
#include <utility>

namespace {

std::string keyOf(const DeckRow& row)
{
    return row.names.size() == 2 ? pairKey(row.names[0], row.names[1]) : row.names.at(0);
}

template <std::size_t... Index>
auto tupleOf(const std::vector<double>& values, std::index_sequence<Index...>)
{
    return std::make_tuple(values.at(Index)...);
}

SingleMap singles(const DeckRows& rows)
{
    SingleMap map;
    for (const DeckRow& row : rows.value_or(std::vector<DeckRow>())) {
        map[keyOf(row)] = row.values.at(0);
    }
    return map;
}

PairMap pairs(const DeckRows& rows)
{
    PairMap map;
    for (const DeckRow& row : rows.value_or(std::vector<DeckRow>())) {
        map[keyOf(row)] = {row.values.at(0), row.values.at(1)};
    }
    return map;
}

template <class Map>
Map tuples(const DeckRows& rows)
{
    constexpr std::size_t size = std::tuple_size_v<typename Map::mapped_type>;
    Map map;
    for (const DeckRow& row : rows.value_or(std::vector<DeckRow>())) {
        map[keyOf(row)] = tupleOf(row.values, std::make_index_sequence<size>());
    }
    return map;
}

template <class T>
CTaggedValue<T> tagged(const std::optional<T>& value)
{
    return value ? CTaggedValue<T>("Active", *value) : CTaggedValue<T>(std::string(), T());
}

void fillSet(CModelSet& set, const ContactModels& models, int format)
{
    set.m_hertzMindlinJkr = singles(models.hertzMindlinJkr);
    set.m_hertzMindlinJkrV2 = singles(models.hertzMindlinJkrV2);
    if (format < 2) {
        set.m_linearSpringValue = tagged(models.linearSpringValue);
    } else {
        set.m_linearSpring = singles(models.linearSpring);
    }
    set.m_hystereticInteractions = pairs(models.hystereticInteractions);
    set.m_hystereticYields = singles(models.hystereticYields);
    set.m_edinburghAdhesion = tuples<SextupleMap>(models.edinburghAdhesion);
    const TypeCRollingFriction friction =
        models.typeCRollingFriction.value_or(TypeCRollingFriction());
    set.m_coefficientOfRollingStiffness = friction.coefficientOfRollingStiffness;
    set.m_rollingViscousDampingRatio = friction.rollingViscousDampingRatio;
    set.m_bTangentialRotationOnly = friction.tangentialRotationOnly;
    set.m_bUndampedForceOnly = friction.undampedForceOnly;
    set.m_linearCohesionV2 = singles(models.linearCohesionV2);
    if (format >= 11) {
        set.m_sprayCoating = singles(models.sprayCoating);
    }
}

void fillSurface(CSurfaceSurfaceModels& surface, const ParticleModels& models, int format)
{
    fillSet(surface, models, format);
    const BondingModel bonding = models.bonding.value_or(BondingModel());
    surface.m_bonding = tuples<QuintupleMap>(bonding.data);
    surface.m_bondingStartTime = tagged(bonding.startTime);
    surface.m_bondingTorqueFeedback = tagged(bonding.torqueFeedback);
    const BondingModel bondingV2 = models.bondingV2.value_or(BondingModel());
    if (format >= 1) {
        surface.m_bondingV2 = tuples<SeptupleMap>(bondingV2.data);
        surface.m_bondingV2TorqueFeedback = tagged(bondingV2.torqueFeedback);
    }
    if (format == 1 || format == 2) {
        surface.m_bondingV2StartTime = tagged(bondingV2.startTime);
    }
    surface.m_heatConduction = singles(models.heatConduction);
}

void fillGeometry(CSurfaceGeometryModels& geometry, const GeometryModels& models, int format)
{
    fillSet(geometry, models, format);
    geometry.m_standardRollingFriction = tagged(models.standardRollingFriction);
    geometry.m_heatConductionParticle = singles(models.heatConductionParticle);
    geometry.m_heatConductionGeometry = pairs(models.heatConductionGeometry);
    geometry.m_archardWear = singles(models.archardWear);
    if (format >= 11) {
        geometry.m_archardDeformation = tagged(models.archardDeformation);
        geometry.m_okaDeformation = tagged(models.okaDeformation);
        for (const auto& [key, wear] : tuples<TripleMap>(models.okaWear)) {
            const auto& [wearConstant, vickersHardness, scalingFactor] = wear;
            geometry.m_okaWear[key] = {scalingFactor, vickersHardness, wearConstant};
        }
    }
}

void fillForce(CForce& force, const DeckDescription& description, const std::string& name)
{
    const auto found = description.forces.find(name);
    if (found == description.forces.end()) {
        return;
    }
    const ForceModel& model = found->second;
    force.m_sName = name;
    force.m_density = model.density;
    force.m_fieldScale = model.fieldScale;
    force.m_viscosity = model.viscosity;
    force.m_steadyFlowVelocity = {model.steadyFlowVelocity[0], model.steadyFlowVelocity[1],
                                  model.steadyFlowVelocity[2]};
    force.m_usingSteadyFlow = model.usingSteadyFlow;
}

void fillShapeForce(CShapeForce& force, const DeckDescription& description, const std::string& name)
{
    fillForce(force, description, name);
    const auto found = description.forces.find(name);
    if (found != description.forces.end() && found->second.shapeFactors) {
        force.m_shapeFactors.insert(found->second.shapeFactors->begin(),
                                    found->second.shapeFactors->end());
    }
}

void change(double& number)
{
    number *= 2.0;
}

void change(bool& flag)
{
    flag = !flag;
}

template <class T>
void change(CTaggedValue<T>& value)
{
    if (!value.first.empty()) {
        change(value.second);
    }
}

void change(std::pair<double, double>& numbers)
{
    change(numbers.first);
    change(numbers.second);
}

template <class... Numbers>
void change(std::tuple<Numbers...>& numbers)
{
    std::apply([](auto&... number) { (change(number), ...); }, numbers);
}

template <class Value>
void change(std::map<std::string, Value>& map)
{
    for (auto& entry : map) {
        change(entry.second);
    }
}

template <class... Fields>
void changeAll(Fields&... fields)
{
    (change(fields), ...);
}

void changeSet(CModelSet& set)
{
    changeAll(set.m_hertzMindlinJkr, set.m_linearSpringValue, set.m_linearSpring,
              set.m_hystereticInteractions, set.m_hystereticYields, set.m_edinburghAdhesion,
              set.m_hertzMindlinJkrV2, set.m_bUndampedForceOnly, set.m_bTangentialRotationOnly,
              set.m_rollingViscousDampingRatio, set.m_coefficientOfRollingStiffness,
              set.m_linearCohesionV2, set.m_sprayCoating);
}

void changeForce(CForce& force)
{
    changeAll(force.m_usingSteadyFlow, force.m_steadyFlowVelocity, force.m_viscosity,
              force.m_fieldScale, force.m_density);
}

} // namespace

CCreatorData expectedRecord(const DeckDescription& description, int format, const std::string& name)
{
    CCreatorData record(name);
    record.m_interactions = tuples<TripleMap>(description.interactions);
    fillSurface(record.m_surfaceSurface, description.surfaceSurface, format);
    fillGeometry(record.m_surfaceGeometry, description.surfaceGeometry, format);
    CExternalForces& forces = record.m_externalForces;
    fillShapeForce(forces.m_ganserDrag, description, "Ganser Drag");
    fillShapeForce(forces.m_haiderLevenspielDrag, description, "Haider and Levenspiel Drag");
    fillForce(forces.m_magnusLift, description, "Magnus Lift");
    fillForce(forces.m_morsiAlexanderDrag, description, "Morsi and Alexander Drag");
    fillForce(forces.m_saffmanLift, description, "Saffman Lift");
    fillForce(forces.m_schillerNaumannDrag, description, "Schiller and Naumann Drag");
    forces.m_temperatureUpdate = singles(description.temperatureUpdate);
    return record;
}

CCreatorData changedRecord(CCreatorData record)
{
    CSurfaceSurfaceModels& surface = record.m_surfaceSurface;
    CSurfaceGeometryModels& geometry = record.m_surfaceGeometry;
    CExternalForces& forces = record.m_externalForces;
    change(record.m_interactions);
    changeSet(surface);
    changeAll(surface.m_bonding, surface.m_bondingTorqueFeedback, surface.m_bondingStartTime,
              surface.m_bondingV2, surface.m_bondingV2TorqueFeedback, surface.m_bondingV2StartTime,
              surface.m_heatConduction);
    changeSet(geometry);
    changeAll(geometry.m_standardRollingFriction, geometry.m_heatConductionParticle,
              geometry.m_heatConductionGeometry, geometry.m_archardWear,
              geometry.m_archardDeformation, geometry.m_okaWear, geometry.m_okaDeformation);
    for (CForce* force : std::initializer_list<CForce*>{
             &forces.m_ganserDrag, &forces.m_haiderLevenspielDrag, &forces.m_magnusLift,
             &forces.m_morsiAlexanderDrag, &forces.m_saffmanLift, &forces.m_schillerNaumannDrag}) {
        changeForce(*force);
    }
    changeAll(forces.m_ganserDrag.m_shapeFactors, forces.m_haiderLevenspielDrag.m_shapeFactors,
              forces.m_temperatureUpdate);
    return record;
}
