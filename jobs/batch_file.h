#pragma once

#include <fstream>
#include <string>
#include <vector>

struct CaseCommands;
struct CommandContext;

/// Text of the Windows batch file; the surplus last element of `commands` has no line. The same
/// bytes on every platform.
std::string batchFileText(const std::vector<CaseCommands>& commands);

/// The same commands as a script for a POSIX shell, that runs from wherever it stands.
std::string shellScriptText(const CommandContext& context);

/// `RunAllSimulations.bat` of a case root and, where the platform doesn't run batch files, an
/// executable `RunAllSimulations.sh` beside it. A file that can't be opened is passed over.
class CBatchFiles
{
public:
    /// Makes the batch file, which is empty so far.
    explicit CBatchFiles(const std::string& caseRoot);

    /// Writes the lines of all cases and closes the file.
    void write(const std::vector<CaseCommands>& commands);

private:
    const std::string m_stem;
    std::ofstream m_batch;
};
