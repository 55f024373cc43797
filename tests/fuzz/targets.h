#pragma once

#include <string_view>

/// What reads files that come from outside, each given the bytes of such a file. A failure that the
/// reader declares is caught; a memory fault, a hang and any other exception is a finding. The
/// constants have to be filled, see `CTestEnvironment`.
namespace FuzzTargets {

/// A deck's data file.
void deck(std::string_view bytes);

/// A .dfg file.
void dfg(std::string_view bytes);

/// The matrix of a job, up to the records of its cases.
void jobMatrix(std::string_view bytes);

/// The three lists of a job folder, divided by lines "%%": additional files, coupling, Python
/// details. A list that isn't there is a missing file.
void jobLists(std::string_view bytes);

/// A CSV of the collation; its first line names the folder that holds it.
void resultCsv(std::string_view bytes);

} // namespace FuzzTargets
