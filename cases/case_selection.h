#pragma once

#include "cases/batch_reader.h"
#include "cases/case_note.h"

#include <cstddef>
#include <set>
#include <string>
#include <vector>

namespace cases {

/// Which cases of a root a command is about.
class CCaseSelection
{
public:
    /// "missing" (what isn't done), "failed" (what failed or was interrupted), "all", or a list of
    /// numbers and ranges such as "0,3,5-9". Throws std::invalid_argument with a sentence.
    static CCaseSelection fromText(const std::string& text);

    /// Whether a case of that state has to run.
    bool needs(std::size_t number, CaseState state) const;

    /// The selected cases of a root, in their order. Throws std::invalid_argument where the list
    /// names a case that there isn't.
    std::vector<SBatchCase> select(const std::vector<SBatchCase>& batchCases,
                                   const std::filesystem::path& caseRoot) const;

private:
    enum class Kind { Missing, Failed, All, List };

    Kind m_kind = Kind::Missing;
    std::set<std::size_t> m_numbers;
};

/// Numbers in ascending order as a list of the same form: "0,3,5-9".
std::string listText(const std::vector<std::size_t>& numbers);

} // namespace cases
