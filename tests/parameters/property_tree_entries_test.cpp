#include "parameters/property_tree.h"

#include "parameters/parameter_catalogue.h"
#include "parameters/parameter_limits.h"
#include "tests/parameters/built_tree.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QTest>

#include <cmath>

class CPropertyTreeEntriesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void everyEntryHasItsKeyAndFields_data();
    void everyEntryHasItsKeyAndFields();
    void startTimeStandsBeforeTorqueFeedback();
    void fieldsHoldTheDeckNumbersBitForBit();
    void everyFieldHoldsOneValueAtFirst();
    void indicesRunWithoutAGapInWalkOrder();
    void theForceLabelsAreCrossed();
    void theFlowFlagIsTheLowestByte();
    void absentForcesHaveZeros();
    void forcesEqualToAPresentGanserDragRepeatItsShapeFactors();
    void forcesEqualToAPresentHaiderDragRepeatItsShapeFactors();
    void aForceThatDiffersInOneMemberHasNoShapeFactors_data();
    void aForceThatDiffersInOneMemberHasNoShapeFactors();
    void aForceWithANotANumberHasNoShapeFactors();
};

void CPropertyTreeEntriesTest::initTestCase()
{
    ParameterCatalogue::initialise();
    initialiseParameterLimits();
}

void CPropertyTreeEntriesTest::init()
{
    CTestEnvironment::reset();
}

void CPropertyTreeEntriesTest::everyEntryHasItsKeyAndFields_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("occurrence");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("fields");
    const auto row = [](const char* name, int occurrence, const char* key, const char* fields) {
        QTest::addRow("%s %d", name, occurrence)
            << QString::fromLatin1(name) << occurrence << QString::fromLatin1(key)
            << QString::fromLatin1(fields);
    };
    row("Hertz-Mindlin with JKR", 0, "a<>a", "Surface Energy");
    row("Hertz-Mindlin with JKR V2", 0, "a<>a", "Interfacial Surface energy");
    row("Linear Spring", 0, "a<>a", "Characteristic Velocity");
    row("Interactions", 0, "a<>a", "Damping,Stiffness");
    row("Yields", 0, "a", "Yield Strength");
    row("Edinburgh Elasto-Plastic Adhesion", 0, "a<>a",
        "Constant pull-off force,Surface Energy,Contact Plasticity Ratio,Slope Exp,Tensile "
        "Exp,Tangential Stiff Multiplier");
    row("Bonding", 0, "a<>a",
        "Normal Stiffness per unit area,Shear Stiffness per unit area,Critical Normal "
        "Stress,Critical Shear Stress,Bonded Disk Radius");
    row("Bonding Start Time", 0, "Active", "Start Time");
    row("Bonding Torque Feedback", 0, "Active", "Torque Feedback");
    row("Bonding V2", 0, "a<>a",
        "Normal Stiffness per unit area,Normal Range,Tangential Stiffness,Tangential Range,Normal "
        "Strength,Shear Strength,Bonded Disk Scale");
    row("Bonding Start Time", 1, "Active", "Start Time");
    row("Bonding Torque Feedback", 1, "Active", "Torque Feedback");
    row("Heat Conduction", 0, "a", "Thermal Conductivity");
    row("Spray Coating", 0, "a<>a", "Active Sprays");
    row("Rolling friction", 0, "Active", "Enable Rolling Friction");
    row("Spray Coating", 1, "a<>b", "Active Sprays");
    row("Heat Conduction", 1, "a", "Thermal Conductivity");
    row("Heat Conduction", 2, "b", "Thermal Conductivity,Geometry Temperature");
    row("Archard Wear", 0, "a<>b", "Wear Constant");
    row("Temperature Update", 0, "a", "Heat Capacity");
    row("Ganser Drag", 0, "Steady Flow Velocity",
        "Density,Viscosity,Scale,Using Steady Velocity Flow");
    row("Ganser Drag", 1, "Steady Flow Velocity",
        "Steady Velocity Flow X,Steady Velocity Flow Y,Steady Velocity Flow Z");
}

void CPropertyTreeEntriesTest::everyEntryHasItsKeyAndFields()
{
    QFETCH(QString, name);
    QFETCH(int, occurrence);
    QFETCH(QString, key);
    QFETCH(QString, fields);
    SBuiltTree built;
    built.build(fullRecord(), 2);
    const auto entry = entryNamed(name.toStdString(), static_cast<std::size_t>(occurrence));
    QVERIFY(entry != nullptr);
    QCOMPARE(entry->m_keys.size(), std::size_t(1));
    QCOMPARE(QString::fromStdString(entry->m_keys.front()->m_name), key);
    QCOMPARE(fieldNames(*entry->m_keys.front()).join(QLatin1Char(',')), fields);
    for (const auto& field : entry->m_keys.front()->m_fields) {
        QCOMPARE(field->m_limit, &limitOf(field->m_name));
    }
}

