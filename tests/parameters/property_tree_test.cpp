#include "parameters/property_tree.h"

#include "deck/deck_store.h"
#include "parameters/parameter_catalogue.h"
#include "parameters/parameter_entry.h"
#include "parameters/parameter_limits.h"
#include "parameters/property_tree_widget_item.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QTest>
#include <QTreeWidget>

#include <cmath>
#include <stdexcept>

namespace {

/// The tree as text: a line per item, two blanks per level.
QStringList outline(const QTreeWidgetItem* item, const QString& indent = QString())
{
    QStringList lines = {indent + item->text(0)};
    for (int i = 0; i < item->childCount(); ++i) {
        lines += outline(item->child(i), indent + QStringLiteral("  "));
    }
    return lines;
}

QStringList outline(const QTreeWidget& tree)
{
    QStringList lines;
    for (int i = 0; i < tree.topLevelItemCount(); ++i) {
        lines += outline(tree.topLevelItem(i));
    }
    return lines;
}

/// The six forces as every deck shows them, whether it holds them or not.
QStringList forceLines()
{
    QStringList lines;
    for (const char* name :
         {"Ganser Drag", "Haider and Levenspiel Drag", "Magnus Lift", "Morsi and Alexander Drag",
          "Saffman Lift", "Schiller and Naumann Drag"}) {
        lines << QStringLiteral("    ") + QLatin1String(name)
              << QStringLiteral("      ") + QLatin1String(name);
    }
    return lines;
}

QStringList groupLines(const QStringList& particleLines, const QStringList& geometryLines,
                       const QStringList& bodyForceLines)
{
    return QStringList{"Contact Models", "  Particle to Particle"} + particleLines +
           QStringList{"  Particle to Geometry"} + geometryLines +
           QStringList{"  Particle Body Force"} + bodyForceLines;
}

struct SBuiltTree
{
    QTreeWidget tree;
    int fieldCount = 0;
    std::vector<CPropertyTreeWidgetItem*> items;

    void build(const CCreatorData& deck, int format)
    {
        CPropertyTree(&tree, fieldCount, items).build(deck, format);
    }
};

const std::vector<std::shared_ptr<CParameterEntry>>& entries()
{
    return CDeckStore::instance()->parameters();
}

std::shared_ptr<CParameterEntry> entryNamed(const std::string& name, std::size_t occurrence = 0)
{
    for (const auto& entry : entries()) {
        if (entry->m_name == name && occurrence-- == 0) {
            return entry;
        }
    }
    return nullptr;
}

QStringList fieldNames(const CParameterKeys& key)
{
    QStringList names;
    for (const auto& field : key.m_fields) {
        names << QString::fromStdString(field->m_name);
    }
    return names;
}

double number(const CParameterKeys& key, std::size_t field)
{
    return std::get<double>(key.m_fields.at(field)->m_values.at(0));
}

std::string failureOfBuilding(const CCreatorData& deck, int format)
{
    SBuiltTree built;
    try {
        built.build(deck, format);
    } catch (const std::out_of_range& failure) {
        return failure.what();
    }
    return std::string();
}

const std::string MissingRow = "invalid map<K, T> key";

} // namespace

class CPropertyTreeTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void aDeckWithInteractionsAlone();
    void anEmptyMapYieldsNothing();
    void everyModelInBuildOrder();
    void bothGroupsHaveTheModelSet();
    void yieldsWithoutInteractionsAreLeftOut();
    void linearSpringByFormat();
    void bondingV2ByFormat();
    void bondingTagsNeedTheBondingData();
    void geometryHeatConductionFromFormatTwo();
    void startTimeStandsBeforeTorqueFeedback();
    void columnOneMovesWithTheLevel();
    void fieldsHoldTheDeckNumbersBitForBit();
    void indicesRunWithoutAGapInWalkOrder();
    void theForceLabelsAreCrossed();
    void theFlowFlagIsTheLowestByte();
    void absentForcesHaveZeros();
    void shapeFactorsStandBeforeTheirForce();
    void forcesEqualToAPresentGanserDragRepeatItsShapeFactors();
    void labelsWithoutARowRaise_data();
    void labelsWithoutARowRaise();
    void archardDeformationIsIgnoredBelowFormatEleven();
};

void CPropertyTreeTest::initTestCase()
{
    ParameterCatalogue::initialise();
    initialiseParameterLimits();
}

