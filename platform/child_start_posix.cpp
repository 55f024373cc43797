#include "platform/child_start.h"

#include "platform/descriptor.h"

#include <QProcess>

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#ifdef __linux__
#include <sys/prctl.h>
#endif
#include <sys/wait.h>
#include <unistd.h>

// NOLINTNEXTLINE(readability-redundant-declaration): POSIX leaves it to the program
extern char** environ;

namespace platform {
namespace {

/// What the child tells of a start that has failed.
struct SFailure
{
    int code;
    char call[8];
};

/// All that the child needs, made ready before there is one: it may share the memory of a program
/// with other threads, and so neither allocate nor lock anything.
struct SPlan
{
    char** words;
    char** environment;
    const char* execution; ///< name of the call, for the report
    const char* folder;    ///< null for the program's own
    const int* streams;
    int report;
    bool endsWithThread;
    pid_t parent;
    sigset_t signalsBefore;
};

[[noreturn]] void reportFailure(const SPlan& plan, const char* call)
{
    SFailure failure = {errno, {}};
    std::strncpy(failure.call, call, sizeof failure.call - 1);
    [[maybe_unused]] const ssize_t written = ::write(plan.report, &failure, sizeof failure);
    ::_exit(EXIT_FAILURE);
}

/// A handler of the program must not run in the child. What was ignored stays so, but for the
/// signal that the program itself ignores, see `CChildProcess::write`.
void resetSignals(const SPlan& plan)
{
    for (int number = 1; number < NSIG; ++number) {
        struct sigaction action = {};
        if (::sigaction(number, nullptr, &action) == 0 && action.sa_handler != SIG_DFL &&
            (action.sa_handler != SIG_IGN || number == SIGPIPE)) {
            action = {};
            action.sa_handler = SIG_DFL;
            ::sigaction(number, &action, nullptr);
        }
    }
    ::pthread_sigmask(SIG_SETMASK, &plan.signalsBefore, nullptr);
}

/// Runs in the child.
[[noreturn]] void becomeProgram(const SPlan& plan)
{
    ::setpgid(0, 0);
#ifdef __linux__
    if (plan.endsWithThread) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != plan.parent) {
            ::_exit(EXIT_FAILURE);
        }
    }
#endif
    resetSignals(plan);
    for (int stream = 0; stream < 3; ++stream) {
        if (plan.streams[stream] >= 0 && ::dup2(plan.streams[stream], stream) < 0) {
            reportFailure(plan, "dup2");
        }
    }
    if (plan.folder != nullptr && ::chdir(plan.folder) != 0) {
        reportFailure(plan, "chdir");
    }
    ::execve(plan.words[0], plan.words, plan.environment);
    reportFailure(plan, plan.execution);
}

/// Children that the program is to ignore vanish with their exit codes. Its starter may have set
/// that: what is ignored stays so in the program that is started.
void heedChildren()
{
    struct sigaction action = {};
    if (::sigaction(SIGCHLD, nullptr, &action) == 0 &&
        (action.sa_handler == SIG_IGN || (action.sa_flags & SA_NOCLDWAIT) != 0)) {
        action.sa_handler = action.sa_handler == SIG_IGN ? SIG_DFL : action.sa_handler;
        action.sa_flags &= ~SA_NOCLDWAIT;
        ::sigaction(SIGCHLD, &action, nullptr);
    }
}

/// The child borrows the memory of its parent, whose thread stands still until the program runs. A
/// copy of it would have to be announced to the system page by page, and could stay behind waiting
/// when the parent dies in between.
pid_t startProcess(const SPlan& plan)
{
    // NOLINTNEXTLINE(clang-analyzer-security.insecureAPI.vfork): nothing else copies no memory
    const pid_t process = ::vfork();
    if (process == 0) {
        becomeProgram(plan); // NOLINT(clang-analyzer-unix.Vfork): calls what is safe in a signal
    }
    return process;
}

std::vector<char*> pointersTo(const std::vector<QByteArray>& texts)
{
    std::vector<char*> pointers;
    pointers.reserve(texts.size() + 1);
    for (const QByteArray& text : texts) {
        // Taken by a function that promises not to write, but doesn't say so.
        pointers.push_back(const_cast<char*>(text.constData()));
    }
    pointers.push_back(nullptr);
    return pointers;
}

/// The program's own variables, but for those that are replaced, and then the others.
std::vector<char*> environmentWith(const std::vector<QByteArray>& variables)
{
    std::vector<char*> result = pointersTo(variables);
    result.pop_back();
    for (char** own = environ; own != nullptr && *own != nullptr; ++own) {
        const auto replacesIt = [own](const QByteArray& variable) {
            const auto length = static_cast<std::size_t>(variable.indexOf('=')) + 1;
            return std::strncmp(*own, variable.constData(), length) == 0;
        };
        if (std::none_of(variables.begin(), variables.end(), replacesIt)) {
            result.push_back(*own);
        }
    }
    result.push_back(nullptr);
    return result;
}

QString forkTrouble(int error)
{
    return QProcess::tr("Resource error (fork failure): %1").arg(qt_error_string(error));
}

/// Reads what the child reports; nothing comes where the program runs.
SStartedChild outcome(pid_t process, int report)
{
    SFailure failure = {};
    ssize_t length = 0;
    do {
        length = ::read(report, &failure, sizeof failure);
    } while (length < 0 && errno == EINTR);
    if (length != sizeof failure) {
        return {process, {}};
    }
    while (::waitpid(process, nullptr, 0) < 0 && errno == EINTR) {
    }
    return {0, QString::fromLatin1(failure.call) + ": " + qt_error_string(failure.code)};
}

} // namespace

SStartedChild startChild(const SChildStart& start)
{
    std::array<CDescriptor, 2> report;
    if (!openPipe(report)) {
        return {0, forkTrouble(errno)};
    }
    std::vector<char*> words = pointersTo(start.words);
    std::vector<char*> environment;
    if (!start.variables.empty()) {
        environment = environmentWith(start.variables);
    }
    SPlan plan = {};
    plan.words = words.data();
    plan.environment = environment.empty() ? environ : environment.data();
    plan.execution = environment.empty() ? "execvp" : "execve";
    plan.folder = start.folder.isEmpty() ? nullptr : start.folder.constData();
    plan.streams = start.streams.data();
    plan.report = report[1].get();
    plan.endsWithThread = start.endsWithThread;
    plan.parent = ::getpid();

    heedChildren();
    sigset_t all;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &plan.signalsBefore);
    const pid_t process = startProcess(plan);
    const int error = errno;
    ::pthread_sigmask(SIG_SETMASK, &plan.signalsBefore, nullptr);
    if (process < 0) {
        return {0, forkTrouble(error)};
    }
    report[1].close();
    return outcome(process, report[0].get());
}

} // namespace platform
