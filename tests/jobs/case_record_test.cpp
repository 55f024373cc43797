#include "jobs/case_record.h"

#include "samples/player/modal_watcher.h"
#include "tests/jobs/deck_row.h"
#include "tests/jobs/job_fixture.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QtTest>

#include <iostream>
#include <sstream>

namespace {

const char* const MistypedText =
    "Internal values are mistyped when generating jobs, data is corrupted - contact Quillon ORVA "
    "if you receive this message.";

/// What the program writes to its standard error stream in the meantime.
class CErrorCapture
{
public:
    CErrorCapture()
        : m_before(std::cerr.rdbuf(m_text.rdbuf()))
    {
    }
    ~CErrorCapture() { std::cerr.rdbuf(m_before); }
    QString text() const { return QString::fromStdString(m_text.str()); }

private:
    std::ostringstream m_text;
    std::streambuf* m_before;
};

QString headings(const CCreatorData& deck)
{
    return QString::fromStdString(schemeHeadings(deck));
}

CCreatorData fullRecord(CJobFixture& fixture, int format)
{
    const DeckPaths paths = fixture.chooseDeck(fullDeck(format));
    CCreatorData record = recordIn(paths.dataFile.string());
    record.m_sName = "bed";
    return record;
}

/// A row in the order of the scheme, 1, 2, 3 and so on with the flags at those positions.
CaseRow countingRow(std::size_t length, const std::vector<std::size_t>& flags)
{
    CaseRow row;
    for (std::size_t index = 0; index < length; ++index) {
        row.push_back(static_cast<double>(index + 1));
    }
    for (const std::size_t flag : flags) {
        row[flag] = true;
    }
    return row;
}

} // namespace

class CaseRecordTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_fixture = std::make_unique<CJobFixture>(); }

    void interactionsStandFirstPerKey();
    void headingsOfAFullDeckStandInTheOrderOfTheScheme();
    void bothBondingHeadingsHangOnTheStartTime_data();
    void bothBondingHeadingsHangOnTheStartTime();
    void bondingV2HeadingsHangOnEachOther_data();
    void bondingV2HeadingsHangOnEachOther();
    void untaggedSingleValuesHaveNoHeading();
    void absentForcesHaveNoHeading();

    void valuesAreTakenInTheOrderOfTheScheme();
    void forceValuesAreTakenFlagBeforeVelocities();
    void bondingTakesEachValueByItsOwnTag();
    void crossedBondingColumnsWarnTwiceAndYieldNothing();
    void untaggedValuesAreNotTaken();
    void absentForceInFrontShiftsTheValues();
    void surplusValuesStayUnused();
    void mistypedValuesWarnOnceEach();
    void mistypedMapValueTakesZeroAndTheWalkGoesOn();
    void shortRowKeepsTheDecksValuesAndSaysSo();
    void everythingOutsideTheSchemeStaysAtItsDefault();

private:
    std::unique_ptr<CJobFixture> m_fixture;
};

void CaseRecordTest::interactionsStandFirstPerKey()
{
    CCreatorData deck;
    deck.m_interactions = {{"b<>b", {1, 2, 3}}, {"a<>b", {4, 5, 6}}};
    QCOMPARE(headings(deck),
             QStringLiteral("a<>b Restitution,a<>b Static Friction,a<>b Rolling Friction,"
                            "b<>b Restitution,b<>b Static Friction,b<>b Rolling Friction,"));
}

