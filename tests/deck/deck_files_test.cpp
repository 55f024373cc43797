#include "deck/deck_files.h"

#include "platform/paths.h"
#include "tests/support/test_environment.h"

#include <QtTest>

class TestDeckFiles : public QObject
{
    Q_OBJECT

private slots:
    void pathsFollowFromTheDecksPath_data()
    {
        QTest::addColumn<QString>("deck");
        QTest::addColumn<QString>("dataFile");
        QTest::addColumn<QString>("companion");
        QTest::addColumn<QString>("name");
        QTest::newRow("plain") << "/decks/hopper.zek"
                               << "/decks/hopper_data/0.h5"
                               << "/decks/hopper.ynd"
                               << "hopper";
        QTest::newRow("twice") << "/decks/run.zek.old.zek"
                               << "/decks/run_data/0.h5.old.zek"
                               << "/decks/run.ynd.old.ynd"
                               << "run.old";
        QTest::newRow("in a folder's name") << "/a.zek/b.zek"
                                            << "/a_data/0.h5/b.zek"
                                            << "/a.ynd/b.ynd"
                                            << "b";
        QTest::newRow("backslashes") << "D:\\decks\\hopper.zek"
                                     << "D:\\decks\\hopper_data/0.h5"
                                     << "D:\\decks\\hopper.ynd"
                                     << "hopper";
        QTest::newRow("removal makes no new one") << "/a.z.zekek"
                                                  << "/a.z_data/0.h5ek"
                                                  << "/a.z.yndek"
                                                  << "a.zek";
        QTest::newRow("upper case") << "/a.ZEK"
                                    << "/a.ZEK"
                                    << "/a.ZEK"
                                    << "a.ZEK";
    }
    void pathsFollowFromTheDecksPath()
    {
        QFETCH(QString, deck);
        QFETCH(QString, dataFile);
        QFETCH(QString, companion);
        QFETCH(QString, name);
        const std::string text = deck.toStdString();
        const std::string native = platform::withNativeSeparators(dataFile.toStdString());
        QCOMPARE(DeckFiles::dataFile(text), native);
        QCOMPARE(DeckFiles::companion(deck, ".ynd"), companion);
        QCOMPARE(QString::fromStdString(DeckFiles::deckName(text)), name);
    }
};

TARNEL_TEST_MAIN(TestDeckFiles)
#include "deck_files_test.moc"
