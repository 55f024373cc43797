#include "results/result_files.h"

#include "platform/interpreter.h"
#include "tests/results/result_tree.h"
#include "tests/support/native.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QtTest>

#include <algorithm>
#include <functional>
#include <system_error>

namespace fs = std::filesystem;

class CResultFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void findsCsvFilesAtEveryDepth();
    void passesOverOtherExtensionsAndFolders();
    void yieldsTheFoldersOwnFilesLast();
    void yieldsTheFoldersOwnFilesLastBehindATrailingSeparator();
    void keepsTheOrderOfTheDirectoriesOtherwise();
    void doesNotFollowLinksToFolders();
    void aLinkThatLeadsNowhereIsNoError();
    void aScriptAtAnyDepthIsFound();
    void aFolderThatCannotBeOpenedFailsTheConstructor();
    void aSubfolderThatCannotBeOpenedFailsTheIncrement();
    void aLinkToItselfFailsTheStatus();

private:
    QStringList found() const;
    static QString failureOf(const std::function<void()>& walk);

    QTemporaryDir m_root;
    QString m_folder;
};

namespace {

fs::path pathOf(const QString& text)
{
    return fs::path(text.toStdString());
}

} // namespace

void CResultFilesTest::init()
{
    m_folder = QDir(m_root.path()).filePath(QString::fromLatin1(QTest::currentTestFunction()));
    QDir().mkpath(m_folder);
}

QStringList CResultFilesTest::found() const
{
    QStringList names;
    for (const fs::path& file : ResultFiles::csvFiles(pathOf(m_folder))) {
        names << QString::fromStdString(file.lexically_relative(pathOf(m_folder)).generic_string());
    }
    return names;
}

QString CResultFilesTest::failureOf(const std::function<void()>& walk)
{
    try {
        walk();
    } catch (const fs::filesystem_error& error) {
        return QString::fromLocal8Bit(error.what()).replace("\\", "/");
    }
    return QStringLiteral("no failure");
}

void CResultFilesTest::findsCsvFilesAtEveryDepth()
{
    putFile(m_folder, QStringLiteral("Job1/a.csv"));
    putFile(m_folder, QStringLiteral("Job2/deep/deeper/b.csv"));
    QStringList names = found();
    names.sort();
    QCOMPARE(names,
             QStringList({QStringLiteral("Job1/a.csv"), QStringLiteral("Job2/deep/deeper/b.csv")}));
}

void CResultFilesTest::passesOverOtherExtensionsAndFolders()
{
    for (const char* name : {"Job1/a.CSV", "Job1/csv", "Job1/.csv", "Job1/a.csv.txt", "Job1/acsv",
                             "Job1/folder.csv/nothing.txt"}) {
        putFile(m_folder, QString::fromLatin1(name));
    }
    QCOMPARE(found(), QStringList());
}

void CResultFilesTest::yieldsTheFoldersOwnFilesLast()
{
    for (const char* name : {"CollatedResults.csv", "a.csv", "Job1/a.csv", "z.csv", "Job2/b.csv",
                             "Job3/c.csv", "b.csv"}) {
        putFile(m_folder, QString::fromLatin1(name));
    }
    const QStringList names = found();
    QCOMPARE(names.size(), 7);
    for (int index = 0; index < names.size(); ++index) {
        QCOMPARE(names[index].contains(QLatin1Char('/')), index < 3);
    }
}

void CResultFilesTest::yieldsTheFoldersOwnFilesLastBehindATrailingSeparator()
{
    putFile(m_folder, QStringLiteral("a.csv"));
    putFile(m_folder, QStringLiteral("z.csv"));
    putFile(m_folder, QStringLiteral("Job1/b.csv"));
    m_folder += QLatin1Char('/');
    QCOMPARE(found().constFirst(), QStringLiteral("Job1/b.csv"));
}

void CResultFilesTest::keepsTheOrderOfTheDirectoriesOtherwise()
{
    for (int number = 0; number < 40; ++number) {
        putFile(m_folder, QStringLiteral("Job%1/sub/x.csv").arg(number * 7));
        putFile(m_folder, QStringLiteral("Job%1/y.csv").arg(number * 7));
    }
    std::vector<fs::path> expected;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(pathOf(m_folder))) {
        if (entry.path().extension() == ".csv") {
            expected.push_back(entry.path());
        }
    }
    QVERIFY(ResultFiles::csvFiles(pathOf(m_folder)) == expected);
}

void CResultFilesTest::doesNotFollowLinksToFolders()
{
    if (platform::speaksBatch()) {
        QSKIP("neither the C++ library there nor Wine makes links");
    }
    putFile(m_folder, QStringLiteral("Job1/a.csv"));
    fs::create_directory_symlink(pathOf(m_folder), pathOf(m_folder) / "Job2");
    QCOMPARE(found(), QStringList(QStringLiteral("Job1/a.csv")));
}

void CResultFilesTest::aLinkThatLeadsNowhereIsNoError()
{
    if (platform::speaksBatch()) {
        QSKIP("neither the C++ library there nor Wine makes links");
    }
    fs::create_symlink("nothing there", pathOf(m_folder) / "a.csv");
    QCOMPARE(found(), QStringList());
}

void CResultFilesTest::aScriptAtAnyDepthIsFound()
{
    putFile(m_folder, QStringLiteral("Job1/deep/notes.pyc"));
    QVERIFY(!ResultFiles::hasScript(pathOf(m_folder)));
    putFile(m_folder, QStringLiteral("Job1/deep/analysis.py"));
    putFile(m_folder, QStringLiteral("Job2/other.txt"));
    QVERIFY(ResultFiles::hasScript(pathOf(m_folder)));
}

void CResultFilesTest::aFolderThatCannotBeOpenedFailsTheConstructor()
{
    const fs::path missing = pathOf(m_folder) / "missing";
    const QString failure = failureOf([&missing] { ResultFiles::csvFiles(missing); });
    QVERIFY2(failure.contains(
                 QLatin1String("recursive_directory_iterator::recursive_directory_iterator")),
             qPrintable(failure));
    QVERIFY(failure.contains(QLatin1String("/missing")));
}

void CResultFilesTest::aSubfolderThatCannotBeOpenedFailsTheIncrement()
{
    putFile(m_folder, QStringLiteral("Job1/a.csv"));
    const fs::path folder = pathOf(m_folder);
    QString failure;
    {
        const CClosedFolder closed(m_folder + QStringLiteral("/Job1"));
        failure = failureOf([&folder] { ResultFiles::hasScript(folder); });
    }
    QVERIFY2(failure.contains(QLatin1String("recursive_directory_iterator::operator++")),
             qPrintable(failure));
    QVERIFY(failure.contains(QLatin1String("/Job1")));
}

void CResultFilesTest::aLinkToItselfFailsTheStatus()
{
    if (platform::speaksBatch()) {
        QSKIP("neither the C++ library there nor Wine makes links");
    }
    const fs::path link = pathOf(m_folder) / "loop";
    fs::create_symlink("loop", link);
    const QString failure = failureOf([this] { ResultFiles::csvFiles(pathOf(m_folder)); });
    QVERIFY2(failure.contains(QLatin1String(" status: ")), qPrintable(failure));
    QVERIFY(failure.contains(QLatin1String("/loop")));
}

TARNEL_TEST_MAIN(CResultFilesTest)
#include "result_files_test.moc"
