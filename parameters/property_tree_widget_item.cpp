#include "parameters/property_tree_widget_item.h"

#include "parameters/parameter_entry.h"

namespace {

constexpr int LabelColumn = 0;
constexpr int VariancesColumn = 1;

} // namespace

CPropertyTreeWidgetItem::CPropertyTreeWidgetItem(QTreeWidget* parent, const QString& label,
                                                 std::shared_ptr<CParameterEntry> entry)
    : QTreeWidgetItem(parent)
    , m_entry(std::move(entry))
{
    showLabel(label);
}

CPropertyTreeWidgetItem::CPropertyTreeWidgetItem(QTreeWidgetItem* parent, const QString& label,
                                                 std::shared_ptr<CParameterEntry> entry)
    : QTreeWidgetItem(parent)
    , m_entry(std::move(entry))
{
    showLabel(label);
}

CPropertyTreeWidgetItem::~CPropertyTreeWidgetItem() = default;

void CPropertyTreeWidgetItem::addVariances(int change)
{
    showVariances(text(VariancesColumn).trimmed().toInt() + change);
}

void CPropertyTreeWidgetItem::showLabel(const QString& label)
{
    setText(LabelColumn, label);
    for (const QTreeWidgetItem* item = this; item != nullptr; item = item->parent()) {
        m_indent += QStringLiteral("  ");
    }
    showVariances(0);
}

void CPropertyTreeWidgetItem::showVariances(int count)
{
    setText(VariancesColumn, m_indent + QString::number(count));
}
