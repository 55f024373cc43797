#pragma once

#include <map>
#include <string>
#include <vector>

/// The editor that a parameter gets in the value table.
enum ParameterKind {
    Flag = 0,  ///< check box
    Range = 1, ///< number between a minimum and a maximum
    Choice = 2 ///< one of a list of numbers
};

struct ParameterLimit
{
    int kind;                   ///< a ParameterKind
    std::vector<double> values; ///< minimum and maximum, or the offered numbers of a Choice
};

/// Kind and bounds by parameter label. The rows keep their addresses: fields point at them.
extern std::map<std::string, ParameterLimit> ParameterLimits;

/// Builds `ParameterLimits`; needs the strings of ParameterCatalogue.
void initialiseParameterLimits();

/// The row of a label. Throws std::out_of_range "invalid map<K, T> key" for a label without one.
const ParameterLimit& limitOf(const std::string& label);
