#pragma once

#include <QString>
#include <QTreeWidgetItem>

#include <memory>

struct CParameterEntry;

/// A row of the Properties tree: the label, and the number of variances below it, which deeper rows
/// show further to the right.
class CPropertyTreeWidgetItem : public QTreeWidgetItem
{
public:
    CPropertyTreeWidgetItem(QTreeWidget* parent, const QString& label,
                            std::shared_ptr<CParameterEntry> entry);
    CPropertyTreeWidgetItem(QTreeWidgetItem* parent, const QString& label,
                            std::shared_ptr<CParameterEntry> entry);
    ~CPropertyTreeWidgetItem() override;

    /// Empty on an item that only groups others.
    const std::shared_ptr<CParameterEntry>& entry() const { return m_entry; }

    /// Changes the shown number of variances.
    void addVariances(int change);

private:
    void showLabel(const QString& label);
    void showVariances(int count);

    std::shared_ptr<CParameterEntry> m_entry;
    QString m_indent;
};