void CaseRecordTest::headingsOfAFullDeckStandInTheOrderOfTheScheme()
{
    CCreatorData deck;
    const auto fillSet = [](CModelSet& set, const std::string& key) {
        set.m_hertzMindlinJkr[key] = 0;
        set.m_hertzMindlinJkrV2[key] = 0;
        set.m_linearSpringValue = {"Active", 0};
        set.m_linearSpring[key] = 0;
        set.m_hystereticInteractions[key] = {0, 0};
        set.m_hystereticYields[key] = 0;
        set.m_edinburghAdhesion[key] = {0, 0, 0, 0, 0, 0};
        set.m_linearCohesionV2[key] = 0;
        set.m_sprayCoating[key] = 0;
    };
    fillSet(deck.m_surfaceSurface, "p");
    fillSet(deck.m_surfaceGeometry, "g");
    deck.m_surfaceSurface.m_bonding["p"] = {0, 0, 0, 0, 0};
    deck.m_surfaceSurface.m_bondingStartTime = {"Active", 0};
    deck.m_surfaceSurface.m_bondingTorqueFeedback = {"Active", false};
    deck.m_surfaceSurface.m_bondingV2["p"] = {0, 0, 0, 0, 0, 0, 0};
    deck.m_surfaceSurface.m_bondingV2StartTime = {"Active", 0};
    deck.m_surfaceSurface.m_bondingV2TorqueFeedback = {"Active", false};
    deck.m_surfaceSurface.m_heatConduction["p"] = 0;
    deck.m_surfaceGeometry.m_standardRollingFriction = {"Active", false};
    deck.m_surfaceGeometry.m_heatConductionParticle["g"] = 0;
    deck.m_surfaceGeometry.m_heatConductionGeometry["g"] = {0, 0};
    deck.m_surfaceGeometry.m_archardWear["g"] = 0;
    deck.m_surfaceGeometry.m_archardDeformation = {"Active", true};
    deck.m_surfaceGeometry.m_okaWear["g"] = {0, 0, 0};
    deck.m_externalForces.m_temperatureUpdate["t"] = 0;
    deck.m_externalForces.m_ganserDrag.m_sName = "Ganser Drag";
    deck.m_externalForces.m_ganserDrag.m_shapeFactors = {{"s1", 0}, {"s2", 0}};
    deck.m_externalForces.m_saffmanLift.m_sName = "Saffman Lift";

    const QString shared = QStringLiteral(
        "K Surface Energy,K Interfacial Surface energy,Characteristic Velocity,"
        "K Characteristic Velocity,K Damping,K Stiffness,K Yield Strength,"
        "K Constant pull-off force,K Surface Energy,K Contact Plasticity Ratio,K Slope Exp,"
        "K Tensile Exp,K Tangential Stiff Multiplier,");
    const QString force = QStringLiteral("F Density,F Viscosity,F Scale,F Steady Velocity Flow X,"
                                         "F Steady Velocity Flow Y,F Steady Velocity Flow Z,"
                                         "F Using Steady Velocity Flow,");
    QString expected = QString(shared).replace("K ", "p ");
    expected += "p Normal Stiffness per unit area,p Shear Stiffness per unit area,"
                "p Critical Normal Stress,p Critical Shear Stress,p Bonded Disk Radius,"
                "Torque Feedback,Start Time,"
                "p Normal Stiffness per unit area,p Normal Range,p Tangential Stiffness,"
                "p Tangential Range,p Normal Strength,p Shear Strength,p Bonded Disk Scale,"
                "Torque Feedback,Start Time,"
                "p Thermal Conductivity,p Active Sprays,";
    expected += QString(shared).replace("K ", "g ");
    expected += "Enable Rolling Friction,g Active Sprays,g Thermal Conductivity,"
                "g Thermal Conductivity,g Geometry Temperature,g Wear Constant,"
                "t Heat Capacity,"
                "Ganser Drag s1 Spherocity,Ganser Drag s2 Spherocity,";
    expected += QString(force).replace("F ", "Ganser Drag ");
    expected += QString(force).replace("F ", "Saffman Lift ");
    QCOMPARE(headings(deck), expected);
}

void CaseRecordTest::bothBondingHeadingsHangOnTheStartTime_data()
{
    QTest::addColumn<QString>("torqueTag");
    QTest::addColumn<QString>("startTag");
    QTest::addColumn<QString>("expected");
    QTest::newRow("both") << "Active"
                          << "Active"
                          << "Torque Feedback,Start Time,";
    QTest::newRow("start time alone") << ""
                                      << "Active"
                                      << "Torque Feedback,Start Time,";
    QTest::newRow("torque feedback alone") << "Active"
                                           << ""
                                           << "";
}

void CaseRecordTest::bothBondingHeadingsHangOnTheStartTime()
{
    QFETCH(QString, torqueTag);
    QFETCH(QString, startTag);
    QFETCH(QString, expected);
    CCreatorData deck;
    deck.m_surfaceSurface.m_bondingTorqueFeedback.first = torqueTag.toStdString();
    deck.m_surfaceSurface.m_bondingStartTime.first = startTag.toStdString();
    QCOMPARE(headings(deck), expected);
}