void CPropertyTreeTest::init()
{
    CTestEnvironment::reset();
}

void CPropertyTreeTest::aDeckWithInteractionsAlone()
{
    CCreatorData deck("hopper");
    deck.m_interactions["A<>B"] = {0.5, 0.4, 0.01};
    SBuiltTree built;
    built.build(deck, 5);
    QCOMPARE(outline(built.tree), QStringList{"Interactions"} + groupLines({}, {}, forceLines()));
    QCOMPARE(entries().size(), std::size_t(13));
    QCOMPARE(fieldNames(*entries().front()->m_keys.front()),
             QStringList({"Restitution", "Static Friction", "Rolling Friction"}));
}

void CPropertyTreeTest::anEmptyMapYieldsNothing()
{
    SBuiltTree built;
    built.build(CCreatorData("empty"), 5);
    QCOMPARE(outline(built.tree), groupLines({}, {}, forceLines()));
    QVERIFY(entryNamed("Interactions") == nullptr);
    QCOMPARE(built.fieldCount, 6 * 7);
}

void CPropertyTreeTest::everyModelInBuildOrder()
{
    CCreatorData deck("full");
    CSurfaceSurfaceModels& particle = deck.m_surfaceSurface;
    particle.m_hertzMindlinJkr["a<>a"] = 1.0;
    particle.m_hertzMindlinJkrV2["a<>a"] = 1.0;
    particle.m_linearSpring["a<>a"] = 1.0;
    particle.m_hystereticInteractions["a<>a"] = {1.0, 2.0};
    particle.m_hystereticYields["a"] = 1.0;
    particle.m_edinburghAdhesion["a<>a"] = {-1.0, 2.0, 0.3, 1.5, 5.0, 6.0};
    particle.m_bonding["a<>a"] = {1.0, 2.0, 3.0, 4.0, 5.0};
    particle.m_bondingStartTime = {"Active", 0.5};
    particle.m_bondingTorqueFeedback = {"Active", true};
    particle.m_bondingV2["a<>a"] = {1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0};
    particle.m_bondingV2StartTime = {"Active", 0.5};
    particle.m_bondingV2TorqueFeedback = {"Active", false};
    particle.m_heatConduction["a"] = 1.0;
    particle.m_linearCohesionV2["a<>a"] = 1.0;
    CSurfaceGeometryModels& geometry = deck.m_surfaceGeometry;
    geometry.m_standardRollingFriction = {"Active", true};
    geometry.m_linearCohesionV2["a<>b"] = 1.0;
    geometry.m_heatConductionParticle["a"] = 1.0;
    geometry.m_heatConductionGeometry["b"] = {1.0, 2.0};
    geometry.m_archardWear["a<>b"] = 1.0;
    deck.m_externalForces.m_temperatureUpdate["a"] = 1.0;
    SBuiltTree built;
    built.build(deck, 2);
    QCOMPARE(
        outline(built.tree),
        groupLines({"    Hertz-Mindlin with JKR", "    Hertz-Mindlin with JKR V2",
                    "    Linear Spring", "    Hysteretic Spring", "      Interactions",
                    "      Yields", "    Edinburgh Elasto-Plastic Adhesion", "    Bonding",
                    "      Bonding Start Time", "      Bonding Torque Feedback", "    Bonding V2",
                    "      Bonding Start Time", "      Bonding Torque Feedback",
                    "    Heat Conduction", "    Spray Coating"},
                   {"    Rolling friction", "    Spray Coating", "    Heat Conduction",
                    "    Heat Conduction", "    Archard Wear"},
                   QStringList{"    Temperature Update"} + forceLines()));
}

void CPropertyTreeTest::bothGroupsHaveTheModelSet()
{
    CCreatorData deck("full");
    CModelSet& geometry = deck.m_surfaceGeometry;
    geometry.m_hertzMindlinJkr["a<>b"] = 1.0;
    geometry.m_hertzMindlinJkrV2["a<>b"] = 1.0;
    geometry.m_linearSpring["a<>b"] = 1.0;
    geometry.m_hystereticInteractions["a<>b"] = {1.0, 2.0};
    geometry.m_hystereticYields["a"] = 1.0;
    geometry.m_edinburghAdhesion["a<>b"] = {-1.0, 2.0, 0.3, 1.5, 5.0, 6.0};
    SBuiltTree built;
    built.build(deck, 5);
    QCOMPARE(outline(built.tree),
             groupLines({},
                        {"    Hertz-Mindlin with JKR", "    Hertz-Mindlin with JKR V2",
                         "    Linear Spring", "    Hysteretic Spring", "      Interactions",
                         "      Yields", "    Edinburgh Elasto-Plastic Adhesion"},
                        forceLines()));
}

