#include "platform/write_time.h"

#include "tests/support/job_maker.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

class WriteTimeTest : public QObject
{
    Q_OBJECT

private slots:
    void isPutBackToTheMillisecond();
    void unknownTimeChangesNothing();
};

void WriteTimeTest::isPutBackToTheMillisecond()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("file"));
    writeFile(path, "before");
    const QDateTime longAgo(QDate(2001, 2, 3), QTime(4, 5, 6, 789));
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(longAgo, QFileDevice::FileModificationTime));
    file.close();
    const platform::CWriteTime time(path.toStdString());
    writeFile(path, "after");
    QVERIFY(QFileInfo(path).lastModified() != longAgo);
    time.putBack();
    QCOMPARE(QFileInfo(path).lastModified(), longAgo);
    QCOMPARE(readFile(path), QByteArray("after"));
}

void WriteTimeTest::unknownTimeChangesNothing()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("file"));
    const platform::CWriteTime time(path.toStdString());
    writeFile(path, "new");
    const QDateTime written = QFileInfo(path).lastModified();
    time.putBack();
    QCOMPARE(QFileInfo(path).lastModified(), written);
}

TARNEL_TEST_MAIN(WriteTimeTest)

#include "write_time_test.moc"
