#pragma once

#include <QMovie>

#include <list>

class CSimulationListItem;
class QIcon;
class QListWidget;

/// The rows of a list whose cases run. They are known by case number, since a row may be replaced
/// by another while its case runs, and are looked up when they are needed.
class CRunningRows
{
public:
    /// `list`, not owned, holds items of CSimulationListItem alone.
    explicit CRunningRows(QListWidget* list);

    /// Puts a row behind the others; the list owns it.
    void add(CSimulationListItem* row);

    /// Forgets all rows and starts the animation anew.
    void begin();
    /// Stops the animation; the rows stay.
    void end();

    /// The topmost row of that case number, null where there is none.
    CSimulationListItem* find(int caseNumber) const;

    /// Gives a row of the list another icon at a cost that doesn't grow with the count of rows.
    void setIcon(CSimulationListItem* row, const QIcon& icon) const;

    void append(const CSimulationListItem* row);
    void remove(int caseNumber);
    bool isEmpty() const { return m_runningItems.empty(); }

    /// Shows the animation's current frame on all running rows, if it is another one than that
    /// which they show. An icon that is set again for nothing would wake the event loop each time.
    void showFrame();

private:
    void showFrame(int caseNumber) const;

    QListWidget* m_list;
    std::list<int> m_runningItems;
    QMovie m_movie;
    bool m_bFrameChanged = false;
};
