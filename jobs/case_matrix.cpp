#include "jobs/case_matrix.h"

#include <algorithm>
#include <cstddef>

namespace {

/// Steps to the next case as an odometer does; false behind the last one.
bool advance(std::vector<std::size_t>& positions, const std::vector<ValueList>& lists)
{
    for (std::size_t column = lists.size(); column-- > 0;) {
        if (++positions[column] < lists[column].size()) {
            return true;
        }
        positions[column] = 0;
    }
    return false;
}

CaseRow rowAt(const std::vector<std::size_t>& positions, const std::vector<ValueList>& lists)
{
    CaseRow row;
    row.reserve(lists.size());
    for (std::size_t column = 0; column < lists.size(); ++column) {
        row.push_back(lists[column][positions[column]]);
    }
    return row;
}

} // namespace

CaseMatrix expandCases(const std::vector<ValueList>& lists)
{
    CaseMatrix cases;
    if (std::any_of(lists.begin(), lists.end(), [](const auto& list) { return list.empty(); })) {
        return cases;
    }
    // No recursion: a deck of many materials has more columns than a stack has room for.
    std::vector<std::size_t> positions(lists.size(), 0);
    do {
        cases.push_back(rowAt(positions, lists));
    } while (advance(positions, lists));
    return cases;
}
