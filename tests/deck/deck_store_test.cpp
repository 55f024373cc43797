#include "deck/deck_store.h"

#include "tests/support/test_environment.h"

#include <QtTest>

// The store only passes entries on, so that their own class isn't needed here.
class CParameterEntry
{
};

class TestDeckStore : public QObject
{
    Q_OBJECT

private slots:
    void init() { CTestEnvironment::reset(); }

    void freshStoreIsEmpty()
    {
        const CDeckStore store;
        QVERIFY(!store.simulationOutputs());
        QVERIFY(store.creatorData().empty());
        QVERIFY(store.parameters().empty());
        QVERIFY(store.simulatorOptions().empty());
        QCOMPARE(store.coupling(), CDeckStore::Coupling());
        QCOMPARE(store.postProcessing().first, 0);
        QCOMPARE(store.postProcessing().second, std::vector<std::string>{std::string()});
    }

    void thereIsOneStore()
    {
        CDeckStore::instance()->creatorData().emplace_back("hopper");
        QCOMPARE(CDeckStore::instance()->creatorData().size(), std::size_t(1));
        QCOMPARE(CDeckStore::instance(), CDeckStore::instance());
    }

    void settersTakeTheirValues()
    {
        CDeckStore store;
        store.setSimulatorOptions(" -p 4");
        store.setCoupling({"/server", "serve"});
        store.setPostProcessing({2, {"a.py", "env", "flag"}});
        store.setSimulationOutputs(true);
        QCOMPARE(store.simulatorOptions(), std::string(" -p 4"));
        QCOMPARE(store.coupling(), CDeckStore::Coupling("/server", "serve"));
        QCOMPARE(store.postProcessing().first, 2);
        QCOMPARE(store.postProcessing().second.size(), std::size_t(3));
        QVERIFY(store.simulationOutputs());
    }

    void entriesAreShared()
    {
        CDeckStore store;
        const auto entry = std::make_shared<CParameterEntry>();
        store.pushParameter(entry);
        QCOMPARE(store.parameters().back().get(), entry.get());
        QCOMPARE(entry.use_count(), 2L);
    }

    void newDeckLeavesTheOtherChoices()
    {
        CDeckStore store;
        store.setCoupling({"/server", "serve"});
        store.pushParameter(std::make_shared<CParameterEntry>());
        store.creatorData().clear();
        QCOMPARE(store.coupling().first, std::string("/server"));
        QCOMPARE(store.parameters().size(), std::size_t(1));
    }
};

TARNEL_TEST_MAIN(TestDeckStore)
#include "deck_store_test.moc"
