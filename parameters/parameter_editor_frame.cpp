#include "parameters/parameter_editor_frame.h"

#include "deck/app_settings.h"
#include "deck/deck_store.h"
#include "parameters/property_tree.h"
#include "parameters/property_tree_widget_item.h"
#include "parameters/table_item.h"

#include <QHeaderView>
#include <QSignalBlocker>

#include <algorithm>

CConnectionTable<CParameterEditorFrame> CParameterEditorFrame::s_connections;

CParameterEditorFrame::CParameterEditorFrame(QWidget* parent)
    : IFrame(parent)
    , m_lastDeck("Default")
{
    setupUi(this);
    m_lblGeneratedCasesNo->setText(QStringLiteral("0"));
    setupConnections();
}

CParameterEditorFrame::~CParameterEditorFrame()
{
    s_connections.release(this);
    m_treeWidget->clear();
    m_materialListWidget->clear();
    m_parameterListWidget->clear();
    clearTable();
}

void CParameterEditorFrame::setupConnections()
{
    s_connections.store(
        this, {
                  connect(m_treeWidget, &QTreeWidget::itemClicked, this,
                          &CParameterEditorFrame::onTreeItemClicked),
                  connect(m_materialListWidget, &QListWidget::itemClicked, this,
                          &CParameterEditorFrame::onMaterialListItemClicked),
                  connect(m_parameterListWidget, &QListWidget::itemClicked, this,
                          &CParameterEditorFrame::onParameterListItemClicked),
                  connect(m_tableWidget, &QTableWidget::itemClicked, this,
                          [this](const QTableWidgetItem* item) {
                              m_pbRemove->setEnabled(item != m_tableWidget->item(0, 0));
                          }),
                  connect(m_pbAdd, &QPushButton::clicked, this,
                          [this] { editValues(Add, currentOrColumn(0)); }),
                  connect(m_pbRemove, &QPushButton::clicked, this,
                          [this] {
                              editValues(Remove, currentOrColumn(m_tableWidget->columnCount() - 1));
                          }),
              });
}

void CParameterEditorFrame::onPageEntered()
{
    const std::vector<CCreatorData>& decks = CDeckStore::instance()->creatorData();
    if (!decks.empty() && !(m_lastDeck == decks.front())) {
        rebuild(decks.front());
    }
    m_treeWidget->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    m_pbAdd->setEnabled(false);
    m_pbRemove->setEnabled(false);
}

void CParameterEditorFrame::rebuild(const CCreatorData& deck)
{
    forgetSelection();
    CPropertyTree(m_treeWidget, m_fieldCount, m_treeItems)
        .build(deck, CAppSettings::instance()->deckFormat());
    m_fieldFlags.resize(static_cast<std::size_t>(m_fieldCount));
    for (std::vector<bool>& bits : m_fieldFlags) {
        bits.push_back(true);
    }
    m_lastDeck = deck;
}

void CParameterEditorFrame::forgetSelection()
{
    m_currentItem = nullptr;
    m_treeItems.clear();
    m_currentEntry.reset();
    m_currentKey.reset();
    m_currentField.reset();
    m_treeWidget->clear();
    m_materialListWidget->clear();
    m_parameterListWidget->clear();
    clearTable();
    m_tableWidget->setRowCount(0);
}

void CParameterEditorFrame::clearBelow(int level)
{
    if (level <= EntryLevel) {
        m_materialListWidget->clear();
        m_currentKey.reset();
    }
    if (level <= KeyLevel) {
        m_parameterListWidget->clear();
        m_currentField.reset();
    }
    if (level <= FieldLevel) {
        clearTable();
    }
    const bool fieldChosen = level >= FieldLevel;
    m_tableWidget->setRowCount(fieldChosen ? 1 : 0);
    m_pbAdd->setEnabled(fieldChosen);
    m_pbRemove->setEnabled(fieldChosen);
}

void CParameterEditorFrame::clearTable()
{
    // A cell that loses the focus while it dies would still report a change.
    for (int column = 0; column < m_tableWidget->columnCount(); ++column) {
        if (CTableItem* cell = cellAt(column)) {
            cell->disconnectAll();
        }
    }
    m_tableWidget->clear();
    m_tableWidget->setColumnCount(0);
}

void CParameterEditorFrame::onTreeItemClicked(QTreeWidgetItem* item, int /*column*/)
{
    auto* const clicked = dynamic_cast<CPropertyTreeWidgetItem*>(item);
    if (clicked == nullptr) {
        return;
    }
    if (clicked->treeWidget() != nullptr) {
        clicked->setExpanded(!clicked->isExpanded());
    }
    if (clicked == m_currentItem) {
        return;
    }
    clearBelow(EntryLevel);
    m_currentItem = clicked;
    const auto entries = CDeckStore::instance()->parameters();
    const auto found = std::find(entries.begin(), entries.end(), clicked->entry());
    if (found == entries.end()) {
        return;
    }
    m_currentEntry = *found;
    for (const auto& key : m_currentEntry->m_keys) {
        m_materialListWidget->addItem(new QListWidgetItem(QString::fromStdString(key->m_name)));
    }
}

void CParameterEditorFrame::onMaterialListItemClicked(QListWidgetItem* item)
{
    const auto row = static_cast<std::size_t>(m_materialListWidget->row(item));
    const auto key = m_currentEntry->m_keys[row];
    if (key == m_currentKey) {
        return;
    }
    clearBelow(KeyLevel);
    m_currentKey = key;
    for (const auto& field : key->m_fields) {
        m_parameterListWidget->addItem(new QListWidgetItem(QString::fromStdString(field->m_name)));
    }
}

