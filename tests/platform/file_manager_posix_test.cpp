#include "platform/file_manager.h"

#include "tests/support/test_environment.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include <fcntl.h>
#include <unistd.h>

/// Puts a stand-in for the file manager, or none, on the search path.
class FileManagerPosixTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup() { qputenv("PATH", m_searchPath); }

    void folderReachesTheFileManagerAsOneWord();
    void slowFileManagerDoesNotBlockAndItsOutputIsDropped();
    void missingFileManagerIsOneLineOnTheErrorStream();

private:
    void writeFileManager(const QByteArray& script);
    QByteArray openedWithErrors(const std::string& folder);
    QByteArray content(const QString& name) const;

    QByteArray m_searchPath = qgetenv("PATH");
    std::unique_ptr<QTemporaryDir> m_root;
};

void FileManagerPosixTest::init()
{
    m_root = std::make_unique<QTemporaryDir>();
    qputenv("PATH", m_root->path().toUtf8());
}

void FileManagerPosixTest::writeFileManager(const QByteArray& script)
{
    QFile file(m_root->filePath("xdg-open"));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("#!/bin/sh\n" + script);
    file.setPermissions(file.permissions() | QFile::ExeOwner);
}

QByteArray FileManagerPosixTest::content(const QString& name) const
{
    QFile file(m_root->filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QByteArray FileManagerPosixTest::openedWithErrors(const std::string& folder)
{
    const QByteArray path = m_root->filePath("errors").toUtf8();
    const int file = ::open(path.constData(), O_CREAT | O_WRONLY | O_TRUNC, 0600);
    const int before = ::dup(STDERR_FILENO);
    ::dup2(file, STDERR_FILENO);
    platform::openFolder(folder);
    ::dup2(before, STDERR_FILENO);
    ::close(before);
    ::close(file);
    return content("errors");
}

void FileManagerPosixTest::folderReachesTheFileManagerAsOneWord()
{
    const QByteArray seen = m_root->filePath("seen").toUtf8();
    writeFileManager("printf '%s|' \"$@\" > '" + seen + ".new'; /bin/mv '" + seen + ".new' '" +
                     seen + "'\n");
    const QByteArray folder = "/a folder/it's $HOME `x`;y";
    QCOMPARE(openedWithErrors(folder.toStdString()), QByteArray());
    QTRY_COMPARE(content("seen"), folder + "|");
}

void FileManagerPosixTest::slowFileManagerDoesNotBlockAndItsOutputIsDropped()
{
    const QByteArray done = m_root->filePath("done").toUtf8();
    writeFileManager("echo noise >&2\necho noise\n/bin/sleep 1\n: > '" + done + "'\n");
    QCOMPARE(openedWithErrors("/"), QByteArray());
    QVERIFY(!QFile::exists(done));
    QTRY_VERIFY(QFile::exists(done));
    QCOMPARE(content("errors"), QByteArray());
}

void FileManagerPosixTest::missingFileManagerIsOneLineOnTheErrorStream()
{
    const QByteArray errors = openedWithErrors("/tmp");
    QCOMPARE(errors.count('\n'), 1);
    QVERIFY(errors.contains("xdg-open"));
}

TARNEL_TEST_MAIN(FileManagerPosixTest)
#include "file_manager_posix_test.moc"
