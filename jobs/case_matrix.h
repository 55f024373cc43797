#pragma once

#include "parameters/case_value.h"

#include <vector>

/// Values of one case, one per column.
using CaseRow = std::vector<CaseValue>;

/// Cases by case number.
using CaseMatrix = std::vector<CaseRow>;

/// Values that one column takes.
using ValueList = std::vector<CaseValue>;

/// Cases in expansion order, the last list changing fastest; none if any list is empty, and one
/// case without values if there is no list.
CaseMatrix expandCases(const std::vector<ValueList>& lists);
