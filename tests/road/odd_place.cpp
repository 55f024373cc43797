#include "tests/road/odd_place.h"

#include "deck/deck_store.h"
#include "samples/deck_maker.h"
#include "tests/road/window_road.h"
#include "tests/support/job_maker.h"
#include "tests/support/native.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

namespace {

/// What the stand-in's CSVs of two cases come to.
const QByteArray collated = "0,TIME:,0.1,\n0,TIME,0.1,\n0,Query 1,1,\n\n"
                            "1,TIME:,0.1,\n1,TIME,0.1,\n1,Query 1,1,\n\n";

void require(bool done, const QString& what)
{
    if (!done) {
        qFatal("%s doesn't come about", qPrintable(what));
    }
}

/// The library that writes decks minds names outside ASCII, so they come by renaming.
void moveDeck(const QString& folder, const QString& name)
{
    const QTemporaryDir written;
    writeDeck(plainDeck(14), written.path().toStdString(), "bed");
    for (const char* ending : {".zek", ".ynd", "_data"}) {
        const QString to = folder + QLatin1Char('/') + name + QLatin1String(ending);
        require(QDir().rename(written.filePath(QStringLiteral("bed") + QLatin1String(ending)), to),
                to);
    }
}

} // namespace

SOddPlace OddPlace::in(const QString& folder, const QString& deckName)
{
    for (const char* part : {"/deck", "/jobs", "/bin"}) {
        require(QDir().mkpath(folder + QLatin1String(part)), folder);
    }
    const QString simulator = folder + QStringLiteral("/bin/simulator") + Native::programSuffix();
    require(QFile::copy(QStringLiteral(TARNEL_FAKE_SIMULATOR), simulator), simulator);
    moveDeck(folder + QStringLiteral("/deck"), deckName);
    return {folder + QStringLiteral("/deck/%1.zek").arg(deckName), folder + QStringLiteral("/jobs"),
            simulator};
}

QStringList OddPlace::filesBelow(const QString& folder)
{
    QStringList files;
    QDirIterator walk(folder, QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        files.append(walk.next());
    }
    files.sort();
    return files;
}

void OddPlace::requireWholeRoad(const SOddPlace& place, const QString& deckName)
{
    CWindowRoad road(place.simulator);
    QVERIFY(road.chooseDeck(place.deck));
    QCOMPARE(CDeckStore::instance()->creatorData().front().m_sName, deckName.toStdString());
    QCOMPARE(CDeckStore::instance()->creatorData().front().m_interactions.size(), std::size_t(2));
    road.vary(Cases);
    road.generate(place.save);
    QCOMPARE(QDir::fromNativeSeparators(road.textOf(QStringLiteral("m_leJobLoadLocation"))),
             place.job());
    QCOMPARE(road.rows(), Cases);
    road.start(Cases);
    QVERIFY(road.hasSucceeded(0) && road.hasSucceeded(1));
    const QByteArray arguments = readFile(place.root() + QStringLiteral("/Job1/arguments"));
    const QString input =
        QDir::fromNativeSeparators(QString::fromUtf8(arguments).section(QLatin1Char('|'), 2, 2));
    QVERIFY2(input.endsWith(QStringLiteral("/Job1/%1%2.zek").arg(deckName).arg(1)),
             qPrintable(input));
    QVERIFY2(QFileInfo(input).isAbsolute() && QFileInfo::exists(input), qPrintable(input));
    road.collate(place.root());
    QCOMPARE(Native::fromTextFile(readFile(place.root() + QStringLiteral("/CollatedResults.csv"))),
             collated);
}
