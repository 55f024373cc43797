#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

/// What the command line of a case asks for.
struct SSampleOptions
{
    std::filesystem::path deck;           ///< -i, a .zek file
    std::filesystem::path exportSettings; ///< -e, a .dfg file; empty for no export
    double totalTime = 1.0;               ///< -r, s
    double saveInterval = 0.05;           ///< -w, s; 0 saves the last time alone
    double timeStep = 0.0;                ///< -t, s; 0 is automatic
    std::optional<double> stepLimit;      ///< -n
    unsigned processors = 1;              ///< -p
    int engine = 0;                       ///< -E, 0 to 2
    bool rewind = false;                  ///< -R, removes the time steps of an earlier run
    bool exportEachInterval = false;      ///< --simExport
    bool awaitClient = false;             ///< --cs
    bool compress = false;                ///< --compress-data

    /// Accepted options that change nothing here, in the order in which they came.
    std::vector<std::string> withoutEffect;
};

/// Throws CSampleError with BadCommandLine for what is unknown, incomplete or no usable number.
SSampleOptions parseSampleOptions(const std::vector<std::string>& arguments);
