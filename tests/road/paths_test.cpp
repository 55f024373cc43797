#include "deck/deck_store.h"
#include "platform/interpreter.h"
#include "tests/road/odd_place.h"
#include "tests/road/window_road.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QtTest>

using namespace OddPlace;

namespace {

/// The longest path in a place: the case's deck or the data beside it.
QString longestPath(const QString& folder, const QString& deckName)
{
    return folder + QStringLiteral("/jobs/JobSpec/JobFileLocation/Job1/%1").arg(deckName) +
           QStringLiteral("1_data/0.h5");
}

} // namespace

/// Folders and files of every kind of name, from the deck to the combined file, through the window.
class PathsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_oldFolder = QDir::currentPath(); }
    void init();
    void cleanup() { QDir::setCurrent(m_oldFolder); }

    void blanks();
    void charactersThatAShellMinds();
    void umlauts();
    void chineseCharacters();
    void folderOfTwoHundredCharacters();
    void deckOfTwoHundredCharacters();
    void extensionInAFolderOfTheDeckIsBadData();
    void extensionInAFolderOfTheJobIsNoValidData();
    void relativePaths();

private:
    static void requireWhatTheLocaleAllows(const SOddPlace& place, const QString& deckName);
    QString folder(const QString& name) const { return m_root->filePath(name); }
    QString twoHundred(char letter, const QString& longest) const;

    std::unique_ptr<QTemporaryDir> m_root;
    QString m_oldFolder;
};

void PathsTest::init()
{
    m_root = std::make_unique<QTemporaryDir>();
    qputenv("TARNEL_FAKE", "csv;arguments");
}

/// Where the local bytes of a path aren't those of UTF-8 the deck isn't found, and nothing begins.
void PathsTest::requireWhatTheLocaleAllows(const SOddPlace& place, const QString& deckName)
{
    if (place.deck.toLocal8Bit() == place.deck.toUtf8()) {
        requireWholeRoad(place, deckName);
        return;
    }
    QVERIFY(platform::speaksBatch());
    CWindowRoad road(place.simulator);
    QVERIFY(!road.chooseDeck(place.deck));
    QVERIFY(CDeckStore::instance()->creatorData().empty());
    QCOMPARE(filesBelow(place.save), QStringList());
}

void PathsTest::blanks()
{
    // Windows drops one at the end of a name.
    const QString name = QStringLiteral("a  place with blanks ");
    requireWholeRoad(
        in(folder(platform::speaksBatch() ? name.trimmed() : name), QStringLiteral("a bed")),
        QStringLiteral("a bed"));
}

void PathsTest::charactersThatAShellMinds()
{
    QString name = QStringLiteral("it's $HOME & (50 %) `#1` ^~! =+,;[x]{y} @z");
    if (!platform::speaksBatch()) {
        name += QStringLiteral(" <z> *?\\");
    }
    requireWholeRoad(in(folder(name)));
}

void PathsTest::umlauts()
{
    const QString name = QString::fromUtf8("Sch\xc3\xbcttgut \xc3\xa4\xc3\xb6\xc3\x9f");
    requireWhatTheLocaleAllows(in(folder(name), name), name);
}

void PathsTest::chineseCharacters()
{
    const QString name = QString::fromUtf8("\xe6\xa0\xa1\xe5\x87\x86\xe9\xa2\x97\xe7\xb2\x92");
    requireWhatTheLocaleAllows(in(folder(name), name), name);
}

/// A name of so many letters, on Windows of as many as its limit of paths leaves where the longest
/// path is `longest` without the name.
QString PathsTest::twoHundred(char letter, const QString& longest) const
{
    constexpr int longestOfWindows = 259;
    const int left = platform::speaksBatch() ? longestOfWindows - longest.size() : 200;
    return QString(qMin(200, left), QLatin1Char(letter));
}

void PathsTest::folderOfTwoHundredCharacters()
{
    const QString longest = longestPath(folder(QString()), QStringLiteral("bed"));
    requireWholeRoad(in(folder(twoHundred('f', longest))));
}

void PathsTest::deckOfTwoHundredCharacters()
{
    const QString place = folder(QStringLiteral("p"));
    const QString name = twoHundred('d', longestPath(place, QString()));
    requireWholeRoad(in(place, name), name);
}

void PathsTest::extensionInAFolderOfTheDeckIsBadData()
{
    const SOddPlace place = in(folder(QStringLiteral("all.zek decks")));
    CWindowRoad road(place.simulator);
    QVERIFY(road.chooseDeck(place.deck));
    QVERIFY(CDeckStore::instance()->creatorData().front() == CCreatorData("bad data"));
}

void PathsTest::extensionInAFolderOfTheJobIsNoValidData()
{
    const SOddPlace place = in(folder(QStringLiteral("p")));
    const QString save = folder(QStringLiteral("all.zek jobs"));
    QVERIFY(QDir().mkpath(save));
    CWindowRoad road(place.simulator);
    QVERIFY(road.chooseDeck(place.deck));
    road.vary(Cases);
    road.generate(save);
    QCOMPARE(int(road.dialogs().messages().size()), 1);
    QCOMPARE(road.dialogs().messages().front().text,
             QStringLiteral("Jobspec does not contain valid h5 file"));
    QCOMPARE(road.rows(), 0);
    QVERIFY(QFileInfo::exists(save + QStringLiteral("/JobSpec/bed_data/0.h5")));
}

void PathsTest::relativePaths()
{
    const SOddPlace place = in(folder(QStringLiteral("here")));
    QVERIFY(QDir::setCurrent(folder(QStringLiteral("here"))));
    requireWholeRoad({QStringLiteral("deck/bed.zek"), QStringLiteral("jobs"), place.simulator});
}

int main(int argc, char** argv)
{
    // Names of files are those of the user's locale.
    qputenv("LC_ALL", "C.UTF-8");
    QApplication application(argc, argv);
    CTestEnvironment environment;
    PathsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "paths_test.moc"
