#include "parameters/property_tree.h"

#include "deck/deck_store.h"
#include "parameters/parameter_catalogue.h"
#include "parameters/parameter_entry.h"
#include "parameters/parameter_limits.h"
#include "parameters/property_tree_widget_item.h"

#include <QTreeWidget>

#include <cstring>
#include <map>
#include <tuple>

namespace Catalogue = ParameterCatalogue;

namespace {

using FlowField = std::tuple<double, double, double, bool>;

std::vector<CaseValue> numbersOf(double value)
{
    return {value};
}

std::vector<CaseValue> numbersOf(bool value)
{
    return {value};
}

/// The elements of a pair or tuple in their order.
template <class Tuple>
std::vector<CaseValue> numbersOf(const Tuple& values)
{
    return std::apply([](auto... value) { return std::vector<CaseValue>{CaseValue(value)...}; },
                      values);
}

/// The flag is the lowest byte of the deck's double, which is 0 for 0.0 and for 1.0 alike.
bool flowFlag(double usingSteadyFlow)
{
    unsigned char lowest = 0;
    std::memcpy(&lowest, &usingSteadyFlow, 1);
    return lowest != 0;
}

CPropertyTreeWidgetItem* makeGroup(QTreeWidgetItem* parent, const QString& label)
{
    return new CPropertyTreeWidgetItem(parent, label, nullptr);
}

} // namespace

CPropertyTree::CPropertyTree(QTreeWidget* tree, int& fieldCount,
                             std::vector<CPropertyTreeWidgetItem*>& treeItems)
    : m_tree(tree)
    , m_fieldCount(fieldCount)
    , m_treeItems(treeItems)
{
}

void CPropertyTree::build(const CCreatorData& deck, int format)
{
    m_iFormat = format;
    addMap(deck.m_interactions, Catalogue::Interactions, Catalogue::InteractionParameters, m_tree);
    auto* models = new CPropertyTreeWidgetItem(m_tree, Catalogue::ContactModels, nullptr);
    addParticleToParticle(deck.m_surfaceSurface, makeGroup(models, Catalogue::ParticleToParticle));
    addParticleToGeometry(deck.m_surfaceGeometry, makeGroup(models, Catalogue::ParticleToGeometry));
    addForces(deck.m_externalForces, makeGroup(models, Catalogue::ParticleBodyForce));
}

void CPropertyTree::addModelSet(const CModelSet& set, QTreeWidgetItem* parent)
{
    addMap(set.m_hertzMindlinJkr, Catalogue::HertzMindlinJkr, {Catalogue::SurfaceEnergy}, parent);
    addMap(set.m_hertzMindlinJkrV2, Catalogue::HertzMindlinJkrV2,
           {Catalogue::InterfacialSurfaceEnergy}, parent);
    if (m_iFormat >= 2) {
        addMap(set.m_linearSpring, Catalogue::LinearSpring, {Catalogue::CharacteristicVelocity},
               parent);
    } else {
        addTagged(set.m_linearSpringValue, Catalogue::LinearSpring,
                  Catalogue::CharacteristicVelocity, parent);
    }
    addHystereticSpring(set, parent);
    addMap(set.m_edinburghAdhesion, Catalogue::EdinburghAdhesion, Catalogue::EdinburghParameters,
           parent);
}

void CPropertyTree::addHystereticSpring(const CModelSet& set, QTreeWidgetItem* parent)
{
    if (set.m_hystereticInteractions.empty()) {
        return;
    }
    QTreeWidgetItem* group = makeGroup(parent, QString::fromStdString(Catalogue::HystereticSpring));
    addMap(set.m_hystereticInteractions, Catalogue::Interactions, Catalogue::HystereticParameters,
           group);
    addMap(set.m_hystereticYields, Catalogue::Yields, {Catalogue::YieldStrength}, group);
    // The parent owns the group. NOLINTNEXTLINE(clang-analyzer-cplusplus.NewDeleteLeaks)
}

