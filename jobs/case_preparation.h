#pragma once

#include "app/constants/file_names.h"
#include "jobs/case_commands.h"

#include <string>
#include <vector>

/// Makes a new case root with a folder per case of the loaded job and composes the commands.
/// `caseRoot` becomes the first free name of the stem before it is created. The result holds one
/// element more than there are cases, for a case that has no folder. `pythonWord` starts the
/// analysis of a local run. Throws std::filesystem::filesystem_error "create_directory" or
/// "copy_file" and leaves what was made so far.
std::vector<CaseCommands> prepareCases(const std::string& caseRootStem, bool local,
                                       std::string& caseRoot,
                                       const std::string& pythonWord = FileNames::Python);
