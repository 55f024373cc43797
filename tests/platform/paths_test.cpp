#include "platform/paths.h"

#include "platform/interpreter.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QTest>

class PathsTest : public QObject
{
    Q_OBJECT

private slots:
    void narrowTextComesBackFromItsPath_data();
    void narrowTextComesBackFromItsPath();
    void separatorsBecomeNative();
    void nameIsJoinedWithTheNativeSeparator();
};

void PathsTest::narrowTextComesBackFromItsPath_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QString>("path");
    QTest::newRow("empty") << QByteArray() << QString();
    QTest::newRow("ASCII") << QByteArray("a b/c.zek") << QStringLiteral("a b/c.zek");
    if (!platform::speaksBatch()) {
        QTest::newRow("UTF-8") << QByteArray("\xc3\xbc.zek") << QString(QChar(0xfc)) + ".zek";
    }
}

void PathsTest::narrowTextComesBackFromItsPath()
{
    QFETCH(QByteArray, text);
    QFETCH(QString, path);
    const std::filesystem::path found = platform::pathOf(text.toStdString());
    QCOMPARE(QString::fromStdString(found.u8string()), path);
    QCOMPARE(QByteArray::fromStdString(platform::textOf(found)), text);
}

void PathsTest::separatorsBecomeNative()
{
    const QString native = QString::fromStdString(platform::withNativeSeparators("/a b/c\\d/"));
    QCOMPARE(native, platform::speaksBatch() ? QStringLiteral("\\a b\\c\\d\\")
                                             : QStringLiteral("/a b/c\\d/"));
}

void PathsTest::nameIsJoinedWithTheNativeSeparator()
{
    const QString joined = QString::fromStdString(platform::joinAsPath("/a b", "c d.zek"));
    QCOMPARE(joined, platform::speaksBatch() ? QStringLiteral("/a b\\c d.zek")
                                             : QStringLiteral("/a b/c d.zek"));
}

TARNEL_TEST_MAIN(PathsTest)
#include "paths_test.moc"