void CPropertyTree::addParticleToParticle(const CSurfaceSurfaceModels& models,
                                          QTreeWidgetItem* parent)
{
    addModelSet(models, parent);
    addBonding(models, parent);
    addBondingV2(models, parent);
    addMap(models.m_heatConduction, Catalogue::HeatConduction, {Catalogue::ThermalConductivity},
           parent);
    addMap(models.m_linearCohesionV2, Catalogue::LinearCohesion, {Catalogue::EnergyDensity},
           parent);
    addMap(models.m_sprayCoating, Catalogue::SprayCoating, {Catalogue::ActiveSprays}, parent);
}

void CPropertyTree::addBonding(const CSurfaceSurfaceModels& models, QTreeWidgetItem* parent)
{
    addMap(models.m_bonding, Catalogue::Bonding, Catalogue::BondingParameters, parent);
    if (models.m_bonding.empty()) {
        return;
    }
    QTreeWidgetItem* bonding = lastItem(parent);
    addTagged(models.m_bondingStartTime, Catalogue::BondingStartTime, Catalogue::StartTime,
              bonding);
    addTagged(models.m_bondingTorqueFeedback, Catalogue::BondingTorqueFeedback,
              Catalogue::TorqueFeedback, bonding);
}

void CPropertyTree::addBondingV2(const CSurfaceSurfaceModels& models, QTreeWidgetItem* parent)
{
    if (m_iFormat < 1) {
        return;
    }
    addMap(models.m_bondingV2, Catalogue::BondingV2, Catalogue::BondingV2Parameters, parent);
    if (models.m_bondingV2.empty()) {
        return;
    }
    QTreeWidgetItem* bonding = lastItem(parent);
    if (m_iFormat < 3) {
        addTagged(models.m_bondingV2StartTime, Catalogue::BondingStartTime, Catalogue::StartTime,
                  bonding);
    }
    addTagged(models.m_bondingV2TorqueFeedback, Catalogue::BondingTorqueFeedback,
              Catalogue::TorqueFeedback, bonding);
}

void CPropertyTree::addParticleToGeometry(const CSurfaceGeometryModels& models,
                                          QTreeWidgetItem* parent)
{
    addModelSet(models, parent);
    addTagged(models.m_standardRollingFriction, Catalogue::StandardRollingFriction,
              Catalogue::EnableRollingFriction, parent);
    addMap(models.m_linearCohesionV2, Catalogue::LinearCohesion, {Catalogue::EnergyDensity},
           parent);
    addMap(models.m_sprayCoating, Catalogue::SprayCoating, {Catalogue::ActiveSprays}, parent);
    if (m_iFormat >= 2) {
        addMap(models.m_heatConductionParticle, Catalogue::HeatConduction,
               {Catalogue::ThermalConductivity}, parent);
        addMap(models.m_heatConductionGeometry, Catalogue::HeatConduction,
               {Catalogue::ThermalConductivity, Catalogue::GeometryTemperature}, parent);
    }
    addMap(models.m_archardWear, Catalogue::ArchardWear, {Catalogue::WearConstant}, parent);
    if (m_iFormat >= 11) {
        addTagged(models.m_archardDeformation, Catalogue::EnableDeformation,
                  Catalogue::EnableDeformation, lastItem(parent));
    }
    addMap(models.m_okaWear, Catalogue::OkaWear, Catalogue::OkaWearParameters, parent);
    addTagged(models.m_okaDeformation, Catalogue::EnableDeformation, Catalogue::EnableDeformation,
              lastItem(parent));
}

