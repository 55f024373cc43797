#pragma once

#include <QProcess>

#include <mutex>

/// A child process that can be ended together with what it has started.
class CChildProcess : public QProcess
{
    Q_OBJECT

public:
    CChildProcess();
    ~CChildProcess() override;

    /// From now on the system ends every child of the program when the thread that started it is
    /// gone, however it went; that thread therefore has to wait for its child. Where there is no
    /// such system call nothing changes.
    static void endWithStartingThreads();

protected:
    void setupChildProcess() override;
};

/// The hand on a running child. Any thread may end the child at any time; the thread that owns the
/// process arms the switch behind the start and disarms it once the child has ended.
class CKillSwitch
{
public:
    CKillSwitch() = default;
    ~CKillSwitch(); // NOLINT(performance-trivially-destructible): Windows has a handle to close

    CKillSwitch(const CKillSwitch&) = delete;
    CKillSwitch& operator=(const CKillSwitch&) = delete;

    /// A child of that process id is running; 0, a child that didn't start, changes nothing. What
    /// was asked of the switch before happens now.
    void arm(qint64 processId);

    /// The id may belong to somebody else from now on.
    void disarm();

    /// Ends the child at once, elsewhere than on Windows with its whole process group, on Linux
    /// with what it has started in other groups as well.
    void end();

    /// Asks the child's process group to end, where the platform knows such a request.
    void askToEnd();

private:
    enum class Wish { None, Ask, End };

    void fulfil();

    std::mutex m_mutex;
    Wish m_wish = Wish::None;
    qint64 m_processId = 0;
    void* m_handle = nullptr;
};
