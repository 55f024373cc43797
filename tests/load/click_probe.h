#pragma once

#include <QListWidget>

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>
#include <vector>

/// A user who clicks the top row of a list again and again, and takes the time from each click to
/// its answer. The clicks come from a thread of their own, at any moment of what the GUI thread
/// does.
class CClickProbe : public QObject
{
    Q_OBJECT

public:
    /// The list stays visible and keeps its top row while the probe clicks.
    explicit CClickProbe(QListWidget& list);
    ~CClickProbe() override;

    void start();
    /// Waits for the answer to the last click.
    void stop();

    int clicks() const { return static_cast<int>(m_milliseconds.size()); }
    double longestMilliseconds() const;

private:
    void clickOnAndOn();
    void post() const;

    QListWidget& m_list;
    QPoint m_point;
    std::thread m_thread;
    std::mutex m_mutex;
    std::condition_variable m_answer;
    bool m_bAnswered = false;
    bool m_bStopping = false;
    bool m_bWaiting = false;
    std::vector<double> m_milliseconds;
};
