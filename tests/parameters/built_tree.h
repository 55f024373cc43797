#pragma once

#include "deck/deck_store.h"
#include "parameters/parameter_entry.h"
#include "parameters/property_tree.h"

#include <QStringList>
#include <QTreeWidget>

#include <memory>
#include <string>
#include <vector>

/// A tree outside the page.
struct SBuiltTree
{
    QTreeWidget tree;
    int fieldCount = 0;
    std::vector<CPropertyTreeWidgetItem*> items;

    void build(const CCreatorData& deck, int format)
    {
        CPropertyTree(&tree, fieldCount, items).build(deck, format);
    }
};

inline const std::vector<std::shared_ptr<CParameterEntry>>& entries()
{
    return CDeckStore::instance()->parameters();
}

/// The entry of that label in the store, the first for occurrence 0; null for none.
inline std::shared_ptr<CParameterEntry> entryNamed(const std::string& name,
                                                   std::size_t occurrence = 0)
{
    for (const auto& entry : entries()) {
        if (entry->m_name == name && occurrence-- == 0) {
            return entry;
        }
    }
    return nullptr;
}

inline QStringList fieldNames(const CParameterKeys& key)
{
    QStringList names;
    for (const auto& field : key.m_fields) {
        names << QString::fromStdString(field->m_name);
    }
    return names;
}

inline double number(const CParameterKeys& key, std::size_t field)
{
    return std::get<double>(key.m_fields.at(field)->m_values.at(0));
}

/// A deck of format 2 with every model that can be shown.
inline CCreatorData fullRecord()
{
    CCreatorData deck("full");
    CSurfaceSurfaceModels& particle = deck.m_surfaceSurface;
    particle.m_hertzMindlinJkr["a<>a"] = 1.0;
    particle.m_hertzMindlinJkrV2["a<>a"] = 1.0;
    particle.m_linearSpring["a<>a"] = 1.0;
    particle.m_hystereticInteractions["a<>a"] = {1.0, 2.0};
    particle.m_hystereticYields["a"] = 1.0;
    particle.m_edinburghAdhesion["a<>a"] = {-1.0, 2.0, 0.3, 1.5, 5.0, 6.0};
    particle.m_bonding["a<>a"] = {1.0, 2.0, 3.0, 4.0, 5.0};
    particle.m_bondingStartTime = {"Active", 0.5};
    particle.m_bondingTorqueFeedback = {"Active", true};
    particle.m_bondingV2["a<>a"] = {1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0};
    particle.m_bondingV2StartTime = {"Active", 0.5};
    particle.m_bondingV2TorqueFeedback = {"Active", false};
    particle.m_heatConduction["a"] = 1.0;
    particle.m_linearCohesionV2["a<>a"] = 1.0;
    CSurfaceGeometryModels& geometry = deck.m_surfaceGeometry;
    geometry.m_standardRollingFriction = {"Active", true};
    geometry.m_linearCohesionV2["a<>b"] = 1.0;
    geometry.m_heatConductionParticle["a"] = 1.0;
    geometry.m_heatConductionGeometry["b"] = {1.0, 2.0};
    geometry.m_archardWear["a<>b"] = 1.0;
    deck.m_externalForces.m_temperatureUpdate["a"] = 1.0;
    return deck;
}
