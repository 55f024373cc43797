#include "platform/child_process.h"

#include "tests/support/processes.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstddef>
#include <fcntl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#ifdef __linux__
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#endif

/// How a child is started, what it gets from the program and what comes back from it.
class ChildStartTest : public QObject
{
    Q_OBJECT

private slots:
    void failuresAreToldInQtsWords_data();
    void failuresAreToldInQtsWords();
    void programsEndIsTheChilds_data();
    void programsEndIsTheChilds();
    void childInheritsNothingButItsStreams();
    void nothingStaysOpen();
    void signalsAreAsAProgramExpectsThem();
    void childLeadsAGroupOfItsOwn();
    void folderIsTheChilds();
    void variablesAreReplacedOrAdded();
    void outputIsAddedToAFile();
    void channelsAreMerged();
    void longInputReachesTheChild();
    void inputThatNobodyTakesDoesNoHarm();
    void restOfTheOutputIsRead();
#ifdef __linux__
    void largePipeIsEmptiedAtTheEnd();
#endif
    void childWithoutStandardStreamsWorks();
    void endIsKnownWhereChildrenWereToBeIgnored_data();
    void endIsKnownWhereChildrenWereToBeIgnored();
    void runningChildEndsWithItsObject();
    void manyThreadsStartChildren();
    void childOfAThreadThatHasGoneIsEnded();
    void endIsSeenWithoutHelpOfTheSystem();
};

namespace {

QByteArray outputOf(const char* script)
{
    CChildProcess process;
    process.start("sh", {"-c", script});
    process.waitForFinished(-1);
    return process.readAllStandardOutput().trimmed();
}

QStringList openDescriptors()
{
    return QDir("/proc/self/fd").entryList(QDir::Files | QDir::System | QDir::NoDotAndDotDot);
}

void writeProgram(const QString& path, const QByteArray& text, bool executable)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(text);
    if (executable) {
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }
}

/// Runs a part of the test in a process of its own, which says by its exit code whether it held.
template <class Part>
int inAnotherProcess(const Part& part)
{
    const pid_t process = ::fork();
    if (process == 0) {
        ::_exit(part() ? 0 : 1);
    }
    int status = -1;
    while (::waitpid(process, &status, 0) < 0 && errno == EINTR) {
    }
    return status;
}

} // namespace

void ChildStartTest::failuresAreToldInQtsWords_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("output");
    const auto row = [](const char* name, const char* program, const char* folder = "",
                        const char* output = "") {
        QTest::newRow(name) << QString(program) << QString(folder) << QString(output);
    };
    row("no name", "");
    row("missing", "%1/missing");
    row("missing on the search path", "no-program-of-this-name");
    row("not executable", "%1/text");
    row("a folder", "%1");
    row("without its interpreter", "%1/orphan");
    row("no program", "%1/garbage");
    row("not in the child's folder", "./text2", "%1");
    row("missing folder", "true", "%1/missing");
    row("output can't be written", "true", "", "%1/missing/output");
}

void ChildStartTest::failuresAreToldInQtsWords()
{
    QTemporaryDir files;
    writeProgram(files.filePath("text"), "text", false);
    writeProgram(files.filePath("orphan"), "#!/missing/interpreter\n", true);
    writeProgram(files.filePath("garbage"), "garbage\n", true);
    QFETCH(QString, program);
    QFETCH(QString, folder);
    QFETCH(QString, output);
    for (QString* path : {&program, &folder, &output}) {
        path->replace("%1", files.path());
    }

    QProcess theirs;
    CChildProcess ours;
    theirs.setWorkingDirectory(folder);
    ours.setWorkingDirectory(folder);
    if (!output.isEmpty()) {
        theirs.setStandardOutputFile(output);
        ours.setStandardOutputFile(output);
    }
    theirs.start(program, QStringList());
    ours.start(program, QStringList());
    QVERIFY(!theirs.waitForFinished(-1));
    QVERIFY(!ours.waitForFinished(-1));
    QVERIFY(!ours.waitForStarted());
    QCOMPARE(ours.error(), QProcess::FailedToStart);
    QCOMPARE(ours.error(), theirs.error());
    QVERIFY(!ours.errorString().isEmpty());
    QCOMPARE(ours.errorString(), theirs.errorString());
    QCOMPARE(ours.program(), program);
    QCOMPARE(ours.processId(), 0);
    QVERIFY(zombies().isEmpty());
}

