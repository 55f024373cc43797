#include "deck/app_settings.h"
#include "deck/deck_store.h"
#include "samples/deck_maker.h"
#include "tests/road/window_road.h"
#include "tests/support/faulty_places.h"
#include "tests/support/job_maker.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <H5Cpp.h>

#include <filesystem>

namespace fs = std::filesystem;

namespace {

constexpr int cases = 2;

/// What the stand-in's CSVs of two cases come to.
const QByteArray collated = "0,TIME:,0.1,\n0,TIME,0.1,\n0,Query 1,1,\n\n"
                            "1,TIME:,0.1,\n1,TIME,0.1,\n1,Query 1,1,\n\n";

/// A folder with a deck, a place for jobs and a simulator in it.
struct SPlace
{
    QString deck;
    QString save;
    QString simulator;

    QString job() const { return save + QStringLiteral("/JobSpec"); }
    QString root() const { return job() + QStringLiteral("/JobFileLocation"); }
};

SPlace placeIn(const QString& folder, const QString& deckName = QStringLiteral("bed"))
{
    for (const char* part : {"/deck", "/jobs", "/bin"}) {
        if (!QDir().mkpath(folder + QLatin1String(part))) {
            qFatal("can't make a folder in %s", qPrintable(folder));
        }
    }
    const QString simulator = folder + QStringLiteral("/bin/simulator");
    writeFile(simulator, "#!/bin/sh\nexec '" TARNEL_FAKE_SIMULATOR "' \"$@\"\n", true);
    const DeckPaths deck = writeDeck(
        plainDeck(14), (folder + QStringLiteral("/deck")).toStdString(), deckName.toStdString());
    return {QString::fromStdString(deck.deck.string()), folder + QStringLiteral("/jobs"),
            simulator};
}

QStringList filesBelow(const QString& folder)
{
    QStringList files;
    for (const fs::directory_entry& entry :
         fs::recursive_directory_iterator(folder.toStdString())) {
        files.append(QString::fromStdString(entry.path().string()));
    }
    files.sort();
    return files;
}

} // namespace

/// Folders and files of every kind of name, from the deck to the combined file, through the window.
class PathsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void blanks();
    void charactersThatAShellMinds();
    void umlauts();
    void chineseCharacters();
    void folderOfTwoHundredCharacters();
    void deckOfTwoHundredCharacters();
    void deckWhoseCasesNamesAreTooLongFailsAtTheirFolder();
    void doubleQuotesFailTheCasesAndNothingElse();
    void extensionInAFolderOfTheDeckIsBadData();
    void extensionInAFolderOfTheJobIsNoValidData();
    void relativePaths();
    void jobOnAReadOnlyFileSystemIsNotOpened();
    void saveLocationOnAReadOnlyFileSystemIsRefused();
    void symbolicLinks();
    void linkToNothingIsNoDeck();

private:
    void requireWholeRoad(const SPlace& place, const QString& deckName = QStringLiteral("bed"));
    QString folder(const QString& name) const;

    std::unique_ptr<QTemporaryDir> m_root;
    QString m_oldFolder;
};

void PathsTest::initTestCase()
{
    qInfo("Read-only file systems: %s", FaultyPlaces::kind());
    m_oldFolder = QDir::currentPath();
}

void PathsTest::init()
{
    m_root = std::make_unique<QTemporaryDir>();
    qputenv("TARNEL_FAKE", "csv;arguments");
}

void PathsTest::cleanup()
{
    QDir::setCurrent(m_oldFolder);
}

QString PathsTest::folder(const QString& name) const
{
    return m_root->filePath(name);
}

