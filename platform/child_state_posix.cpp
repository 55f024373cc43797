#include "platform/child_state.h"

#include "platform/child_start.h"

#include <QFile>
#include <QStandardPaths>

#include <array>
#include <cerrno>
#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace {

/// The pause between two looks where the system can't tell of a child's end.
constexpr int LookPauseMs = 5;

/// Becomes readable when the process ends; none where the system has no such thing.
platform::CDescriptor endOf([[maybe_unused]] pid_t process)
{
#ifdef SYS_pidfd_open
    return platform::CDescriptor(static_cast<int>(::syscall(SYS_pidfd_open, process, 0)));
#else
    return platform::CDescriptor();
#endif
}

platform::CDescriptor openFile(const QString& file, int how)
{
    return platform::besideStandardStreams(
        ::open(QFile::encodeName(file).constData(), how | O_CLOEXEC, 0666));
}

void makeUnblocking(const platform::CDescriptor& end)
{
    ::fcntl(end.get(), F_SETFL, ::fcntl(end.get(), F_GETFL) | O_NONBLOCK);
}

} // namespace

std::atomic<bool> CChildProcess::State::endsWithThreads{false};

// The child's side of a stream is left alone where the child has the program's own; ours is kept
// where there is a pipe. False, and `errno`, where something can't be opened.

bool CChildProcess::State::openInput(Descriptor& childs)
{
    if (!inputFile.isEmpty()) {
        childs = openFile(inputFile, O_RDONLY);
        return childs.isOpen();
    }
    std::array<Descriptor, 2> ends;
    if (!platform::openPipe(ends)) {
        return false;
    }
    childs = std::move(ends[0]);
    input = std::move(ends[1]);
    makeUnblocking(input);
    return true;
}

bool CChildProcess::State::openOutput(Descriptor& childs)
{
    if (!outputFile.isEmpty()) {
        const int how = outputMode.testFlag(QIODevice::Append) ? O_APPEND : O_TRUNC;
        childs = openFile(outputFile, O_WRONLY | O_CREAT | how);
        return childs.isOpen();
    }
    if (mode == QProcess::ForwardedChannels) {
        return true;
    }
    std::array<Descriptor, 2> ends;
    if (!platform::openPipe(ends)) {
        return false;
    }
    output = std::move(ends[0]);
    childs = std::move(ends[1]);
    makeUnblocking(output);
    return true;
}

bool CChildProcess::State::openError(Descriptor& childs, int childsOutput) const
{
    if (mode == QProcess::ForwardedChannels || mode == QProcess::ForwardedErrorChannel) {
        return true;
    }
    childs = mode == QProcess::MergedChannels
                 ? Descriptor(::fcntl(childsOutput, F_DUPFD_CLOEXEC, STDERR_FILENO + 1))
                 : openFile(errorFile, O_WRONLY | O_CREAT | O_TRUNC);
    return childs.isOpen();
}

std::vector<QByteArray> CChildProcess::State::words(const QStringList& arguments) const
{
    QString path;
    if (!program.contains('/')) {
        path = QStandardPaths::findExecutable(program);
    }
    std::vector<QByteArray> result{QFile::encodeName(path.isEmpty() ? program : path)};
    for (const QString& argument : arguments) {
        result.push_back(QFile::encodeName(argument));
    }
    return result;
}

void CChildProcess::State::start(const QStringList& arguments)
{
    if (program.isEmpty()) {
        fail(QProcess::tr("No program defined"));
        return;
    }
    Descriptor childs[3];
    if (!openInput(childs[0]) || !openOutput(childs[1]) || !openError(childs[2], childs[1].get())) {
        fail(qt_error_string(errno));
        return;
    }
    const platform::SStartedChild started =
        platform::startChild({words(arguments),
                              QFile::encodeName(folder),
                              variables,
                              {childs[0].get(), childs[1].get(), childs[2].get()},
                              endsWithThreads});
    if (started.process == 0) {
        fail(started.trouble);
        return;
    }
    process = started.process;
    running = true;
    end = endOf(process);
}

void CChildProcess::State::fail(const QString& text)
{
    error = QProcess::FailedToStart;
    trouble = text;
}

/// Waits for anything to happen, not longer than to the deadline, and sees to it.
void CChildProcess::State::step(const QDeadlineTimer& deadline)
{
    std::array<pollfd, 3> events{{{end.get(), POLLIN, 0},
                                  {output.get(), POLLIN, 0},
                                  {toWrite.empty() ? -1 : input.get(), POLLOUT, 0}}};
    auto patience = static_cast<int>(deadline.remainingTime());
    if (!end.isOpen() && (patience < 0 || patience > LookPauseMs)) {
        patience = LookPauseMs;
    }
    if (::poll(events.data(), events.size(), patience) < 0) {
        return;
    }
    if (events[2].revents != 0) {
        writeInput();
    }
    if (events[1].revents != 0) {
        takeOutput();
    }
    if (events[0].revents != 0 || !end.isOpen()) {
        lookForEnd();
    }
}

void CChildProcess::State::writeInput()
{
    while (input.isOpen() && !toWrite.empty()) {
        const ssize_t written = ::write(input.get(), toWrite.data(), toWrite.size());
        if (written > 0) {
            toWrite.erase(0, static_cast<std::size_t>(written));
        } else if (errno == EAGAIN) {
            return;
        } else if (errno != EINTR) {
            input.close();
        }
    }
    toWrite.clear();
    if (closesInput) {
        input.close();
    }
}

/// What can be read at once; nothing or less where that is nothing.
ssize_t CChildProcess::State::takeOutput()
{
    std::array<char, 65536> bytes;
    const ssize_t length = ::read(output.get(), bytes.data(), bytes.size());
    if (length > 0) {
        unread.append(bytes.data(), static_cast<int>(length));
        hasNewOutput = true;
        if (outputHandler) {
            outputHandler();
        }
    } else if (length == 0 || (errno != EAGAIN && errno != EINTR)) {
        output.close();
    }
    return length;
}

/// What the child has left in the pipe. Others that have it may go on writing for ever.
void CChildProcess::State::takeRest()
{
    int left = 0;
    if (!output.isOpen() || ::ioctl(output.get(), FIONREAD, &left) != 0) {
        return;
    }
    for (ssize_t taken = 1; left > 0 && taken > 0; left -= static_cast<int>(taken)) {
        taken = takeOutput();
    }
}

void CChildProcess::State::lookForEnd()
{
    int status = 0;
    const pid_t ended = ::waitpid(process, &status, WNOHANG);
    if (ended == 0 || (ended < 0 && errno == EINTR)) {
        return;
    }
    takeRest();
    running = false;
    input.close();
    output.close();
    end.close();
    if (ended < 0) {
        // Nobody knows how it ended: somebody else has waited for it.
        exitCode = -1;
        return;
    }
    keepResult(status);
}

void CChildProcess::State::keepResult(int status)
{
    if (WIFEXITED(status)) {
        exitCode = WEXITSTATUS(status);
        return;
    }
    exitCode = WTERMSIG(status);
    exitStatus = QProcess::CrashExit;
    error = QProcess::Crashed;
    trouble = QProcess::tr("Process crashed");
}
