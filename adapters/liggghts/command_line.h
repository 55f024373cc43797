#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace liggghts {

/// What the command line of a case asks for.
struct SCommandLine
{
    std::filesystem::path deck;           ///< -i, a .zek file
    std::filesystem::path exportSettings; ///< -e, a .dfg file; empty for no export
    double totalTime = 1.0;               ///< -r, s: the longest that an experiment may take
    double saveInterval = 0.05;           ///< -w, s; 0 saves the end alone
    double timeStep = 0.0;                ///< -t, s; 0 is automatic
    unsigned processors = 1;              ///< -p, engines at once
    bool rewind = false;                  ///< -R, removes the time steps of an earlier run
    bool compress = false;                ///< --compress-data

    /// Options of the simulator that the engine has no use for, in the order in which they came.
    std::vector<std::string> withoutEffect;
};

/// Throws CAdapterError with BadCommandLine for what is unknown, incomplete or no usable number.
SCommandLine parseCommandLine(const std::vector<std::string>& words);

/// `<deck>_data`, and a file or folder beside the deck by what follows the deck's stem.
std::filesystem::path dataFolderOf(const std::filesystem::path& deck);
std::filesystem::path besideDeck(const std::filesystem::path& deck, const std::string& ending);

} // namespace liggghts