/// Deck, job, cases and combined file lie there, under names with those letters.
void PathsTest::requireWholeRoad(const SPlace& place, const QString& deckName)
{
    CWindowRoad road(place.simulator);
    QVERIFY(road.chooseDeck(place.deck));
    QCOMPARE(CDeckStore::instance()->creatorData().front().m_sName, deckName.toStdString());
    QCOMPARE(CDeckStore::instance()->creatorData().front().m_interactions.size(), std::size_t(2));
    road.vary(cases);
    road.generate(place.save);
    QCOMPARE(road.textOf(QStringLiteral("m_leJobLoadLocation")), place.job());
    QCOMPARE(road.rows(), cases);
    road.start(cases);
    QVERIFY(road.hasSucceeded(0) && road.hasSucceeded(1));
    const QByteArray arguments = readFile(place.root() + QStringLiteral("/Job1/arguments"));
    const QString input = QString::fromUtf8(arguments).section(QLatin1Char('|'), 2, 2);
    QVERIFY2(input.endsWith(QStringLiteral("/Job1/%1%2.zek").arg(deckName).arg(1)),
             qPrintable(input));
    QVERIFY2(QFileInfo(input).isAbsolute() && QFileInfo::exists(input), qPrintable(input));
    road.collate(place.root());
    QCOMPARE(readFile(place.root() + QStringLiteral("/CollatedResults.csv")), collated);
}

void PathsTest::blanks()
{
    requireWholeRoad(
        placeIn(folder(QStringLiteral("a  place with blanks ")), QStringLiteral("a bed")),
        QStringLiteral("a bed"));
}

void PathsTest::charactersThatAShellMinds()
{
    const QString name = QStringLiteral("it's $HOME & (50 %) `#1` ^~! =+,[x]{y} <z> *?\\");
    requireWholeRoad(placeIn(folder(name)));
}

void PathsTest::umlauts()
{
    const QString name = QString::fromUtf8("Sch\xc3\xbcttgut \xc3\xa4\xc3\xb6\xc3\x9f");
    requireWholeRoad(placeIn(folder(name), name), name);
}

void PathsTest::chineseCharacters()
{
    const QString name = QString::fromUtf8("\xe6\xa0\xa1\xe5\x87\x86\xe9\xa2\x97\xe7\xb2\x92");
    requireWholeRoad(placeIn(folder(name), name), name);
}

void PathsTest::folderOfTwoHundredCharacters()
{
    requireWholeRoad(placeIn(folder(QString(200, QLatin1Char('f')))));
}

void PathsTest::deckOfTwoHundredCharacters()
{
    const QString name(200, QLatin1Char('d'));
    requireWholeRoad(placeIn(folder(QStringLiteral("p")), name), name);
}

/// The job's "<deck>_data" still is a name, the case's "<deck>0_data" is one letter too long.
void PathsTest::deckWhoseCasesNamesAreTooLongFailsAtTheirFolder()
{
    const QString name(250, QLatin1Char('d'));
    const SPlace place = placeIn(folder(QStringLiteral("p")), name);
    CWindowRoad road(place.simulator);
    QVERIFY(road.chooseDeck(place.deck));
    road.vary(cases);
    road.generate(place.save);
    QCOMPARE(road.rows(), cases);
    try {
        QMetaObject::invokeMethod(road.submitPage(), "runCasesLocally");
        QFAIL("nothing was raised");
    } catch (const fs::filesystem_error& error) {
        QVERIFY2(QByteArray(error.what()).contains("create_directory"), error.what());
    }
    QVERIFY(!QFileInfo::exists(place.root() + QStringLiteral("/Job1")));
}

/// A command text is split at its quotes. No file of Windows can have one in its name.
void PathsTest::doubleQuotesFailTheCasesAndNothingElse()
{
    const SPlace place = placeIn(folder(QStringLiteral("a \"quoted\" place")));
    CWindowRoad road(place.simulator);
    QVERIFY(road.chooseDeck(place.deck));
    road.vary(cases);
    road.generate(place.save);
    QCOMPARE(road.rows(), cases);
    road.start();
    QVERIFY(road.hasFailed(0) && road.hasFailed(1));
    QVERIFY(QFileInfo::exists(place.root() + QStringLiteral("/Job1/bed1_data/0.h5")));
}

void PathsTest::extensionInAFolderOfTheDeckIsBadData()
{
    const SPlace place = placeIn(folder(QStringLiteral("all.zek decks")));
    CWindowRoad road(place.simulator);
    QVERIFY(road.chooseDeck(place.deck));
    QVERIFY(CDeckStore::instance()->creatorData().front() == CCreatorData("bad data"));
}

