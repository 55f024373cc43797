#pragma once

#include <cstddef>
#include <filesystem>
#include <map>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <vector>

/// Comparing the results of all cases with what was measured.
namespace cases {

/// One sentence about what can't be compared.
class CComparisonError : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// A measured value of a result; the greater the weight, the more a distance to it counts.
struct SMeasurement
{
    std::string name;
    double value = 0;
    double weight = 1;
};

/// "NAME=VALUE" or "NAME=VALUE:WEIGHT". Throws CComparisonError: a value of 0 has no relative
/// distance, and a weight has to be above 0.
SMeasurement measurementFromText(const std::string& text);

/// The parameters of the cases that differ between them, from the job's matrix.
struct SVariedParameters
{
    std::vector<std::string> names;
    std::map<std::size_t, std::vector<std::string>> texts; ///< by case, as the matrix has them
};

/// Reads `input_jobID-Matrix.csv` of a job folder. Throws CComparisonError.
SVariedParameters readVariedParameters(const std::filesystem::path& jobFolder);

/// Number by name of a result, by case.
using CaseResults = std::map<std::size_t, std::map<std::string, double>>;

/// Reads the combined file of a case root, in either layout: of a table's column the last value is
/// the result, of a script's CSV the value of the last line below the names of the first. Throws
/// CComparisonError where there is none.
CaseResults readCombinedResults(const std::filesystem::path& caseRoot);

struct SRankedCase
{
    std::size_t number = 0;
    std::vector<std::string> parameters;
    std::vector<double> results; ///< of the measurements, in their order
    double distance = 0;         ///< weighted mean of the relative distances
    std::size_t rank = 0;        ///< from 1
};

struct SComparison
{
    std::vector<std::string> parameterNames;
    std::vector<SMeasurement> measurements;
    std::vector<SRankedCase> ranked;         ///< best first; equal distances by case number
    std::vector<std::size_t> withoutResults; ///< cases of the matrix that can't be ranked
};

/// Joins both on the case number. Throws CComparisonError where a measured name is in no case, with
/// the names that are, and where no case has results.
SComparison compare(const SVariedParameters& parameters, const CaseResults& results,
                    const std::vector<SMeasurement>& measurements);

/// case, varied parameters, results, distance, rank: a line per ranked case, best first.
void writeComparison(const SComparison& comparison, std::ostream& stream);

/// Number at the whole of a text, "true" as 1 and "false" as 0; nothing for what is none.
std::optional<double> numberFrom(const std::string& text);

/// Shortest text that reads back as the same number.
std::string numberText(double value);

} // namespace cases
