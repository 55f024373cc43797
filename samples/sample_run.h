#pragma once

#include "samples/sample_deck_reader.h"
#include "samples/sample_options.h"
#include "samples/sample_output.h"

#include <vector>

/// One case from the opened gate to the last time: moves the columns on, prints progress, writes
/// the time steps and at the end the results.
class CSampleRun
{
public:
    CSampleRun(const SSampleOptions& options, const SSampleDeck& deck);

    /// Throws CSampleError with CannotWrite.
    void run();

private:
    void removeOldTimeSteps() const;
    std::vector<unsigned long> saveSteps() const;
    void advance(unsigned long steps);
    void measure(unsigned long step);
    void report(unsigned long step) const;
    void saveTimeStep(std::size_t number) const;
    void writeResults() const;
    void writeExportIfWanted() const;

    SSampleOptions m_options;
    double m_timeStep;
    std::vector<CHeapExperiment> m_columns;
    std::vector<SHeapRow> m_rows;
};
