#include "platform/write_access.h"

#include "tests/support/native.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

class WriteAccessTest : public QObject
{
    Q_OBJECT

private slots:
    void fileCanBeWrittenAndStays();
    void missingFileAndFolderCanNot();
    void lockedFileCanNot_data();
    void lockedFileCanNot();

private:
    QString newFile() const;
    static bool canBeWritten(const QString& path)
    {
        return platform::canBeWritten(path.toStdString());
    }

    QTemporaryDir m_root;
};

QString WriteAccessTest::newFile() const
{
    QFile file(m_root.filePath(QStringLiteral("file")));
    if (!file.open(QIODevice::WriteOnly) || file.write("content") != 7) {
        qFatal("can't write %s", qPrintable(file.fileName()));
    }
    return file.fileName();
}

void WriteAccessTest::fileCanBeWrittenAndStays()
{
    QFile file(newFile());
    QVERIFY(file.open(QIODevice::ReadWrite));
    const QDateTime longAgo(QDate(2001, 2, 3), QTime(4, 5));
    QVERIFY(file.setFileTime(longAgo, QFileDevice::FileModificationTime));
    file.close();
    QVERIFY(canBeWritten(file.fileName()));
    QCOMPARE(QFileInfo(file.fileName()).lastModified(), longAgo);
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("content"));
}

void WriteAccessTest::missingFileAndFolderCanNot()
{
    QVERIFY(!canBeWritten(m_root.filePath(QStringLiteral("nothing"))));
    QVERIFY(!QFileInfo::exists(m_root.filePath(QStringLiteral("nothing"))));
    QVERIFY(!canBeWritten(m_root.path()));
}

void WriteAccessTest::lockedFileCanNot_data()
{
    QTest::addColumn<int>("holder");
    QTest::newRow("by a reader") << int(CHeldFile::Reader);
    QTest::newRow("by a writer") << int(CHeldFile::Writer);
}

void WriteAccessTest::lockedFileCanNot()
{
    QFETCH(int, holder);
    const QString path = newFile();
    {
        const CHeldFile held(path, static_cast<CHeldFile::Holder>(holder));
        QVERIFY(held.isHeld());
        QVERIFY(!canBeWritten(path));
    }
    QVERIFY(canBeWritten(path));
}

TARNEL_TEST_MAIN(WriteAccessTest)

#include "write_access_test.moc"
