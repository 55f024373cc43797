#include "parameters/property_tree.h"

#include "parameters/parameter_catalogue.h"
#include "parameters/parameter_limits.h"
#include "parameters/property_tree_widget_item.h"
#include "tests/parameters/built_tree.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QTest>
#include <QTreeWidget>

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

/// The only key of the Linear Spring built at that place: 0 between particles, 1 at geometry.
std::string keyOfLinearSpring(std::size_t occurrence)
{
    const auto entry = entryNamed("Linear Spring", occurrence);
    return entry != nullptr && entry->m_keys.size() == 1 ? entry->m_keys.front()->m_name
                                                         : std::string("no entry of one key");
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
    void whatEveryFormatOffers_data();
    void whatEveryFormatOffers();
    void bondingV2ByFormat();
    void bondingTagsNeedTheBondingData();
    void geometryHeatConductionFromFormatTwo();
    void columnOneMovesWithTheLevel();
    void shapeFactorsStandBeforeTheirForce();
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
    SBuiltTree built;
    built.build(fullRecord(), 2);
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
    deck.m_surfaceGeometry.m_linearSpringValue = {"Active", 5.0};
    deck.m_surfaceGeometry.m_linearSpring["a<>b"] = 6.0;
    SBuiltTree legacy;
    legacy.build(deck, 1);
    QCOMPARE(keyOfLinearSpring(0), std::string("Active"));
    QCOMPARE(keyOfLinearSpring(1), std::string("Active"));
    QVERIFY(entryNamed("Linear Spring", 2) == nullptr);
    CTestEnvironment::reset();
    SBuiltTree perPair;
    perPair.build(deck, 2);
    QCOMPARE(keyOfLinearSpring(0), std::string("a<>a"));
    QCOMPARE(keyOfLinearSpring(1), std::string("a<>b"));
    QVERIFY(entryNamed("Linear Spring", 2) == nullptr);
}

void CPropertyTreeTest::whatEveryFormatOffers_data()
{
    const QStringList tags = {"      Bonding Start Time", "      Bonding Torque Feedback"};
    const QStringList heat = {"    Heat Conduction", "    Heat Conduction"};
    QTest::addColumn<int>("format");
    QTest::addColumn<QStringList>("bondingV2");
    QTest::addColumn<QStringList>("geometryHeat");
    const QStringList bondingV2 = {"    Bonding V2"};
    QTest::newRow("0") << 0 << QStringList() << QStringList();
    QTest::newRow("1") << 1 << bondingV2 + tags << QStringList();
    QTest::newRow("2") << 2 << bondingV2 + tags << heat;
    QTest::newRow("3") << 3 << bondingV2 + tags.mid(1) << heat;
    QTest::newRow("10") << 10 << bondingV2 + tags.mid(1) << heat;
    QTest::newRow("11") << 11 << bondingV2 + tags.mid(1) << heat;
    QTest::newRow("12") << 12 << bondingV2 + tags.mid(1) << heat;
}

void CPropertyTreeTest::whatEveryFormatOffers()
{
    QFETCH(int, format);
    QFETCH(QStringList, bondingV2);
    QFETCH(QStringList, geometryHeat);
    CCreatorData deck = fullRecord();
    deck.m_surfaceSurface.m_linearSpringValue = {"Active", 3.0};
    SBuiltTree built;
    built.build(deck, format);
    const QStringList particles = QStringList{"    Hertz-Mindlin with JKR",
                                              "    Hertz-Mindlin with JKR V2",
                                              "    Linear Spring",
                                              "    Hysteretic Spring",
                                              "      Interactions",
                                              "      Yields",
                                              "    Edinburgh Elasto-Plastic Adhesion",
                                              "    Bonding",
                                              "      Bonding Start Time",
                                              "      Bonding Torque Feedback"} +
                                  bondingV2 +
                                  QStringList{"    Heat Conduction", "    Spray Coating"};
    const QStringList geometry = QStringList{"    Rolling friction", "    Spray Coating"} +
                                 geometryHeat + QStringList{"    Archard Wear"};
    QCOMPARE(outline(built.tree),
             groupLines(particles, geometry, QStringList{"    Temperature Update"} + forceLines()));
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
