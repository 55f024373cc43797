#include "parameters/field_values.h"

#include "app/checked.h"

#include <algorithm>
#include <cmath>

namespace FieldValues {
namespace {

constexpr double NearDistance = 1e-06;

bool containsNear(const std::vector<CaseValue>& values, const CaseValue& value)
{
    return !isNewValue(values, value);
}

void eraseEqual(std::vector<CaseValue>& values, const CaseValue& value)
{
    values.erase(std::remove(values.begin(), values.end(), value), values.end());
}

std::vector<bool>& bitsOf(const CParameterFields& field, Flags& flags)
{
    return checked::element(flags, static_cast<std::size_t>(field.m_index));
}

/// A number that is near nothing, itself included, is given up more often than it was taken up.
void dropBit(const CParameterFields& field, Flags& flags)
{
    std::vector<bool>& bits = bitsOf(field, flags);
    if (!bits.empty()) {
        bits.pop_back();
    }
}

/// The list of values that the columns still account for.
std::vector<CaseValue> shownValues(const std::vector<CaseValue>& values,
                                   const std::vector<CaseValue>& columns)
{
    std::vector<CaseValue> shown = values;
    for (std::size_t column = 1; column < columns.size(); ++column) {
        if (!containsNear(shown, columns[column])) {
            eraseEqual(shown, CaseValue(columns[column]));
        }
    }
    return shown;
}

int reconcile(CParameterFields& field, Flags& flags, const std::vector<CaseValue>& columns)
{
    const std::vector<CaseValue> shown = shownValues(field.m_values, columns);
    int change = 0;
    for (std::size_t i = 1; i < shown.size(); ++i) {
        if (!containsNear(field.m_values, shown[i])) {
            eraseEqual(field.m_values, shown[i]);
            dropBit(field, flags);
            --change;
        }
    }
    return change;
}

} // namespace

bool isNear(const CaseValue& left, const CaseValue& right)
{
    if (std::holds_alternative<double>(left)) {
        const double distance = std::get<double>(left) - checked::get<double>(right);
        return NearDistance > std::abs(distance);
    }
    return checked::get<bool>(left) == checked::get<bool>(right);
}

bool isNewValue(const std::vector<CaseValue>& values, const CaseValue& value)
{
    for (std::size_t i = 1; i < values.size(); ++i) {
        if (isNear(values[i], value)) {
            return false;
        }
    }
    return true;
}

int edit(CParameterFields& field, Flags& flags, const CaseValue& edited,
         const std::vector<CaseValue>& columns)
{
    int change = 0;
    if (isNewValue(field.m_values, edited)) {
        bitsOf(field, flags).push_back(true);
        field.m_values.push_back(edited);
        ++change;
    }
    return change + reconcile(field, flags, columns);
}

bool remove(CParameterFields& field, Flags& flags, const CaseValue& value)
{
    if (field.m_values.empty()) {
        return false;
    }
    const auto found = std::find(field.m_values.begin() + 1, field.m_values.end(), value);
    if (found == field.m_values.end()) {
        return false;
    }
    field.m_values.erase(found);
    dropBit(field, flags);
    return true;
}

std::uint64_t caseCount(const Flags& flags)
{
    std::uint64_t count = 1;
    bool varied = false;
    for (const std::vector<bool>& bits : flags) {
        if (bits.size() != 1) {
            count *= static_cast<std::uint64_t>(bits.size()) - 1;
            varied = true;
        }
    }
    return varied ? count : count - 1;
}

} // namespace FieldValues
