#include "platform/file_operations.h"

#include "tests/support/job_maker.h"
#include "tests/support/native.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

namespace fs = std::filesystem;

/// Gets a file that is there and a path that isn't.
struct Operation
{
    void (*run)(const fs::path& file, const fs::path& missing);
};

Q_DECLARE_METATYPE(Operation)

class FileOperationsTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void updatingReplacesAnOlderFileOnly_data();
    void updatingReplacesAnOlderFileOnly();
    void newCopyHasTheBytesAndTheRights_data();
    void newCopyHasTheBytesAndTheRights();
    void newFileNeverReplacesAnother();
    void fileKeepsItsNameInAFolder();
    void treeIsRemovedWithAllThatItHolds();
    void failuresNameTheOperationAndItsPaths_data();
    void failuresNameTheOperationAndItsPaths();

private:
    fs::path path(const char* name) const { return m_root->filePath(name).toStdString(); }
    QByteArray content(const char* name) const { return readFile(m_root->filePath(name)); }

    /// Sets when the file was written, so many seconds before a certain moment.
    void setWriteTime(const char* name, int ageInSeconds) const;

    std::unique_ptr<QTemporaryDir> m_root;
};

void FileOperationsTest::setWriteTime(const char* name, int ageInSeconds) const
{
    const QDateTime moment(QDate(2001, 2, 3), QTime(4, 5, 6, 789));
    QFile file(m_root->filePath(name));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(moment.addSecs(-ageInSeconds), QFileDevice::FileModificationTime));
}

void FileOperationsTest::init()
{
    m_root = std::make_unique<QTemporaryDir>();
    writeFile(m_root->filePath("from"), "from");
}

void FileOperationsTest::updatingReplacesAnOlderFileOnly_data()
{
    QTest::addColumn<int>("ageInSeconds");
    QTest::addColumn<QByteArray>("expected");
    QTest::newRow("older") << 60 << QByteArray("from");
    QTest::newRow("as old") << 0 << QByteArray("to");
    QTest::newRow("newer") << -60 << QByteArray("to");
}

void FileOperationsTest::updatingReplacesAnOlderFileOnly()
{
    QFETCH(int, ageInSeconds);
    QFETCH(QByteArray, expected);
    writeFile(m_root->filePath("to"), "to");
    setWriteTime("from", 0);
    setWriteTime("to", ageInSeconds);
    platform::copyFileUpdating(path("from"), path("to"));
    QCOMPARE(content("to"), expected);
}

void FileOperationsTest::newCopyHasTheBytesAndTheRights_data()
{
    QTest::addColumn<int>("size");
    QTest::newRow("empty") << 0;
    QTest::newRow("short") << 5;
    QTest::newRow("long") << 3000001;
}

void FileOperationsTest::newCopyHasTheBytesAndTheRights()
{
    QFETCH(int, size);
    QByteArray bytes(size, 'x');
    for (int index = 0; index < size; ++index) {
        bytes[index] = static_cast<char>(index % 251);
    }
    writeFile(m_root->filePath("from"), bytes);
    fs::permissions(path("from"), fs::perms::owner_all | fs::perms::others_write);
    platform::copyFileUpdating(path("from"), path("to"));
    QVERIFY(content("to") == bytes);
    QCOMPARE(static_cast<int>(fs::status(path("to")).permissions()),
             static_cast<int>(fs::status(path("from")).permissions()));
    QVERIFY(content("from") == bytes);
}

void FileOperationsTest::newFileNeverReplacesAnother()
{
    platform::copyNewFile(path("from"), path("to"));
    QCOMPARE(content("to"), QByteArray("from"));
    writeFile(m_root->filePath("to"), "to");
    QVERIFY_EXCEPTION_THROWN(platform::copyNewFile(path("from"), path("to")), fs::filesystem_error);
    QCOMPARE(content("to"), QByteArray("to"));
}

void FileOperationsTest::fileKeepsItsNameInAFolder()
{
    platform::createDirectory(path("folder"));
    platform::copyIntoFolder(path("from"), path("folder"));
    QCOMPARE(content("folder/from"), QByteArray("from"));
}

void FileOperationsTest::treeIsRemovedWithAllThatItHolds()
{
    QVERIFY(QDir(m_root->path()).mkpath("tree/deep"));
    writeFile(m_root->filePath("tree/deep/file"), "");
    platform::removeTree(path("tree"));
    QVERIFY(!QFileInfo::exists(m_root->filePath("tree")));
    QVERIFY(QFileInfo::exists(m_root->filePath("from")));
}

void FileOperationsTest::failuresNameTheOperationAndItsPaths_data()
{
    using Path = const fs::path&;
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("paths");
    const auto add = [](const char* row, const char* name, int paths, Operation operation) {
        QTest::newRow(row) << operation << name << paths;
    };
    add("create_directory", "create_directory", 1,
        {[](Path file, Path) { platform::createDirectory(file / "below a file"); }});
    add("copy_file, updating", "copy_file", 2,
        {[](Path file, Path missing) { platform::copyFileUpdating(missing, file); }});
    add("copy_file, new", "copy_file", 2,
        {[](Path file, Path missing) { platform::copyNewFile(missing, file); }});
    add("copy", "copy", 2,
        {[](Path file, Path missing) { platform::copyIntoFolder(missing, file); }});
    add("rename", "rename", 2,
        {[](Path file, Path missing) { platform::renamePath(missing, file); }});
    add("remove_all", "remove_all", 1, {[](Path file, Path) {
            const CHeldFile held(QString::fromStdString(file.u8string()), CHeldFile::Reader);
            platform::removeTree(fs::u8path(Native::unremovablePath(file.u8string())));
        }});
}

void FileOperationsTest::failuresNameTheOperationAndItsPaths()
{
    QFETCH(Operation, operation);
    QFETCH(QString, name);
    QFETCH(int, paths);
    try {
        operation.run(path("from"), path("missing"));
        QFAIL("nothing was thrown");
    } catch (const fs::filesystem_error& error) {
        const QString what = QString::fromUtf8(error.what());
        QVERIFY2(what.contains(" " + name + ": "), qPrintable(what));
        QCOMPARE(error.path1().empty(), false);
        QCOMPARE(error.path2().empty(), paths == 1);
    }
}

TARNEL_TEST_MAIN(FileOperationsTest)
#include "file_operations_test.moc"