void CPropertyTreeTest::yieldsWithoutInteractionsAreLeftOut()
{
    CCreatorData deck("yields");
    deck.m_surfaceSurface.m_hystereticYields["a"] = 1.0;
    deck.m_surfaceGeometry.m_hystereticYields["a"] = 1.0;
    SBuiltTree built;
    built.build(deck, 5);
    QCOMPARE(outline(built.tree), groupLines({}, {}, forceLines()));
    QVERIFY(entryNamed("Yields") == nullptr);
}

void CPropertyTreeTest::linearSpringByFormat()
{
    CCreatorData deck("spring");
    deck.m_surfaceSurface.m_linearSpringValue = {"Active", 3.0};
    deck.m_surfaceSurface.m_linearSpring["a<>a"] = 4.0;
    SBuiltTree legacy;
    legacy.build(deck, 1);
    QCOMPARE(entryNamed("Linear Spring")->m_keys.front()->m_name, std::string("Active"));
    QVERIFY(entryNamed("Linear Spring", 1) == nullptr);
    CTestEnvironment::reset();
    SBuiltTree perPair;
    perPair.build(deck, 2);
    QCOMPARE(entryNamed("Linear Spring")->m_keys.front()->m_name, std::string("a<>a"));
    QVERIFY(entryNamed("Linear Spring", 1) == nullptr);
}

void CPropertyTreeTest::bondingV2ByFormat()
{
    CCreatorData deck("bonding");
    deck.m_surfaceSurface.m_bondingV2["a<>a"] = {1.0, 2.0, 3.0, 4.0, 5.0, 6.0, 7.0};
    deck.m_surfaceSurface.m_bondingV2StartTime = {"Active", 0.5};
    deck.m_surfaceSurface.m_bondingV2TorqueFeedback = {"Active", true};
    const QStringList withStartTime = {"    Bonding V2", "      Bonding Start Time",
                                       "      Bonding Torque Feedback"};
    const QStringList withoutStartTime = {"    Bonding V2", "      Bonding Torque Feedback"};
    const std::vector<std::pair<int, QStringList>> expected = {
        {0, {}}, {1, withStartTime}, {2, withStartTime}, {3, withoutStartTime}};
    for (const auto& [format, lines] : expected) {
        SBuiltTree built;
        built.build(deck, format);
        QCOMPARE(outline(built.tree), groupLines(lines, {}, forceLines()));
    }
}

void CPropertyTreeTest::bondingTagsNeedTheBondingData()
{
    CCreatorData deck("tags");
    deck.m_surfaceSurface.m_bondingStartTime = {"Active", 0.5};
    deck.m_surfaceSurface.m_bondingV2TorqueFeedback = {"Active", true};
    SBuiltTree built;
    built.build(deck, 2);
    QCOMPARE(outline(built.tree), groupLines({}, {}, forceLines()));
}

void CPropertyTreeTest::geometryHeatConductionFromFormatTwo()
{
    CCreatorData deck("heat");
    deck.m_surfaceGeometry.m_heatConductionParticle["a"] = 1.0;
    deck.m_surfaceGeometry.m_heatConductionGeometry["b"] = {1.0, 2.0};
    SBuiltTree old;
    old.build(deck, 1);
    QCOMPARE(outline(old.tree), groupLines({}, {}, forceLines()));
    SBuiltTree built;
    built.build(deck, 2);
    QCOMPARE(outline(built.tree),
             groupLines({}, {"    Heat Conduction", "    Heat Conduction"}, forceLines()));
    QCOMPARE(fieldNames(*entryNamed("Heat Conduction", 1)->m_keys.front()),
             QStringList({"Thermal Conductivity", "Geometry Temperature"}));
}

