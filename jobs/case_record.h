#pragma once

#include "deck/creator_data.h"
#include "jobs/case_matrix.h"

#include <cstddef>
#include <string>

/// Every heading of the deck's scheme, each with a comma behind it.
std::string schemeHeadings(const CCreatorData& deck);

/// The record that stands at `index` behind the deck, which is that of the case before that number:
/// the deck's name followed by `index`, with the values of `row` under the keys and tags of the
/// deck. What the scheme doesn't name stays at its default. A modal box comes up for each value of
/// the wrong type, whose slot takes 0.0 or false. Where the row ends too early the remaining slots
/// keep their defaults, and a line on the standard error stream says so.
CCreatorData caseRecord(const CCreatorData& deck, std::size_t index, const CaseRow& row);
