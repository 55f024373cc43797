#pragma once

#include <QString>

#include <array>

/// The names of the kinds of quantities and the texts of their units.
namespace UnitVocabulary {

extern const std::array<QString, 30> FAMILIES;
extern const std::array<QString, 108> LABELS;

extern const QString SECOND;
extern const QString MINUTE;

} // namespace UnitVocabulary
