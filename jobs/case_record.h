#pragma once

#include "deck/creator_data.h"
#include "jobs/case_matrix.h"

#include <cstddef>
#include <string>

/// Every heading of the deck's scheme, each with a comma behind it.
std::string schemeHeadings(const CCreatorData& deck);

/// The record of a case that is to stand at `index` in the store: the deck's name followed by
/// `index`, with the values of `row` under the keys and tags of the deck. What the scheme doesn't
/// name stays at its default. A modal box comes up for each value of the wrong type, whose slot
/// takes 0.0 or false. Where the row ends too early the remaining slots keep their defaults, and a
/// line on the standard error stream names the case and what is missing.
CCreatorData caseRecord(const CCreatorData& deck, std::size_t index, std::size_t caseNumber,
                        const CaseRow& row);
