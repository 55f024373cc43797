#include "platform/search_path.h"

#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDir>
#include <QTest>

class SearchPathTest : public QObject
{
    Q_OBJECT

private slots:
    void keepsEmptyParts_data();
    void keepsEmptyParts();
};

void SearchPathTest::keepsEmptyParts_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<QStringList>("parts");
    QTest::newRow("none") << QByteArray() << QStringList{""};
    QTest::newRow("one") << QByteArray("/a b") << QStringList{"/a b"};
    QTest::newRow("empty between") << QByteArray("/a||/b") << QStringList{"/a", "", "/b"};
    QTest::newRow("empty at the ends") << QByteArray("|/a|") << QStringList{"", "/a", ""};
}

void SearchPathTest::keepsEmptyParts()
{
    QFETCH(QByteArray, path);
    QFETCH(QStringList, parts);
    path.replace('|', QDir::listSeparator().toLatin1());
    const QByteArray before = qgetenv("PATH");
    qputenv("PATH", path);
    QStringList found;
    for (const std::string& part : platform::searchPath()) {
        found << QString::fromStdString(part);
    }
    qputenv("PATH", before);
    QCOMPARE(found, parts);
}

TARNEL_TEST_MAIN(SearchPathTest)

#include "search_path_test.moc"
