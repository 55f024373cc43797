#include "deck/creator_data.h"

#include "tests/deck/deck_test_files.h"
#include "tests/deck/expected_record.h"
#include "tests/support/test_environment.h"

#include <QtTest>

#include <array>
#include <functional>
#include <limits>
#include <new>

using Change = std::function<void(CCreatorData&)>;
Q_DECLARE_METATYPE(Change)

class TestCreatorData : public QObject
{
    Q_OBJECT

private slots:
    void init() { CTestEnvironment::reset(); }

    void newRecordIsEmptyAndZero()
    {
        // On memory full of ones, so that a member that is left as it was is seen.
        alignas(CCreatorData) std::array<unsigned char, sizeof(CCreatorData)> memory;
        memory.fill(0xFF);
        auto* record = new (memory.data()) CCreatorData("hopper");
        QCOMPARE(record->m_sName, std::string("hopper"));
        QVERIFY(record->m_interactions.empty());
        checkNew(record->m_surfaceSurface);
        checkNew(record->m_surfaceGeometry);
        checkNew(record->m_externalForces);
        record->~CCreatorData();
    }

    void nameAloneMakesUnequal()
    {
        const DeckPaths deck = DeckTestFiles::newDeck(fullDeck(14));
        CCreatorData record = DeckTestFiles::read(deck);
        record.m_sName += "1";
        QVERIFY(record != DeckTestFiles::read(deck));
    }

    void twoRecordsOfOneDeckAreEqual()
    {
        const DeckPaths deck = DeckTestFiles::newDeck(fullDeck(14));
        QVERIFY(DeckTestFiles::read(deck) == DeckTestFiles::read(deck));
    }

    void anyChangeMakesUnequal_data()
    {
        QTest::addColumn<Change>("change");
        const auto row = [](const char* name, const Change& change) {
            QTest::newRow(name) << change;
        };
        row("name", [](CCreatorData& record) { record.m_sName += "1"; });
        row("number", [](CCreatorData& record) {
            std::get<2>(record.m_interactions.begin()->second) += 1e-9;
        });
        row("missing key", [](CCreatorData& record) { record.m_interactions.clear(); });
        addSetRows("surfaces: ", [](CCreatorData& record) -> CModelSet& {
            return record.m_surfaceSurface;
        });
        addSetRows("geometry: ", [](CCreatorData& record) -> CModelSet& {
            return record.m_surfaceGeometry;
        });
        addSurfaceRows();
        addGeometryRows();
        addForceRows();
    }
    void anyChangeMakesUnequal()
    {
        QFETCH(Change, change);
        const CCreatorData record = expectedRecord(fullDeck(14), 14, "hopper");
        CCreatorData changed = record;
        QVERIFY(changed == record);
        change(changed);
        QVERIFY(changed != record);
    }

    void recordWithANanIsUnequalToItsCopy()
    {
        CCreatorData record = expectedRecord(fullDeck(14), 14);
        record.m_surfaceSurface.m_hystereticYields["glass"] =
            std::numeric_limits<double>::quiet_NaN();
        const CCreatorData copy = record;
        QVERIFY(record != copy);
    }

    void copiesAreDeep()
    {
        CCreatorData record = expectedRecord(fullDeck(14), 14);
        const CCreatorData copy = record;
        record.m_interactions.clear();
        QCOMPARE(copy.m_interactions.size(), std::size_t(2));
    }

private:
    static void checkNew(const CModelSet& set)
    {
        QVERIFY(set.m_hertzMindlinJkr.empty() && set.m_linearSpring.empty());
        QVERIFY(set.m_hystereticInteractions.empty() && set.m_hystereticYields.empty());
        QVERIFY(set.m_edinburghAdhesion.empty() && set.m_hertzMindlinJkrV2.empty());
        QVERIFY(set.m_linearCohesionV2.empty() && set.m_sprayCoating.empty());
        QCOMPARE(set.m_linearSpringValue, CTaggedValue<double>(std::string(), 0.0));
        QVERIFY(!set.m_bUndampedForceOnly && !set.m_bTangentialRotationOnly);
        QCOMPARE(set.m_rollingViscousDampingRatio, 0.0);
        QCOMPARE(set.m_coefficientOfRollingStiffness, 0.0);
    }

