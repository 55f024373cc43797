#pragma once

#include "results/simulator_csv.h"

#include <filesystem>
#include <functional>
#include <map>
#include <ostream>
#include <vector>

/// What one case adds to the combined file.
struct SCaseResults
{
    /// What the cells point into; moving it leaves them valid. Its bytes pass through as they are,
    /// whatever their encoding.
    std::vector<char> text;
    std::vector<ResultRow> rows;
};

/// The results by case number, in the order of the combined file.
using ResultTable = std::map<int, SCaseResults>;

/// Told the index of each file before it is read.
using FileObserver = std::function<void(int index)>;

/// Gathers files exported by the simulator. Of two files of one case the first is taken. A file in
/// a folder that isn't named after a case is named on the standard error stream and ends the
/// gathering with std::invalid_argument or std::out_of_range; what was gathered until then stays in
/// `table`.
void gatherSimulatorResults(const std::vector<std::filesystem::path>& files,
                            const FileObserver& started, ResultTable& table);

/// As `gatherSimulatorResults`, for files of the user's script: each line is one cell. The pseudo
/// case -1 heads the numbers of the cases.
void gatherScriptResults(const std::vector<std::filesystem::path>& files,
                         const FileObserver& started, ResultTable& table);

/// One line per row, led by the case number, each cell followed by a comma; an empty line behind
/// each case.
void writeResults(const ResultTable& table, std::ostream& stream);
