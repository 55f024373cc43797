#pragma once

#include <QByteArray>
#include <QString>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace liggghts {

/// One run of the engine in a folder of its own, which holds its input.
struct SEngineTask
{
    std::string name; ///< in what is said of it
    std::filesystem::path folder;
    std::size_t count = 0; ///< spheres that have to be there at the end
    double timeStep = 0.0; ///< s
};

/// Gets a line of progress.
using Say = std::function<void(const std::string& line)>;

/// The engine's program: "liggghts" on the search path. Throws CAdapterError with EngineFailed
/// where there is none.
QString findEngine();

/// Runs all, at most `atOnce` of them together, and returns when the last has ended. The engine
/// ends with this program, however that goes. Throws CAdapterError with EngineFailed, with what the
/// engine itself says, at the first run that didn't reach its end: an exit code of 0 is not
/// enough. The other runs are ended then.
void runEngines(const std::vector<SEngineTask>& tasks, unsigned atOnce, const Say& say);

/// What is wrong with a run that has ended, empty if nothing is. `words` are the lines that it said
/// to the adapter.
std::string complaintAbout(const SEngineTask& task, bool crashed, int exitCode,
                           const std::vector<std::string>& words);

} // namespace liggghts