void CParameterEditorFrame::onParameterListItemClicked(QListWidgetItem* item)
{
    const auto row = static_cast<std::size_t>(m_parameterListWidget->row(item));
    const auto field = m_currentKey->m_fields[row];
    if (field == m_currentField) {
        return;
    }
    clearBelow(FieldLevel);
    const QSignalBlocker blocker(m_tableWidget);
    m_currentField = field;
    for (std::size_t i = 0; i < field->m_values.size(); ++i) {
        const int column = static_cast<int>(i);
        addColumn(field->m_values[i], column);
        m_tableWidget->horizontalHeader()->setSectionResizeMode(column,
                                                                QHeaderView::ResizeToContents);
    }
    const bool varied = m_tableWidget->columnCount() >= 2;
    if (CTableItem* first = cellAt(0)) {
        first->setEditable(false);
        first->setSuperseded(varied);
    }
    m_pbAdd->setEnabled(true);
    m_pbRemove->setEnabled(varied);
}

QTableWidgetItem* CParameterEditorFrame::addColumn(const CaseValue& value, int column)
{
    auto* item = new QTableWidgetItem();
    auto* cell = new CTableItem(m_currentField->m_limit, item);
    m_tableWidget->insertColumn(column);
    m_tableWidget->setItem(0, column, item);
    m_tableWidget->setCellWidget(0, column, cell);
    setTabOrder(m_tableWidget, cell->editor());
    cell->setValue(value);
    cell->addConnection(connect(cell, &CTableItem::itemChanged, this,
                                [this](QTableWidgetItem* edited) { editValues(Edit, edited); }));
    return item;
}

void CParameterEditorFrame::editValues(EditMode mode, QTableWidgetItem* item)
{
    const QSignalBlocker blocker(m_tableWidget);
    const int width = m_tableWidget->width();
    if (item == nullptr) {
        item = m_tableWidget->item(0, m_tableWidget->columnCount() - 1);
    }
    if (item == nullptr) {
        // An edit has taken even the deck's value from a field that was infinite.
        return;
    }
    if (mode == Remove && item == m_tableWidget->item(0, 0)) {
        m_pbRemove->setEnabled(false);
        return;
    }
    switch (mode) {
    case Add:
        addVariance(item);
        break;
    case Remove:
        removeVariance(item);
        break;
    case Edit:
        takeUpEdit(item);
        break;
    }
    finishEditing();
    // A change of the columns must not resize the page.
    m_tableWidget->setFixedWidth(width);
}

void CParameterEditorFrame::addVariance(QTableWidgetItem* item)
{
    CTableItem* source = cellAt(item->column());
    const QSignalBlocker blocker(source);
    QTableWidgetItem* added = addColumn(source->value(), item->column() + 1);
    m_tableWidget->horizontalHeader()->setSectionResizeMode(added->column(),
                                                            QHeaderView::Interactive);
    editValues(Edit, added);
    m_tableWidget->setCurrentItem(added);
}

void CParameterEditorFrame::removeVariance(QTableWidgetItem* item)
{
    const int column = item->column();
    CTableItem* cell = cellAt(column);
    if (FieldValues::remove(*m_currentField, m_fieldFlags, cell->value())) {
        adjustTree(-1);
    }
    m_tableWidget->setCurrentItem(nullptr);
    cell->disconnectAll();
    m_tableWidget->removeCellWidget(0, column);
    m_tableWidget->removeColumn(column);
}

void CParameterEditorFrame::takeUpEdit(QTableWidgetItem* item)
{
    CTableItem* cell = cellAt(item->column());
    const QSignalBlocker blocker(cell);
    adjustTree(FieldValues::edit(*m_currentField, m_fieldFlags, cell->value(), columnValues()));
}

void CParameterEditorFrame::finishEditing()
{
    const bool varied = m_tableWidget->columnCount() >= 2;
    m_pbAdd->setEnabled(true);
    m_pbRemove->setEnabled(varied);
    cellAt(0)->setSuperseded(varied);
    showCaseCount();
}

void CParameterEditorFrame::adjustTree(int change)
{
    if (change == 0) {
        return;
    }
    QTreeWidgetItem* item = m_currentItem;
    while (auto* const row = dynamic_cast<CPropertyTreeWidgetItem*>(item)) {
        row->addVariances(change);
        item = row->parent();
    }
}

void CParameterEditorFrame::showCaseCount()
{
    m_caseCount = FieldValues::caseCount(m_fieldFlags);
    m_lblGeneratedCasesNo->setText(QString::number(m_caseCount));
}

CTableItem* CParameterEditorFrame::cellAt(int column) const
{
    return dynamic_cast<CTableItem*>(m_tableWidget->cellWidget(0, column));
}

std::vector<CaseValue> CParameterEditorFrame::columnValues() const
{
    std::vector<CaseValue> values;
    values.reserve(static_cast<std::size_t>(m_tableWidget->columnCount()));
    for (int column = 0; column < m_tableWidget->columnCount(); ++column) {
        values.push_back(cellAt(column)->value());
    }
    return values;
}

QTableWidgetItem* CParameterEditorFrame::currentOrColumn(int column) const
{
    QTableWidgetItem* current = m_tableWidget->currentItem();
    return current != nullptr ? current : m_tableWidget->item(0, column);
}
