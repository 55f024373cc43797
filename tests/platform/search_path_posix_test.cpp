#include "platform/search_path.h"

#include "tests/support/job_maker.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <filesystem>

class SearchPathPosixTest : public QObject
{
    Q_OBJECT

private slots:
    void takesPythonBeforePython3();
    void findsConda();
    void namesAFolderThatCannotBeAsked();
};

void SearchPathPosixTest::takesPythonBeforePython3()
{
    const QTemporaryDir folder;
    const std::string path = folder.path().toStdString();
    QCOMPARE(platform::pythonIn(path), std::string());
    writeFile(folder.filePath(QStringLiteral("python3")), "");
    QCOMPARE(platform::pythonIn(path), std::string("python3"));
    writeFile(folder.filePath(QStringLiteral("python")), "");
    QCOMPARE(platform::pythonIn(path), std::string("python"));
}

void SearchPathPosixTest::findsConda()
{
    const QTemporaryDir folder;
    QVERIFY(!platform::condaIn(folder.path().toStdString()));
    QVERIFY(!platform::condaIn(folder.filePath(QStringLiteral("missing")).toStdString()));
    writeFile(folder.filePath(QStringLiteral("conda")), "");
    QVERIFY(platform::condaIn(folder.path().toStdString()));
}

void SearchPathPosixTest::namesAFolderThatCannotBeAsked()
{
    const QTemporaryDir folder;
    const QString loop = folder.filePath(QStringLiteral("loop"));
    QVERIFY(QFile::link(loop, loop));
    const std::string path = loop.toStdString();
    QVERIFY_EXCEPTION_THROWN(platform::pythonIn(path), std::filesystem::filesystem_error);
    QVERIFY_EXCEPTION_THROWN(platform::condaIn(path), std::filesystem::filesystem_error);
}

TARNEL_TEST_MAIN(SearchPathPosixTest)

#include "search_path_posix_test.moc"
