#include "jobs/job_matrix.h"

#include "app/checked.h"
#include "app/constants/file_names.h"
#include "deck/deck_store.h"
#include "jobs/case_record.h"
#include "parameters/parameter_catalogue.h"
#include "parameters/parameter_entry.h"

#include <charconv>
#include <cstdint>
#include <cstring>
#include <fstream>

namespace {

/// Values that a field takes in the job: its variances, or the deck's value where it has none.
ValueList jobValues(const CParameterFields& field)
{
    const std::vector<CaseValue>& values = field.m_values;
    return values.size() > 1 ? ValueList(values.begin() + 1, values.end()) : values;
}

std::vector<ValueList> columnsOf(const std::vector<std::shared_ptr<CParameterEntry>>& entries)
{
    std::vector<ValueList> columns;
    for (const auto& entry : entries) {
        for (const auto& key : entry->m_keys) {
            for (const auto& field : key->m_fields) {
                columns.push_back(jobValues(*field));
            }
        }
    }
    return columns;
}

/// Appends what a stream would write by default, "boolalpha" apart: the matrix of a large job has
/// millions of values.
void append(std::string& text, const CaseValue& value)
{
    if (const bool* flag = std::get_if<bool>(&value)) {
        text += *flag ? "true" : "false";
        return;
    }
    constexpr int StreamPrecision = 6;
    char digits[32];
    const auto result = std::to_chars(std::begin(digits), std::end(digits), std::get<double>(value),
                                      std::chars_format::general, StreamPrecision);
    text.append(digits, result.ptr);
}

std::uint64_t bitsOf(double number)
{
    std::uint64_t bits = 0;
    static_assert(sizeof bits == sizeof number);
    std::memcpy(&bits, &number, sizeof bits);
    return bits;
}

/// Told by their bits: 0 and -0 are equal numbers of different texts, and NaN is equal to nothing.
bool haveOneText(const CaseValue& left, const CaseValue& right)
{
    const double* const number = std::get_if<double>(&left);
    const double* const other = std::get_if<double>(&right);
    if (number == nullptr || other == nullptr) {
        return left == right;
    }
    return bitsOf(*number) == bitsOf(*other);
}

/// The cells of the line before. Most of a case's values are those of the case before it, and the
/// digits of a number take longer to find than to copy.
class CCellTexts
{
public:
    /// The value's text with the separator behind it.
    const std::string& at(std::size_t column, const CaseValue& value)
    {
        if (column == m_cells.size()) {
            m_cells.push_back({value, textOf(value)});
        } else if (!haveOneText(m_cells[column].value, value)) {
            m_cells[column] = {value, textOf(value)};
        }
        return m_cells[column].text;
    }

private:
    static std::string textOf(const CaseValue& value)
    {
        std::string text;
        append(text, value);
        return text + FileNames::FieldSeparator;
    }

    struct Cell
    {
        CaseValue value;
        std::string text;
    };

    std::vector<Cell> m_cells;
};

void appendLine(std::string& text, std::size_t number, const CaseRow& row, CCellTexts& cells)
{
    text += std::to_string(number) + FileNames::FieldSeparator;
    for (std::size_t column = 0; column < row.size(); ++column) {
        text += cells.at(column, row[column]);
    }
}

} // namespace

void CJobMatrix::buildCases()
{
    m_cases = expandCases(columnsOf(CDeckStore::instance()->parameters()));
}

bool CJobMatrix::writeJobMatrix(const std::string& jobFolder)
{
    std::ofstream stream(jobFolder + "/" + FileNames::JobMatrixStem + FileNames::CsvExtension);
    const std::string& options = CDeckStore::instance()->simulatorOptions();
    if (options.empty() || !writeHeader(stream)) {
        return false;
    }
    buildCases();
    writeCases(stream);
    // The file is complete before the first box of a mistyped value comes up.
    stream.close();
    std::vector<CCreatorData>& records = CDeckStore::instance()->creatorData();
    records.reserve(records.size() + m_cases.size());
    for (std::size_t number = 0; number < m_cases.size(); ++number) {
        createCaseRecord(m_cases[number], number);
    }
    return true;
}

bool CJobMatrix::writeHeader(std::ostream& stream) const
{
    const std::vector<CCreatorData>& records = CDeckStore::instance()->creatorData();
    stream << FileNames::CasePrefix << " " << FileNames::CaseNumberHeading
           << FileNames::FieldSeparator;
    if (!records.empty()) {
        stream << schemeHeadings(records.front());
    }
    stream << ParameterCatalogue::SimulatorOptions << "\n" << std::flush;
    return !records.empty();
}

void CJobMatrix::writeCases(std::ostream& stream) const
{
    constexpr std::size_t blockSize = 1U << 20U;
    const std::string& options = CDeckStore::instance()->simulatorOptions();
    CCellTexts cells;
    std::string block;
    for (std::size_t number = 0; number < m_cases.size(); ++number) {
        appendLine(block, number, m_cases[number], cells);
        block += options + "\n";
        if (block.size() >= blockSize) {
            stream << block;
            block.clear();
        }
    }
    stream << block;
}

void CJobMatrix::createCaseRecord(const CaseRow& row, std::size_t caseNumber)
{
    std::vector<CCreatorData>& records = CDeckStore::instance()->creatorData();
    const CCreatorData& deck = checked::element(records, 0);
    records.push_back(caseRecord(deck, records.size(), caseNumber, row));
}