void PathsTest::extensionInAFolderOfTheJobIsNoValidData()
{
    const SPlace place = placeIn(folder(QStringLiteral("p")));
    const QString save = folder(QStringLiteral("all.zek jobs"));
    QVERIFY(QDir().mkpath(save));
    CWindowRoad road(place.simulator);
    QVERIFY(road.chooseDeck(place.deck));
    road.vary(cases);
    road.generate(save);
    QCOMPARE(int(road.dialogs().messages().size()), 1);
    QCOMPARE(road.dialogs().messages().front().text,
             QStringLiteral("Jobspec does not contain valid h5 file"));
    QCOMPARE(road.rows(), 0);
    QVERIFY(QFileInfo::exists(save + QStringLiteral("/JobSpec/bed_data/0.h5")));
}

void PathsTest::relativePaths()
{
    const SPlace place = placeIn(folder(QStringLiteral("here")));
    QVERIFY(QDir::setCurrent(folder(QStringLiteral("here"))));
    requireWholeRoad({QStringLiteral("deck/bed.zek"), QStringLiteral("jobs"), place.simulator});
}

void PathsTest::jobOnAReadOnlyFileSystemIsNotOpened()
{
    const SPlace place = placeIn(folder(QStringLiteral("p")));
    makeJob(place.save, JobDescription());
    const QStringList before = filesBelow(place.save);
    CWindowRoad road(place.simulator);
    road.set(QStringLiteral("m_leJobLoadLocation"), place.save);
    {
        const CReadOnlyPlace readOnly(place.save.toStdString());
        QVERIFY_EXCEPTION_THROWN(QMetaObject::invokeMethod(road.submitPage(), "loadJobSpec"),
                                 H5::FileIException);
    }
    QCOMPARE(filesBelow(place.save), before);
    QCOMPARE(road.rows(), 0);
    road.load(place.save);
    QCOMPARE(road.rows(), 3);
}

void PathsTest::saveLocationOnAReadOnlyFileSystemIsRefused()
{
    const SPlace place = placeIn(folder(QStringLiteral("p")));
    CWindowRoad road(place.simulator);
    QVERIFY(road.chooseDeck(place.deck));
    road.vary(cases);
    road.set(QStringLiteral("m_leJobSaveLocation"), place.save);
    const CReadOnlyPlace readOnly(place.save.toStdString());
    try {
        QMetaObject::invokeMethod(road.submitPage(), "generateJobSpec");
        QFAIL("nothing was raised");
    } catch (const fs::filesystem_error& error) {
        QVERIFY2(QByteArray(error.what()).contains("create_directory"), error.what());
    }
    QVERIFY(filesBelow(place.save).isEmpty());
}

/// The deck, its data folder, the save location and the simulator are links; the job holds files.
void PathsTest::symbolicLinks()
{
    const SPlace real = placeIn(folder(QStringLiteral("real")));
    const fs::path links = folder(QStringLiteral("links")).toStdString();
    fs::create_directory(links);
    const fs::path decks = fs::path(real.deck.toStdString()).parent_path();
    fs::create_symlink(decks / "bed.zek", links / "bed.zek");
    fs::create_symlink(decks / "bed.ynd", links / "bed.ynd");
    fs::create_symlink(decks / "bed_data", links / "bed_data");
    fs::create_symlink(real.save.toStdString(), links / "jobs");
    fs::create_symlink(real.simulator.toStdString(), links / "simulator");
    const auto linked = [&links](const char* name) {
        return QString::fromStdString((links / name).string());
    };
    requireWholeRoad({linked("bed.zek"), linked("jobs"), linked("simulator")});
    for (const QString& file : filesBelow(real.save)) {
        QVERIFY2(!fs::is_symlink(file.toStdString()), qPrintable(file));
    }
}

void PathsTest::linkToNothingIsNoDeck()
{
    const SPlace place = placeIn(folder(QStringLiteral("p")));
    const QString link = folder(QStringLiteral("bed.zek"));
    fs::create_symlink("/no/such/bed.zek", link.toStdString());
    CWindowRoad road(place.simulator);
    QVERIFY(!road.chooseDeck(link));
    QVERIFY(CDeckStore::instance()->creatorData().empty());
}

int main(int argc, char** argv)
{
    FaultyPlaces::prepare();
    // Names of files are those of the user's locale.
    qputenv("LC_ALL", "C.UTF-8");
    QApplication application(argc, argv);
    CTestEnvironment environment;
    PathsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "paths_test.moc"
