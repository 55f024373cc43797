#pragma once

#include "deck/deck_store.h"

#include <cstddef>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <vector>

struct CaseCommands;

namespace cases {

/// A batch file that says something else than the wizard would have written.
class CBatchError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// One case as the batch file tells it.
struct SBatchCase
{
    std::size_t number = 0;
    std::string deck;       ///< the deck's name, without the case number and extension
    std::string executable; ///< the simulator's, as the line has it
    std::string options;    ///< the simulator's option string, blanks as they fall
    CDeckStore::Coupling coupling;
    CDeckStore::PostProcessing postProcessing; ///< of mode 1 only the mode is told

    /// "Job" and the number.
    std::string folder() const;
    /// The deck's name and the number.
    std::string stem() const;
};

/// The cases of a batch file's text, by number. Line ends may have become those of Windows on the
/// file's way. Throws CBatchError, which names the line, for everything that isn't understood to
/// the last byte and for a case that comes twice.
std::vector<SBatchCase> readBatch(const std::string& text);

/// The cases of `RunAllSimulations.bat` in a case root. Throws CBatchError also where there is
/// none.
std::vector<SBatchCase> readBatchFile(const std::filesystem::path& caseRoot);

/// What runs a case on this machine, with absolute paths below `caseRoot`; `python` is the command
/// word of its analysis, `simulator` replaces the one of the line unless it is empty.
CaseCommands localCommands(const SBatchCase& batchCase, const std::filesystem::path& caseRoot,
                           const std::string& python, const std::string& simulator);

} // namespace cases
