#include "deck/deck_serializer.h"

#include "app/constants/deck_keys.h"
#include "app/constants/messages.h"
#include "deck/app_settings.h"
#include "samples/player/modal_watcher.h"
#include "tests/deck/deck_test_files.h"
#include "tests/deck/expected_record.h"
#include "tests/deck/stream_capture.h"
#include "tests/support/test_environment.h"

#include <QtTest>

using DeckTestFiles::newDeck;
using DeckTestFiles::read;

namespace {

const char* const particleGroup = "/CreatorData/0/PhysicsModels/SurfaceSurface";

std::vector<DeckRow> pairRows(const std::vector<std::vector<std::string>>& names,
                              std::size_t values)
{
    std::vector<DeckRow> rows;
    for (const std::vector<std::string>& pair : names) {
        rows.push_back({pair, std::vector<double>(values, 0.5)});
    }
    return rows;
}

/// Each model of every format, whatever the deck's own format visits.
DeckDescription crowdedDeck(int format)
{
    DeckDescription deck = fullDeck(14);
    deck.revision = revisionOfFormat(format);
    deck.surfaceSurface.linearSpringValue = 7.5;
    deck.surfaceGeometry.linearSpringValue = 8.5;
    deck.surfaceSurface.bondingV2->startTime = 9.5;
    deck.surfaceSurface.heatConductionName = fullDeck(format).surfaceSurface.heatConductionName;
    deck.temperatureUpdateName = fullDeck(format).temperatureUpdateName;
    deck.surfaceGeometry.archardWear = fullDeck(format).surfaceGeometry.archardWear;
    return deck;
}

int warningsOn(const DeckDescription& description, CCreatorData* record = nullptr)
{
    const DeckPaths paths = newDeck(description);
    CModalWatcher watcher;
    const CCreatorData data = read(paths);
    if (record != nullptr) {
        *record = data;
    }
    return static_cast<int>(watcher.messages().size());
}

const hsize_t longTable = 1300;

/// Many yields; the last one has the key of the first.
DeckDescription deckWithALongTable()
{
    DeckDescription description = plainDeck(14);
    std::vector<DeckRow> rows;
    for (hsize_t row = 0; row + 1 < longTable; ++row) {
        rows.push_back({{"material " + std::to_string(row)}, {double(row)}});
    }
    rows.push_back({{"material 0"}, {-1.0}});
    description.surfaceSurface.hystereticYields = rows;
    return description;
}

std::string yieldsPath()
{
    return std::string(particleGroup) + "/" + DeckKeys::HystereticSpringYields;
}

/// Writes the long table anew in packed chunks of so many records.
void packYields(const DeckPaths& deck, hsize_t chunk)
{
    H5::H5File file(deck.dataFile.string(), H5F_ACC_RDWR);
    H5::DataSet plain = file.openDataSet(yieldsPath());
    const H5::CompType type = plain.getCompType();
    std::vector<char> records(longTable * type.getSize());
    plain.read(records.data(), type);
    plain.close();
    H5::DSetCreatPropList list;
    list.setChunk(1, &chunk);
    list.setDeflate(6);
    const hsize_t most = H5S_UNLIMITED;
    const H5::DataSpace space(1, &longTable, &most);
    file.unlink(yieldsPath());
    file.createDataSet(yieldsPath(), type, space, list).write(records.data(), type);
}

/// Overwrites the packed bytes of a chunk.
void spoilChunk(const DeckPaths& deck, hsize_t index)
{
    haddr_t address = 0;
    hsize_t size = 0;
    {
        const H5::H5File file(deck.dataFile.string(), H5F_ACC_RDONLY);
        const H5::DataSet yields = file.openDataSet(yieldsPath());
        QVERIFY(H5Dget_chunk_info(yields.getId(), yields.getSpace().getId(), index, nullptr,
                                  nullptr, &address, &size) >= 0);
    }
    QFile file(QString::fromStdString(deck.dataFile.string()));
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.seek(qint64(address)));
    QCOMPARE(file.write(QByteArray(int(size), 'x')), qint64(size));
}

