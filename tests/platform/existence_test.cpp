#include "platform/existence.h"

#include "tests/support/job_maker.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

class ExistenceTest : public QObject
{
    Q_OBJECT

private slots:
    void findsFilesAndFolders();
    void pathsThatCannotBeThereAreAbsent_data();
    void pathsThatCannotBeThereAreAbsent();
};

void ExistenceTest::findsFilesAndFolders()
{
    const QTemporaryDir folder;
    writeFile(folder.filePath("empty"), "");
    QVERIFY(platform::exists(folder.path().toStdString()));
    QVERIFY(platform::exists(folder.filePath("empty").toStdString()));
}

void ExistenceTest::pathsThatCannotBeThereAreAbsent_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("empty path") << "";
    QTest::newRow("missing file") << "%1/missing";
    QTest::newRow("missing parent") << "%1/missing/file";
    QTest::newRow("file as parent") << "%1/file/below";
    QTest::newRow("name too long") << "%1/" + QString(300, 'x');
}

void ExistenceTest::pathsThatCannotBeThereAreAbsent()
{
    QFETCH(QString, name);
    const QTemporaryDir folder;
    writeFile(folder.filePath("file"), "");
    QVERIFY(!platform::exists(name.replace("%1", folder.path()).toStdString()));
}

TARNEL_TEST_MAIN(ExistenceTest)
#include "existence_test.moc"
