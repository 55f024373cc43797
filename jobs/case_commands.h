#pragma once

#include "deck/deck_store.h"

#include <cstddef>
#include <string>

struct CommandDialect;

/// The command texts of one case; the second and the third may be empty.
struct CaseCommands
{
    std::string m_sSimulator;
    std::string m_sCoupling;
    std::string m_sPython;
};

/// What the commands of all cases of one preparation have in common.
struct CommandContext
{
    const CommandDialect* m_dialect; ///< language of the interpreter; never null, not owned
    bool m_bLocal;                   ///< run from here, with absolute paths
    std::string m_sPrefix;           ///< case root and "/" for a local run, else empty
    std::string m_sExecutable;       ///< the simulator's
    std::string m_sOptions;          ///< the simulator's option string
    std::string m_sDeck;             ///< name of the deck, without extension
    std::string m_sPython;           ///< command word of the Python interpreter
    CDeckStore::Coupling m_coupling;
    CDeckStore::PostProcessing m_postProcessing;
    std::size_t m_recordCount; ///< the deck's record and one per case
};

/// Context of a local run in `caseRoot`, from the settings and the store.
CommandContext localContext(const std::string& caseRoot, const std::string& pythonWord);

/// Context of files that run from their own folder, whatever its place.
CommandContext distributedContext(const CommandDialect& dialect);

/// The commands of a case, for any number below the count of records. Throws std::out_of_range
/// "invalid vector subscript" where the post-processing arguments are too few.
CaseCommands composeCommands(const CommandContext& context, std::size_t caseNumber);
