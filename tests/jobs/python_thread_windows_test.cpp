#include "jobs/python_thread.h"

#include "tests/support/job_maker.h"
#include "tests/support/native.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

class PythonThreadWindowsTest : public QObject
{
    Q_OBJECT

private slots:
    void startsInItsWorkingDirectory();
    void goesOnAfterTheCommandHasEnded();
    void canEndRightAfterItsStart();
};

namespace {

std::string intoFile(const QTemporaryDir& folder, const char* command)
{
    const QString file = QDir::toNativeSeparators(folder.filePath(QStringLiteral("result")));
    return std::string(command) + ">\"" + file.toStdString() + "\"";
}

QByteArray result(const QTemporaryDir& folder)
{
    return Native::fromTextMode(readFile(folder.filePath(QStringLiteral("result"))));
}

} // namespace

void PythonThreadWindowsTest::startsInItsWorkingDirectory()
{
    const QTemporaryDir folder;
    const auto thread = std::make_unique<CPythonThread>("C:/", intoFile(folder, "cd"));
    thread->start();
    QTRY_COMPARE(result(folder), QByteArray("C:\\\n"));
}

void PythonThreadWindowsTest::goesOnAfterTheCommandHasEnded()
{
    const QTemporaryDir folder;
    const auto thread = std::make_unique<CPythonThread>("C:/", intoFile(folder, "echo done"));
    thread->start();
    QTRY_COMPARE(result(folder).trimmed(), QByteArray("done"));
    QVERIFY(!thread->wait(50));
}

void PythonThreadWindowsTest::canEndRightAfterItsStart()
{
    for (int round = 0; round < 3; ++round) {
        const auto thread = std::make_unique<CPythonThread>("C:/", "pause");
        thread->start();
    }
}

TARNEL_TEST_MAIN(PythonThreadWindowsTest)

#include "python_thread_windows_test.moc"
