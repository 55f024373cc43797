#include "adapters/liggghts/deck_values.h"

#include "adapters/liggghts/adapter_error.h"
#include "samples/deck_maker.h"
#include "tests/adapters/adapter_case.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QtTest>

using namespace liggghts;

namespace {

QString complaintAbout(const CCreatorData& deck, const SExperiment& experiment)
{
    try {
        engineValues(deck, experiment);
        return {};
    } catch (const CAdapterError& error) {
        return QString::fromLocal8Bit(error.what());
    }
}

SExperiment heapOf(const QString& furtherLine = {})
{
    return AdapterCase::parsed(AdapterCase::experiment("angle of repose", {furtherLine}));
}

CCreatorData plainRecord()
{
    CCreatorData deck;
    deck.m_interactions = {{"Gravel<>Gravel", {0.4, 0.5, 0.1}}, {"Steel<>Gravel", {0.6, 0.3, 0.2}}};
    return deck;
}

} // namespace

class DeckValuesTest : public QObject
{
    Q_OBJECT

private slots:
    void valuesComeFromTheDeckOnDisk();
    void pairsMayBeNamedInEitherOrder();
    void wallAndFloorMayDiffer();
    void cohesionHasACounterpart();
    void rollingCanBeOffAtTheWalls();
    void whatTheEngineRefusesIsNamedWithItsValue_data();
    void whatTheEngineRefusesIsNamedWithItsValue();
    void aMissingPairIsNamed();
    void everyModelWithoutACounterpartIsNamed();
    void modelsOfOtherMaterialsDoNotCount();
    void aSurfaceEnergyOfZeroIsNoModel();
    void whatIsLeftOutIsNotMissed();
    void onlyModelsCanBeLeftOut();
    void aDeckThatCannotBeReadIsOneSentence();
};

void DeckValuesTest::valuesComeFromTheDeckOnDisk()
{
    const QTemporaryDir folder;
    SampleCase::write(SampleCase::deckOf(0.25, 0.75, 0.125), folder.path());
    const CCreatorData deck = readDeck(folder.filePath("case.zek").toStdString());
    const SEngineValues values = engineValues(deck, heapOf());
    QCOMPARE(values.particles.restitution, 0.25);
    QCOMPARE(values.wall.staticFriction, 0.75);
    QCOMPARE(values.floor.rollingFriction, 0.125);
    QVERIFY(!values.hasCohesion());
}

void DeckValuesTest::pairsMayBeNamedInEitherOrder()
{
    const SEngineValues values = engineValues(plainRecord(), heapOf());
    QCOMPARE(values.particles.restitution, 0.4);
    QCOMPARE(values.wall.restitution, 0.6);
    QCOMPARE(values.wall.staticFriction, 0.3);
}

void DeckValuesTest::wallAndFloorMayDiffer()
{
    CCreatorData deck = plainRecord();
    deck.m_interactions["Gravel<>Mat"] = {0.9, 0.8, 0.7};
    const SEngineValues values = engineValues(deck, heapOf("floor = Mat"));
    QCOMPARE(values.wall.restitution, 0.6);
    QCOMPARE(values.floor.restitution, 0.9);
    QCOMPARE(values.floor.rollingFriction, 0.7);
}

void DeckValuesTest::cohesionHasACounterpart()
{
    CCreatorData deck = plainRecord();
    deck.m_surfaceSurface.m_linearCohesionV2 = {{"Gravel<>Gravel", 1e4}};
    deck.m_surfaceGeometry.m_linearCohesionV2 = {{"Steel<>Gravel", 2e4}};
    const SEngineValues values = engineValues(deck, heapOf());
    QVERIFY(values.hasCohesion());
    QCOMPARE(values.particles.cohesion, 1e4);
    QCOMPARE(values.floor.cohesion, 2e4);
    QVERIFY(!engineValues(deck, heapOf("leave out = Linear Cohesion V2")).hasCohesion());
}

void DeckValuesTest::rollingCanBeOffAtTheWalls()
{
    CCreatorData deck = plainRecord();
    deck.m_surfaceGeometry.m_standardRollingFriction = {"Active", false};
    const SEngineValues values = engineValues(deck, heapOf());
    QCOMPARE(values.particles.rollingFriction, 0.1);
    QCOMPARE(values.wall.rollingFriction, 0.0);
    deck.m_surfaceGeometry.m_standardRollingFriction = {"Active", true};
    QCOMPARE(engineValues(deck, heapOf()).wall.rollingFriction, 0.2);
}

void DeckValuesTest::whatTheEngineRefusesIsNamedWithItsValue_data()
{
    QTest::addColumn<double>("restitution");
    QTest::addColumn<double>("staticFriction");
    QTest::addColumn<double>("rollingFriction");
    QTest::addColumn<QString>("sentence");
    QTest::newRow("restitution at the limit")
        << 0.05 << 0.5 << 0.1
        << "The restitution of Gravel<>Steel is 0.05; the engine takes values above 0.05 up to 1.";
    QTest::newRow("restitution above the limit") << 0.0501 << 0.5 << 0.1 << QString();
    QTest::newRow("restitution of 1") << 1.0 << 0.5 << 0.1 << QString();
    QTest::newRow("restitution above 1")
        << 1.1 << 0.5 << 0.1
        << "The restitution of Gravel<>Steel is 1.1; the engine takes values above 0.05 up to 1.";
    QTest::newRow("restitution not a number")
        << qQNaN() << 0.5 << 0.1
        << "The restitution of Gravel<>Steel is nan; the engine takes values above 0.05 up to 1.";
    QTest::newRow("friction below 0")
        << 0.5 << -0.1 << 0.1
        << "The static friction of Gravel<>Steel is -0.1; the engine takes values from 0.";
    QTest::newRow("rolling below 0")
        << 0.5 << 0.5 << -1.0
        << "The rolling friction of Gravel<>Steel is -1; the engine takes values from 0.";
    QTest::newRow("rolling without end")
        << 0.5 << 0.5 << qInf()
        << "The rolling friction of Gravel<>Steel is inf; the engine takes values from 0.";
}

