#include "jobs/job_file_reader.h"

#include "app/constants/file_names.h"
#include "deck/deck_store.h"
#include "platform/text_lines.h"

#include <QString>
#include <QStringList>

namespace {

CaseValue parsedValue(const QString& field)
{
    if (field == QLatin1String("true")) {
        return true;
    }
    if (field == QLatin1String("false")) {
        return false;
    }
    return field.toDouble();
}

QStringList fieldsOf(const std::string& line)
{
    return QString::fromStdString(line).split(QString::fromStdString(FileNames::FieldSeparator));
}

/// All fields but the case number and the options; the number of a case is its position.
CaseRow rowOf(const QStringList& fields)
{
    CaseRow row;
    row.reserve(static_cast<std::size_t>(fields.size()));
    for (int index = 1; index + 1 < fields.size(); ++index) {
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
    CDeckStore::instance()->setSimulatorOptions(fieldsOf(lines.back()).last().toStdString());
    for (std::size_t index = 1; index < lines.size(); ++index) {
        const QStringList fields = fieldsOf(lines[index]);
        if (fields.size() >= 2) {
            cases.push_back(rowOf(fields));
        }
    }
    return cases;
}