    static void checkNew(const CSurfaceSurfaceModels& models)
    {
        checkNew(static_cast<const CModelSet&>(models));
        QVERIFY(models.m_bonding.empty() && models.m_bondingV2.empty());
        QVERIFY(models.m_heatConduction.empty());
        const CTaggedValue<bool> flag(std::string(), false);
        const CTaggedValue<double> number(std::string(), 0.0);
        QCOMPARE(models.m_bondingTorqueFeedback, flag);
        QCOMPARE(models.m_bondingV2TorqueFeedback, flag);
        QCOMPARE(models.m_bondingStartTime, number);
        QCOMPARE(models.m_bondingV2StartTime, number);
    }

    static void checkNew(const CSurfaceGeometryModels& models)
    {
        checkNew(static_cast<const CModelSet&>(models));
        QVERIFY(models.m_heatConductionParticle.empty() && models.m_heatConductionGeometry.empty());
        QVERIFY(models.m_archardWear.empty() && models.m_okaWear.empty());
        const CTaggedValue<bool> flag(std::string(), false);
        QCOMPARE(models.m_standardRollingFriction, flag);
        QCOMPARE(models.m_archardDeformation, flag);
        QCOMPARE(models.m_okaDeformation, flag);
    }

    static void checkNew(const CForce& force)
    {
        QVERIFY(force.m_sName.empty());
        QCOMPARE(force.m_usingSteadyFlow, 0.0);
        QVERIFY(force.m_steadyFlowVelocity == std::make_tuple(0.0, 0.0, 0.0));
        QCOMPARE(force.m_viscosity, 0.0);
        QCOMPARE(force.m_fieldScale, 0.0);
        QCOMPARE(force.m_density, 0.0);
    }

    static void checkNew(const CExternalForces& forces)
    {
        for (const CForce* force :
             {static_cast<const CForce*>(&forces.m_ganserDrag),
              static_cast<const CForce*>(&forces.m_haiderLevenspielDrag), &forces.m_magnusLift,
              &forces.m_morsiAlexanderDrag, &forces.m_saffmanLift, &forces.m_schillerNaumannDrag}) {
            checkNew(*force);
        }
        QVERIFY(forces.m_ganserDrag.m_shapeFactors.empty());
        QVERIFY(forces.m_haiderLevenspielDrag.m_shapeFactors.empty());
        QVERIFY(forces.m_temperatureUpdate.empty());
    }

    template <class Part, class Alter>
    static void addRow(const std::string& name, Part part, Alter alter)
    {
        QTest::newRow(name.c_str())
            << Change([part, alter](CCreatorData& record) { alter(part(record)); });
    }

    template <class Part>
    static void addSetRows(const std::string& place, Part part)
    {
        const auto row = [&place, part](const char* name, void (*alter)(CModelSet&)) {
            addRow(place + name, part, alter);
        };
        row("Hertz-Mindlin", [](CModelSet& set) { set.m_hertzMindlinJkr["new"]; });
        row("spring tag", [](CModelSet& set) { set.m_linearSpringValue.first += "x"; });
        row("spring value", [](CModelSet& set) { set.m_linearSpringValue.second += 1.0; });
        row("springs", [](CModelSet& set) { set.m_linearSpring["new"]; });
        row("hysteretic", [](CModelSet& set) { set.m_hystereticInteractions["new"]; });
        row("yields", [](CModelSet& set) { set.m_hystereticYields["new"]; });
        row("adhesion", [](CModelSet& set) { set.m_edinburghAdhesion["new"]; });
        row("Hertz-Mindlin V2", [](CModelSet& set) { set.m_hertzMindlinJkrV2["new"]; });
        row("undamped", [](CModelSet& set) { set.m_bUndampedForceOnly ^= true; });
        row("rotation", [](CModelSet& set) { set.m_bTangentialRotationOnly ^= true; });
        row("damping ratio", [](CModelSet& set) { set.m_rollingViscousDampingRatio += 1.0; });
        row("rolling", [](CModelSet& set) { set.m_coefficientOfRollingStiffness += 1.0; });
        row("cohesion", [](CModelSet& set) { set.m_linearCohesionV2["new"]; });
        row("spray coating", [](CModelSet& set) { set.m_sprayCoating["new"]; });
    }

