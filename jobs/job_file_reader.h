#pragma once

#include "jobs/case_matrix.h"

#include <string>

/// Reads the matrix of a job and makes the case folders of a loaded job. Has no state.
class CJobFileReader
{
public:
    /// The cases of a matrix file. The last field of its last line becomes the option string of the
    /// store; an empty or missing file changes nothing. A text that is no number counts as 0.
    CaseMatrix readJobMatrix(const std::string& path) const;

    /// Makes `Job<n>` below `caseRoot` for each case record of the store, with copies of all
    /// inputs, and writes the record's values into the copy of the deck's data. Throws
    /// std::filesystem::filesystem_error "create_directory" or "copy_file".
    void writeCaseDecks(const std::string& caseRoot) const;
};
