#pragma once

#include "cases/case_note.h"
#include "platform/file_lock.h"

#include <atomic>
#include <condition_variable>
#include <deque>
#include <filesystem>
#include <map>
#include <mutex>
#include <thread>
#include <vector>

namespace cases {

/// Brings the notes of many cases to the disk at a time: waiting for the disk is most of what a
/// note costs, and the disk takes many at once. Of several notes of one case that wait, the newest
/// alone is written; they never overtake each other.
class CNoteWriter
{
public:
    explicit CNoteWriter(std::size_t threads);

    /// Waits until everything is written.
    ~CNoteWriter();

    /// A note of a case that goes on.
    void write(const std::filesystem::path& caseFolder, const SCaseNote& note);

    /// The last note of a try; the case's lock is let go when it is on the disk. Waits while very
    /// many are under way.
    void writeLast(const std::filesystem::path& caseFolder, const SCaseNote& note,
                   platform::CFileLock lock);

    /// Waits until everything is written; how many notes couldn't be.
    std::size_t finish();

private:
    struct Work
    {
        std::optional<SCaseNote> next;
        platform::CFileLock lock;
        bool last = false;
        bool busy = false;
    };

    void add(const std::filesystem::path& caseFolder, const SCaseNote& note);
    void serve();

    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::map<std::filesystem::path, Work> m_work;
    std::deque<std::filesystem::path> m_queue;
    std::vector<std::thread> m_threads;
    std::size_t m_failures = 0;
    bool m_ends = false;
};

} // namespace cases