void CPropertyTreeEntriesTest::startTimeStandsBeforeTorqueFeedback()
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

void CPropertyTreeEntriesTest::fieldsHoldTheDeckNumbersBitForBit()
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

void CPropertyTreeEntriesTest::everyFieldHoldsOneValueAtFirst()
{
    SBuiltTree built;
    built.build(fullRecord(), 2);
    int fields = 0;
    for (const auto& entry : entries()) {
        for (const auto& key : entry->m_keys) {
            for (const auto& field : key->m_fields) {
                QCOMPARE(field->m_values.size(), std::size_t(1));
                ++fields;
            }
        }
    }
    QCOMPARE(fields, built.fieldCount);
    QVERIFY(fields > 42);
}

void CPropertyTreeEntriesTest::indicesRunWithoutAGapInWalkOrder()
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

void CPropertyTreeEntriesTest::theForceLabelsAreCrossed()
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

void CPropertyTreeEntriesTest::theFlowFlagIsTheLowestByte()
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

void CPropertyTreeEntriesTest::absentForcesHaveZeros()
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

void CPropertyTreeEntriesTest::forcesEqualToAPresentGanserDragRepeatItsShapeFactors()
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

void CPropertyTreeEntriesTest::forcesEqualToAPresentHaiderDragRepeatItsShapeFactors()
{
    CCreatorData deck("shapes");
    deck.m_externalForces.m_haiderLevenspielDrag.m_sName = "Haider and Levenspiel Drag";
    deck.m_externalForces.m_haiderLevenspielDrag.m_shapeFactors["Stone"] = 0.8;
    deck.m_externalForces.m_saffmanLift.m_sName = "Haider and Levenspiel Drag";
    SBuiltTree built;
    built.build(deck, 5);
    QVERIFY(entryNamed("Haider and Levenspiel Drag Particle ", 1) != nullptr);
    QVERIFY(entryNamed("Haider and Levenspiel Drag Particle ", 2) == nullptr);
}

void CPropertyTreeEntriesTest::aForceThatDiffersInOneMemberHasNoShapeFactors_data()
{
    QTest::addColumn<int>("member");
    const QStringList names = {"name",       "flag",      "velocity x",  "velocity y",
                               "velocity z", "viscosity", "field scale", "density"};
    for (int member = 0; member < names.size(); ++member) {
        QTest::newRow(qPrintable(names.at(member))) << member;
    }
}

void CPropertyTreeEntriesTest::aForceThatDiffersInOneMemberHasNoShapeFactors()
{
    QFETCH(int, member);
    CCreatorData deck("shapes");
    deck.m_externalForces.m_ganserDrag.m_sName = "Ganser Drag";
    deck.m_externalForces.m_ganserDrag.m_shapeFactors["Stone"] = 0.8;
    CForce& lift = deck.m_externalForces.m_magnusLift;
    lift.m_sName = member == 0 ? "Magnus Lift" : "Ganser Drag";
    double* const numbers[] = {&lift.m_usingSteadyFlow,
                               &std::get<0>(lift.m_steadyFlowVelocity),
                               &std::get<1>(lift.m_steadyFlowVelocity),
                               &std::get<2>(lift.m_steadyFlowVelocity),
                               &lift.m_viscosity,
                               &lift.m_fieldScale,
                               &lift.m_density};
    if (member > 0) {
        *numbers[member - 1] = 1e-09;
    }
    SBuiltTree built;
    built.build(deck, 5);
    QVERIFY(entryNamed("Ganser Drag Particle ") != nullptr);
    QVERIFY(entryNamed("Ganser Drag Particle ", 1) == nullptr);
}

void CPropertyTreeEntriesTest::aForceWithANotANumberHasNoShapeFactors()
{
    // It doesn't even equal itself.
    CCreatorData deck("shapes");
    deck.m_externalForces.m_ganserDrag.m_sName = "Ganser Drag";
    deck.m_externalForces.m_ganserDrag.m_shapeFactors["Stone"] = 0.8;
    deck.m_externalForces.m_ganserDrag.m_density = std::nan("");
    SBuiltTree built;
    built.build(deck, 5);
    QVERIFY(entryNamed("Ganser Drag Particle ") == nullptr);
    QVERIFY(entryNamed("Ganser Drag", 1) != nullptr);
}

TARNEL_TEST_MAIN(CPropertyTreeEntriesTest)
#include "property_tree_entries_test.moc"
