#pragma once

#include "deck/creator_data.h"

#include <memory>
#include <string>
#include <utility>
#include <vector>

struct CParameterEntry;

/// What the pages share: the deck, the parameters that vary and the choices made on the pages.
/// Process-wide, made on first use; written on the GUI thread only.
class CDeckStore
{
public:
    /// Mode (0 none, 1 a .dfg export, 2 a Python script) and the mode's arguments.
    using PostProcessing = std::pair<int, std::vector<std::string>>;
    /// Location of the coupling server and its command; both empty without coupling.
    using Coupling = std::pair<std::string, std::string>;

    static CDeckStore* instance();

    /// Whether the data folder of a finished case is reduced to its first file.
    bool simulationOutputs() const { return m_bSimulationOutputs; }
    void setSimulationOutputs(bool reduce) { m_bSimulationOutputs = reduce; }

    /// Element 0 is the deck as loaded, each further element one case.
    std::vector<CCreatorData>& creatorData() { return m_vCreatorData; }
    const std::vector<CCreatorData>& creatorData() const { return m_vCreatorData; }

    /// Entries in the order in which they were made; those of earlier decks stay.
    const std::vector<std::shared_ptr<CParameterEntry>>& parameters() const
    {
        return m_vParameters;
    }
    void pushParameter(const std::shared_ptr<CParameterEntry>& entry);

    /// The simulator's option string; empty until the options page was entered with a deck.
    const std::string& simulatorOptions() const { return m_sSimulatorOptions; }
    void setSimulatorOptions(std::string options);

    const Coupling& coupling() const { return m_coupling; }
    void setCoupling(Coupling coupling);

    const PostProcessing& postProcessing() const { return m_postProcessing; }
    void setPostProcessing(PostProcessing postProcessing);

private:
    bool m_bSimulationOutputs = false;
    std::vector<CCreatorData> m_vCreatorData;
    std::vector<std::shared_ptr<CParameterEntry>> m_vParameters;
    std::string m_sSimulatorOptions;
    Coupling m_coupling;
    PostProcessing m_postProcessing{0, {std::string()}};
};
