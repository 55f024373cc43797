#include "deck/creator_data.h"

#include "tests/deck/deck_test_files.h"
#include "tests/deck/expected_record.h"
#include "tests/support/test_environment.h"

#include <QtTest>

#include <functional>
#include <limits>

using Change = std::function<void(CCreatorData&)>;
Q_DECLARE_METATYPE(Change)

class TestCreatorData : public QObject
{
    Q_OBJECT

private slots:
    void init() { CTestEnvironment::reset(); }

    void newRecordIsEmptyAndZero()
    {
        const CCreatorData record("hopper");
        QCOMPARE(record.m_sName, std::string("hopper"));
        QVERIFY(record.m_interactions.empty());
        const CModelSet& set = record.m_surfaceGeometry;
        QVERIFY(!set.m_bUndampedForceOnly && !set.m_bTangentialRotationOnly);
        QCOMPARE(set.m_rollingViscousDampingRatio, 0.0);
        QCOMPARE(set.m_linearSpringValue, CTaggedValue<double>(std::string(), 0.0));
        QCOMPARE(record.m_surfaceSurface.m_bondingTorqueFeedback,
                 CTaggedValue<bool>(std::string(), false));
        const CForce& force = record.m_externalForces.m_magnusLift;
        QVERIFY(force.m_sName.empty());
        QVERIFY(force.m_steadyFlowVelocity == std::make_tuple(0.0, 0.0, 0.0));
        QCOMPARE(force.m_density + force.m_fieldScale + force.m_viscosity + force.m_usingSteadyFlow,
                 0.0);
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
        row("key", [](CCreatorData& record) { record.m_surfaceSurface.m_bonding["new"]; });
        row("tag",
            [](CCreatorData& record) { record.m_surfaceGeometry.m_okaDeformation.first.clear(); });
        row("flag",
            [](CCreatorData& record) { record.m_surfaceGeometry.m_bUndampedForceOnly ^= true; });
        row("model set",
            [](CCreatorData& record) { record.m_surfaceSurface.m_sprayCoating.clear(); });
        row("force name",
            [](CCreatorData& record) { record.m_externalForces.m_saffmanLift.m_sName.clear(); });
        row("velocity", [](CCreatorData& record) {
            std::get<2>(record.m_externalForces.m_ganserDrag.m_steadyFlowVelocity) = -1.0;
        });
        row("shape", [](CCreatorData& record) {
            record.m_externalForces.m_haiderLevenspielDrag.m_shapeFactors["sphere"] = -1.0;
        });
        row("temperature", [](CCreatorData& record) {
            record.m_externalForces.m_temperatureUpdate["glass"] = -1.0;
        });
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
};

TARNEL_TEST_MAIN(TestCreatorData)
#include "creator_data_test.moc"
