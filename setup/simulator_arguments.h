#pragma once

#include <cstddef>
#include <map>
#include <string>

/// The arguments that go on the simulator's command line, by flag, in the emission order of
/// SimulatorOptions whatever the order in which they came.
class CSimulatorArguments
{
public:
    /// Adds `flag`; an argument that is there already keeps its value, an unknown flag is ignored.
    void enter(const std::string& flag, const std::string& value);

    /// Replaces the value of `flag`; a flag that was never entered is ignored.
    void set(const std::string& flag, const std::string& value);

    /// The leading flag, then each argument whose value isn't "Disabled", with nothing between.
    std::string optionString() const;

private:
    std::map<std::size_t, std::string> m_values;
};

/// How values read on the command line.
namespace SimulatorValue {

/// Six digits after the point, whatever the magnitude.
std::string number(double value);
std::string number(int value);

/// "1" or "0".
std::string oneOrZero(bool on);

/// A flag that stands alone when it is on.
std::string flagAlone(bool on);

/// `value`, or what leaves the argument out.
std::string valueIf(bool on, const std::string& value);

} // namespace SimulatorValue
