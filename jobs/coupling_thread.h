#pragma once

#include "platform/interpreter.h"

#include <QThread>

#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>

class CCaseOutput;

/// Runs the coupling server of a case, again and again as long as all that the simulator has
/// printed is the line that awaits a client.
class CCouplingThread : public QThread
{
    Q_OBJECT

public:
    /// `lastOutput` is looked at for the first time here: it is seeded with the awaiting line, so
    /// that the server starts at once, whatever the simulator prints until the thread has come to
    /// run. `pause` lies between the end of the interpreter and the next look.
    CCouplingThread(std::string command, std::shared_ptr<const CCaseOutput> lastOutput,
                    std::chrono::nanoseconds pause = std::chrono::seconds(5));
    /// Ends a server that doesn't end when asked, and waits for the thread.
    ~CCouplingThread() override;

    /// From any thread: asks the server to end and the thread with it; waits for neither.
    void stop();

protected:
    void run() override;

private:
    bool isStopped() const;
    bool isAwaited() const;
    void sleepUntilStopped();

    const std::string m_command;
    const std::shared_ptr<const CCaseOutput> m_lastOutput;
    const bool m_bAwaitedAtFirst;
    const std::chrono::nanoseconds m_pause;
    CServerInterpreter m_interpreter;
    mutable std::mutex m_mutex;
    std::condition_variable m_stopping;
    bool m_bStopped = false;
};
