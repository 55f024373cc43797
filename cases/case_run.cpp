#include "cases/case_run.h"

#include "cases/case_processes.h"
#include "platform/child_process.h"

#include <algorithm>
#include <chrono>
#include <thread>

namespace fs = std::filesystem;

namespace cases {
namespace {

constexpr std::chrono::milliseconds RetryPause(200);
constexpr std::size_t NoteThreads = 8;

SCaseNote failure(const std::string& reason)
{
    SCaseNote note;
    note.state = CaseState::Failed;
    note.start = QDateTime::currentDateTimeUtc();
    note.end = note.start;
    note.reason = QString::fromStdString(reason);
    return note;
}

} // namespace

CCaseRun::CCaseRun(SRunSetup setup, CCaseSelection selection, std::vector<SBatchCase> batchCases,
                   CPreparedFiles prepared, CRunProgress& progress)
    : m_setup(std::move(setup))
    , m_selection(std::move(selection))
    , m_cases(std::move(batchCases))
    , m_prepared(std::move(prepared))
    , m_progress(progress)
    , m_begin(QDateTime::currentDateTimeUtc())
{
    for (const SBatchCase& batchCase : m_cases) {
        m_queue.push_back(&batchCase);
    }
}

void CCaseRun::run(std::size_t atATime)
{
    CChildProcess::endWithStartingThreads();
    endLeftovers(m_setup.caseRoot);
    const std::size_t workers = std::min(std::max<std::size_t>(atATime, 1), m_cases.size());
    CNoteWriter notes(std::min(NoteThreads, 2 * workers));
    m_notes = &notes;
    std::vector<std::thread> threads;
    for (std::size_t i = 0; i < workers; ++i) {
        threads.emplace_back([this] { work(); });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    m_lostNotes = notes.finish();
    m_notes = nullptr;
}

void CCaseRun::stop()
{
    m_control.stop();
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_stopped.notify_all();
}

void CCaseRun::work()
{
    while (const SBatchCase* batchCase = take()) {
        handle(*batchCase);
    }
}

const SBatchCase* CCaseRun::take()
{
    std::unique_lock<std::mutex> lock(m_mutex);
    if (m_queue.empty() && !m_takenElsewhere.empty()) {
        m_stopped.wait_for(lock, RetryPause, [this] { return m_control.isStopped(); });
    }
    for (auto* queue : {&m_queue, &m_takenElsewhere}) {
        if (!m_control.isStopped() && !queue->empty()) {
            const SBatchCase* first = queue->front();
            queue->pop_front();
            return first;
        }
    }
    return nullptr;
}

void CCaseRun::leaveForLater(const SBatchCase& batchCase)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_takenElsewhere.push_back(&batchCase);
}

/// Whether nothing is left to do: another run may have done the case since it was selected.
bool CCaseRun::isSettled(std::size_t number, const SCaseNote& note) const
{
    const bool ended = note.state == CaseState::Done || note.state == CaseState::Failed;
    return (ended && note.end > m_begin) || !m_selection.needs(number, note.state);
}

void CCaseRun::handle(const SBatchCase& batchCase)
{
    const fs::path folder = m_setup.caseRoot / batchCase.folder();
    try {
        const bool tried = fs::exists(lockFile(folder));
        platform::CFileLock lock = platform::CFileLock::tryToTake(lockFile(folder));
        if (!lock) {
            leaveForLater(batchCase);
            return;
        }
        SCaseNote before = readNote(folder).value_or(SCaseNote());
        if (before.state == CaseState::Running) {
            before.state = CaseState::Interrupted; // nobody held its lock
        }
        if (isSettled(batchCase.number, before)) {
            conclude(batchCase.number, before);
            return;
        }
        if (tried) {
            m_prepared.putBack(m_setup.caseRoot, batchCase);
        }
        execute(batchCase, std::move(lock));
    } catch (const fs::filesystem_error& error) {
        conclude(batchCase.number, failure(error.what()));
    }
}

void CCaseRun::execute(const SBatchCase& batchCase, platform::CFileLock lock)
{
    const fs::path folder = m_setup.caseRoot / batchCase.folder();
    m_progress.caseStarted(batchCase.number);
    const SCaseNote note = runCase(batchCase, m_setup, m_control, [&](const SCaseNote& running) {
        m_notes->write(folder, running);
    });
    m_notes->writeLast(folder, note, std::move(lock));
    conclude(batchCase.number, note);
}

void CCaseRun::conclude(std::size_t number, const SCaseNote& note)
{
    m_progress.caseEnded(number, note);
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_outcomes[number] = note;
}

} // namespace cases
