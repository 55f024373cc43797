#pragma once

#include "cases/comparison.h"

#include <QStringList>

#include <filesystem>

namespace cases {

/// Draws for each measured result its response over each varied parameter, with the measured value
/// as a line and the best case marked: `Comparison_<result>.png` and `.svg` in `folder`. Needs a
/// QGuiApplication. Returns the files. Throws CComparisonError where one can't be written.
QStringList plotComparison(const SComparison& comparison, const std::filesystem::path& folder);

} // namespace cases