void CaseRecordTest::bondingV2HeadingsHangOnEachOther_data()
{
    QTest::addColumn<QString>("torqueTag");
    QTest::addColumn<QString>("startTag");
    QTest::addColumn<QString>("expected");
    QTest::newRow("both") << "Active"
                          << "Active"
                          << "Torque Feedback,Start Time,";
    QTest::newRow("start time alone") << ""
                                      << "Active"
                                      << "Torque Feedback,";
    QTest::newRow("torque feedback alone") << "Active"
                                           << ""
                                           << "Start Time,";
}

void CaseRecordTest::bondingV2HeadingsHangOnEachOther()
{
    QFETCH(QString, torqueTag);
    QFETCH(QString, startTag);
    QFETCH(QString, expected);
    CCreatorData deck;
    deck.m_surfaceSurface.m_bondingV2TorqueFeedback.first = torqueTag.toStdString();
    deck.m_surfaceSurface.m_bondingV2StartTime.first = startTag.toStdString();
    QCOMPARE(headings(deck), expected);
}

void CaseRecordTest::untaggedSingleValuesHaveNoHeading()
{
    CCreatorData deck;
    deck.m_surfaceSurface.m_linearSpringValue.second = 3.0;
    deck.m_surfaceGeometry.m_standardRollingFriction.second = true;
    QCOMPARE(headings(deck), QString());
}

void CaseRecordTest::absentForcesHaveNoHeading()
{
    CCreatorData deck;
    deck.m_externalForces.m_haiderLevenspielDrag.m_shapeFactors = {{"s", 1.0}};
    QCOMPARE(headings(deck), QString());
}

void CaseRecordTest::valuesAreTakenInTheOrderOfTheScheme()
{
    CCreatorData deck("bed");
    deck.m_interactions = {{"a<>b", {0, 0, 0}}};
    deck.m_surfaceSurface.m_hertzMindlinJkr = {{"a<>b", 0}, {"b<>b", 0}};
    deck.m_surfaceSurface.m_hystereticInteractions = {{"a<>b", {0, 0}}};
    deck.m_surfaceGeometry.m_edinburghAdhesion = {{"g", {0, 0, 0, 0, 0, 0}}};
    deck.m_surfaceGeometry.m_standardRollingFriction = {"Active", false};
    deck.m_surfaceGeometry.m_archardWear = {{"w", 0}};
    deck.m_externalForces.m_temperatureUpdate = {{"t", 0}};

    const CModalWatcher watcher;
    const CCreatorData record = caseRecord(deck, 1, 0, countingRow(16, {13}));
    QCOMPARE(watcher.messages().size(), std::size_t(0));
    QCOMPARE(QString::fromStdString(record.m_sName), QStringLiteral("bed1"));
    QVERIFY(record.m_interactions == TripleMap({{"a<>b", {1, 2, 3}}}));
    QVERIFY(record.m_surfaceSurface.m_hertzMindlinJkr == SingleMap({{"a<>b", 4}, {"b<>b", 5}}));
    QVERIFY(record.m_surfaceSurface.m_hystereticInteractions == PairMap({{"a<>b", {6, 7}}}));
    QVERIFY(record.m_surfaceGeometry.m_edinburghAdhesion ==
            SextupleMap({{"g", {8, 9, 10, 11, 12, 13}}}));
    QVERIFY(record.m_surfaceGeometry.m_standardRollingFriction ==
            CTaggedValue<bool>("Active", true));
    QVERIFY(record.m_surfaceGeometry.m_archardWear == SingleMap({{"w", 15}}));
    QVERIFY(record.m_externalForces.m_temperatureUpdate == SingleMap({{"t", 16}}));
}