void addFormats()
{
    QTest::addColumn<int>("format");
    for (int format = 0; format <= 14; ++format) {
        QTest::newRow(qPrintable(QStringLiteral("format %1").arg(format))) << format;
    }
}

} // namespace

class TestDeckSerializer : public QObject
{
    Q_OBJECT

private slots:
    void init() { CTestEnvironment::reset(); }

    void everyModelOfAFormatIsRead_data() { addFormats(); }
    void everyModelOfAFormatIsRead()
    {
        QFETCH(int, format);
        const DeckDescription description = fullDeck(format);
        CModalWatcher watcher;
        const CCreatorData record = read(newDeck(description));
        const CCreatorData expected = expectedRecord(description, format);
        QVERIFY(record.m_interactions == expected.m_interactions);
        QVERIFY(record.m_surfaceSurface == expected.m_surfaceSurface);
        QVERIFY(record.m_surfaceGeometry == expected.m_surfaceGeometry);
        QVERIFY(record.m_externalForces == expected.m_externalForces);
        QCOMPARE(CAppSettings::instance()->deckFormat(), format);
        QVERIFY(watcher.messages().empty());
    }

    void whatAFormatDoesNotVisitIsLeftAlone_data() { addFormats(); }
    void whatAFormatDoesNotVisitIsLeftAlone()
    {
        QFETCH(int, format);
        const DeckDescription description = crowdedDeck(format);
        const CCreatorData record = read(newDeck(description));
        QVERIFY(record == expectedRecord(description, format));
        QCOMPARE(record.m_surfaceSurface.m_sprayCoating.empty(), format < 11);
        QCOMPARE(record.m_surfaceGeometry.m_okaWear.empty(), format < 11);
        QCOMPARE(record.m_surfaceGeometry.m_archardDeformation.first.empty(), format < 11);
        QCOMPARE(record.m_surfaceSurface.m_bondingV2.empty(), format < 1);
        QCOMPARE(record.m_surfaceSurface.m_linearSpring.empty(), format < 2);
        QCOMPARE(record.m_surfaceGeometry.m_linearSpringValue.first.empty(), format >= 2);
        QCOMPARE(record.m_surfaceSurface.m_bondingV2StartTime.first.empty(),
                 format != 1 && format != 2);
    }

    void absentModelsLeaveANewRecordEmptyInSilence()
    {
        CStreamCapture error(CStreamCapture::Error);
        CStreamCapture output(CStreamCapture::Output);
        const CCreatorData record = read(newDeck(plainDeck(14)));
        const QByteArray printed = error.text() + output.text();
        QVERIFY2(printed.isEmpty(), printed.constData());
        QVERIFY(record == expectedRecord(plainDeck(14), 14));
        QVERIFY(record.m_externalForces.m_ganserDrag.m_sName.empty());
    }

    void unlistedRevisionReadsAsFormatZero()
    {
        DeckDescription description = fullDeck(0);
        description.revision = 40001;
        CAppSettings::instance()->setDeckFormat(9);
        const CCreatorData record = read(newDeck(description));
        QCOMPARE(CAppSettings::instance()->deckFormat(), 0);
        QCOMPARE(record.m_surfaceGeometry.m_archardWear.count("glass"), std::size_t(1));
        QVERIFY(record == expectedRecord(description, 0));
        QCOMPARE(DeckKeys::FormatForRevision.count(40001), std::size_t(1));
    }

    void revisionBetweenTwoRowsDoesNotTakeTheLowerRow()
    {
        DeckDescription description = plainDeck(14);
        description.revision = 39999;
        read(newDeck(description));
        QCOMPARE(CAppSettings::instance()->deckFormat(), 0);
    }

