#include "platform/file_manager.h"

#include "tests/support/job_maker.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDir>
#include <QTemporaryDir>
#include <QTest>

/// Puts a stand-in for the file manager in front of the search path.
class FileManagerWindowsTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { qputenv("PATH", m_searchPath); }

    void folderReachesTheFileManagerWithBackslashes();

private:
    QByteArray m_searchPath = qgetenv("PATH");
};

void FileManagerWindowsTest::folderReachesTheFileManagerWithBackslashes()
{
    const QTemporaryDir root;
    writeFile(root.filePath("explorer.bat"), "@echo [%*]>\"%~dp0seen\"\r\n");
    qputenv("PATH", QDir::toNativeSeparators(root.path()).toLocal8Bit() + ";" + m_searchPath);
    platform::openFolder("C:/a folder/Job");
    QCOMPARE(readFile(root.filePath("seen")).trimmed(), QByteArray("[C:\\a folder\\Job]"));
}

TARNEL_TEST_MAIN(FileManagerWindowsTest)
#include "file_manager_windows_test.moc"
