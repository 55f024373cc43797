#pragma once

#include "deck/deck_store.h"
#include "parameters/parameter_editor_frame.h"
#include "parameters/parameter_entry.h"
#include "parameters/property_tree_widget_item.h"
#include "parameters/table_item.h"
#include "tests/support/named_child.h"
#include "widgets/double_spin_box.h"

#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

using Values = std::vector<CaseValue>;

/// A deck with two interactions, an adhesion, a bonding with a true flag and a false flag.
inline CCreatorData sampleDeck(const std::string& name = "hopper")
{
    CCreatorData deck(name);
    deck.m_interactions["A<>A"] = {0.5, 0.4, 0.01};
    deck.m_interactions["A<>B"] = {0.6, 0.3, 0.02};
    deck.m_surfaceSurface.m_edinburghAdhesion["A<>A"] = {-1.0, 2.0, 0.3, 1.5, 5.0, 6.0};
    deck.m_surfaceSurface.m_bonding["A<>A"] = {1.0, 2.0, 3.0, 4.0, 5.0};
    deck.m_surfaceSurface.m_bondingTorqueFeedback = {"Active", true};
    deck.m_surfaceGeometry.m_standardRollingFriction = {"Active", false};
    return deck;
}

/// The page as a user has it before him, with hands that click.
class CPage
{
public:
    CPage() { enterWith(sampleDeck()); }

    void enterWith(const CCreatorData& deck)
    {
        CDeckStore::instance()->creatorData() = {deck};
        page.onPageEntered();
        page.resize(1200, 800);
        page.show();
    }

    template <class Widget>
    Widget* find(const char* name)
    {
        return &named<Widget>(page, QLatin1String(name));
    }

    QTreeWidget* tree() { return find<QTreeWidget>("m_treeWidget"); }
    QListWidget* materials() { return find<QListWidget>("m_materialListWidget"); }
    QListWidget* parameters() { return find<QListWidget>("m_parameterListWidget"); }
    QTableWidget* table() { return find<QTableWidget>("m_tableWidget"); }
    QPushButton* add() { return find<QPushButton>("m_pbAdd"); }
    QPushButton* remove() { return find<QPushButton>("m_pbRemove"); }
    QString caseCount() { return find<QLabel>("m_lblGeneratedCasesNo")->text(); }

    QTreeWidgetItem* treeItem(const QString& label)
    {
        const auto found = tree()->findItems(label, Qt::MatchExactly | Qt::MatchRecursive);
        return found.isEmpty() ? nullptr : found.front();
    }

    /// All items of the tree, from the top.
    std::vector<CPropertyTreeWidgetItem*> items()
    {
        std::vector<CPropertyTreeWidgetItem*> all;
        for (QTreeWidgetItemIterator item(tree()); *item != nullptr; ++item) {
            all.push_back(dynamic_cast<CPropertyTreeWidgetItem*>(*item));
        }
        return all;
    }

    void clickTree(const QString& label)
    {
        QTreeWidgetItem* item = treeItem(label);
        QVERIFY2(item != nullptr, qPrintable(label));
        for (QTreeWidgetItem* above = item->parent(); above != nullptr; above = above->parent()) {
            above->setExpanded(true);
        }
        tree()->scrollToItem(item);
        const QPoint point = tree()->visualItemRect(item).center();
        QTest::mouseClick(tree()->viewport(), Qt::LeftButton, Qt::NoModifier, point);
    }

    static void clickList(QListWidget* list, int row)
    {
        list->scrollToItem(list->item(row));
        const QRect rect = list->visualItemRect(list->item(row));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier, rect.center());
    }

    /// Walks to a field: tree label, row of the key, row of the field.
    void choose(const QString& label, int key, int field)
    {
        clickTree(label);
        clickList(materials(), key);
        clickList(parameters(), field);
    }

    CTableItem* cell(int column)
    {
        return dynamic_cast<CTableItem*>(table()->cellWidget(0, column));
    }

    /// Types a number into a cell and commits it, as a user does.
    void type(int column, const QString& number)
    {
        auto* box = cell(column)->findChild<CDoubleSpinBox*>();
        box->setFocus();
        box->selectAll();
        QTest::keyClicks(box, number);
        QTest::keyClick(box, Qt::Key_Return);
    }

    QString variances(const QString& label) { return treeItem(label)->text(1).trimmed(); }

    CParameterEditorFrame page;
};

/// A field of the entries in the store.
inline const CParameterFields& fieldAt(std::size_t entry, std::size_t key, std::size_t field)
{
    return *CDeckStore::instance()->parameters().at(entry)->m_keys.at(key)->m_fields.at(field);
}
