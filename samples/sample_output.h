#pragma once

#include "samples/heap_measures.h"

#include <filesystem>
#include <string>
#include <vector>

/// Measures of the heap at one time.
struct SHeapRow
{
    double time = 0.0; ///< s since the gate was opened
    SHeapMeasures measures;
};

/// Seconds after which the mean kinetic energy stays below a hundredth of its highest value.
double settlingTime(const std::vector<SHeapRow>& rows);

/// Writers of a case's results. Each replaces its file and throws CSampleError with CannotWrite.
namespace SampleOutput {

/// A table in the simulator's export layout: header lines, then one line per time.
void writeExport(const std::filesystem::path& file, const std::string& deckName,
                 const std::vector<SHeapRow>& rows);

/// The same table as plain words: comment lines with "#", then numbers parted by blanks.
void writeSummary(const std::filesystem::path& file, const std::string& deckName,
                  const std::vector<SHeapRow>& rows);

/// An HDF5 file with the bodies of one column; `compress` packs its datasets.
void writeTimeStep(const std::filesystem::path& file, double time, const std::vector<SBody>& bodies,
                   bool compress);

} // namespace SampleOutput
