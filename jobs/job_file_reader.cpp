#include "jobs/job_file_reader.h"

#include "app/constants/file_names.h"
#include "deck/deck_store.h"
#include "jobs/case_folder_writer.h"
#include "platform/text_lines.h"

#include <QString>

#include <charconv>
#include <cmath>
#include <optional>
#include <string_view>

namespace {

/// Views into the line.
using Fields = std::vector<std::string_view>;

void split(std::string_view line, Fields& fields)
{
    const std::string& separator = FileNames::FieldSeparator;
    fields.clear();
    std::size_t begin = 0;
    for (std::size_t end = line.find(separator); end != std::string_view::npos;
         end = line.find(separator, begin)) {
        fields.push_back(line.substr(begin, end - begin));
        begin = end + separator.size();
    }
    fields.push_back(line.substr(begin));
}

/// A plain number. Nothing for what only Qt reads, or reads otherwise: blanks around, a plus sign,
/// words, a number out of range.
std::optional<double> plainNumber(std::string_view field)
{
    double number = 0.0;
    const char* const end = field.data() + field.size();
    const auto read = std::from_chars(field.data(), end, number);
    if (read.ec != std::errc() || read.ptr != end || !std::isnormal(number)) {
        return std::nullopt;
    }
    return number;
}

CaseValue parsedValue(std::string_view field)
{
    if (field == "0") {
        return 0.0;
    }
    if (field == "true" || field == "false") {
        return field == "true";
    }
    if (const std::optional<double> number = plainNumber(field)) {
        return *number;
    }
    return QString::fromUtf8(field.data(), int(field.size())).toDouble();
}

/// All fields but the case number and the options; the number of a case is its position.
CaseRow rowOf(const Fields& fields)
{
    CaseRow row;
    row.reserve(fields.size());
    for (std::size_t index = 1; index + 1 < fields.size(); ++index) {
        row.push_back(parsedValue(fields[index]));
    }
    return row;
}

} // namespace

CaseMatrix CJobFileReader::readJobMatrix(const std::string& path) const
{
    const std::vector<std::string> lines = platform::readLines(path);
    CaseMatrix cases;
    if (lines.empty()) {
        return cases;
    }
    Fields fields;
    split(lines.back(), fields);
    CDeckStore::instance()->setSimulatorOptions(std::string(fields.back()));
    for (std::size_t index = 1; index < lines.size(); ++index) {
        split(lines[index], fields);
        if (fields.size() >= 2) {
            cases.push_back(rowOf(fields));
        }
    }
    return cases;
}

void CJobFileReader::writeCaseDecks(const std::string& caseRoot) const
{
    const CCaseFolderWriter writer(caseRoot);
    std::vector<CCreatorData>& records = CDeckStore::instance()->creatorData();
    for (std::size_t index = 1; index < records.size(); ++index) {
        writer.write(index - 1, records[index]);
    }
}