void ChildStartTest::programsEndIsTheChilds_data()
{
    QTest::addColumn<QString>("script");
    QTest::newRow("well") << QString("exit 0");
    QTest::newRow("code") << QString("exit 3");
    QTest::newRow("largest code") << QString("exit 255");
    QTest::newRow("killed") << QString("kill -9 $$");
    QTest::newRow("crashed") << QString("kill -SEGV $$");
}

void ChildStartTest::programsEndIsTheChilds()
{
    QFETCH(QString, script);
    QProcess theirs;
    CChildProcess ours;
    theirs.start("sh", {"-c", script});
    ours.start("sh", {"-c", script});
    QVERIFY(theirs.waitForFinished(-1));
    QVERIFY(ours.waitForFinished(-1));
    QCOMPARE(ours.exitStatus(), theirs.exitStatus());
    QCOMPARE(ours.exitCode(), theirs.exitCode());
    QCOMPARE(ours.error(), theirs.error());
    QVERIFY(!ours.waitForFinished(-1));
    QVERIFY(zombies().isEmpty());
}

void ChildStartTest::childInheritsNothingButItsStreams()
{
    const int inherited = outputOf("ls /proc/self/fd").split('\n').size();
    QProcess theirs;
    theirs.start("sh", {"-c", "ls /proc/self/fd"});
    QVERIFY(theirs.waitForFinished(-1));
    QCOMPARE(inherited, theirs.readAllStandardOutput().trimmed().split('\n').size());
}

void ChildStartTest::nothingStaysOpen()
{
    const QStringList before = openDescriptors();
    for (int count = 0; count < 20; ++count) {
        QCOMPARE(outputOf("echo here"), QByteArray("here"));
        CChildProcess missing;
        missing.start("/missing/program", {});
        CChildProcess ended;
        ended.start("sleep", {"30"});
    }
    QCOMPARE(openDescriptors(), before);
    QVERIFY(zombies().isEmpty());
}

/// What the program handles or blocks is no business of the child; that it ignores a broken pipe
/// isn't either.
void ChildStartTest::signalsAreAsAProgramExpectsThem()
{
    const auto state = [] { return outputOf("grep -E 'Sig(Blk|Ign)' /proc/self/status"); };
    const QByteArray plain = state();
    const auto formerUser = std::signal(SIGUSR1, [](int) {});
    const auto formerPipe = std::signal(SIGPIPE, SIG_IGN);
    const QByteArray handled = state();
    std::signal(SIGUSR1, formerUser);
    std::signal(SIGPIPE, formerPipe);
    QCOMPARE(handled, plain);
    QVERIFY(plain.contains("SigBlk:\t0000000000000000"));

    sigset_t user;
    sigset_t before;
    ::sigemptyset(&user);
    ::sigaddset(&user, SIGUSR2);
    ::pthread_sigmask(SIG_BLOCK, &user, nullptr);
    QCOMPARE(outputOf("true"), QByteArray());
    ::pthread_sigmask(SIG_UNBLOCK, &user, &before);
    QVERIFY(::sigismember(&before, SIGUSR2) == 1);
    QVERIFY(::sigismember(&before, SIGTERM) == 0);
}

void ChildStartTest::childLeadsAGroupOfItsOwn()
{
    CChildProcess process;
    process.start("sleep", {"30"});
    QCOMPARE(static_cast<qint64>(::getpgid(static_cast<pid_t>(process.processId()))),
             process.processId());
}

void ChildStartTest::folderIsTheChilds()
{
    QTemporaryDir folder;
    CChildProcess process;
    process.setWorkingDirectory(folder.path());
    process.start("pwd", {"-P"});
    QVERIFY(process.waitForFinished(-1));
    QCOMPARE(process.readAllStandardOutput().trimmed(),
             QFileInfo(folder.path()).canonicalFilePath().toUtf8());
}

