#include "jobs/running_rows.h"

#include "app/constants/icons.h"
#include "jobs/simulation_list_item.h"

#include <QListWidget>
#include <QSignalBlocker>

CRunningRows::CRunningRows(QListWidget* list)
    : m_list(list)
    , m_movie(Icons::PeriSimPath)
{
    m_movie.setCacheMode(QMovie::CacheAll);
    QObject::connect(&m_movie, &QMovie::frameChanged, &m_movie, [this] { m_bFrameChanged = true; });
}

/// The list lays out all its rows again whenever it is told that one has changed. With sizes that
/// are known it need not measure every text each time.
void CRunningRows::add(CSimulationListItem* row)
{
    m_list->ensurePolished();
    m_list->addItem(row);
    const QModelIndex index = m_list->model()->index(m_list->count() - 1, 0);
    row->setSizeHint(m_list->sizeHintForIndex(index));
}

void CRunningRows::begin()
{
    m_runningItems.clear();
    m_movie.start();
}

void CRunningRows::end()
{
    m_movie.stop();
}

/// A job that is loaded lists its cases in order, so that the place is known without a search.
CSimulationListItem* CRunningRows::find(int caseNumber) const
{
    auto* const expected = static_cast<CSimulationListItem*>(m_list->item(caseNumber));
    if (expected != nullptr && expected->id() == caseNumber) {
        return expected;
    }
    for (int row = 0; row < m_list->count(); ++row) {
        auto* const item = static_cast<CSimulationListItem*>(m_list->item(row));
        if (item->id() == caseNumber) {
            return item;
        }
    }
    return nullptr;
}

/// The list isn't told: it would lay out all its rows, once or more for each case that runs. The
/// row has a size of its own, so that it keeps its place and needs no more than to be painted.
void CRunningRows::setIcon(CSimulationListItem* row, const QIcon& icon) const
{
    const QSignalBlocker blocker(m_list->model());
    row->setIcon(icon);
    m_list->viewport()->update(m_list->visualItemRect(row));
}

void CRunningRows::append(const CSimulationListItem* row)
{
    m_runningItems.push_back(row->id());
    showFrame(row->id());
}

void CRunningRows::remove(int caseNumber)
{
    m_runningItems.remove(caseNumber);
}

void CRunningRows::showFrame()
{
    if (!m_bFrameChanged) {
        return;
    }
    m_bFrameChanged = false;
    for (const int caseNumber : m_runningItems) {
        showFrame(caseNumber);
    }
}

void CRunningRows::showFrame(int caseNumber) const
{
    if (CSimulationListItem* const row = find(caseNumber)) {
        setIcon(row, QIcon(m_movie.currentPixmap()));
    }
}
