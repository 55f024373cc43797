#include "tests/adapters/adapter_case.h"

#include "tests/support/test_environment.h"

#include <QApplication>
#include <QtTest>

#include <cmath>

// What one contact does, measured on the engine's own output, against what the deck says.

namespace {

/// The only result of a single contact, with gravel and steel as the deck has them.
double measured(const QString& experiment, const std::vector<double>& particles,
                const std::vector<double>& walls, const QString& title)
{
    const QTemporaryDir folder;
    DeckDescription deck = SampleCase::deckOf(0.5, 0.5, 0.1);
    deck.interactions = {{{pairKey("Gravel", "Gravel")}, particles},
                         {{pairKey("Gravel", "Steel")}, walls}};
    AdapterCase::write(deck, experiment, folder.path());
    const SProgramEnd end =
        AdapterCase::run(folder.path(), {"-r", "2", "-w", "0.05", "-e", "case.dfg"});
    if (end.exitCode != 0) {
        qWarning("%s", end.errors.constData());
        return std::nan("");
    }
    return AdapterCase::results(folder.path()).value(title, std::nan(""));
}

} // namespace

class SingleContactTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void aCollisionKeepsTheDecksRestitution_data();
    void aCollisionKeepsTheDecksRestitution();
    void aSlidingSphereIsSlowedByTheDecksFriction_data();
    void aSlidingSphereIsSlowedByTheDecksFriction();
    void aRollingSphereIsSlowedByTheDecksFriction_data();
    void aRollingSphereIsSlowedByTheDecksFriction();
    void bothRollingModelsHaveTheSameSize();
    void rollingThatIsOffAtTheWallsSlowsNothing();
};

void SingleContactTest::initTestCase()
{
    if (!AdapterCase::engineIsThere()) {
        QSKIP("LIGGGHTS is not installed.");
    }
}

void SingleContactTest::aCollisionKeepsTheDecksRestitution_data()
{
    QTest::addColumn<QString>("against");
    QTest::addColumn<double>("restitution");
    for (const char* against : {"particles", "floor"}) {
        for (const double restitution : {0.2, 0.5, 0.9}) {
            QTest::addRow("%s %g", against, restitution) << against << restitution;
        }
    }
}

void SingleContactTest::aCollisionKeepsTheDecksRestitution()
{
    QFETCH(QString, against);
    QFETCH(double, restitution);
    // The other pair has another value, so that taking the wrong one shows.
    const std::vector<double> wanted{restitution, 0.5, 0.1};
    const std::vector<double> other{0.7, 0.5, 0.1};
    const bool among = against == QLatin1String("particles");
    const double found = measured(AdapterCase::experiment("collision", {"against = " + against}),
                                  among ? wanted : other, among ? other : wanted, "Restitution");
    QVERIFY2(std::abs(found / restitution - 1.0) < 0.005, qPrintable(QString::number(found)));
}

void SingleContactTest::aSlidingSphereIsSlowedByTheDecksFriction_data()
{
    QTest::addColumn<double>("friction");
    for (const double friction : {0.1, 0.3, 0.6}) {
        QTest::addRow("%g", friction) << friction;
    }
}

void SingleContactTest::aSlidingSphereIsSlowedByTheDecksFriction()
{
    QFETCH(double, friction);
    const double found = measured(AdapterCase::experiment("sliding sphere"), {0.5, 0.9, 0.0},
                                  {0.5, friction, 0.0}, "Static friction");
    QVERIFY2(std::abs(found / friction - 1.0) < 0.02, qPrintable(QString::number(found)));
}

void SingleContactTest::aRollingSphereIsSlowedByTheDecksFriction_data()
{
    QTest::addColumn<double>("friction");
    for (const double friction : {0.02, 0.1, 0.3}) {
        QTest::addRow("%g", friction) << friction;
    }
}

void SingleContactTest::aRollingSphereIsSlowedByTheDecksFriction()
{
    QFETCH(double, friction);
    const double found = measured(AdapterCase::experiment("rolling sphere"), {0.5, 0.9, 0.4},
                                  {0.5, 0.9, friction}, "Rolling friction");
    QVERIFY2(std::abs(found / friction - 1.0) < 0.03, qPrintable(QString::number(found)));
}

void SingleContactTest::bothRollingModelsHaveTheSameSize()
{
    const double found =
        measured(AdapterCase::experiment("rolling sphere", {QStringLiteral("rolling model = cdt")}),
                 {0.5, 0.9, 0.4}, {0.5, 0.9, 0.1}, "Rolling friction");
    QVERIFY2(std::abs(found / 0.1 - 1.0) < 0.03, qPrintable(QString::number(found)));
}

void SingleContactTest::rollingThatIsOffAtTheWallsSlowsNothing()
{
    const QTemporaryDir folder;
    DeckDescription deck = SampleCase::deckOf(0.5, 0.5, 0.3);
    deck.surfaceGeometry.standardRollingFriction = false;
    AdapterCase::write(deck, AdapterCase::experiment("rolling sphere"), folder.path());
    QCOMPARE(AdapterCase::run(folder.path(), {"-r", "0.3", "-e", "case.dfg"}).exitCode, 0);
    const QMap<QString, double> results = AdapterCase::results(folder.path());
    QVERIFY(results.contains("Rolling friction"));
    QVERIFY(results["Rolling friction"] < 0.001);
}

TARNEL_TEST_MAIN(SingleContactTest)
#include "single_contact_test.moc"
