#include "results/simulator_csv.h"

#include "app/constants/file_names.h"
#include "app/constants/progress_strings.h"
#include "platform/text_lines.h"

#include <iterator>
#include <string>

namespace {

struct SMarkers
{
    std::string extract = ProgressStrings::ExtractedData.toStdString();
    std::string row = ProgressStrings::TimeRow.toStdString();
    std::string heading = ProgressStrings::TimeHeading.toStdString();
};

void split(std::string_view line, ResultRow& parts)
{
    const char separator = FileNames::FieldSeparator.front();
    parts.clear();
    std::size_t begin = 0;
    for (std::size_t end; (end = line.find(separator, begin)) != std::string_view::npos;) {
        parts.push_back(line.substr(begin, end - begin));
        begin = end + 1;
    }
    parts.push_back(line.substr(begin));
}

class CReader
{
public:
    void take(const ResultRow& parts)
    {
        if (parts[0] == m_markers.extract) {
            m_inExtract = true;
        } else if (m_inExtract) {
            takeExtracted(parts);
        }
    }

    SSimulatorCsv finish()
    {
        m_csv.rows.insert(m_csv.rows.end(), std::make_move_iterator(m_columns.begin()),
                          std::make_move_iterator(m_columns.end()));
        return std::move(m_csv);
    }

private:
    void takeExtracted(const ResultRow& parts)
    {
        if (parts[0] == m_markers.row) {
            m_rowMode = true;
        } else if (parts[0] == m_markers.heading) {
            m_rowMode = false;
        }
        if (m_rowMode) {
            m_csv.rows.push_back(parts);
        } else {
            takeTableLine(parts);
        }
    }

    void takeTableLine(const ResultRow& parts)
    {
        if (m_columns.empty()) {
            m_columns.resize(parts.size());
        }
        for (std::size_t column = 0; column < parts.size(); ++column) {
            if (column < m_columns.size()) {
                m_columns[column].push_back(parts[column]);
            } else {
                ++m_csv.droppedCells;
            }
        }
    }

    SMarkers m_markers;
    SSimulatorCsv m_csv;
    std::vector<ResultRow> m_columns;
    bool m_inExtract = false;
    bool m_rowMode = true;
};

} // namespace

SSimulatorCsv readSimulatorCsv(std::string_view text)
{
    CReader reader;
    ResultRow parts;
    for (std::string_view line; platform::takeLine(text, line);) {
        if (!line.empty()) {
            split(line, parts);
            reader.take(parts);
        }
    }
    return reader.finish();
}
