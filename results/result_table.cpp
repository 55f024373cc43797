#include "results/result_table.h"

#include "app/checked.h"
#include "app/constants/file_names.h"
#include "platform/text_lines.h"

#include <exception>
#include <fstream>
#include <iostream>
#include <stdexcept>
#include <string>

namespace fs = std::filesystem;

namespace {

constexpr int HEADING_CASE = -1;

using CaseReader = std::function<SCaseResults(const fs::path& file)>;

/// The number behind "Job" in the name of the folder that holds `file`.
int caseNumber(const fs::path& file)
{
    const std::string folder = file.parent_path().filename().string();
    if (folder.size() < FileNames::CasePrefix.size()) {
        throw std::out_of_range("invalid string position");
    }
    return checked::stoi(folder.substr(FileNames::CasePrefix.size()));
}

/// Empty where the file can't be opened.
std::vector<char> contentOf(const fs::path& file)
{
    std::ifstream stream(file, std::ios::binary | std::ios::ate);
    const std::streamoff size = stream.tellg();
    if (size <= 0) {
        return {};
    }
    std::vector<char> text(static_cast<std::size_t>(size));
    stream.seekg(0);
    stream.read(text.data(), size);
    text.resize(static_cast<std::size_t>(stream.gcount()));
    return text;
}

std::string_view viewOf(const std::vector<char>& text)
{
    return {text.data(), text.size()};
}

SCaseResults readSimulatorCase(const fs::path& file)
{
    SCaseResults results{contentOf(file), {}};
    SSimulatorCsv csv = readSimulatorCsv(viewOf(results.text));
    if (csv.droppedCells != 0) {
        std::cerr << file.string() << ": dropped " << csv.droppedCells
                  << " cells beyond the columns of the table" << std::endl;
    }
    results.rows = std::move(csv.rows);
    return results;
}

SCaseResults readScriptCase(const fs::path& file)
{
    SCaseResults results{contentOf(file), {}};
    std::string_view rest = viewOf(results.text);
    for (std::string_view line; platform::takeLine(rest, line);) {
        results.rows.push_back({line});
    }
    return results;
}

SCaseResults headingCase()
{
    const std::string& word = FileNames::CaseNumberHeading;
    SCaseResults heading{{word.begin(), word.end()}, {}};
    heading.rows.push_back({viewOf(heading.text)});
    return heading;
}

void gatherFile(const fs::path& file, const CaseReader& read, ResultTable& table)
{
    const int number = caseNumber(file);
    if (table.count(number) == 0) {
        table.emplace(number, read(file));
    }
}

void gather(const std::vector<fs::path>& files, const FileObserver& started, const CaseReader& read,
            ResultTable& table)
{
    int index = 0;
    for (const fs::path& file : files) {
        started(index++);
        try {
            gatherFile(file, read, table);
        } catch (const std::exception& error) {
            std::cerr << "The gathering of results ends at " << file.string() << ": "
                      << error.what() << std::endl;
            throw;
        }
    }
}

void appendRow(std::string& lines, const std::string& number, const ResultRow& row)
{
    lines += number;
    lines += FileNames::FieldSeparator;
    for (const std::string_view cell : row) {
        lines += cell;
        lines += FileNames::FieldSeparator;
    }
    lines += '\n';
}

} // namespace

void gatherSimulatorResults(const std::vector<fs::path>& files, const FileObserver& started,
                            ResultTable& table)
{
    gather(files, started, readSimulatorCase, table);
}

void gatherScriptResults(const std::vector<fs::path>& files, const FileObserver& started,
                         ResultTable& table)
{
    table.emplace(HEADING_CASE, headingCase());
    gather(files, started, readScriptCase, table);
}

void writeResults(const ResultTable& table, std::ostream& stream)
{
    std::string lines;
    for (const auto& [number, results] : table) {
        lines.clear();
        for (const ResultRow& row : results.rows) {
            appendRow(lines, std::to_string(number), row);
        }
        lines += '\n';
        stream << lines;
    }
    stream.flush();
}
