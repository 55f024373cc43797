#include "platform/existence.h"

#include "tests/support/job_maker.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

/// What only rights and links of POSIX make of a path.
class ExistencePosixTest : public QObject
{
    Q_OBJECT

private slots:
    void folderThatMayNotBeSearchedHidesItsFiles();
    void otherFailuresNameTheOperationAndThePath();
};

void ExistencePosixTest::folderThatMayNotBeSearchedHidesItsFiles()
{
    const QTemporaryDir folder;
    writeFile(folder.filePath("file"), "");
    const std::string path = folder.path().toStdString();
    QCOMPARE(::chmod(path.c_str(), 0), 0);
    // Root may search every folder, so somebody else has to look.
    const uid_t user = ::geteuid();
    if (user == 0) {
        QCOMPARE(::seteuid(65534), 0);
    }
    const bool found = platform::exists(path + "/file");
    QCOMPARE(::seteuid(user), 0);
    QCOMPARE(::chmod(path.c_str(), 0700), 0);
    QVERIFY(!found);
}

void ExistencePosixTest::otherFailuresNameTheOperationAndThePath()
{
    const QTemporaryDir folder;
    const QString loop = folder.filePath("loop");
    QVERIFY(QFile::link(loop, loop));
    try {
        platform::exists(loop.toStdString());
        QFAIL("nothing was thrown");
    } catch (const fs::filesystem_error& error) {
        const QString what = QString::fromUtf8(error.what());
        QVERIFY2(what.contains(" exists: ") && what.contains(loop), qPrintable(what));
        QCOMPARE(error.code().value(), ELOOP);
    }
}

TARNEL_TEST_MAIN(ExistencePosixTest)
#include "existence_posix_test.moc"
