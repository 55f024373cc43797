#include "jobs/job_matrix.h"

#include "app/checked.h"
#include "app/constants/file_names.h"
#include "deck/deck_store.h"
#include "jobs/case_record.h"
#include "parameters/parameter_catalogue.h"
#include "parameters/parameter_entry.h"

#include <charconv>
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

std::string dataLine(std::size_t number, const CaseRow& row, const std::string& options)
{
    const std::string& separator = FileNames::FieldSeparator;
    std::string line = std::to_string(number) + separator;
    for (const CaseValue& value : row) {
        append(line, value);
        line += separator;
    }
    return line + options + "\n";
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
    for (std::size_t number = 0; number < m_cases.size(); ++number) {
        stream << dataLine(number, m_cases[number], options);
    }
    // The file is complete before the first box of a mistyped value comes up.
    stream.close();
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

void CJobMatrix::createCaseRecord(const CaseRow& row, std::size_t caseNumber)
{
    std::vector<CCreatorData>& records = CDeckStore::instance()->creatorData();
    const CCreatorData& deck = checked::element(records, 0);
    records.push_back(caseRecord(deck, records.size(), caseNumber, row));
}
