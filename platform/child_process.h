#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>

#include <functional>
#include <memory>
#include <mutex>

/// A child process that can be ended together with what it has started. What is named as in
/// QProcess does what it does there, with these differences: `start` returns when the program runs
/// or its start has failed; what the child does is noticed by the waiting functions alone, so that
/// no event loop is needed; a standard error stream that was sent nowhere is dropped. One start an
/// object.
class CChildProcess
{
public:
    CChildProcess();
    /// Ends the child where it still runs.
    ~CChildProcess();

    CChildProcess(const CChildProcess&) = delete;
    CChildProcess& operator=(const CChildProcess&) = delete;

    /// From now on the system ends every child of this class when the thread that started it is
    /// gone, however it went; that thread therefore has to wait for its child. Where there is no
    /// such system call nothing changes.
    static void endWithStartingThreads();

    void setWorkingDirectory(const QString& folder);
    /// A variable beside those of the program's own environment, or instead of one of them.
    void setVariable(const QString& name, const QString& value);
    void setProcessChannelMode(QProcess::ProcessChannelMode mode);
    void setStandardInputFile(const QString& file);
    void setStandardOutputFile(const QString& file, QIODevice::OpenMode mode = QIODevice::Truncate);
    void setStandardErrorFile(const QString& file);
    /// Called on the waiting thread whenever there is something new to read.
    void setOutputHandler(std::function<void()> handler);

    void start(const QString& program, const QStringList& arguments);
    /// Of the child that was started, also when it has ended; 0 where none was.
    qint64 processId() const;
    QString program() const;

    bool waitForStarted() const;
    bool waitForReadyRead(int milliseconds = 30000);
    bool waitForFinished(int milliseconds = 30000);

    bool canReadLine() const;
    QByteArray readLine();
    QByteArray readAllStandardOutput();
    /// What the child doesn't take at once is written while somebody waits.
    void write(const QByteArray& bytes);
    void closeWriteChannel();
    void kill();

    QProcess::ProcessError error() const;
    QString errorString() const;
    QProcess::ExitStatus exitStatus() const;
    int exitCode() const;

private:
    struct State;

    std::unique_ptr<State> m_state;
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
    [[maybe_unused]] void* m_handle = nullptr; ///< for Windows alone
};
