#pragma once

#include "parameters/parameter_entry.h"

#include <cstdint>
#include <vector>

/// What the value table does to the values of a field, without the table.
namespace FieldValues {

/// One bit vector per field, indexed by `m_index`; only the lengths count: one bit per value.
using Flags = std::vector<std::vector<bool>>;

/// Doubles less than 1e-06 apart, or equal flags. Throws std::bad_variant_access for a mixture.
bool isNear(const CaseValue& left, const CaseValue& right);

/// Whether no variance is near `value`; the deck's value is not looked at.
bool isNewValue(const std::vector<CaseValue>& values, const CaseValue& value);

/// Takes up `edited` unless it is known, then drops the values that no column shows any more.
/// `columns` are the values of all columns, the deck's first. Returns the change in the number of
/// variances.
int edit(CParameterFields& field, Flags& flags, const CaseValue& edited,
         const std::vector<CaseValue>& columns);

/// Erases the first variance exactly equal to `value`; false, with nothing changed, for none.
bool remove(CParameterFields& field, Flags& flags, const CaseValue& value);

/// Product of the fields' numbers of variances modulo 2^64, or 0 while no field has one.
std::uint64_t caseCount(const Flags& flags);

} // namespace FieldValues
