#include "app/startup.h"
#include "deck/deck_store.h"
#include "parameters/parameter_entry.h"
#include "tests/load/footprint.h"
#include "tests/load/load_window.h"
#include "tests/support/job_maker.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QListWidget>
#include <QTest>

namespace {

std::string material(int number)
{
    return QStringLiteral("material %1").arg(number, 3, 10, QLatin1Char('0')).toStdString();
}

/// A deck in which every material touches every other and itself.
DeckDescription deckOf(int materials)
{
    DeckDescription deck = plainDeck(13);
    deck.interactions.emplace();
    for (int first = 0; first < materials; ++first) {
        for (int second = first; second < materials; ++second) {
            deck.interactions->push_back(
                {{pairKey(material(first), material(second))}, {0.5, 0.001 * first, 0.02}});
        }
    }
    return deck;
}

} // namespace

class ManyMaterialsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { startup::fillConstants(); }
    void everyPairIsInTheTreeAndInTheJob();

private:
    void showEveryPair(CLoadWindow& window) const;
    void varyTheLastPair(CLoadWindow& window) const;
    void findEveryPairInTheJob(const CLoadWindow& window) const;
    QString ofSize(const char* what) const;

    const int m_materials = sized(40, 300);
    const int m_pairs = m_materials * (m_materials + 1) / 2;
    const std::string m_last = pairKey(material(m_materials - 1), material(m_materials - 1));
};

QString ManyMaterialsTest::ofSize(const char* what) const
{
    return QStringLiteral("%1, %2 pairs").arg(QLatin1String(what)).arg(m_pairs);
}

void ManyMaterialsTest::everyPairIsInTheTreeAndInTheJob()
{
    CLoadWindow window(deckOf(m_materials));
    Footprint::forgetPeak();
    QElapsedTimer clock;
    clock.start();
    window.prepare();
    sayMilliseconds(ofSize("loading a deck and entering all pages"), clock.elapsed());
    showEveryPair(window);
    varyTheLastPair(window);
    window.hand().openTab(QStringLiteral("m_tabSubmitJob"));
    clock.restart();
    window.generate();
    sayMilliseconds(ofSize("generating and loading three cases"), clock.restart());
    window.run(3);
    sayMilliseconds(ofSize("preparing and running three cases"), clock.restart());
    sayFigure(ofSize("peak of the process"), QStringLiteral("%1 KiB").arg(Footprint::peakKiB()));
    findEveryPairInTheJob(window);
}

void ManyMaterialsTest::showEveryPair(CLoadWindow& window) const
{
    CUserHand& hand = window.hand();
    QElapsedTimer clock;
    clock.start();
    hand.openTab(QStringLiteral("m_tabParameterEditor"));
    sayMilliseconds(ofSize("entering the parameters again"), clock.restart());
    hand.chooseProperty({QStringLiteral("Interactions")});
    sayMilliseconds(ofSize("choosing the interactions"), clock.restart());
    auto* const keys = hand.find<QListWidget>(QStringLiteral("m_materialListWidget"));
    QCOMPARE(keys->count(), m_pairs);
    QCOMPARE(keys->item(0)->text(), QStringLiteral("material 000<>material 000"));
    QCOMPARE(keys->item(m_pairs - 1)->text(), QString::fromStdString(m_last));
}

void ManyMaterialsTest::varyTheLastPair(CLoadWindow& window) const
{
    CUserHand& hand = window.hand();
    QElapsedTimer clock;
    clock.start();
    hand.chooseRow(QStringLiteral("m_materialListWidget"), QString::fromStdString(m_last));
    hand.chooseRow(QStringLiteral("m_parameterListWidget"), QStringLiteral("Static Friction"));
    hand.click(QStringLiteral("m_pbAdd"));
    hand.typeValue(1, QStringLiteral("0.9"));
    hand.click(QStringLiteral("m_pbAdd"));
    hand.typeValue(2, QStringLiteral("0.8"));
    sayMilliseconds(ofSize("giving the last pair two values"), clock.elapsed());
    QCOMPARE(hand.textOf(QStringLiteral("m_lblGeneratedCasesNo")), QStringLiteral("3"));
}

void ManyMaterialsTest::findEveryPairInTheJob(const CLoadWindow& window) const
{
    QCOMPARE(window.rows().count(), 3);
    QCOMPARE(window.firstWrongRow(1), -1);
    const QList<QByteArray> lines =
        readFile(window.job() + QStringLiteral("/input_jobID-Matrix.csv")).split('\n');
    constexpr int numberAndOptions = 2;
    for (int line = 1; line <= 3; ++line) {
        QCOMPARE(lines[line].count(',') + 1, 3 * m_pairs + 6 * 7 + numberAndOptions);
    }
    // The first Add takes the deck's own value among the variances.
    const double expected[] = {0.001 * (m_materials - 1), 0.9, 0.8};
    const auto& records = CDeckStore::instance()->creatorData();
    for (std::size_t number = 0; number < 3; ++number) {
        const auto& interactions = records.at(number + 1).m_interactions;
        QCOMPARE(int(interactions.size()), m_pairs);
        QCOMPARE(std::get<1>(interactions.at(m_last)), expected[number]);
    }
}

TARNEL_TEST_MAIN(ManyMaterialsTest)
#include "many_materials_test.moc"