    static void addSurfaceRows()
    {
        using Models = CSurfaceSurfaceModels;
        const auto row = [](const char* name, void (*alter)(Models&)) {
            addRow(
                name, [](CCreatorData& record) -> Models& { return record.m_surfaceSurface; },
                alter);
        };
        row("bonding", [](Models& models) { models.m_bonding["new"]; });
        row("torque", [](Models& models) { models.m_bondingTorqueFeedback.second ^= true; });
        row("start time", [](Models& models) { models.m_bondingStartTime.second += 1.0; });
        row("bonding V2", [](Models& models) { models.m_bondingV2["new"]; });
        row("torque V2", [](Models& models) { models.m_bondingV2TorqueFeedback.second ^= true; });
        row("start time V2", [](Models& models) { models.m_bondingV2StartTime.second += 1.0; });
        row("heat", [](Models& models) { models.m_heatConduction["new"]; });
    }

    static void addGeometryRows()
    {
        using Models = CSurfaceGeometryModels;
        const auto row = [](const char* name, void (*alter)(Models&)) {
            addRow(
                name, [](CCreatorData& record) -> Models& { return record.m_surfaceGeometry; },
                alter);
        };
        row("rolling", [](Models& models) { models.m_standardRollingFriction.second ^= true; });
        row("particle heat", [](Models& models) { models.m_heatConductionParticle["new"]; });
        row("geometry heat", [](Models& models) { models.m_heatConductionGeometry["new"]; });
        row("Archard", [](Models& models) { models.m_archardWear["new"]; });
        row("Archard flag", [](Models& models) { models.m_archardDeformation.second ^= true; });
        row("Oka", [](Models& models) { models.m_okaWear["new"]; });
        row("Oka flag", [](Models& models) { models.m_okaDeformation.second ^= true; });
        row("Oka tag", [](Models& models) { models.m_okaDeformation.first.clear(); });
    }

    template <class Part>
    static void addRowsOfForce(const std::string& place, Part part)
    {
        const auto row = [&place, part](const char* name, void (*alter)(CForce&)) {
            addRow(place + name, part, alter);
        };
        row("name", [](CForce& force) { force.m_sName += "x"; });
        row("flow", [](CForce& force) { force.m_usingSteadyFlow += 1.0; });
        row("velocity", [](CForce& force) { std::get<2>(force.m_steadyFlowVelocity) += 1.0; });
        row("viscosity", [](CForce& force) { force.m_viscosity += 1.0; });
        row("scale", [](CForce& force) { force.m_fieldScale += 1.0; });
        row("density", [](CForce& force) { force.m_density += 1.0; });
    }

    static void addForceRows()
    {
        using Forces = CExternalForces;
        const auto rows = [](const char* place, CForce& (*part)(Forces&)) {
            addRowsOfForce(place, [part](CCreatorData& record) -> CForce& {
                return part(record.m_externalForces);
            });
        };
        rows("Ganser ", [](Forces& forces) -> CForce& { return forces.m_ganserDrag; });
        rows("Haider ", [](Forces& forces) -> CForce& { return forces.m_haiderLevenspielDrag; });
        rows("Magnus ", [](Forces& forces) -> CForce& { return forces.m_magnusLift; });
        rows("Morsi ", [](Forces& forces) -> CForce& { return forces.m_morsiAlexanderDrag; });
        rows("Saffman ", [](Forces& forces) -> CForce& { return forces.m_saffmanLift; });
        rows("Schiller ", [](Forces& forces) -> CForce& { return forces.m_schillerNaumannDrag; });
        const auto row = [](const char* name, void (*alter)(Forces&)) {
            addRow(
                name, [](CCreatorData& record) -> Forces& { return record.m_externalForces; },
                alter);
        };
        row("Ganser shape", [](Forces& forces) { forces.m_ganserDrag.m_shapeFactors["new"]; });
        row("Haider shape",
            [](Forces& forces) { forces.m_haiderLevenspielDrag.m_shapeFactors["sphere"] = -1.0; });
        row("temperature", [](Forces& forces) { forces.m_temperatureUpdate["glass"] = -1.0; });
    }
};

TARNEL_TEST_MAIN(TestCreatorData)
#include "creator_data_test.moc"
