#include "platform/paths.h"

#include "platform/interpreter.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QTest>

class PathsTest : public QObject
{
    Q_OBJECT

private slots:
    void separatorsBecomeNative();
    void nameIsJoinedWithTheNativeSeparator();
};

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
