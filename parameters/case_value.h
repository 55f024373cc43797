#pragma once

#include <variant>

/// One value of a field, one cell of a case: a double (index 0) or a flag (index 1).
using CaseValue = std::variant<double, bool>;
