#pragma once

#include "adapters/liggghts/command_line.h"
#include "adapters/liggghts/deck_values.h"
#include "adapters/liggghts/engine_run.h"
#include "adapters/liggghts/geometry.h"
#include "adapters/liggghts/results.h"
#include "adapters/liggghts/schedule.h"

#include <filesystem>
#include <vector>

namespace liggghts {

/// One case from its deck to its results. For a deck `x.zek` the engine works in `x_engine/`, in a
/// folder per seed, where its input and its log stay; the rest of what it wrote is removed.
class CCaseRun
{
public:
    /// `say` gets each line of progress.
    CCaseRun(SCommandLine line, Say say);

    /// Throws CAdapterError.
    void run();

private:
    void announce(const std::filesystem::path& file) const;
    std::vector<SEngineTask> prepareTasks() const;
    SEngineTask prepareTask(const std::string& name, const std::string& folder,
                            unsigned long seed) const;
    std::vector<SRunRecord> records(const std::vector<SEngineTask>& tasks) const;
    void removeOldTimeSteps() const;
    void writeTimeSteps(const SRunRecord& run) const;
    void writeResults(const SResultTable& table) const;

    SCommandLine m_line;
    Say m_say;
    SExperiment m_experiment;
    SEngineValues m_values;
    SSchedule m_schedule;
    SGeometry m_geometry;
};

} // namespace liggghts
