#pragma once

#include "deck/creator_data.h"
#include "parameters/case_value.h"

#include <memory>
#include <string>
#include <vector>

class CPropertyTreeWidgetItem;
struct CParameterEntry;
class QTreeWidget;
class QTreeWidgetItem;

/// Fills the Properties tree from a deck: an entry and an item per model that the deck uses, in one
/// fixed order. The entries are pushed on the deck store as they are made.
class CPropertyTree
{
public:
    using Labels = std::vector<std::string>;

    /// `fieldCount` is the number of fields made since start, and goes on from its value;
    /// `treeItems` receives the items that bear an entry, in creation order.
    CPropertyTree(QTreeWidget* tree, int& fieldCount,
                  std::vector<CPropertyTreeWidgetItem*>& treeItems);

    /// Throws std::out_of_range "invalid map<K, T> key" for a deck with a model whose label has no
    /// limits.
    void build(const CCreatorData& deck, int format);

private:
    void addParticleToParticle(const CSurfaceSurfaceModels& models, QTreeWidgetItem* parent);
    void addParticleToGeometry(const CSurfaceGeometryModels& models, QTreeWidgetItem* parent);
    void addModelSet(const CModelSet& set, QTreeWidgetItem* parent);
    void addHystereticSpring(const CModelSet& set, QTreeWidgetItem* parent);
    void addBonding(const CSurfaceSurfaceModels& models, QTreeWidgetItem* parent);
    void addBondingV2(const CSurfaceSurfaceModels& models, QTreeWidgetItem* parent);
    void addForces(const CExternalForces& forces, QTreeWidgetItem* parent);
    void addForce(const std::string& label, const CForce& force, QTreeWidgetItem* parent);

    template <class Map, class Parent>
    void addMap(const Map& map, const std::string& label, const Labels& names, Parent* parent);
    template <class T>
    void addTagged(const CTaggedValue<T>& tagged, const std::string& label,
                   const std::string& fieldLabel, QTreeWidgetItem* parent);
    template <class Parent>
    void addItem(const std::shared_ptr<CParameterEntry>& entry, Parent* parent);
    void addKey(CParameterEntry& entry, const std::string& name,
                const std::vector<CaseValue>& numbers, const Labels& names);

    /// The item made last, or `otherwise` where none was made yet.
    QTreeWidgetItem* lastItem(QTreeWidgetItem* otherwise) const;

    QTreeWidget* m_tree;
    int& m_fieldCount;
    std::vector<CPropertyTreeWidgetItem*>& m_treeItems;
    int m_iFormat = 0;
};