void CPropertyTree::addForces(const CExternalForces& forces, QTreeWidgetItem* parent)
{
    addMap(forces.m_temperatureUpdate, Catalogue::TemperatureUpdate, {Catalogue::HeatCapacity},
           parent);
    const std::map<std::string, CForce> byLabel = {
        {Catalogue::GanserDrag, forces.m_ganserDrag},
        {Catalogue::HaiderLevenspielDrag, forces.m_haiderLevenspielDrag},
        {Catalogue::MagnusLift, forces.m_magnusLift},
        {Catalogue::MorsiAlexanderDrag, forces.m_morsiAlexanderDrag},
        {Catalogue::SaffmanLift, forces.m_saffmanLift},
        {Catalogue::SchillerNaumannDrag, forces.m_schillerNaumannDrag},
    };
    for (const auto& [label, force] : byLabel) {
        // Told by content, not by name: any force equal to a shape force gets its shape factors.
        if (force == static_cast<const CForce&>(forces.m_ganserDrag)) {
            addMap(forces.m_ganserDrag.m_shapeFactors, Catalogue::GanserDragParticle,
                   {Catalogue::Spherocity}, parent);
        }
        if (force == static_cast<const CForce&>(forces.m_haiderLevenspielDrag)) {
            addMap(forces.m_haiderLevenspielDrag.m_shapeFactors,
                   Catalogue::HaiderLevenspielDragParticle, {Catalogue::Spherocity}, parent);
        }
        addForce(label, force, parent);
    }
}

void CPropertyTree::addForce(const std::string& label, const CForce& force, QTreeWidgetItem* parent)
{
    // "Viscosity" bears the field scale and "Scale" the viscosity; decks are calibrated that way.
    const std::map<std::string, FlowField> flowField = {
        {Catalogue::SteadyFlowVelocity,
         {force.m_density, force.m_fieldScale, force.m_viscosity,
          flowFlag(force.m_usingSteadyFlow)}}};
    addMap(flowField, label, Catalogue::FlowFieldParameters, parent);
    const TripleMap steadyFlow = {{Catalogue::SteadyFlowVelocity, force.m_steadyFlowVelocity}};
    addMap(steadyFlow, label, Catalogue::SteadyFlowParameters, lastItem(parent));
}

template <class Map, class Parent>
void CPropertyTree::addMap(const Map& map, const std::string& label, const Labels& names,
                           Parent* parent)
{
    if (map.empty()) {
        return;
    }
    const auto entry = std::make_shared<CParameterEntry>();
    entry->m_name = label;
    for (const auto& [key, value] : map) {
        addKey(*entry, key, numbersOf(value), names);
    }
    addItem(entry, parent);
}

template <class T>
void CPropertyTree::addTagged(const CTaggedValue<T>& tagged, const std::string& label,
                              const std::string& fieldLabel, QTreeWidgetItem* parent)
{
    if (tagged.first.empty()) {
        return;
    }
    const auto entry = std::make_shared<CParameterEntry>();
    entry->m_name = label;
    addKey(*entry, tagged.first, numbersOf(tagged.second), {fieldLabel});
    addItem(entry, parent);
}

template <class Parent>
void CPropertyTree::addItem(const std::shared_ptr<CParameterEntry>& entry, Parent* parent)
{
    CDeckStore::instance()->pushParameter(entry);
    m_treeItems.push_back(
        new CPropertyTreeWidgetItem(parent, QString::fromStdString(entry->m_name), entry));
}

void CPropertyTree::addKey(CParameterEntry& entry, const std::string& name,
                           const std::vector<CaseValue>& numbers, const Labels& names)
{
    const auto key = std::make_shared<CParameterKeys>();
    key->m_name = name;
    entry.m_keys.push_back(key);
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const ParameterLimit& limit = limitOf(names[i]);
        key->m_fields.push_back(std::make_shared<CParameterFields>(
            CParameterFields{&limit, m_fieldCount, names[i], {numbers[i]}}));
        ++m_fieldCount;
    }
}

QTreeWidgetItem* CPropertyTree::lastItem(QTreeWidgetItem* otherwise) const
{
    return m_treeItems.empty() ? otherwise : m_treeItems.back();
}
