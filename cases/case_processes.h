#pragma once

#include <filesystem>
#include <string>

/// Finding the processes of a case again, whatever group or session they have moved to: each
/// carries the case's folder in its environment. Without /proc none is found.
namespace cases {

/// Name of the environment variable that holds the case's folder.
extern const char* const CaseVariable;

/// Ends every process of that case.
void endProcessesOf(const std::filesystem::path& caseFolder);

/// Ends what earlier runs that are gone left running below the case root; the cases that somebody
/// holds are left alone.
void endLeftovers(const std::filesystem::path& caseRoot);

} // namespace cases
