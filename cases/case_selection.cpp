#include "cases/case_selection.h"

#include "platform/text_lines.h"

#include <charconv>
#include <stdexcept>
#include <string_view>

namespace cases {
namespace {

/// More cases than any job has; keeps a slip of the pen from filling the memory.
constexpr std::size_t LongestRange = 10'000'000;

[[noreturn]] void refuse(const std::string& text)
{
    throw std::invalid_argument("\"" + text +
                                "\" names no cases: use missing, failed, all or a list as 0,3,5-9");
}

std::size_t numberOf(std::string_view digits, const std::string& whole)
{
    std::size_t number = 0;
    const char* const end = digits.data() + digits.size();
    const auto [stop, error] = std::from_chars(digits.data(), end, number);
    if (error != std::errc() || stop != end) {
        refuse(whole);
    }
    return number;
}

void addRange(const std::string& part, const std::string& whole, std::set<std::size_t>& numbers)
{
    const std::string_view text(part);
    const std::size_t dash = text.find('-');
    const std::size_t first = numberOf(text.substr(0, dash), whole);
    const std::size_t last =
        dash == std::string_view::npos ? first : numberOf(text.substr(dash + 1), whole);
    if (last < first || last - first > LongestRange) {
        refuse(whole);
    }
    for (std::size_t number = first; number <= last; ++number) {
        numbers.insert(number);
    }
}

} // namespace

CCaseSelection CCaseSelection::fromText(const std::string& text)
{
    CCaseSelection selection;
    if (text == "missing") {
        selection.m_kind = Kind::Missing;
    } else if (text == "failed") {
        selection.m_kind = Kind::Failed;
    } else if (text == "all") {
        selection.m_kind = Kind::All;
    } else {
        selection.m_kind = Kind::List;
        for (const std::string& part : platform::splitAt(text, ',')) {
            addRange(part, text, selection.m_numbers);
        }
    }
    return selection;
}

bool CCaseSelection::needs(std::size_t number, CaseState state) const
{
    switch (m_kind) {
    case Kind::Missing:
        return state != CaseState::Done;
    case Kind::Failed:
        return state == CaseState::Failed || state == CaseState::Interrupted;
    case Kind::All:
        return true;
    case Kind::List:
        return m_numbers.count(number) != 0;
    }
    return false;
}

std::vector<SBatchCase> CCaseSelection::select(const std::vector<SBatchCase>& batchCases,
                                               const std::filesystem::path& caseRoot) const
{
    std::vector<SBatchCase> selected;
    const bool stateMatters = m_kind == Kind::Missing || m_kind == Kind::Failed;
    for (const SBatchCase& batchCase : batchCases) {
        const CaseState state =
            stateMatters ? stateOfCase(caseRoot / batchCase.folder()).state : CaseState::Waiting;
        if (needs(batchCase.number, state)) {
            selected.push_back(batchCase);
        }
    }
    std::set<std::size_t> unknown = m_numbers;
    for (const SBatchCase& batchCase : selected) {
        unknown.erase(batchCase.number);
    }
    if (!unknown.empty()) {
        throw std::invalid_argument("there is no case " + std::to_string(*unknown.begin()) +
                                    " in the batch file");
    }
    return selected;
}

std::string listText(const std::vector<std::size_t>& numbers)
{
    std::string text;
    for (std::size_t i = 0; i < numbers.size();) {
        std::size_t last = i;
        while (last + 1 < numbers.size() && numbers[last + 1] == numbers[last] + 1) {
            ++last;
        }
        text += (text.empty() ? "" : ",") + std::to_string(numbers[i]);
        if (last > i) {
            text += "-" + std::to_string(numbers[last]);
        }
        i = last + 1;
    }
    return text;
}

} // namespace cases
