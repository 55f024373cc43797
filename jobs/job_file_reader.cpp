#include "jobs/job_file_reader.h"

#include "app/constants/file_names.h"
#include "deck/deck_store.h"
#include "jobs/case_folder_writer.h"
#include "platform/text_lines.h"

#include <QString>

namespace {

using Fields = std::vector<std::string>;

Fields fieldsOf(const std::string& line)
{
    const std::string& separator = FileNames::FieldSeparator;
    Fields fields;
    std::size_t begin = 0;
    for (std::size_t end = line.find(separator); end != std::string::npos;
         end = line.find(separator, begin)) {
        fields.push_back(line.substr(begin, end - begin));
        begin = end + separator.size();
    }
    fields.push_back(line.substr(begin));
    return fields;
}

CaseValue parsedValue(const std::string& field)
{
    if (field == "true" || field == "false") {
        return field == "true";
    }
    return QString::fromStdString(field).toDouble();
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
    CDeckStore::instance()->setSimulatorOptions(fieldsOf(lines.back()).back());
    for (std::size_t index = 1; index < lines.size(); ++index) {
        const Fields fields = fieldsOf(lines[index]);
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