void DeckValuesTest::whatTheEngineRefusesIsNamedWithItsValue()
{
    QFETCH(double, restitution);
    QFETCH(double, staticFriction);
    QFETCH(double, rollingFriction);
    CCreatorData deck = plainRecord();
    deck.m_interactions["Steel<>Gravel"] = {restitution, staticFriction, rollingFriction};
    QTEST(complaintAbout(deck, heapOf()), "sentence");
}

void DeckValuesTest::aMissingPairIsNamed()
{
    CCreatorData deck = plainRecord();
    deck.m_interactions.erase("Steel<>Gravel");
    QCOMPARE(complaintAbout(deck, heapOf()),
             QString("The deck has no interaction of \"Gravel\" with \"Steel\"."));
}

void DeckValuesTest::everyModelWithoutACounterpartIsNamed()
{
    const QTemporaryDir folder;
    writeDeck(fullDeck(12), folder.path().toStdString(), "case");
    const CCreatorData deck = readDeck(folder.filePath("case.zek").toStdString());
    const SExperiment experiment =
        AdapterCase::parsed("experiment = angle of repose\nparticles = glass\nwall = steel\n");
    std::vector<std::string> names;
    for (const SMissingModel& model : missingModels(deck, experiment)) {
        names.push_back(model.name);
    }
    QCOMPARE(names, (std::vector<std::string>{
                        "Hertz-Mindlin with JKR", "Hertz-Mindlin with JKR V2", "Linear Spring",
                        "Hysteretic Spring", "Edinburgh Elasto-Plastic Adhesion",
                        "Type C Rolling Friction", "Spray Coating", "Bonding", "Bonding V2",
                        "Heat Conduction", "Archard Wear", "Oka Wear", "Ganser Drag",
                        "Haider and Levenspiel Drag", "Magnus Lift", "Morsi and Alexander Drag",
                        "Saffman Lift", "Schiller and Naumann Drag", "Temperature Update"}));
}

void DeckValuesTest::modelsOfOtherMaterialsDoNotCount()
{
    CCreatorData deck = plainRecord();
    deck.m_surfaceSurface.m_hertzMindlinJkr = {{"Sand<>Gravel", 0.1}, {"Sand<>Sand", 0.1}};
    deck.m_surfaceGeometry.m_edinburghAdhesion = {{"Sand<>Steel", {1.0, 1.0, 1.0, 1.0, 1.0, 1.0}}};
    QCOMPARE(complaintAbout(deck, heapOf()), QString());
}

void DeckValuesTest::aSurfaceEnergyOfZeroIsNoModel()
{
    CCreatorData deck = plainRecord();
    deck.m_surfaceSurface.m_hertzMindlinJkr = {{"Gravel<>Gravel", 0.0}};
    QCOMPARE(complaintAbout(deck, heapOf()), QString());
    deck.m_surfaceSurface.m_hertzMindlinJkr = {{"Gravel<>Gravel", 0.01}};
    QCOMPARE(complaintAbout(deck, heapOf()),
             QString("The engine can't do what the deck asks for: \"Hertz-Mindlin with JKR\" (the "
                     "engine knows no surface energy; of 0 it would be exact). Name what is to be "
                     "ignored under \"leave out\" in the experiment file."));
}

void DeckValuesTest::whatIsLeftOutIsNotMissed()
{
    CCreatorData deck = plainRecord();
    deck.m_surfaceSurface.m_bonding = {{"Gravel<>Gravel", {1.0, 2.0, 3.0, 4.0, 5.0}}};
    deck.m_externalForces.m_saffmanLift.m_sName = "Saffman Lift";
    QCOMPARE(missingModels(deck, heapOf()).size(), std::size_t(2));
    const std::vector<SMissingModel> left = missingModels(deck, heapOf("leave out = Bonding"));
    QCOMPARE(left.size(), std::size_t(1));
    QCOMPARE(left.front().name, std::string("Saffman Lift"));
    QCOMPARE(complaintAbout(deck, heapOf("leave out = Saffman Lift, Bonding")), QString());
}

void DeckValuesTest::onlyModelsCanBeLeftOut()
{
    QCOMPARE(complaintAbout(plainRecord(), heapOf("leave out = Bondage")),
             QString("The experiment leaves out \"Bondage\", which is no model of a deck."));
}

void DeckValuesTest::aDeckThatCannotBeReadIsOneSentence()
{
    const QTemporaryDir folder;
    const std::string deck = folder.filePath("case.zek").toStdString();
    QVERIFY_EXCEPTION_THROWN(readDeck(deck), CAdapterError);
    SampleCase::write(SampleCase::deckOf(0.5, 0.5, 0.1), folder.path());
    QFile data(folder.filePath("case_data/0.h5"));
    QVERIFY(data.open(QIODevice::WriteOnly));
    data.write("no data");
    data.close();
    try {
        readDeck(deck);
        QFAIL("It was read.");
    } catch (const CAdapterError& error) {
        QVERIFY2(QString(error.what()).contains("can't be read"), error.what());
    }
}

TARNEL_TEST_MAIN(DeckValuesTest)
#include "deck_values_test.moc"
