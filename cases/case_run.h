#pragma once

#include "cases/batch_reader.h"
#include "cases/case_folder.h"
#include "cases/case_runner.h"
#include "cases/case_selection.h"
#include "cases/note_writer.h"
#include "cases/run_control.h"
#include "cases/run_progress.h"

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <map>
#include <mutex>
#include <vector>

namespace cases {

/// Runs cases of one root, some at a time, in the order of their numbers. A case that another run
/// holds is waited for, and what that run makes of it counts here as well.
class CCaseRun
{
public:
    CCaseRun(SRunSetup setup, CCaseSelection selection, std::vector<SBatchCase> batchCases,
             CPreparedFiles prepared, CRunProgress& progress);

    /// Returns when all cases have ended and are noted, or soon after a stop.
    void run(std::size_t atATime);

    /// From any thread: ends the running cases and starts no more.
    void stop();

    /// The last note of each case that was tried, by its number. After `run`.
    const std::map<std::size_t, SCaseNote>& outcomes() const { return m_outcomes; }

    /// How many notes couldn't be written. After `run`.
    std::size_t lostNotes() const { return m_lostNotes; }

private:
    void work();
    const SBatchCase* take();
    void leaveForLater(const SBatchCase& batchCase);
    void handle(const SBatchCase& batchCase);
    void execute(const SBatchCase& batchCase, platform::CFileLock lock);
    bool isSettled(std::size_t number, const SCaseNote& note) const;
    void conclude(std::size_t number, const SCaseNote& note);

    const SRunSetup m_setup;
    const CCaseSelection m_selection;
    const std::vector<SBatchCase> m_cases;
    const CPreparedFiles m_prepared;
    CRunProgress& m_progress;
    const QDateTime m_begin;
    CRunControl m_control;

    std::mutex m_mutex;
    std::condition_variable m_stopped;
    std::deque<const SBatchCase*> m_queue;
    std::deque<const SBatchCase*> m_takenElsewhere;
    std::map<std::size_t, SCaseNote> m_outcomes;
    CNoteWriter* m_notes = nullptr;
    std::size_t m_lostNotes = 0;
};

} // namespace cases