void CaseRecordTest::forceValuesAreTakenFlagBeforeVelocities()
{
    CCreatorData deck;
    deck.m_externalForces.m_haiderLevenspielDrag.m_sName = "Haider and Levenspiel Drag";
    deck.m_externalForces.m_haiderLevenspielDrag.m_shapeFactors = {{"s1", 0}, {"s2", 0}};
    const CModalWatcher watcher;
    const CCreatorData record = caseRecord(deck, 1, 0, countingRow(9, {5}));
    QCOMPARE(watcher.messages().size(), std::size_t(0));
    const CShapeForce& force = record.m_externalForces.m_haiderLevenspielDrag;
    QVERIFY(force.m_shapeFactors == SingleMap({{"s1", 1}, {"s2", 2}}));
    QCOMPARE(force.m_density, 3.0);
    QCOMPARE(force.m_fieldScale, 4.0);
    QCOMPARE(force.m_viscosity, 5.0);
    QCOMPARE(force.m_usingSteadyFlow, 1.0);
    QVERIFY(force.m_steadyFlowVelocity == std::make_tuple(7.0, 8.0, 9.0));
}

void CaseRecordTest::bondingTakesEachValueByItsOwnTag()
{
    CCreatorData deck;
    deck.m_surfaceSurface.m_bondingTorqueFeedback = {"Active", false};
    deck.m_surfaceSurface.m_bondingV2StartTime = {"Active", 0.0};
    const CModalWatcher watcher;
    const CCreatorData record = caseRecord(deck, 1, 0, {true, 4.5});
    QCOMPARE(watcher.messages().size(), std::size_t(0));
    QVERIFY(record.m_surfaceSurface.m_bondingTorqueFeedback == CTaggedValue<bool>("Active", true));
    QVERIFY(record.m_surfaceSurface.m_bondingStartTime == CTaggedValue<double>("", 0.0));
    QVERIFY(record.m_surfaceSurface.m_bondingV2StartTime == CTaggedValue<double>("Active", 4.5));
    QVERIFY(record.m_surfaceSurface.m_bondingV2TorqueFeedback == CTaggedValue<bool>("", false));
}

void CaseRecordTest::crossedBondingColumnsWarnTwiceAndYieldNothing()
{
    CCreatorData deck;
    deck.m_surfaceSurface.m_bondingTorqueFeedback = {"Active", true};
    deck.m_surfaceSurface.m_bondingStartTime = {"Active", 2.0};
    const CModalWatcher watcher;
    // The entries stand the other way round: the start time before the torque feedback.
    const CCreatorData record = caseRecord(deck, 1, 0, {2.0, true});
    QCOMPARE(watcher.texts(), QStringList({MistypedText, MistypedText}));
    QVERIFY(record.m_surfaceSurface.m_bondingTorqueFeedback == CTaggedValue<bool>("Active", false));
    QVERIFY(record.m_surfaceSurface.m_bondingStartTime == CTaggedValue<double>("Active", 0.0));
}

void CaseRecordTest::untaggedValuesAreNotTaken()
{
    CCreatorData deck;
    deck.m_surfaceSurface.m_linearSpringValue = {"", 5.0};
    deck.m_surfaceSurface.m_linearSpring = {{"a<>b", 0}};
    const CCreatorData record = caseRecord(deck, 1, 0, {7.0});
    QVERIFY(record.m_surfaceSurface.m_linearSpringValue == CTaggedValue<double>("", 0.0));
    QVERIFY(record.m_surfaceSurface.m_linearSpring == SingleMap({{"a<>b", 7.0}}));
}

void CaseRecordTest::absentForceInFrontShiftsTheValues()
{
    CCreatorData deck;
    deck.m_externalForces.m_magnusLift.m_sName = "Magnus Lift";
    // Columns of two absent forces, then those of the present one.
    CaseRow row;
    for (int force = 0; force < 2; ++force) {
        row.insert(row.end(), {0.0, 0.0, 0.0, false, 0.0, 0.0, 0.0});
    }
    row.insert(row.end(), {1.0, 2.0, 3.0, true, 4.0, 5.0, 6.0});
    const CErrorCapture errors;
    const CModalWatcher watcher;
    const CCreatorData record = caseRecord(deck, 1, 0, row);
    QCOMPARE(record.m_externalForces.m_magnusLift.m_density, 0.0);
    QCOMPARE(record.m_externalForces.m_magnusLift.m_usingSteadyFlow, 0.0);
    QCOMPARE(watcher.messages().size(), std::size_t(0));
    QCOMPARE(errors.text(), QString());
}

