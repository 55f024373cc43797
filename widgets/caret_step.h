#pragma once

#include <QString>

/// The rules by which the digit under the caret of a spin box decides the size of its step.
namespace CaretStep {

/// The value of the digit at index `pos` of a number's text, 0 where the caret is in the exponent.
double atPosition(const QString& text, int pos, QChar decimalPoint);

/// Where the caret counts as standing when a box is entered: the leading digit of a whole number,
/// the last significant digit of a fraction, or the units of a number like 12.000.
int entryPosition(const QString& text, QChar decimalPoint);

/// The value of the digit that `rest`, the text from it to the end, begins with. Commas don't
/// count as digits, whatever the locale.
double ofWholeNumber(const QString& rest);

} // namespace CaretStep
