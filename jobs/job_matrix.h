#pragma once

#include "jobs/case_matrix.h"

#include <cstddef>
#include <ostream>
#include <string>

/// The cases of the parameters in the store, their text file and their records in the store.
class CJobMatrix
{
public:
    /// Expands the fields of all parameter entries, entries outermost, fields innermost; of a field
    /// with variances the deck's own value is left out.
    void buildCases();
    const CaseMatrix& cases() const { return m_cases; }

    /// Writes `<jobFolder>/input_jobID-Matrix.csv` and appends one record per case to the store.
    /// False without an options string, with an empty file, or without a deck, with its heading.
    bool writeJobMatrix(const std::string& jobFolder);

    /// The heading line, from the deck's record; false where the store has no record.
    bool writeHeader(std::ostream& stream) const;

    /// The lines of the cases, behind the heading line.
    void writeCases(std::ostream& stream) const;

    /// Appends the record of one case to the store, which must hold the deck's record. A modal box
    /// comes up for each value of the wrong type; the slot then takes 0.0 or false.
    void createCaseRecord(const CaseRow& row, std::size_t caseNumber);

private:
    CaseMatrix m_cases;
};