void CaseRecordTest::surplusValuesStayUnused()
{
    CCreatorData deck;
    deck.m_surfaceSurface.m_heatConduction = {{"glass", 0}};
    const CErrorCapture errors;
    const CCreatorData record = caseRecord(deck, 1, 0, CaseRow(43, 2.5));
    QVERIFY(record.m_surfaceSurface.m_heatConduction == SingleMap({{"glass", 2.5}}));
    QCOMPARE(errors.text(), QString());
}

void CaseRecordTest::mistypedValuesWarnOnceEach()
{
    CCreatorData deck;
    deck.m_surfaceGeometry.m_standardRollingFriction = {"Active", true};
    deck.m_surfaceGeometry.m_heatConductionGeometry = {{"wall", {1, 2}}};
    const CModalWatcher watcher;
    caseRecord(deck, 1, 0, {1.0, true, false});
    QCOMPARE(watcher.messages().size(), std::size_t(3));
    const SShownMessage& shown = watcher.messages().front();
    QCOMPARE(shown.title, QStringLiteral("Warning"));
    QCOMPARE(shown.text, QString(MistypedText));
    QCOMPARE(shown.icon, QMessageBox::Warning);
    QCOMPARE(shown.buttons, QStringList("OK"));
    QVERIFY(!shown.hasParent);
}

void CaseRecordTest::mistypedMapValueTakesZeroAndTheWalkGoesOn()
{
    CCreatorData deck;
    deck.m_interactions = {{"a<>b", {0.5, 0.6, 0.7}}};
    const CModalWatcher watcher;
    const CCreatorData record = caseRecord(deck, 1, 0, {1.0, true, 3.0});
    QCOMPARE(watcher.messages().size(), std::size_t(1));
    QVERIFY(record.m_interactions == TripleMap({{"a<>b", {1.0, 0.0, 3.0}}}));
}

void CaseRecordTest::shortRowKeepsTheDecksValuesAndSaysSo()
{
    CCreatorData deck("bed");
    deck.m_interactions = {{"a<>b", {0.5, 0.6, 0.7}}};
    deck.m_surfaceGeometry.m_standardRollingFriction = {"Active", true};
    deck.m_externalForces.m_saffmanLift.m_sName = "Saffman Lift";
    deck.m_externalForces.m_saffmanLift.m_viscosity = 0.25;
    const CErrorCapture errors;
    const CModalWatcher watcher;
    const CCreatorData record = caseRecord(deck, 3, 2, {9.0});
    QVERIFY(record.m_interactions == TripleMap({{"a<>b", {9.0, 0.0, 0.0}}}));
    QVERIFY(record.m_surfaceGeometry.m_standardRollingFriction ==
            CTaggedValue<bool>("Active", false));
    QCOMPARE(record.m_externalForces.m_saffmanLift.m_viscosity, 0.0);
    QCOMPARE(watcher.messages().size(), std::size_t(0));
    QCOMPARE(errors.text().count('\n'), 1);
    QVERIFY2(errors.text().contains("Case 2 of bed") &&
                 errors.text().contains("missing values: 10;"),
             qPrintable(errors.text()));
}

void CaseRecordTest::everythingOutsideTheSchemeStaysAtItsDefault()
{
    const CCreatorData deck = fullRecord(*m_fixture, 14);
    QVERIFY(!deck.m_surfaceGeometry.m_okaWear.empty());
    const CCreatorData record = caseRecord(deck, 1, 0, CDeckRow::of(deck));
    QVERIFY(record.m_surfaceGeometry.m_okaWear.empty());
    QVERIFY(record.m_surfaceSurface.m_sprayCoating.empty());
    QVERIFY(record.m_surfaceGeometry.m_archardDeformation == CTaggedValue<bool>("", false));
    QVERIFY(record.m_surfaceGeometry.m_okaDeformation == CTaggedValue<bool>("", false));
    QCOMPARE(record.m_surfaceSurface.m_coefficientOfRollingStiffness, 0.0);
    QCOMPARE(record.m_surfaceSurface.m_bTangentialRotationOnly, false);
    QVERIFY(record.m_externalForces.m_ganserDrag.m_sName.empty());
    QCOMPARE(record.m_externalForces.m_ganserDrag.m_density,
             deck.m_externalForces.m_ganserDrag.m_density);
}

TARNEL_TEST_MAIN(CaseRecordTest)
#include "case_record_test.moc"