void ChildStartTest::variablesAreReplacedOrAdded()
{
    qputenv("TARNEL_KEPT", "kept");
    qputenv("TARNEL_REPLACED", "old");
    CChildProcess process;
    process.setVariable("TARNEL_REPLACED", QString::fromUtf8("new \xc3\xa4"));
    process.setVariable("TARNEL_ADDED", "added");
    process.start("sh", {"-c", "env | grep ^TARNEL_ | sort"});
    QVERIFY(process.waitForFinished(-1));
    qunsetenv("TARNEL_KEPT");
    qunsetenv("TARNEL_REPLACED");
    QCOMPARE(process.readAllStandardOutput(),
             QByteArray("TARNEL_ADDED=added\nTARNEL_KEPT=kept\nTARNEL_REPLACED=new \xc3\xa4\n"));
}

void ChildStartTest::outputIsAddedToAFile()
{
    QTemporaryDir folder;
    const QString path = folder.filePath("output");
    for (const auto mode : {QIODevice::Truncate, QIODevice::Truncate, QIODevice::Append}) {
        CChildProcess process;
        process.setStandardOutputFile(path, mode);
        process.start("echo", {"line"});
        QVERIFY(process.waitForFinished(-1));
        QVERIFY(process.readAllStandardOutput().isEmpty());
    }
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("line\nline\n"));
}

void ChildStartTest::channelsAreMerged()
{
    for (const auto mode : {QProcess::SeparateChannels, QProcess::MergedChannels}) {
        CChildProcess process;
        process.setProcessChannelMode(mode);
        process.start("sh", {"-c", "echo one; echo two >&2; echo three"});
        QVERIFY(process.waitForFinished(-1));
        QCOMPARE(
            process.readAllStandardOutput(),
            QByteArray(mode == QProcess::MergedChannels ? "one\ntwo\nthree\n" : "one\nthree\n"));
    }
}

void ChildStartTest::longInputReachesTheChild()
{
    CChildProcess process;
    process.start("wc", {"-c"});
    process.write(QByteArray(3000000, 'x'));
    process.closeWriteChannel();
    QVERIFY(process.waitForFinished(-1));
    QCOMPARE(process.readAllStandardOutput().trimmed(), QByteArray("3000000"));
}

void ChildStartTest::inputThatNobodyTakesDoesNoHarm()
{
    CChildProcess process;
    process.start("true", {});
    process.write(QByteArray(3000000, 'x'));
    QVERIFY(process.waitForFinished(-1));
    QCOMPARE(process.exitCode(), 0);
}

void ChildStartTest::restOfTheOutputIsRead()
{
    int calls = 0;
    QByteArray output;
    CChildProcess process;
    process.setOutputHandler([&] {
        ++calls;
        output += process.readAllStandardOutput();
    });
    process.start("sh", {"-c", "head -c 1000000 /dev/zero; sleep 30 & printf end"});
    CKillSwitch kill;
    kill.arm(process.processId());
    // A child of the child has the pipe and holds nothing up.
    QVERIFY(process.waitForFinished(10000));
    kill.end();
    QCOMPARE(output.size(), 1000003);
    QVERIFY(output.endsWith("end"));
    QVERIFY(calls > 1);
}

#ifdef __linux__
/// More than is read at a time, all of it there when the end is seen.
void ChildStartTest::largePipeIsEmptiedAtTheEnd()
{
    QByteArray output;
    CChildProcess process;
    process.setOutputHandler([&] { output += process.readAllStandardOutput(); });
    process.start("python3", {"-c", QStringLiteral("import fcntl, os\n"
                                                   "fcntl.fcntl(1, %1, 1 << 20)\n"
                                                   "os.write(1, b'x' * 500000)")
                                        .arg(F_SETPIPE_SZ)});
    siginfo_t ended = {};
    QCOMPARE(::waitid(P_PID, id_t(process.processId()), &ended, WEXITED | WNOWAIT), 0);
    QVERIFY(process.waitForFinished(-1));
    QCOMPARE(output, QByteArray(500000, 'x'));
}
#endif

