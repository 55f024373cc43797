#include "platform/search_path.h"

#include "platform/text_lines.h"
#include "tests/support/job_maker.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <filesystem>

class SearchPathTest : public QObject
{
    Q_OBJECT

private slots:
    void keepsEmptyParts_data();
    void keepsEmptyParts();
    void takesPythonBeforePython3();
    void findsConda();
    void namesAFolderThatCannotBeAsked();
};

void SearchPathTest::keepsEmptyParts_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QStringList>("parts");
    QTest::newRow("none") << QByteArray() << QStringList{""};
    QTest::newRow("one") << QByteArray("/a b") << QStringList{"/a b"};
    QTest::newRow("empty between") << QByteArray("/a::/b") << QStringList{"/a", "", "/b"};
    QTest::newRow("empty at the ends") << QByteArray(":/a:") << QStringList{"", "/a", ""};
}

void SearchPathTest::keepsEmptyParts()
{
    QFETCH(QByteArray, path);
    QFETCH(QStringList, parts);
    const QByteArray before = qgetenv("PATH");
    qputenv("PATH", path);
    QStringList found;
    for (const std::string& part : platform::searchPath()) {
        found << QString::fromStdString(part);
    }
    qputenv("PATH", before);
    QCOMPARE(found, parts);
}

void SearchPathTest::takesPythonBeforePython3()
{
    const QTemporaryDir folder;
    const std::string path = folder.path().toStdString();
    QCOMPARE(platform::pythonIn(path), std::string());
    writeFile(folder.filePath(QStringLiteral("python3")), "");
    QCOMPARE(platform::pythonIn(path), std::string("python3"));
    writeFile(folder.filePath(QStringLiteral("python")), "");
    QCOMPARE(platform::pythonIn(path), std::string("python"));
}

void SearchPathTest::findsConda()
{
    const QTemporaryDir folder;
    QVERIFY(!platform::condaIn(folder.path().toStdString()));
    QVERIFY(!platform::condaIn(folder.filePath(QStringLiteral("missing")).toStdString()));
    writeFile(folder.filePath(QStringLiteral("conda")), "");
    QVERIFY(platform::condaIn(folder.path().toStdString()));
}

void SearchPathTest::namesAFolderThatCannotBeAsked()
{
    const QTemporaryDir folder;
    const QString loop = folder.filePath(QStringLiteral("loop"));
    QVERIFY(QFile::link(loop, loop));
    const std::string path = loop.toStdString();
    QVERIFY_EXCEPTION_THROWN(platform::pythonIn(path), std::filesystem::filesystem_error);
    QVERIFY_EXCEPTION_THROWN(platform::condaIn(path), std::filesystem::filesystem_error);
}

TARNEL_TEST_MAIN(SearchPathTest)

#include "search_path_test.moc"
