#include "jobs/case_preparation.h"

#include "deck/deck_store.h"
#include "jobs/command_dialect.h"
#include "jobs/free_name.h"
#include "jobs/job_file_reader.h"
#include "platform/file_operations.h"

std::vector<CaseCommands> prepareCases(const std::string& caseRootStem, bool local,
                                       std::string& caseRoot, const std::string& pythonWord)
{
    caseRoot = firstFreeName(caseRootStem);
    platform::createDirectory(caseRoot);
    CJobFileReader().writeCaseDecks(caseRoot);

    const CommandContext context =
        local ? localContext(caseRoot, pythonWord) : distributedContext(batchDialect());
    std::vector<CaseCommands> commands;
    for (std::size_t number = 0; number < context.m_recordCount; ++number) {
        commands.push_back(composeCommands(context, number));
    }
    return commands;
}