    void missingRevisionKeepsTheFormatOfTheDeckBefore()
    {
        read(newDeck(plainDeck(12)));
        DeckDescription description = fullDeck(12);
        description.revision.reset();
        const CCreatorData record = read(newDeck(description));
        QCOMPARE(CAppSettings::instance()->deckFormat(), 12);
        QVERIFY(record == expectedRecord(description, 12));
    }

    void writingReadsTheRevisionToo()
    {
        const DeckPaths deck = newDeck(plainDeck(7));
        CCreatorData record = read(deck);
        CAppSettings::instance()->setDeckFormat(3);
        DeckTestFiles::walk(deck, record, CDeckSerializer::Write);
        QCOMPARE(CAppSettings::instance()->deckFormat(), 7);
    }

    void formatOneRenamesTheTemperatureUpdateForGood()
    {
        const DeckDescription later = fullDeck(5);
        QVERIFY(!read(newDeck(later)).m_externalForces.m_temperatureUpdate.empty());
        read(newDeck(plainDeck(1)));
        QVERIFY(read(newDeck(later)).m_externalForces.m_temperatureUpdate.empty());
        DeckDescription renamed = later;
        renamed.temperatureUpdateName = "Temperature Update/particle data";
        QVERIFY(!read(newDeck(renamed)).m_externalForces.m_temperatureUpdate.empty());
        QVERIFY(!read(newDeck(later)).m_surfaceSurface.m_heatConduction.empty());
    }

    void formatTwoRenamesTheHeatConductionForGood()
    {
        const DeckDescription later = fullDeck(5);
        QVERIFY(!read(newDeck(later)).m_surfaceSurface.m_heatConduction.empty());
        read(newDeck(plainDeck(2)));
        QVERIFY(read(newDeck(later)).m_surfaceSurface.m_heatConduction.empty());
        DeckDescription renamed = later;
        renamed.surfaceSurface.heatConductionName = "Heat Conduction/particle data";
        QVERIFY(!read(newDeck(renamed)).m_surfaceSurface.m_heatConduction.empty());
        QVERIFY(!read(newDeck(later)).m_externalForces.m_temperatureUpdate.empty());
    }

    void deckWithoutYieldsReadsWithoutAMessage()
    {
        DeckDescription description = fullDeck(14);
        description.surfaceSurface.hystereticYields.reset();
        CStreamCapture error(CStreamCapture::Error);
        CCreatorData record;
        QCOMPARE(warningsOn(description, &record), 0);
        QCOMPARE(error.text(), QByteArray());
        QVERIFY(record.m_surfaceSurface.m_hystereticYields.empty());
        QVERIFY(!record.m_surfaceSurface.m_hystereticInteractions.empty());
    }

    void timeModeOfFormatTwoWarnsOnceAndLoadsFully()
    {
        DeckDescription description = fullDeck(2);
        description.surfaceSurface.bondingV2->timeMode = 1.0;
        const DeckPaths paths = newDeck(description);
        CModalWatcher watcher;
        const CCreatorData record = read(paths);
        QCOMPARE(watcher.messages().size(), std::size_t(1));
        const SShownMessage& message = watcher.messages().front();
        QCOMPARE(message.title, QStringLiteral("Warning"));
        QCOMPARE(message.text, QStringLiteral("BondCreationTime Particle Custom Property is "
                                              "currently unsupported"));
        QCOMPARE(message.icon, QMessageBox::Warning);
        QCOMPARE(message.buttons, QStringList(QStringLiteral("OK")));
        QVERIFY(!message.hasParent);
        QVERIFY(record == expectedRecord(description, 2));
    }

    void timeModeOfFormatThreeShowsNoWarningAndReadsNoStartTime()
    {
        DeckDescription description = fullDeck(3);
        description.surfaceSurface.bondingV2->timeMode = 1.0;
        description.surfaceSurface.bondingV2->startTime = 4.0;
        CCreatorData record;
        QCOMPARE(warningsOn(description, &record), 0);
        QVERIFY(record.m_surfaceSurface.m_bondingV2StartTime.first.empty());
        QCOMPARE(record.m_surfaceSurface.m_bondingV2StartTime.second, 0.0);
    }

