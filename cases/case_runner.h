#pragma once

#include "cases/batch_reader.h"
#include "cases/case_note.h"

#include <filesystem>
#include <functional>
#include <string>

namespace cases {

class CRunControl;

/// What all cases of a run have in common.
struct SRunSetup
{
    std::filesystem::path caseRoot; ///< absolute
    std::string simulator;          ///< replaces the one of the batch file unless empty
    std::string python;             ///< command word of the analysis; empty where none is needed
};

/// Name of the file in a case's folder that takes what its programs print.
extern const char* const OutputFileName;

/// Runs the simulator of a case with its coupling server beside it and then its analysis, and waits
/// for them. The output of all goes to `output.txt` in the case's folder. `started` is told the
/// note of the running case as soon as the simulator runs. Returns the last note of this try.
SCaseNote runCase(const SBatchCase& batchCase, const SRunSetup& setup, CRunControl& control,
                  const std::function<void(const SCaseNote&)>& started);

} // namespace cases
