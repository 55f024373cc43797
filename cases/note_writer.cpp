#include "cases/note_writer.h"

#include <algorithm>
#include <utility>

namespace fs = std::filesystem;

namespace cases {
namespace {

/// More than this many cases don't wait for their notes: a full stop of the disk has to be felt.
constexpr std::size_t MostUnderWay = 256;

} // namespace

CNoteWriter::CNoteWriter(std::size_t threads)
{
    for (std::size_t i = 0; i < std::max<std::size_t>(threads, 1); ++i) {
        m_threads.emplace_back([this] { serve(); });
    }
}

CNoteWriter::~CNoteWriter()
{
    finish();
}

void CNoteWriter::add(const fs::path& caseFolder, const SCaseNote& note)
{
    Work& work = m_work[caseFolder];
    const bool queued = work.next.has_value();
    work.next = note;
    if (!queued && !work.busy) {
        m_queue.push_back(caseFolder);
        m_changed.notify_all();
    }
}

void CNoteWriter::write(const fs::path& caseFolder, const SCaseNote& note)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    add(caseFolder, note);
}

void CNoteWriter::writeLast(const fs::path& caseFolder, const SCaseNote& note,
                            platform::CFileLock lock)
{
    std::unique_lock<std::mutex> guard(m_mutex);
    m_changed.wait(guard, [this] { return m_work.size() < MostUnderWay; });
    add(caseFolder, note);
    Work& work = m_work[caseFolder];
    work.lock = std::move(lock);
    work.last = true;
}

std::size_t CNoteWriter::finish()
{
    {
        const std::lock_guard<std::mutex> lock(m_mutex);
        m_ends = true;
        m_changed.notify_all();
    }
    for (std::thread& thread : m_threads) {
        thread.join();
    }
    m_threads.clear();
    return m_failures;
}

void CNoteWriter::serve()
{
    std::unique_lock<std::mutex> guard(m_mutex);
    while (true) {
        m_changed.wait(guard, [this] { return !m_queue.empty() || m_ends; });
        if (m_queue.empty()) {
            return;
        }
        const fs::path folder = std::move(m_queue.front());
        m_queue.pop_front();
        // References into a map stay good while others come and go.
        Work& work = m_work[folder];
        const SCaseNote note = *std::exchange(work.next, std::nullopt);
        work.busy = true;
        guard.unlock();
        const bool written = writeNote(folder, note);
        guard.lock();
        work.busy = false;
        m_failures += written ? 0 : 1;
        if (work.next) {
            m_queue.push_back(folder);
        } else if (work.last) {
            m_work.erase(folder);
        }
        m_changed.notify_all();
    }
}

} // namespace cases
