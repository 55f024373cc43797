#include "jobs/batch_file.h"

#include "app/constants/file_names.h"
#include "jobs/case_commands.h"
#include "jobs/command_dialect.h"
#include "platform/interpreter.h"

#include <filesystem>

namespace fs = std::filesystem;

namespace {

std::string batchLine(const CaseCommands& commands)
{
    std::string line;
    if (!commands.m_sCoupling.empty()) {
        line = "start " + FileNames::CommandInterpreter + " /k " + commands.m_sCoupling + "\n\r";
    }
    return line + commands.m_sSimulator + commands.m_sPython + "\n";
}

/// The server runs beside its case and ends with it: the next one may want the same port.
std::string shellLines(const CaseCommands& commands)
{
    std::string run = commands.m_sSimulator + commands.m_sPython + "\n";
    if (commands.m_sCoupling.empty()) {
        return run;
    }
    return commands.m_sCoupling + " & server=$!\n" + run +
           "kill \"$server\" 2>/dev/null; wait \"$server\"\n";
}

std::string shellPreparation(const CommandContext& context)
{
    std::string text = "#!/bin/sh\n"
                       "# Runs all cases, one after the other, from wherever this folder stands.\n"
                       "cd \"$(dirname \"$0\")\" || exit 1\n";
    if (context.m_postProcessing.first == 2) {
        text += context.m_dialect->preparation + "\n" +
                "command -v python >/dev/null 2>&1 || python() { python3 \"$@\"; }\n";
    }
    return text;
}

void writeShellScript(const fs::path& path)
{
    std::ofstream(path, std::ios::binary) << shellScriptText(distributedContext(shellDialect()));
    std::error_code ignored;
    fs::permissions(path, fs::perms::owner_exec | fs::perms::group_exec | fs::perms::others_exec,
                    fs::perm_options::add, ignored);
}

} // namespace

std::string batchFileText(const std::vector<CaseCommands>& commands)
{
    std::string text;
    for (std::size_t number = 0; number + 1 < commands.size(); ++number) {
        text += batchLine(commands[number]);
    }
    return text;
}

std::string shellScriptText(const CommandContext& context)
{
    std::string text = shellPreparation(context);
    for (std::size_t number = 0; number + 1 < context.m_recordCount; ++number) {
        text += shellLines(composeCommands(context, number));
    }
    return text;
}

CBatchFiles::CBatchFiles(const std::string& caseRoot)
    : m_stem(caseRoot + "/" + FileNames::BatchFileStem)
    , m_batch(m_stem + FileNames::BatchExtension, std::ios::binary)
{
}

void CBatchFiles::write(const std::vector<CaseCommands>& commands)
{
    m_batch << batchFileText(commands);
    m_batch.close();
    if (!platform::speaksBatch()) {
        writeShellScript(m_stem + ".sh");
    }
}