    void timeModeOfFormatZeroIsNotAskedFor()
    {
        DeckDescription description = fullDeck(1);
        description.revision = revisionOfFormat(0);
        description.surfaceSurface.bondingV2->timeMode = 1.0;
        description.surfaceGeometry.archardWear.reset();
        QCOMPARE(warningsOn(description), 0);
    }

    void separatorInANameWarnsOncePerElement_data()
    {
        QTest::addColumn<int>("model");
        QTest::addColumn<int>("warnings");
        QTest::newRow("JKR") << 0 << 2;
        QTest::newRow("hysteretic spring") << 1 << 2;
        QTest::newRow("Edinburgh") << 2 << 2;
        QTest::newRow("Oka wear has no such test") << 3 << 0;
        QTest::newRow("interactions have no such test") << 4 << 0;
        QTest::newRow("bonding has no such test") << 5 << 0;
    }
    void separatorInANameWarnsOncePerElement()
    {
        QFETCH(int, model);
        QFETCH(int, warnings);
        const std::vector<std::vector<std::string>> names = {
            {"A<>B", "C"}, {"A", "C"}, {"C", "A<>B"}};
        DeckDescription description = plainDeck(14);
        ParticleModels& surface = description.surfaceSurface;
        if (model == 0) {
            surface.hertzMindlinJkr = pairRows(names, 1);
        } else if (model == 1) {
            surface.hystereticInteractions = pairRows(names, 2);
        } else if (model == 2) {
            surface.edinburghAdhesion = pairRows(names, 6);
        } else if (model == 3) {
            description.surfaceGeometry.okaWear = pairRows(names, 3);
            description.surfaceGeometry.okaDeformation = true;
        } else if (model == 4) {
            description.interactions = pairRows({{"A<>B<>C"}}, 3);
        } else {
            surface.bonding = BondingModel{pairRows({{"A<>B<>C"}}, 5), {}, 0.0, false};
        }
        const DeckPaths paths = newDeck(description);
        CModalWatcher watcher;
        const CCreatorData record = read(paths);
        QCOMPARE(static_cast<int>(watcher.messages().size()), warnings);
        for (const SShownMessage& message : watcher.messages()) {
            QCOMPARE(message.title, QStringLiteral("Deck Incompatible"));
            QCOMPARE(message.text, Messages::MaterialToken);
            QCOMPARE(message.icon, QMessageBox::Warning);
            QCOMPARE(message.buttons, QStringList(QStringLiteral("OK")));
            QVERIFY(!message.hasParent);
        }
        QVERIFY(record == expectedRecord(description, 14));
    }

    void firstOfTwoEqualKeysWins()
    {
        DeckDescription description = plainDeck(14);
        description.surfaceSurface.hystereticYields =
            std::vector<DeckRow>{{{"glass"}, {1.0}}, {{"glass"}, {2.0}}};
        const SingleMap expected = {{"glass", 1.0}};
        QVERIFY(read(newDeck(description)).m_surfaceSurface.m_hystereticYields == expected);
    }

    void longTableIsReadWhole_data()
    {
        QTest::addColumn<int>("chunk");
        QTest::newRow("in one piece") << 0;
        QTest::newRow("small chunks") << 7;
        QTest::newRow("large chunks") << 600;
        QTest::newRow("one chunk, larger than the table") << 2000;
    }
    void longTableIsReadWhole()
    {
        QFETCH(int, chunk);
        const DeckPaths deck = newDeck(deckWithALongTable());
        if (chunk > 0) {
            packYields(deck, hsize_t(chunk));
        }
        SingleMap expected;
        for (hsize_t row = 0; row + 1 < longTable; ++row) {
            expected["material " + std::to_string(row)] = double(row);
        }
        QVERIFY(read(deck).m_surfaceSurface.m_hystereticYields == expected);
    }

