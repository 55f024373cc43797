#include "jobs/simulation_list_item.h"

#include "jobs/case_output.h"

CSimulationListItem::CSimulationListItem(const QIcon& icon, const QString& text, int id)
    : QListWidgetItem(icon, text)
    , m_output(std::make_shared<CCaseOutput>())
    , m_id(id)
{
}

CSimulationListItem::~CSimulationListItem() = default;
