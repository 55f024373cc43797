#include "jobs/running_rows.h"

#include "app/constants/icons.h"
#include "jobs/simulation_list_item.h"

#include <QListWidget>

CRunningRows::CRunningRows(QListWidget* list)
    : m_list(list)
    , m_movie(Icons::PeriSimPath)
{
    m_movie.setCacheMode(QMovie::CacheAll);
    QObject::connect(&m_movie, &QMovie::frameChanged, &m_movie, [this] { m_bFrameChanged = true; });
}

/// The list lays out all its rows again whenever the icon of one changes. With sizes that are known
/// it need not measure every text each time, of which a run of thousands of cases would take long.
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

CSimulationListItem* CRunningRows::find(int caseNumber) const
{
    for (int row = 0; row < m_list->count(); ++row) {
        auto* const item = static_cast<CSimulationListItem*>(m_list->item(row));
        if (item->id() == caseNumber) {
            return item;
        }
    }
    return nullptr;
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
        row->setIcon(QIcon(m_movie.currentPixmap()));
    }
}
