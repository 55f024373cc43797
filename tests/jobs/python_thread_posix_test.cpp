#include "jobs/python_thread.h"

#include "tests/support/job_maker.h"
#include "tests/support/processes.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

class PythonThreadPosixTest : public QObject
{
    Q_OBJECT

private slots:
    void startsInItsWorkingDirectory();
    void goesOnAfterTheCommandHasEnded();
    void endsWhatTheCommandHasStarted();
    void canEndRightAfterItsStart();
};

namespace {

std::string intoFile(const QTemporaryDir& folder, const char* command)
{
    return std::string(command) + " > '" + folder.filePath(QStringLiteral("result")).toStdString() +
           "'";
}

QByteArray result(const QTemporaryDir& folder)
{
    return readFile(folder.filePath(QStringLiteral("result")));
}

} // namespace

void PythonThreadPosixTest::startsInItsWorkingDirectory()
{
    const QTemporaryDir folder;
    const auto thread = std::make_unique<CPythonThread>("/", intoFile(folder, "pwd"));
    thread->start();
    QTRY_COMPARE(result(folder), QByteArray("/\n"));
}

void PythonThreadPosixTest::goesOnAfterTheCommandHasEnded()
{
    const QTemporaryDir folder;
    const auto thread = std::make_unique<CPythonThread>("/", intoFile(folder, "echo $$"));
    thread->start();
    QTRY_VERIFY(!result(folder).isEmpty());
    QVERIFY(!thread->wait(50));
    QVERIFY(isAlive(result(folder).trimmed()));
}

void PythonThreadPosixTest::endsWhatTheCommandHasStarted()
{
    const QTemporaryDir folder;
    {
        const auto thread = std::make_unique<CPythonThread>(
            "/", intoFile(folder, "sh -c 'echo $$; exec sleep 30'"));
        thread->start();
        QTRY_VERIFY(isAlive(result(folder).trimmed()));
    }
    QTRY_VERIFY(!isAlive(result(folder).trimmed()));
}

void PythonThreadPosixTest::canEndRightAfterItsStart()
{
    for (int round = 0; round < 20; ++round) {
        const auto thread = std::make_unique<CPythonThread>("/", "sleep 30");
        thread->start();
    }
}

TARNEL_TEST_MAIN(PythonThreadPosixTest)

#include "python_thread_posix_test.moc"