void CPropertyTreeTest::startTimeStandsBeforeTorqueFeedback()
{
    CCreatorData deck("bonding");
    deck.m_surfaceSurface.m_bonding["a<>a"] = {1.0, 2.0, 3.0, 4.0, 5.0};
    deck.m_surfaceSurface.m_bondingStartTime = {"Active", 0.5};
    deck.m_surfaceSurface.m_bondingTorqueFeedback = {"Active", true};
    SBuiltTree built;
    built.build(deck, 0);
    QCOMPARE(entries().at(1)->m_name, std::string("Bonding Start Time"));
    QCOMPARE(entries().at(2)->m_name, std::string("Bonding Torque Feedback"));
    QVERIFY(entries().at(2)->m_keys.front()->m_fields.front()->m_values.front() == CaseValue(true));
}

void CPropertyTreeTest::columnOneMovesWithTheLevel()
{
    CCreatorData deck("hopper");
    deck.m_interactions["A<>B"] = {0.5, 0.4, 0.01};
    SBuiltTree built;
    built.build(deck, 5);
    QCOMPARE(built.tree.topLevelItem(0)->text(1), QStringLiteral("  0"));
    const QTreeWidgetItem* models = built.tree.topLevelItem(1);
    QCOMPARE(models->text(1), QStringLiteral("  0"));
    QCOMPARE(models->child(0)->text(1), QStringLiteral("    0"));
    QCOMPARE(models->child(2)->child(0)->text(1), QStringLiteral("      0"));
    QCOMPARE(models->child(2)->child(0)->child(0)->text(1), QStringLiteral("        0"));
}

void CPropertyTreeTest::fieldsHoldTheDeckNumbersBitForBit()
{
    CCreatorData deck("hopper");
    const double awkward = 0.1 + 0.2;
    deck.m_interactions["A<>B"] = {awkward, 5e-324, -0.0};
    SBuiltTree built;
    built.build(deck, 5);
    const CParameterKeys& key = *entries().front()->m_keys.front();
    QCOMPARE(key.m_fields.at(0)->m_values.size(), std::size_t(1));
    QVERIFY(number(key, 0) == awkward);
    QVERIFY(number(key, 1) == 5e-324);
    QVERIFY(std::signbit(number(key, 2)));
}

void CPropertyTreeTest::indicesRunWithoutAGapInWalkOrder()
{
    CCreatorData deck("hopper");
    deck.m_interactions["A<>A"] = {0.5, 0.4, 0.01};
    deck.m_interactions["A<>B"] = {0.5, 0.4, 0.01};
    deck.m_surfaceSurface.m_hystereticInteractions["A<>A"] = {1.0, 2.0};
    SBuiltTree built;
    built.build(deck, 5);
    int expected = 0;
    for (const auto& entry : entries()) {
        for (const auto& key : entry->m_keys) {
            for (const auto& field : key->m_fields) {
                QCOMPARE(field->m_index, expected++);
            }
        }
    }
    QCOMPARE(built.fieldCount, expected);
    QCOMPARE(expected, 6 + 2 + 42);
}

void CPropertyTreeTest::theForceLabelsAreCrossed()
{
    CCreatorData deck("force");
    CForce& lift = deck.m_externalForces.m_magnusLift;
    lift.m_sName = "Magnus Lift";
    lift.m_density = 1.0;
    lift.m_fieldScale = 2.0;
    lift.m_viscosity = 3.0;
    lift.m_steadyFlowVelocity = {4.0, 5.0, 6.0};
    SBuiltTree built;
    built.build(deck, 5);
    const CParameterKeys& field = *entryNamed("Magnus Lift")->m_keys.front();
    QCOMPARE(field.m_name, std::string("Steady Flow Velocity"));
    QCOMPARE(fieldNames(field),
             QStringList({"Density", "Viscosity", "Scale", "Using Steady Velocity Flow"}));
    QCOMPARE(number(field, 0), 1.0);
    QCOMPARE(number(field, 1), 2.0);
    QCOMPARE(number(field, 2), 3.0);
    QVERIFY(field.m_fields.at(3)->m_values.front() == CaseValue(false));
    const CParameterKeys& flow = *entryNamed("Magnus Lift", 1)->m_keys.front();
    QCOMPARE(fieldNames(flow), QStringList({"Steady Velocity Flow X", "Steady Velocity Flow Y",
                                            "Steady Velocity Flow Z"}));
    QCOMPARE(number(flow, 2), 6.0);
}

