#include "tests/deck/deck_test_files.h"
#include "tests/deck/expected_record.h"
#include "tests/deck/interposed_transfers.h"
#include "tests/support/test_environment.h"

#include <QtTest>

#include <map>
#include <set>
#include <string>
#include <vector>

namespace {

/// For each dataset the calls that move its elements: whether all of them.
using Transfers = std::map<std::string, std::vector<bool>>;
Transfers s_reads;
Transfers s_writes;

std::string pathOf(hid_t dataset)
{
    std::vector<char> path(256);
    H5Iget_name(dataset, path.data(), path.size());
    return path.data();
}

void note(Transfers& transfers, hid_t dataset, hid_t inMemory, hid_t inFile)
{
    transfers[pathOf(dataset)].push_back(inMemory == H5S_ALL && inFile == H5S_ALL);
}

/// The compound datasets of the deck.
std::set<std::string> tablesOf(const DeckPaths& deck)
{
    std::set<std::string> tables;
    const H5::H5File file(deck.dataFile.string(), H5F_ACC_RDONLY);
    const auto visit = [](hid_t root, const char* name, const H5O_info_t* info, void* data) {
        if (info->type == H5O_TYPE_DATASET) {
            if (H5::Group(root).openDataSet(name).getTypeClass() == H5T_COMPOUND) {
                static_cast<std::set<std::string>*>(data)->insert("/" + std::string(name));
            }
        }
        return herr_t(0);
    };
    const H5::Group root = file.openGroup("/");
    H5Ovisit2(root.getId(), H5_INDEX_NAME, H5_ITER_INC, visit, &tables, H5O_INFO_BASIC);
    return tables;
}

/// Empty, or the name of a table that wasn't moved by one call for the whole of it.
QString movedInParts(const Transfers& transfers, const DeckPaths& deck)
{
    for (const std::string& path : tablesOf(deck)) {
        const auto calls = transfers.find(path);
        if (calls == transfers.end() || calls->second != std::vector<bool>{true}) {
            return QString::fromStdString(path);
        }
    }
    return {};
}

} // namespace

/// What the library is asked for when a deck is read and written.
class TestOneTransfer : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        InterposedTransfers::listen([](hid_t dataset, hid_t inMemory,
                                       hid_t inFile) { note(s_reads, dataset, inMemory, inFile); },
                                    [](hid_t dataset, hid_t inMemory, hid_t inFile) {
                                        note(s_writes, dataset, inMemory, inFile);
                                    });
    }
    void init()
    {
        CTestEnvironment::reset();
        s_reads.clear();
        s_writes.clear();
    }

    void eachTableIsReadByOneCall_data()
    {
        QTest::addColumn<int>("rows");
        QTest::newRow("few") << 3;
        QTest::newRow("many") << 5000;
    }
    void eachTableIsReadByOneCall()
    {
        QFETCH(int, rows);
        const DeckPaths deck = newDeck(rows);
        s_reads.clear();
        const CCreatorData record = DeckTestFiles::read(deck);
        QCOMPARE(record.m_surfaceSurface.m_hystereticYields.size(), static_cast<std::size_t>(rows));
        QCOMPARE(movedInParts(s_reads, deck), QString());
    }

    void eachTableIsWrittenByOneCall()
    {
        const DeckPaths deck = newDeck(5000);
        CCreatorData record = DeckTestFiles::read(deck);
        s_reads.clear();
        s_writes.clear();
        DeckTestFiles::walk(deck, record, CDeckSerializer::Write);
        QCOMPARE(movedInParts(s_writes, deck), QString());
        for (const auto& [path, calls] : s_reads) {
            QVERIFY2(tablesOf(deck).count(path) == 0, path.c_str());
        }
    }

private:
    static DeckPaths newDeck(int rows)
    {
        DeckDescription description = fullDeck(14);
        std::vector<DeckRow> yields;
        for (int row = 0; row < rows; ++row) {
            yields.push_back({{"material " + std::to_string(row)}, {double(row)}});
        }
        description.surfaceSurface.hystereticYields = yields;
        return DeckTestFiles::newDeck(description);
    }
};

TARNEL_TEST_MAIN(TestOneTransfer)
#include "one_transfer_test.moc"
