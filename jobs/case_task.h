#pragma once

#include "jobs/case_commands.h"

#include <memory>
#include <string>

class CCaseOutput;

/// All that a pool thread needs to know of the case that it runs. Job, run and row may be others by
/// the time the case ends.
struct CaseTask
{
    int m_iRun;
    int m_iCaseNumber;
    std::string m_sCaseRoot;
    std::string m_sDeck; ///< the deck's name without the case number
    CaseCommands m_commands;
    std::shared_ptr<CCaseOutput> m_output; ///< null for a case without a row
};

/// A case that has ended. An exit code other than 0 means failure.
struct EndedCase
{
    CaseTask m_task;
    int m_iExitCode;
};
