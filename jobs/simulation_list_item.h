#pragma once

#include <QListWidgetItem>

#include <memory>

class CCaseOutput;

/// The row of a case in the list of simulations.
class CSimulationListItem : public QListWidgetItem
{
public:
    CSimulationListItem(const QIcon& icon, const QString& text, int id);
    ~CSimulationListItem() override;

    /// The case number.
    int id() const { return m_id; }

    /// All that the simulator has written over all runs, and a line for each analysis. Shared with
    /// the task of the case, which may outlive the row.
    const std::shared_ptr<CCaseOutput>& output() const { return m_output; }

private:
    std::shared_ptr<CCaseOutput> m_output;
    int m_id;
};
