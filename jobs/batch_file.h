#pragma once

#include <string>
#include <vector>

struct CaseCommands;
struct CommandContext;

/// Text of the Windows batch file; the surplus last element of `commands` has no line. The same
/// bytes on every platform.
std::string batchFileText(const std::vector<CaseCommands>& commands);

/// The same commands as a script for a POSIX shell, that runs from wherever it stands.
std::string shellScriptText(const CommandContext& context);

/// Writes `RunAllSimulations.bat` into the case root and, where the platform doesn't run batch
/// files, an executable `RunAllSimulations.sh` beside it. A file that can't be opened is passed
/// over.
void writeBatchFiles(const std::string& caseRoot, const std::vector<CaseCommands>& commands);
