#include "cases/comparison.h"

#include "app/constants/file_names.h"
#include "app/constants/progress_strings.h"
#include "platform/existence.h"
#include "platform/text_lines.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <set>

namespace fs = std::filesystem;

namespace cases {
namespace {

using Cells = std::vector<std::string>;

std::vector<Cells> readCells(const fs::path& file)
{
    if (!platform::exists(file)) {
        throw CComparisonError("there is no " + file.string());
    }
    std::vector<Cells> rows;
    for (const std::string& line : platform::readLines(file.string())) {
        if (!line.empty()) {
            rows.push_back(platform::splitAt(line, FileNames::FieldSeparator.front()));
        }
    }
    return rows;
}

std::optional<long> wholeNumber(const std::string& text)
{
    long number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && end == text.data() + text.size() ? std::optional(number)
                                                                    : std::nullopt;
}

/// The columns of the matrix, without the case's number and the options, that aren't alike in all
/// cases.
std::vector<std::size_t> variedColumns(const std::vector<Cells>& rows)
{
    std::vector<std::size_t> varied;
    for (std::size_t column = 1; column + 1 < rows.front().size(); ++column) {
        const bool differs = std::any_of(rows.begin() + 1, rows.end(), [&](const Cells& row) {
            return row[column] != rows[1][column];
        });
        if (differs) {
            varied.push_back(column);
        }
    }
    return varied;
}

std::vector<std::string> pick(const Cells& row, const std::vector<std::size_t>& columns)
{
    std::vector<std::string> picked;
    picked.reserve(columns.size());
    for (const std::size_t column : columns) {
        picked.push_back(row[column]);
    }
    return picked;
}

void addNumber(std::map<std::string, double>& results, const std::string& name,
               const std::string& text)
{
    if (const auto number = numberFrom(text)) {
        results.emplace(name, *number);
    }
}

/// The cells of a line between the case's number and the comma that ends the line.
Cells inner(const Cells& row)
{
    return row.size() < 2 ? Cells() : Cells(row.begin() + 1, row.end() - 1);
}

std::map<std::string, double> simulatorResults(const std::vector<Cells>& rows)
{
    const std::string timeRow = ProgressStrings::TimeRow.toStdString();
    const std::string heading = ProgressStrings::TimeHeading.toStdString();
    const auto isTable = [&heading](const Cells& row) {
        return !row.empty() && row.front() == heading;
    };
    std::map<std::string, double> results;
    const auto table = std::find_if(rows.begin(), rows.end(), isTable);
    for (auto row = table; row != rows.end(); ++row) {
        if (row != table && row->size() > 1) {
            addNumber(results, row->front(), row->back());
        }
    }
    for (auto row = rows.begin(); row != table; ++row) {
        if (row->size() == 2 && row->front() != timeRow) {
            addNumber(results, row->front(), row->back());
        }
    }
    return results;
}

std::map<std::string, double> scriptResults(const std::vector<Cells>& rows)
{
    std::map<std::string, double> results;
    if (rows.size() >= 2) {
        const Cells& names = rows.front();
        const Cells& values = rows.back();
        for (std::size_t i = 0; i < std::min(names.size(), values.size()); ++i) {
            addNumber(results, names[i], values[i]);
        }
    }
    return results;
}

std::string joined(const std::set<std::string>& names)
{
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "" : ", ") + name;
    }
    return text;
}

/// Every measured name has to be the name of some case's result.
void checkNames(const CaseResults& results, const std::vector<SMeasurement>& measurements)
{
    std::set<std::string> known;
    for (const auto& [number, ofCase] : results) {
        for (const auto& [name, value] : ofCase) {
            known.insert(name);
        }
    }
    for (const SMeasurement& measurement : measurements) {
        if (known.count(measurement.name) == 0) {
            throw CComparisonError("there is no result \"" + measurement.name +
                                   "\"; there are: " + (known.empty() ? "none" : joined(known)));
        }
    }
}

/// Nothing where one of the results is missing.
std::optional<std::vector<double>> measuredResults(const std::map<std::string, double>& results,
                                                   const std::vector<SMeasurement>& measurements)
{
    std::vector<double> values;
    for (const SMeasurement& measurement : measurements) {
        const auto found = results.find(measurement.name);
        if (found == results.end()) {
            return std::nullopt;
        }
        values.push_back(found->second);
    }
    return values;
}

double distanceOf(const std::vector<double>& results, const std::vector<SMeasurement>& measurements)
{
    double sum = 0;
    double weights = 0;
    for (std::size_t i = 0; i < results.size(); ++i) {
        const SMeasurement& measurement = measurements[i];
        sum += measurement.weight * std::abs((results[i] - measurement.value) / measurement.value);
        weights += measurement.weight;
    }
    return sum / weights;
}

void rank(std::vector<SRankedCase>& ranked)
{
    std::stable_sort(ranked.begin(), ranked.end(),
                     [](const SRankedCase& left, const SRankedCase& right) {
                         return left.distance < right.distance;
                     });
    for (std::size_t i = 0; i < ranked.size(); ++i) {
        ranked[i].rank = i + 1;
    }
}

} // namespace

