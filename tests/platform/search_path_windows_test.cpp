#include "platform/search_path.h"

#include "tests/support/job_maker.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

#include <filesystem>

class SearchPathWindowsTest : public QObject
{
    Q_OBJECT

private slots:
    void findsPython();
    void findsConda_data();
    void findsConda();
    void namesAFolderThatCannotBeAsked();
};

void SearchPathWindowsTest::findsPython()
{
    const QTemporaryDir folder;
    const std::string path = folder.path().toStdString();
    writeFile(folder.filePath(QStringLiteral("python")), "");
    writeFile(folder.filePath(QStringLiteral("python.bat")), "");
    QCOMPARE(platform::pythonIn(path), std::string());
    writeFile(folder.filePath(QStringLiteral("python.exe")), "");
    QCOMPARE(platform::pythonIn(path), std::string("python"));
}

void SearchPathWindowsTest::findsConda_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("found");
    QTest::newRow("program") << "conda.exe" << true;
    QTest::newRow("batch file") << "conda.bat" << true;
    QTest::newRow("neither") << "conda" << false;
}

void SearchPathWindowsTest::findsConda()
{
    QFETCH(QString, name);
    QFETCH(bool, found);
    const QTemporaryDir folder;
    QVERIFY(!platform::condaIn(folder.path().toStdString()));
    QVERIFY(!platform::condaIn(folder.filePath(QStringLiteral("missing")).toStdString()));
    writeFile(folder.filePath(name), "");
    QCOMPARE(platform::condaIn(folder.path().toStdString()), found);
}

void SearchPathWindowsTest::namesAFolderThatCannotBeAsked()
{
    // The device's own name ends the path, and a device has no attributes.
    const std::string device = "\\\\.\\NUL";
    QVERIFY_EXCEPTION_THROWN(platform::pythonIn(device), std::filesystem::filesystem_error);
    QVERIFY_EXCEPTION_THROWN(platform::condaIn(device), std::filesystem::filesystem_error);
}

TARNEL_TEST_MAIN(SearchPathWindowsTest)

#include "search_path_windows_test.moc"
