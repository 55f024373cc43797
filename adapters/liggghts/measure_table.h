#pragma once

#include "adapters/liggghts/experiment.h"

#include <string>
#include <vector>

namespace liggghts {

/// A result of an experiment.
struct SMeasure
{
    std::string word;  ///< in the experiment file
    std::string title; ///< in the export, with its unit
};

/// What an experiment measures, in the order in which its results come.
std::vector<SMeasure> measuresOf(EExperiment kind);

} // namespace liggghts