    void tableThatCannotBeReadToItsEndIsNotReadAtAll()
    {
        const DeckPaths deck = newDeck(deckWithALongTable());
        packYields(deck, 600);
        spoilChunk(deck, 2);
        const CCreatorData record = read(deck);
        QVERIFY(record.m_surfaceSurface.m_hystereticYields.empty());
        QVERIFY(!record.m_interactions.empty());
    }

    void repeatReadKeepsTheValuesOfKnownKeys()
    {
        const DeckPaths deck = newDeck(plainDeck(14));
        CCreatorData record = read(deck);
        std::get<0>(record.m_interactions.at("glass<>steel")) = 99.0;
        record.m_interactions.erase("glass<>glass");
        DeckTestFiles::walk(deck, record, CDeckSerializer::Read);
        QCOMPARE(std::get<0>(record.m_interactions.at("glass<>steel")), 99.0);
        QCOMPARE(record.m_interactions.size(), std::size_t(2));
    }

    void modeTwoChangesNeitherTheRecordNorTheFile()
    {
        const DeckPaths deck = newDeck(fullDeck(14));
        const QByteArray before = DeckTestFiles::bytesOf(deck.dataFile);
        CCreatorData empty;
        DeckTestFiles::walk(deck, empty, 2);
        QVERIFY(empty == CCreatorData());
        CCreatorData changed = changedRecord(read(deck));
        const CCreatorData copy = changed;
        DeckTestFiles::walk(deck, changed, 2);
        QVERIFY(changed == copy);
        QCOMPARE(DeckTestFiles::bytesOf(deck.dataFile), before);
    }

    void nothingStaysOpenBehindAWalk()
    {
        const DeckPaths deck = newDeck(fullDeck(14));
        H5::H5File file(deck.dataFile.string(), H5F_ACC_RDWR);
        CDeckSerializer serializer;
        CCreatorData record;
        QVERIFY(serializer.walk(file, record, CDeckSerializer::Read));
        QCOMPARE(file.getObjCount(H5F_OBJ_ALL), ssize_t(1));
    }

    void nothingStaysOpenBehindAWalkThatFails()
    {
        const DeckPaths deck = newDeck(fullDeck(14));
        H5::H5File file(deck.dataFile.string(), H5F_ACC_RDWR);
        file.unlink(std::string("/CreatorData/0/PhysicsModels/ExternalForces"));
        CDeckSerializer serializer;
        CCreatorData record;
        QVERIFY_EXCEPTION_THROWN(serializer.walk(file, record, CDeckSerializer::Read),
                                 H5::GroupIException);
        QCOMPARE(file.getObjCount(H5F_OBJ_ALL), ssize_t(1));
        QVERIFY(!record.m_surfaceGeometry.m_archardWear.empty());
    }

    void missingFirstGroupIsAFileException()
    {
        const DeckPaths deck = newDeck(plainDeck(14));
        H5::H5File file(deck.dataFile.string(), H5F_ACC_RDWR);
        file.unlink(std::string("/CreatorData"));
        CDeckSerializer serializer;
        CCreatorData record;
        QVERIFY_EXCEPTION_THROWN(serializer.walk(file, record, CDeckSerializer::Read),
                                 H5::FileIException);
    }

    void anyByteButZeroIsTrue()
    {
        const DeckPaths deck = newDeck(fullDeck(14));
        {
            H5::H5File file(deck.dataFile.string(), H5F_ACC_RDWR);
            H5::Group group = file.openGroup(std::string(particleGroup) + "/Bonding");
            const unsigned char byte = 200;
            group.openAttribute("torque feedback").write(H5::PredType::NATIVE_UCHAR, &byte);
        }
        const CCreatorData record = read(deck);
        QCOMPARE(record.m_surfaceSurface.m_bondingTorqueFeedback,
                 CTaggedValue<bool>("Active", true));
    }
};

TARNEL_TEST_MAIN(TestDeckSerializer)
#include "deck_serializer_test.moc"
