#include "setup/simulator_arguments.h"

#include "setup/simulator_options.h"

#include <algorithm>

namespace {

/// Place of a flag in the emission order, one past the last place for an unknown flag.
std::size_t placeOf(const std::string& flag)
{
    const auto& order = SimulatorOptions::EmissionOrder;
    return static_cast<std::size_t>(std::find(order.begin(), order.end(), flag) - order.begin());
}

} // namespace

void CSimulatorArguments::enter(const std::string& flag, const std::string& value)
{
    const std::size_t place = placeOf(flag);
    if (place < SimulatorOptions::EmissionOrder.size()) {
        m_values.emplace(place, value);
    }
}

void CSimulatorArguments::set(const std::string& flag, const std::string& value)
{
    const auto found = m_values.find(placeOf(flag));
    if (found != m_values.end()) {
        found->second = value;
    }
}

std::string CSimulatorArguments::optionString() const
{
    std::string options = SimulatorOptions::LeadingFlag;
    for (const auto& [place, value] : m_values) {
        if (value != SimulatorOptions::Disabled) {
            options += SimulatorOptions::EmissionOrder[place] + value;
        }
    }
    return options;
}

namespace SimulatorValue {

std::string number(double value)
{
    return std::to_string(value);
}

std::string number(int value)
{
    return std::to_string(value);
}

std::string oneOrZero(bool on)
{
    return on ? SimulatorOptions::On : SimulatorOptions::Off;
}

std::string flagAlone(bool on)
{
    return valueIf(on, std::string());
}

std::string valueIf(bool on, const std::string& value)
{
    return on ? value : SimulatorOptions::Disabled;
}

} // namespace SimulatorValue
