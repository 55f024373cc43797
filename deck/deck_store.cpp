#include "deck/deck_store.h"

CDeckStore* CDeckStore::instance()
{
    static CDeckStore store;
    return &store;
}

void CDeckStore::pushParameter(const std::shared_ptr<CParameterEntry>& entry)
{
    m_vParameters.push_back(entry);
}

void CDeckStore::setSimulatorOptions(std::string options)
{
    m_sSimulatorOptions = std::move(options);
}

void CDeckStore::setCoupling(Coupling coupling)
{
    m_coupling = std::move(coupling);
}

void CDeckStore::setPostProcessing(PostProcessing postProcessing)
{
    m_postProcessing = std::move(postProcessing);
}
