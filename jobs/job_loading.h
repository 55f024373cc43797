#pragma once

#include <functional>
#include <string>

class CJobFileReader;
class CJobMatrix;

/// Told of each case in order: the deck's name and the case number.
using CaseListener = std::function<void(const std::string& deck, int caseNumber)>;

/// Makes the job in the folder `job` the state of settings and store: the job's copies as working
/// files, its analysis, its deck's record and one record per case. False, after a modal box, where
/// the deck's data or the matrix is missing; what was set by then stays.
bool loadJobFolder(const std::string& job, CJobMatrix& matrix, CJobFileReader& reader,
                   const CaseListener& onCase);
