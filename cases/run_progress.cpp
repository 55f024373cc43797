#include "cases/run_progress.h"

#include <algorithm>
#include <cmath>

namespace cases {
namespace {

constexpr std::size_t BarWidth = 30;

std::string localTime(const QDateTime& time)
{
    return time.toLocalTime().toString("yyyy-MM-dd hh:mm:ss").toStdString();
}

} // namespace

std::string durationText(qint64 seconds)
{
    char text[32];
    std::snprintf(text, sizeof text, "%lld:%02lld:%02lld", static_cast<long long>(seconds / 3600),
                  static_cast<long long>(seconds / 60 % 60), static_cast<long long>(seconds % 60));
    return text;
}

std::string sentenceOf(const SCaseNote& note)
{
    std::string text = nameOf(note.state).toStdString();
    switch (note.state) {
    case CaseState::Waiting:
        break;
    case CaseState::Running:
        if (note.start.isValid()) {
            text += " on " + note.host.toStdString() + " since " + localTime(note.start);
        }
        break;
    case CaseState::Done:
        text += " in " + durationText(note.start.secsTo(note.end)) + " on " +
                note.host.toStdString() + ", ended " + localTime(note.end);
        break;
    case CaseState::Failed:
    case CaseState::Interrupted:
        text += ": " + note.reason.toStdString();
        break;
    }
    return text;
}

CRunProgress::CRunProgress(std::size_t cases, std::FILE* stream, bool isTerminal)
    : m_cases(cases)
    , m_stream(stream)
    , m_isTerminal(isTerminal)
{
    m_clock.start();
}

void CRunProgress::caseStarted(std::size_t number)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_running.insert(number);
}

void CRunProgress::caseEnded(std::size_t number, const SCaseNote& note)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    m_running.erase(number);
    ++(note.state == CaseState::Done ? m_done : m_failed);
    const bool bad = note.state != CaseState::Done;
    if (m_isTerminal && !bad) {
        return;
    }
    const std::string line = "case " + std::to_string(number) + ": " + sentenceOf(note);
    if (m_isTerminal) {
        std::fprintf(m_stream, "\r\033[K%s\n", line.c_str());
        drawBar();
    } else {
        std::fprintf(m_stream, "%s (%s)\n", line.c_str(), summaryText().c_str());
        std::fflush(m_stream);
    }
}

void CRunProgress::draw()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_isTerminal) {
        drawBar();
    }
}

void CRunProgress::close()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    if (m_isTerminal) {
        drawBar();
        std::fputc('\n', m_stream);
    }
    std::fflush(m_stream);
}

std::string CRunProgress::summary()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return summaryText();
}

std::string CRunProgress::summaryText() const
{
    return std::to_string(m_done) + "/" + std::to_string(m_cases) + " done, " +
           std::to_string(m_failed) + " failed, " + std::to_string(m_running.size()) +
           " running, " + timeLeft() + " left";
}

/// As long for each case that remains as for those that have ended.
std::string CRunProgress::timeLeft() const
{
    const std::size_t ended = m_done + m_failed;
    if (ended == 0) {
        return "?";
    }
    const double each = static_cast<double>(m_clock.elapsed()) / 1000 / static_cast<double>(ended);
    return durationText(std::llround(each * static_cast<double>(m_cases - ended)));
}

void CRunProgress::drawBar()
{
    const std::size_t ended = m_done + m_failed;
    const std::size_t filled =
        m_cases == 0 ? BarWidth : BarWidth * std::min(ended, m_cases) / m_cases;
    const std::string bar = std::string(filled, '#') + std::string(BarWidth - filled, '.');
    std::fprintf(m_stream, "\r\033[K[%s] %s", bar.c_str(), summaryText().c_str());
    std::fflush(m_stream);
}

} // namespace cases
