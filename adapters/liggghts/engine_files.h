#pragma once

#include <array>
#include <filesystem>
#include <utility>
#include <vector>

namespace liggghts {

struct SSphere
{
    long id = 0;
    int material = 1;
    double radius = 0.0;           ///< m
    std::array<double, 3> place{}; ///< m
    std::array<double, 3> speed{}; ///< m/s
};

/// The spheres at one step, by their id.
struct SState
{
    unsigned long step = 0;
    std::vector<SSphere> spheres;
};

/// Reads a dump of the engine. Throws CAdapterError with EngineFailed for one that is missing, cut
/// off, or holds something that is no finite number.
SState readDump(const std::filesystem::path& file);

/// Every `save.<step>.dump` of a folder, in the order of the steps. Throws as readDump does.
std::vector<SState> readSaves(const std::filesystem::path& folder);

/// Seconds and value of each line that isn't a comment; empty where there is no file.
std::vector<std::pair<double, double>> readSamples(const std::filesystem::path& file);

} // namespace liggghts
