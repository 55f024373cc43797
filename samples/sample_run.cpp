#include "samples/sample_run.h"

#include "samples/sample_error.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <thread>

namespace {

constexpr unsigned ColumnCount = 6;
constexpr double FarthestPlace = 1000.0;
constexpr double MostSteps = 1e12;

double timeStepOf(const SSampleOptions& options)
{
    if (options.timeStep > 0.0)
        return options.timeStep;
    // A whole number of steps to each save, so that saved times are what was asked for.
    const double span = options.saveInterval > 0.0
                            ? std::min(options.saveInterval, options.totalTime)
                            : options.totalTime;
    return span / std::ceil(span / CHeapExperiment::automaticTimeStep());
}

double checkedTimeStep(const SSampleOptions& options)
{
    const double timeStep = timeStepOf(options);
    if (timeStep > CHeapExperiment::longestTimeStep())
        throw CSampleError(CSampleError::BadCommandLine,
                           "The time step behind -t is longer than the " +
                               std::to_string(CHeapExperiment::longestTimeStep()) +
                               " s that resolve a collision.");
    if (options.totalTime / timeStep > MostSteps)
        throw CSampleError(CSampleError::BadCommandLine,
                           "The total time behind -r takes too many time steps.");
    return timeStep;
}

unsigned long stepAt(double time, double timeStep)
{
    return static_cast<unsigned long>(std::lround(time / timeStep));
}

bool isTimeStep(const std::filesystem::path& file)
{
    const std::string stem = file.stem().string();
    return file.extension() == ".h5" && stem != "0" &&
           stem.find_first_not_of("0123456789") == std::string::npos;
}

// Values far from any material, such as a huge cohesion, tear the column apart.
void checkBounds(const std::vector<SBody>& bodies)
{
    for (const SBody& body : bodies) {
        if (!(std::abs(body.x) < FarthestPlace && std::abs(body.y) < FarthestPlace))
            throw CSampleError(CSampleError::BadDeck,
                               "With the deck's values the particles leave all bounds.");
    }
}

} // namespace

CSampleRun::CSampleRun(const SSampleOptions& options, const SSampleDeck& deck)
    : m_options(options)
    , m_timeStep(checkedTimeStep(options))
{
    for (unsigned seed = 1; seed <= ColumnCount; ++seed)
        m_columns.emplace_back(deck.values, seed);
}

void CSampleRun::run()
{
    if (m_options.rewind)
        removeOldTimeSteps();
    measure(0);
    unsigned long done = 0;
    std::size_t number = 0;
    for (const unsigned long step : saveSteps()) {
        advance(step - done);
        done = step;
        measure(step);
        report(step);
        saveTimeStep(++number);
        if (m_options.exportEachInterval)
            writeExportIfWanted();
    }
    writeResults();
}

void CSampleRun::removeOldTimeSteps() const
{
    std::vector<std::filesystem::path> old;
    for (const auto& entry : std::filesystem::directory_iterator(dataFolderOf(m_options.deck))) {
        if (isTimeStep(entry.path()))
            old.push_back(entry.path());
    }
    for (const std::filesystem::path& file : old)
        std::filesystem::remove(file);
}

// The last time is saved too where it is no multiple of the interval.
std::vector<unsigned long> CSampleRun::saveSteps() const
{
    unsigned long last = std::max(1UL, stepAt(m_options.totalTime, m_timeStep));
    if (m_options.stepLimit && *m_options.stepLimit < static_cast<double>(last))
        last = static_cast<unsigned long>(*m_options.stepLimit);
    std::vector<unsigned long> steps;
    if (m_options.saveInterval > 0.0) {
        for (unsigned long k = 1;; ++k) {
            const unsigned long step =
                stepAt(static_cast<double>(k) * m_options.saveInterval, m_timeStep);
            if (step >= last)
                break;
            if (step > 0 && (steps.empty() || step > steps.back()))
                steps.push_back(step);
        }
    }
    if (last > 0)
        steps.push_back(last);
    return steps;
}

// The columns know nothing of one another, so their number of threads can't change a result.
void CSampleRun::advance(unsigned long steps)
{
    const std::size_t threadCount = std::min<std::size_t>(m_options.processors, m_columns.size());
    std::vector<std::thread> threads;
    for (std::size_t first = 0; first < threadCount; ++first) {
        threads.emplace_back([this, first, threadCount, steps] {
            for (std::size_t i = first; i < m_columns.size(); i += threadCount)
                m_columns[i].advance(steps, m_timeStep);
        });
    }
    for (std::thread& thread : threads)
        thread.join();
}

void CSampleRun::measure(unsigned long step)
{
    std::vector<SHeapMeasures> measures;
    for (const CHeapExperiment& column : m_columns) {
        checkBounds(column.bodies());
        measures.push_back(measureHeap(column.bodies()));
    }
    m_rows.push_back({static_cast<double>(step) * m_timeStep, meanOf(measures)});
}

void CSampleRun::report(unsigned long step) const
{
    const SHeapMeasures& now = m_rows.back().measures;
    std::cout << "step " << step << ", time " << m_rows.back().time << " s of "
              << m_options.totalTime << " s, run-out " << now.runOut << " m, heap height "
              << now.height << " m" << std::endl;
}

void CSampleRun::saveTimeStep(std::size_t number) const
{
    SampleOutput::writeTimeStep(dataFolderOf(m_options.deck) / (std::to_string(number) + ".h5"),
                                m_rows.back().time, m_columns.front().bodies(), m_options.compress);
}

void CSampleRun::writeResults() const
{
    SampleOutput::writeSummary(besideDeck(m_options.deck, "_summary.txt"),
                               m_options.deck.stem().string(), m_rows);
    writeExportIfWanted();
}

void CSampleRun::writeExportIfWanted() const
{
    if (!m_options.exportSettings.empty())
        SampleOutput::writeExport(besideDeck(m_options.deck, ".csv"),
                                  m_options.deck.stem().string(), m_rows);
}