std::optional<double> numberFrom(const std::string& text)
{
    if (text == "true" || text == "false") {
        return text == "true" ? 1 : 0;
    }
    const std::size_t first = text.find_first_not_of(' ');
    const std::size_t last = text.find_last_not_of(' ');
    if (first == std::string::npos) {
        return std::nullopt;
    }
    const char* begin = text.data() + first + (text[first] == '+' ? 1 : 0);
    const char* const end = text.data() + last + 1;
    double value = 0;
    const auto [stop, error] = std::from_chars(begin, end, value);
    const bool whole = error == std::errc() && stop == end && std::isfinite(value);
    return whole ? std::optional(value) : std::nullopt;
}

std::string numberText(double value)
{
    char text[64];
    return {text, std::to_chars(text, text + sizeof text, value).ptr};
}

SMeasurement measurementFromText(const std::string& text)
{
    const std::size_t equals = text.rfind('=');
    if (equals == std::string::npos || equals == 0) {
        throw CComparisonError("\"" + text + "\" is no measurement: write NAME=VALUE[:WEIGHT]");
    }
    const std::string numbers = text.substr(equals + 1);
    const std::size_t colon = numbers.find(':');
    const auto value = numberFrom(numbers.substr(0, colon));
    const auto weight =
        colon == std::string::npos ? std::optional(1.0) : numberFrom(numbers.substr(colon + 1));
    if (!value || !weight || *weight <= 0) {
        throw CComparisonError("\"" + text +
                               "\" is no measurement: write NAME=VALUE[:WEIGHT] with "
                               "numbers, the weight above 0");
    }
    if (*value == 0) {
        throw CComparisonError("the measured value of \"" + text.substr(0, equals) +
                               "\" is 0: nothing has a relative distance to it");
    }
    return {text.substr(0, equals), *value, *weight};
}

SVariedParameters readVariedParameters(const fs::path& jobFolder)
{
    const fs::path file = jobFolder / (FileNames::JobMatrixStem + FileNames::CsvExtension);
    const std::vector<Cells> rows = readCells(file);
    if (rows.size() < 2) {
        throw CComparisonError(file.string() + " holds no cases");
    }
    for (const Cells& row : rows) {
        if (row.size() < rows.front().size()) {
            throw CComparisonError(file.string() + " has a line with too few values, that of \"" +
                                   row.front() + "\"");
        }
    }
    SVariedParameters parameters;
    const std::vector<std::size_t> columns = variedColumns(rows);
    parameters.names = pick(rows.front(), columns);
    for (std::size_t i = 1; i < rows.size(); ++i) {
        const auto number = wholeNumber(rows[i].front());
        if (!number || *number < 0) {
            throw CComparisonError(file.string() + " has a line that begins with no case number");
        }
        parameters.texts[static_cast<std::size_t>(*number)] = pick(rows[i], columns);
    }
    return parameters;
}

CaseResults readCombinedResults(const fs::path& caseRoot)
{
    const fs::path file =
        caseRoot.string() + FileNames::CombinedResultsStem + FileNames::CsvExtension;
    std::map<long, std::vector<Cells>> rows;
    for (const Cells& row : readCells(file)) {
        if (const auto number = wholeNumber(row.front())) {
            rows[*number].push_back(inner(row));
        }
    }
    const bool ofScript = rows.erase(-1) != 0;
    CaseResults results;
    for (const auto& [number, ofCase] : rows) {
        results[static_cast<std::size_t>(number)] =
            ofScript ? scriptResults(ofCase) : simulatorResults(ofCase);
    }
    return results;
}

SComparison compare(const SVariedParameters& parameters, const CaseResults& results,
                    const std::vector<SMeasurement>& measurements)
{
    checkNames(results, measurements);
    SComparison comparison;
    comparison.parameterNames = parameters.names;
    comparison.measurements = measurements;
    for (const auto& [number, texts] : parameters.texts) {
        const auto found = results.find(number);
        const auto values =
            found == results.end() ? std::nullopt : measuredResults(found->second, measurements);
        if (values) {
            comparison.ranked.push_back(
                {number, texts, *values, distanceOf(*values, measurements), 0});
        } else {
            comparison.withoutResults.push_back(number);
        }
    }
    if (comparison.ranked.empty()) {
        throw CComparisonError("no case of the matrix has all the measured results");
    }
    rank(comparison.ranked);
    return comparison;
}

void writeComparison(const SComparison& comparison, std::ostream& stream)
{
    const std::string& comma = FileNames::FieldSeparator;
    stream << "case";
    for (const std::string& name : comparison.parameterNames) {
        stream << comma << name;
    }
    for (const SMeasurement& measurement : comparison.measurements) {
        stream << comma << measurement.name;
    }
    stream << comma << "distance" << comma << "rank\n";
    for (const SRankedCase& ranked : comparison.ranked) {
        stream << ranked.number;
        for (const std::string& text : ranked.parameters) {
            stream << comma << text;
        }
        for (const double value : ranked.results) {
            stream << comma << numberText(value);
        }
        stream << comma << numberText(ranked.distance) << comma << ranked.rank << '\n';
    }
}

} // namespace cases
