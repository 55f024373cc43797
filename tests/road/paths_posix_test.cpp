#include "deck/deck_store.h"
#include "tests/road/odd_place.h"
#include "tests/road/window_road.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

#include <filesystem>

using namespace OddPlace;
namespace fs = std::filesystem;

/// Names and links that only POSIX has.
class PathsPosixTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void deckWhoseCasesNamesAreTooLongFailsAtTheirFolder();
    void doubleQuotesFailTheCasesAndNothingElse();
    void symbolicLinks();
    void linkToNothingIsNoDeck();

private:
    QString folder(const QString& name) const { return m_root->filePath(name); }

    std::unique_ptr<QTemporaryDir> m_root;
};

void PathsPosixTest::init()
{
    m_root = std::make_unique<QTemporaryDir>();
    qputenv("TARNEL_FAKE", "csv;arguments");
}

/// The job's "<deck>_data" still is a name, the case's "<deck>0_data" is one letter too long. On
/// Windows the limit of the whole path comes first.
void PathsPosixTest::deckWhoseCasesNamesAreTooLongFailsAtTheirFolder()
{
    const QString name(250, QLatin1Char('d'));
    const SOddPlace place = in(folder(QStringLiteral("p")), name);
    CWindowRoad road(place.simulator);
    QVERIFY(road.chooseDeck(place.deck));
    road.vary(Cases);
    road.generate(place.save);
    QCOMPARE(road.rows(), Cases);
    try {
        QMetaObject::invokeMethod(road.submitPage(), "runCasesLocally");
        QFAIL("nothing was raised");
    } catch (const fs::filesystem_error& error) {
        QVERIFY2(QByteArray(error.what()).contains("create_directory"), error.what());
    }
    QVERIFY(!QFileInfo::exists(place.root() + QStringLiteral("/Job1")));
}

/// A command text is split at its quotes. No file of Windows can have one in its name.
void PathsPosixTest::doubleQuotesFailTheCasesAndNothingElse()
{
    const SOddPlace place = in(folder(QStringLiteral("a \"quoted\" place")));
    CWindowRoad road(place.simulator);
    QVERIFY(road.chooseDeck(place.deck));
    road.vary(Cases);
    road.generate(place.save);
    QCOMPARE(road.rows(), Cases);
    road.start();
    QVERIFY(road.hasFailed(0) && road.hasFailed(1));
    QVERIFY(QFileInfo::exists(place.root() + QStringLiteral("/Job1/bed1_data/0.h5")));
}

/// The deck, its data folder, the save location and the simulator are links; the job holds files.
void PathsPosixTest::symbolicLinks()
{
    const SOddPlace real = in(folder(QStringLiteral("real")));
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

void PathsPosixTest::linkToNothingIsNoDeck()
{
    const SOddPlace place = in(folder(QStringLiteral("p")));
    const QString link = folder(QStringLiteral("bed.zek"));
    fs::create_symlink("/no/such/bed.zek", link.toStdString());
    CWindowRoad road(place.simulator);
    QVERIFY(!road.chooseDeck(link));
    QVERIFY(CDeckStore::instance()->creatorData().empty());
}

TARNEL_TEST_MAIN(PathsPosixTest)
#include "paths_posix_test.moc"
