#include "results/result_table.h"
#include "tests/fuzz/scratch_folder.h"
#include "tests/fuzz/targets.h"

#include <algorithm>
#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string>

namespace fs = std::filesystem;

namespace {

using Gather = void (*)(const std::vector<fs::path>&, const FileObserver&, ResultTable&);

/// A name that a folder can have: what the user's own folders are called isn't known.
std::string folderName(std::string_view line)
{
    std::string name(line.substr(0, 100));
    std::replace(name.begin(), name.end(), '/', '_');
    std::replace(name.begin(), name.end(), '\0', '_');
    return name.empty() || name == "." || name == ".." ? "_" : name;
}

void collate(Gather gather, const fs::path& file)
{
    ResultTable table;
    try {
        // Twice, as for a case of two files.
        gather(
            {file, file}, [](int) {}, table);
    } catch (const std::out_of_range&) {
        // A folder that isn't named after a case.
    } catch (const std::invalid_argument&) {
    }
    std::ostringstream combined;
    writeResults(table, combined);
}

} // namespace

void FuzzTargets::resultCsv(std::string_view bytes)
{
    const std::size_t end = std::min(bytes.find('\n'), bytes.size());
    const fs::path folder = ScratchFolder::path() / folderName(bytes.substr(0, end));
    fs::create_directory(folder);
    bytes.remove_prefix(std::min(end + 1, bytes.size()));
    const fs::path file = ScratchFolder::write(folder.filename() / "values.csv", bytes);
    collate(gatherSimulatorResults, file);
    collate(gatherScriptResults, file);
    fs::remove_all(folder);
}
