#include "tests/deck/deck_test_files.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QTest>

using DeckTestFiles::SChildEnd;

namespace {

using Rows = std::vector<DeckRow>;

QString pathOf(const DeckDescription& description)
{
    return QString::fromStdString(DeckTestFiles::newDeck(description).deck.string());
}

/// A deck of format 14 with interactions and a bonding whose flag is given.
DeckDescription bondedDeck(bool torqueFeedback)
{
    DeckDescription deck = plainDeck(14);
    BondingModel bonding;
    bonding.data = Rows{{{"glass<>glass"}, {1.0, 2.0, 3.0, 4.0, 5.0}}};
    bonding.startTime = 0.5;
    bonding.torqueFeedback = torqueFeedback;
    deck.surfaceSurface.bonding = bonding;
    return deck;
}

SChildEnd play(const QStringList& arguments)
{
    return DeckTestFiles::runProgram(QStringLiteral(TARNEL_WINDOW_PROBE), arguments);
}

/// Whether the child ended by the abort of std::terminate with that text of an exception.
bool abortedWith(const SChildEnd& end, const QByteArray& what)
{
    return end.aborted && end.error.contains("what():  " + what + "\n");
}

} // namespace

/// The ends that nothing catches, met by clicks in the real window of a child process.
class CUncaughtEndsTest : public QObject
{
    Q_OBJECT

private slots:
    void aDeckWithAModelWithoutLimitsEndsOnThePage_data();
    void aDeckWithAModelWithoutLimitsEndsOnThePage();
    void addingToATrueFlagEnds();
    void togglingAVarianceOfAFalseFlagEnds();
    void aGoodDeckEndsNothing();
};

void CUncaughtEndsTest::aDeckWithAModelWithoutLimitsEndsOnThePage_data()
{
    QTest::addColumn<QString>("deck");
    DeckDescription spray = plainDeck(14);
    spray.surfaceSurface.sprayCoating = Rows{{{"glass"}, {1.0}}};
    QTest::newRow("spray coating between particles") << pathOf(spray);
    DeckDescription geometrySpray = plainDeck(14);
    geometrySpray.surfaceGeometry.sprayCoating = Rows{{{"glass"}, {1.0}}};
    QTest::newRow("spray coating at geometry") << pathOf(geometrySpray);
    DeckDescription archard = plainDeck(14);
    archard.surfaceGeometry.archardWear = Rows{{{"glass", "steel"}, {1.0}}};
    archard.surfaceGeometry.archardDeformation = true;
    QTest::newRow("Archard deformation") << pathOf(archard);
    DeckDescription oka = plainDeck(14);
    oka.surfaceGeometry.okaWear = Rows{{{"glass", "steel"}, {1.0, 2.0, 3.0}}};
    oka.surfaceGeometry.okaDeformation = false;
    QTest::newRow("Oka wear") << pathOf(oka);
}

void CUncaughtEndsTest::aDeckWithAModelWithoutLimitsEndsOnThePage()
{
    QFETCH(QString, deck);
    const SChildEnd end = play({deck});
    QVERIFY2(abortedWith(end, "invalid map<K, T> key"), end.error.constData());
    QCOMPARE(end.output, QByteArray("loaded\n"));
}

void CUncaughtEndsTest::addingToATrueFlagEnds()
{
    const SChildEnd end = play({pathOf(bondedDeck(true)), "add", "Bonding Torque Feedback"});
    QVERIFY2(abortedWith(end, "bad variant access"), end.error.constData());
    QCOMPARE(end.output, QByteArray("loaded\nentered\nchosen\n"));
}

void CUncaughtEndsTest::togglingAVarianceOfAFalseFlagEnds()
{
    const SChildEnd end = play({pathOf(bondedDeck(false)), "toggle", "Bonding Torque Feedback"});
    QVERIFY2(abortedWith(end, "bad variant access"), end.error.constData());
    QCOMPARE(end.output, QByteArray("loaded\nentered\nchosen\nadded\n"));
}

void CUncaughtEndsTest::aGoodDeckEndsNothing()
{
    const SChildEnd end = play({pathOf(bondedDeck(true)), "add", "Bonding Start Time"});
    QVERIFY2(!end.aborted && end.exitCode == 0, end.error.constData());
    QCOMPARE(end.output, QByteArray("loaded\nentered\nchosen\nadded\n"));
}

TARNEL_TEST_MAIN(CUncaughtEndsTest)
#include "uncaught_ends_test.moc"