/// As a daemon or a careless starter leaves a program.
void ChildStartTest::childWithoutStandardStreamsWorks()
{
    const int status = inAnotherProcess([] {
        for (int stream = 0; stream < 3; ++stream) {
            ::close(stream);
        }
        CChildProcess process;
        process.setProcessChannelMode(QProcess::MergedChannels);
        process.start("sh", {"-c", "read word; echo $word; echo error >&2"});
        process.write("word\n");
        return process.waitForFinished(10000) && process.readAllStandardOutput() == "word\nerror\n";
    });
    QCOMPARE(status, 0);
}

void ChildStartTest::endIsKnownWhereChildrenWereToBeIgnored_data()
{
    QTest::addColumn<bool>("ignored");
    QTest::newRow("ignored") << true;
    QTest::newRow("not to be waited for") << false;
}

/// As well as a careless starter leaves it: the setting outlives the start of a program.
void ChildStartTest::endIsKnownWhereChildrenWereToBeIgnored()
{
    QFETCH(bool, ignored);
    const int status = inAnotherProcess([ignored] {
        struct sigaction action = {};
        action.sa_handler = ignored ? SIG_IGN : SIG_DFL;
        action.sa_flags = ignored ? 0 : SA_NOCLDWAIT;
        ::sigaction(SIGCHLD, &action, nullptr);
        bool known = true;
        for (const int code : {0, 3}) {
            CChildProcess process;
            process.start("sh", {"-c", "exit " + QString::number(code)});
            known = known && process.waitForFinished(10000) && process.exitCode() == code;
        }
        return known;
    });
    QCOMPARE(status, 0);
}

void ChildStartTest::runningChildEndsWithItsObject()
{
    QByteArray child;
    {
        CChildProcess process;
        process.start("sleep", {"30"});
        child = QByteArray::number(process.processId());
        QVERIFY(isAlive(child));
    }
    QVERIFY(!processExists(child));
}

void ChildStartTest::manyThreadsStartChildren()
{
    std::vector<std::thread> threads;
    std::atomic<int> good{0};
    for (int number = 0; number < 8; ++number) {
        threads.emplace_back([&good, number] {
            for (int count = 0; count < 25; ++count) {
                const QByteArray text = QByteArray::number(100 * number + count);
                const QByteArray script = "echo " + text;
                good += outputOf(script.constData()) == text ? 1 : 0;
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    QCOMPARE(good.load(), 200);
    QVERIFY(zombies().isEmpty());
}

void ChildStartTest::childOfAThreadThatHasGoneIsEnded()
{
#ifndef __linux__
    QSKIP("there is no such system call here");
#elif defined(__SANITIZE_THREAD__)
    QSKIP("the thread sanitizer lets a copy of this process start no threads");
#else
    // Asked for once, it holds for all later children: so in a process of its own.
    const int status = inAnotherProcess([] {
        CChildProcess::endWithStartingThreads();
        CChildProcess process;
        std::thread starter([&process] { process.start("sleep", {"30"}); });
        starter.join();
        return process.waitForFinished(10000) && process.exitStatus() == QProcess::CrashExit &&
               process.exitCode() == SIGKILL;
    });
    QCOMPARE(status, 0);
#endif
}

/// An older system, and a filter of system calls that doesn't know the newer ones, can't tell of a
/// child's end.
void ChildStartTest::endIsSeenWithoutHelpOfTheSystem()
{
#if !defined(__linux__) || !defined(SYS_pidfd_open)
    QSKIP("there is no such system call here");
#else
    const int status = inAnotherProcess([] {
        sock_filter filter[] = {
            BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
            BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, SYS_pidfd_open, 0, 1),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | ENOSYS),
            BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
        };
        const sock_fprog program = {4, filter};
        if (::prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 ||
            ::prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) != 0 ||
            ::syscall(SYS_pidfd_open, ::getpid(), 0) != -1) {
            return false;
        }
        CChildProcess process;
        process.start("sh", {"-c", "echo here; exec sleep 0.1"});
        const bool inTime = !process.waitForFinished(20) && process.waitForFinished(10000);
        return inTime && process.exitCode() == 0 && process.readAllStandardOutput() == "here\n" &&
               outputOf("exec echo again") == "again";
    });
    QCOMPARE(status, 0);
#endif
}

TARNEL_TEST_MAIN(ChildStartTest)

#include "child_start_test.moc"