void CPropertyTreeTest::theFlowFlagIsTheLowestByte()
{
    CCreatorData deck("force");
    deck.m_externalForces.m_magnusLift.m_usingSteadyFlow = 1.0;
    deck.m_externalForces.m_saffmanLift.m_usingSteadyFlow = 5e-324;
    SBuiltTree built;
    built.build(deck, 5);
    QVERIFY(entryNamed("Magnus Lift")->m_keys.front()->m_fields.at(3)->m_values.front() ==
            CaseValue(false));
    QVERIFY(entryNamed("Saffman Lift")->m_keys.front()->m_fields.at(3)->m_values.front() ==
            CaseValue(true));
}

void CPropertyTreeTest::absentForcesHaveZeros()
{
    SBuiltTree built;
    built.build(CCreatorData("empty"), 5);
    QCOMPARE(entries().size(), std::size_t(12));
    for (const auto& entry : entries()) {
        for (const auto& field : entry->m_keys.front()->m_fields) {
            const CaseValue& value = field->m_values.front();
            QVERIFY(value == CaseValue(0.0) || value == CaseValue(false));
        }
    }
}

void CPropertyTreeTest::shapeFactorsStandBeforeTheirForce()
{
    CCreatorData deck("shapes");
    deck.m_externalForces.m_ganserDrag.m_sName = "Ganser Drag";
    deck.m_externalForces.m_ganserDrag.m_shapeFactors["Stone"] = 0.8;
    deck.m_externalForces.m_haiderLevenspielDrag.m_sName = "Haider and Levenspiel Drag";
    deck.m_externalForces.m_haiderLevenspielDrag.m_shapeFactors["Stone"] = 0.9;
    SBuiltTree built;
    built.build(deck, 5);
    QStringList lines = forceLines();
    lines.insert(2, QStringLiteral("    Haider and Levenspiel Drag Particle "));
    lines.insert(0, QStringLiteral("    Ganser Drag Particle "));
    QCOMPARE(outline(built.tree), groupLines({}, {}, lines));
    QCOMPARE(fieldNames(*entryNamed("Ganser Drag Particle ")->m_keys.front()),
             QStringList({"Spherocity"}));
}

void CPropertyTreeTest::forcesEqualToAPresentGanserDragRepeatItsShapeFactors()
{
    CCreatorData deck("shapes");
    // The Magnus record has the Ganser record's content, name included.
    deck.m_externalForces.m_ganserDrag.m_sName = "Ganser Drag";
    deck.m_externalForces.m_ganserDrag.m_shapeFactors["Stone"] = 0.8;
    deck.m_externalForces.m_magnusLift.m_sName = "Ganser Drag";
    SBuiltTree built;
    built.build(deck, 5);
    QVERIFY(entryNamed("Ganser Drag Particle ", 1) != nullptr);
    QVERIFY(entryNamed("Ganser Drag Particle ", 2) == nullptr);
}

void CPropertyTreeTest::labelsWithoutARowRaise_data()
{
    QTest::addColumn<int>("model");
    QTest::newRow("spray coating between particles") << 0;
    QTest::newRow("spray coating at geometry") << 1;
    QTest::newRow("Oka wear") << 2;
    QTest::newRow("Archard deformation") << 3;
    QTest::newRow("Oka deformation") << 4;
}

void CPropertyTreeTest::labelsWithoutARowRaise()
{
    QFETCH(int, model);
    CCreatorData deck("limits");
    switch (model) {
    case 0:
        deck.m_surfaceSurface.m_sprayCoating["a"] = 1.0;
        break;
    case 1:
        deck.m_surfaceGeometry.m_sprayCoating["a"] = 1.0;
        break;
    case 2:
        deck.m_surfaceGeometry.m_okaWear["a<>b"] = {1.0, 2.0, 3.0};
        break;
    case 3:
        deck.m_surfaceGeometry.m_archardDeformation = {"Active", true};
        break;
    default:
        deck.m_surfaceGeometry.m_okaDeformation = {"Active", true};
        break;
    }
    QCOMPARE(failureOfBuilding(deck, 11), MissingRow);
}

void CPropertyTreeTest::archardDeformationIsIgnoredBelowFormatEleven()
{
    CCreatorData deck("limits");
    deck.m_surfaceGeometry.m_archardDeformation = {"Active", true};
    QCOMPARE(failureOfBuilding(deck, 10), std::string());
}

TARNEL_TEST_MAIN(CPropertyTreeTest)
#include "property_tree_test.moc"
