#pragma once

#include "app/connections.h"
#include "app/frame.h"
#include "deck/creator_data.h"
#include "parameters/field_values.h"
#include "ui_parameter_editor_frame.h"

#include <cstdint>
#include <memory>
#include <vector>

class CPropertyTreeWidgetItem;
class CTableItem;

/// The page on which the user says what varies: tree to entry, "Fields" to key, "Parameters" to
/// field, and the table with the field's values, a column each, the deck's own first.
class CParameterEditorFrame : public IFrame, private Ui::ParameterEditorFrameUI
{
    Q_OBJECT

public:
    explicit CParameterEditorFrame(QWidget* parent = nullptr);
    ~CParameterEditorFrame() override;

    /// Rebuilds the tree where the deck in the store isn't the one that it was built from.
    void onPageEntered() override;

private slots:
    void onTreeItemClicked(QTreeWidgetItem* item, int column);
    void onMaterialListItemClicked(QListWidgetItem* item);
    void onParameterListItemClicked(QListWidgetItem* item);

private:
    enum EditMode { Add = 0, Remove = 1, Edit = 2 };

    /// What is cleared when a level is chosen anew: everything below it.
    enum Level { EntryLevel = 0, KeyLevel = 1, FieldLevel = 2 };

    void setupConnections();
    void rebuild(const CCreatorData& deck);
    void forgetSelection();
    void clearBelow(int level);
    void clearTable();

    QTableWidgetItem* addColumn(const CaseValue& value, int column);
    void editValues(EditMode mode, QTableWidgetItem* item);
    void addVariance(QTableWidgetItem* item);
    void removeVariance(QTableWidgetItem* item);
    void takeUpEdit(QTableWidgetItem* item);
    void finishEditing();
    void adjustTree(int change);
    void showCaseCount();

    CTableItem* cellAt(int column) const;
    std::vector<CaseValue> columnValues() const;
    QTableWidgetItem* currentOrColumn(int column) const;

    static CConnectionTable<CParameterEditorFrame> s_connections;

    CCreatorData m_lastDeck;
    FieldValues::Flags m_fieldFlags;
    int m_fieldCount = 0;
    std::uint64_t m_caseCount = 0;
    std::shared_ptr<CParameterEntry> m_currentEntry;
    std::shared_ptr<CParameterKeys> m_currentKey;
    std::shared_ptr<CParameterFields> m_currentField;
    CPropertyTreeWidgetItem* m_currentItem = nullptr;
    std::vector<CPropertyTreeWidgetItem*> m_treeItems;
};
