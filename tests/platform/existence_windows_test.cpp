#include "platform/existence.h"

#include "tests/support/job_maker.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>

#include <windows.h>

namespace fs = std::filesystem;

/// What the error numbers of Windows make of a path.
class ExistenceWindowsTest : public QObject
{
    Q_OBJECT

private slots:
    void theseErrorsSayThatItIsNotThere_data();
    void theseErrorsSayThatItIsNotThere();
    void otherErrorsNameTheOperationAndThePath();
    void narrowTextIsTakenInTheCodePage();
};

namespace {

/// The error with which the system answers for the path, 0 where it is there.
DWORD errorOf(const QString& path)
{
    WIN32_FILE_ATTRIBUTE_DATA attributes = {};
    const auto* wide = reinterpret_cast<const wchar_t*>(path.utf16());
    return ::GetFileAttributesExW(wide, GetFileExInfoStandard, &attributes) != 0 ? 0
                                                                                 : ::GetLastError();
}

} // namespace

void ExistenceWindowsTest::theseErrorsSayThatItIsNotThere_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("error");
    QTest::newRow("file not found") << "%1/missing" << int(ERROR_FILE_NOT_FOUND);
    QTest::newRow("path not found") << "%1/missing/file" << int(ERROR_PATH_NOT_FOUND);
    QTest::newRow("invalid name") << "%1/a?b" << int(ERROR_INVALID_NAME);
}

void ExistenceWindowsTest::theseErrorsSayThatItIsNotThere()
{
    QFETCH(QString, name);
    QFETCH(int, error);
    const QTemporaryDir folder;
    const QString path = name.replace("%1", folder.path());
    QCOMPARE(int(errorOf(path)), error);
    QVERIFY(!platform::exists(path.toStdString()));
}

void ExistenceWindowsTest::otherErrorsNameTheOperationAndThePath()
{
    // A device has no attributes.
    const DWORD error = errorOf(QStringLiteral("NUL"));
    QVERIFY(error != 0);
    try {
        platform::exists("NUL");
        QFAIL("nothing was thrown");
    } catch (const fs::filesystem_error& failure) {
        const QString what = QString::fromUtf8(failure.what());
        QVERIFY2(what.contains(" exists: ") && what.contains("NUL"), qPrintable(what));
        QCOMPARE(failure.code().value(), int(error));
    }
}

void ExistenceWindowsTest::narrowTextIsTakenInTheCodePage()
{
    if (::GetACP() != 1252) {
        QSKIP("the system's code page isn't 1252");
    }
    const QTemporaryDir folder;
    const QString name = folder.path() + QLatin1Char('/') + QChar(0xfc);
    writeFile(name, "");
    QVERIFY(platform::exists(folder.path().toStdString() + "/\xfc"));
    // The bytes of UTF-8 are two other letters.
    QVERIFY(!platform::exists(name.toStdString()));
}

TARNEL_TEST_MAIN(ExistenceWindowsTest)
#include "existence_windows_test.moc"
