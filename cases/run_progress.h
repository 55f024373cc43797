#pragma once

#include "cases/case_note.h"

#include <QElapsedTimer>

#include <cstddef>
#include <cstdio>
#include <mutex>
#include <set>
#include <string>

namespace cases {

/// Shows how a run gets on: a bar that is drawn over itself on a terminal, elsewhere a line for
/// each case that ends. Any thread may report.
class CRunProgress
{
public:
    /// `stream` is written to and must outlive the object.
    CRunProgress(std::size_t cases, std::FILE* stream, bool isTerminal);

    void caseStarted(std::size_t number);
    void caseEnded(std::size_t number, const SCaseNote& note);

    /// Draws the bar anew where there is one.
    void draw();
    /// Ends the bar's line.
    void close();

    /// "12/100 done, 1 failed, 2 running, 0:05:12 left"
    std::string summary();

private:
    std::string summaryText() const;
    std::string timeLeft() const;
    void drawBar();

    std::mutex m_mutex;
    QElapsedTimer m_clock;
    const std::size_t m_cases;
    std::FILE* const m_stream;
    const bool m_isTerminal;
    std::size_t m_done = 0;
    std::size_t m_failed = 0;
    std::set<std::size_t> m_running;
};

/// Seconds as "1:02:03".
std::string durationText(qint64 seconds);

/// One sentence about a case's note: "done in 0:00:12", "failed: the simulator ended with exit code
/// 3", "running on host since 2026-01-02 03:04:05".
std::string sentenceOf(const SCaseNote& note);

} // namespace cases
