#include "deck/deck_loading.h"
#include "tests/deck/deck_test_files.h"
#include "tests/deck/expected_record.h"
#include "tests/deck/stream_capture.h"
#include "tests/support/test_environment.h"

#include <QElapsedTimer>
#include <QSet>
#include <QtTest>

#include <filesystem>
#include <functional>
#include <stdexcept>

using DeckTestFiles::newDeck;
using DeckTestFiles::read;
namespace fs = std::filesystem;

namespace {

using Spoil = std::function<void(H5::H5File&)>;

const std::string creatorData = "/CreatorData/0";
const std::string physics = creatorData + "/PhysicsModels";
const std::string particles = physics + "/SurfaceSurface";
const std::string forces = physics + "/ExternalForces";
const std::string jkrData = particles + "/Hertz-Mindlin with JKR/data";
const std::string bonding = particles + "/Bonding";
const std::string ganser = forces + "/Ganser Drag";

DeckPaths spoiltDeck(const Spoil& spoil)
{
    const DeckPaths deck = newDeck(fullDeck(14));
    H5::H5File file(deck.dataFile.string(), H5F_ACC_RDWR);
    spoil(file);
    return deck;
}

/// A dataset of one dimension that has no storage: its elements are all `fill`.
void replaceByAnnouncement(H5::H5File& file, const std::string& path, const H5::DataType& type,
                           hsize_t count, const void* fill)
{
    file.unlink(path);
    const hsize_t chunk = 16;
    H5::DSetCreatPropList list;
    list.setChunk(1, &chunk);
    list.setFillValue(type, fill);
    file.createDataSet(path, type, H5::DataSpace(1, &count), list);
}

/// The compound of the JKR pairs with members of other types.
H5::CompType pairType(const H5::DataType& name, const H5::DataType& value)
{
    H5::CompType type(2 * name.getSize() + value.getSize());
    type.insertMember("name1", 0, name);
    type.insertMember("name2", name.getSize(), name);
    type.insertMember("value", 2 * name.getSize(), value);
    return type;
}

void replacePairs(H5::H5File& file, const H5::DataType& name, const H5::DataType& value)
{
    const hsize_t count = 3;
    file.unlink(jkrData);
    file.createDataSet(jkrData, pairType(name, value), H5::DataSpace(1, &count));
}

/// One pair, 7 for "ABCD" and "E", in ten bytes.
void replaceByOneShortPair(H5::H5File& file, H5D_layout_t layout)
{
    const H5::CompType type =
        pairType(H5::StrType(H5::PredType::C_S1, 4), H5::PredType::NATIVE_SHORT);
    const char element[] = {'A', 'B', 'C', 'D', 'E', 0, 0, 0, 7, 0};
    const hsize_t count = 1;
    H5::DSetCreatPropList list;
    list.setLayout(layout);
    file.unlink(jkrData);
    file.createDataSet(jkrData, type, H5::DataSpace(1, &count), list).write(element, type);
}

/// Damage that the library itself refuses to write.
void changeBytes(const DeckPaths& deck, const QByteArray& before, const QByteArray& after)
{
    QByteArray bytes = DeckTestFiles::bytesOf(deck.dataFile);
    QVERIFY(bytes.contains(before));
    bytes.replace(before, after);
    QFile file(QString::fromStdString(deck.dataFile.string()));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

bool write(const DeckPaths& deck, const QByteArray& bytes)
{
    QFile file(QString::fromStdString(deck.dataFile.string()));
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.write(bytes) == bytes.size();
}

bool isStill(const DeckPaths& deck, const QByteArray& bytes)
{
    return DeckTestFiles::bytesOf(deck.dataFile) == bytes;
}

/// "loaded", "bad data", or the declared exception that passed.
QByteArray loadEnd(const DeckPaths& deck)
{
    CDeckSerializer serializer;
    try {
        const QString path = QString::fromStdString(deck.deck.string());
        const CCreatorData record = DeckLoading::loadDeck(serializer, path);
        return record == CCreatorData("bad data") ? "bad data" : "loaded";
    } catch (const H5::GroupIException&) {
        return "group exception";
    } catch (const std::out_of_range&) {
        return "out of range";
    }
}

} // namespace
Q_DECLARE_METATYPE(Spoil)

class TestHostileDeck : public QObject
{
    Q_OBJECT

private slots:
    void init() { CTestEnvironment::reset(); }

    void spoiltPairsAreNotRead_data()
    {
        QTest::addColumn<Spoil>("spoil");
        QTest::newRow("ten million in a small file") << Spoil([](H5::H5File& file) {
            const H5::CompType type =
                pairType(H5::StrType(H5::PredType::C_S1, 256), H5::PredType::NATIVE_DOUBLE);
            const std::vector<char> zero(type.getSize());
            replaceByAnnouncement(file, jkrData, type, 10'000'000, zero.data());
        });
        QTest::newRow("names that are numbers") << Spoil([](H5::H5File& file) {
            replacePairs(file, H5::PredType::NATIVE_INT, H5::PredType::NATIVE_DOUBLE);
        });
        QTest::newRow("values that are texts") << Spoil([](H5::H5File& file) {
            const H5::StrType text(H5::PredType::C_S1, 256);
            replacePairs(file, text, text);
        });
        QTest::newRow("values that are records") << Spoil([](H5::H5File& file) {
            const H5::StrType text(H5::PredType::C_S1, 256);
            replacePairs(file, text, pairType(text, H5::PredType::NATIVE_DOUBLE));
        });
        QTest::newRow("a link to itself") << Spoil([](H5::H5File& file) {
            file.unlink(jkrData);
            file.link(H5L_TYPE_SOFT, jkrData, jkrData);
        });
        QTest::newRow("the group above itself") << Spoil([](H5::H5File& file) {
            file.unlink(jkrData);
            file.link(H5L_TYPE_HARD, particles, jkrData);
        });
        QTest::newRow("a file outside") << Spoil([](H5::H5File& file) {
            file.unlink(jkrData);
            H5Lcreate_external("/nowhere/0.h5", "/data", file.getId(), jkrData.c_str(), H5P_DEFAULT,
                               H5P_DEFAULT);
        });
    }
    void spoiltPairsAreNotRead()
    {
        QFETCH(Spoil, spoil);
        CCreatorData expected = expectedRecord(fullDeck(14), 14);
        expected.m_surfaceSurface.m_hertzMindlinJkr.clear();
        QVERIFY(read(spoiltDeck(spoil)) == expected);
    }

    void numbersOfAnotherTypeAreConverted()
    {
        const DeckPaths deck =
            spoiltDeck([](H5::H5File& file) { replaceByOneShortPair(file, H5D_CONTIGUOUS); });
        const SingleMap expected = {{"ABCD<>E", 7.0}};
        QVERIFY(read(deck).m_surfaceSurface.m_hertzMindlinJkr == expected);
    }

    void pairInItsHeaderIsRead()
    {
        const DeckPaths deck =
            spoiltDeck([](H5::H5File& file) { replaceByOneShortPair(file, H5D_COMPACT); });
        const SingleMap expected = {{"ABCD<>E", 7.0}};
        QVERIFY(read(deck).m_surfaceSurface.m_hertzMindlinJkr == expected);
    }

    void pairThatItsHeaderHoldsInPartIsNotRead()
    {
        const DeckPaths deck =
            spoiltDeck([](H5::H5File& file) { replaceByOneShortPair(file, H5D_COMPACT); });
        // The bytes that the header holds, of ten.
        changeBytes(deck, QByteArray("\12\0ABCDE", 7), QByteArray("\11\0ABCDE", 7));
        CStreamCapture output(CStreamCapture::Output);
        const CCreatorData record = read(deck);
        const QByteArray printed = output.text();
        QVERIFY2(printed.contains("fewer elements than it says"), printed.constData());
        QVERIFY(record.m_surfaceSurface.m_hertzMindlinJkr.empty());
    }

    void memberOutsideItsElementIsNotRead()
    {
        const DeckPaths deck = newDeck(fullDeck(14));
        changeBytes(deck, QByteArray("value\0\0\0\0\2\0\0", 12),
                    QByteArray("value\0\0\0\1\2\0\0", 12));
        CStreamCapture output(CStreamCapture::Output);
        const CCreatorData record = read(deck);
        const QByteArray printed = output.text();
        QVERIFY2(printed.contains("members outside its elements"), printed.constData());
        QVERIFY(record.m_surfaceSurface.m_hertzMindlinJkr.empty());
    }

    void valueShorterThanItsTypeIsNotRead()
    {
        const DeckPaths deck = newDeck(fullDeck(14));
        // The size of an axis of the velocity, behind the array's one dimension of three.
        changeBytes(deck, QByteArray("\3\0\0\0\0\0\0\0\x11\x20\x3f\0\x08\0", 14),
                    QByteArray("\3\0\0\0\0\0\0\0\x11\x20\x3f\0\x08\x80", 14));
        CStreamCapture output(CStreamCapture::Output);
        const CForce force = read(deck).m_externalForces.m_magnusLift;
        const QByteArray printed = output.text();
        QVERIFY2(printed.contains("shorter than its type"), printed.constData());
        QVERIFY(force.m_steadyFlowVelocity == CForce().m_steadyFlowVelocity);
    }

    void attributeInPlaceOfAGroupEndsLikeAMissingGroup()
    {
        const DeckPaths deck = spoiltDeck([](H5::H5File& file) {
            file.unlink(particles);
            file.openGroup(physics).createAttribute("SurfaceSurface", H5::PredType::NATIVE_DOUBLE,
                                                    H5::DataSpace());
        });
        QCOMPARE(loadEnd(deck), QByteArray("group exception"));
    }

    void groupThatLinksToItselfEndsLikeAMissingGroup_data()
    {
        QTest::addColumn<QString>("path");
        QTest::newRow("physics models") << QString::fromStdString(physics);
        QTest::newRow("a surface") << QString::fromStdString(particles);
        QTest::newRow("forces") << QString::fromStdString(forces);
        QTest::newRow("a force") << QString::fromStdString(ganser);
    }
    void groupThatLinksToItselfEndsLikeAMissingGroup()
    {
        QFETCH(QString, path);
        const std::string name = path.toStdString();
        const DeckPaths deck = spoiltDeck([name](H5::H5File& file) {
            file.unlink(name);
            file.link(H5L_TYPE_SOFT, name, name);
        });
        QCOMPARE(loadEnd(deck), QByteArray("group exception"));
    }

    void twoLinksToEachOtherAreBadData()
    {
        const DeckPaths deck = spoiltDeck([](H5::H5File& file) {
            file.unlink(creatorData);
            file.link(H5L_TYPE_SOFT, "/CreatorData/1", creatorData);
            file.link(H5L_TYPE_SOFT, creatorData, "/CreatorData/1");
        });
        QCOMPARE(loadEnd(deck), QByteArray("bad data"));
    }

    void modelThatIsTheGroupAboveItHasNoAttributes()
    {
        CCreatorData expected = expectedRecord(fullDeck(14), 14);
        expected.m_surfaceSurface.m_bonding.clear();
        expected.m_surfaceSurface.m_bondingStartTime = {std::string(), 0.0};
        expected.m_surfaceSurface.m_bondingTorqueFeedback = {std::string(), false};
        const DeckPaths deck = spoiltDeck([](H5::H5File& file) {
            file.unlink(bonding);
            file.link(H5L_TYPE_HARD, particles, bonding);
        });
        QVERIFY(read(deck) == expected);
    }

    void textsThatFillTheMemoryAreNotRead_data()
    {
        QTest::addColumn<qulonglong>("count");
        QTest::addColumn<int>("length");
        QTest::newRow("many") << 1000000ULL << 60000;
        QTest::newRow("long") << 400ULL << 60000;
    }
    void textsThatFillTheMemoryAreNotRead()
    {
        QFETCH(qulonglong, count);
        QFETCH(int, length);
        const DeckPaths deck = spoiltDeck([&](H5::H5File& file) {
            const std::string text(static_cast<std::size_t>(length), 'x');
            const char* fill = text.c_str();
            replaceByAnnouncement(file, ganser + "/type",
                                  H5::StrType(H5::PredType::C_S1, H5T_VARIABLE), count, &fill);
        });
        QVERIFY(fs::file_size(deck.dataFile) < 500000);
        CCreatorData expected = expectedRecord(fullDeck(14), 14);
        expected.m_externalForces.m_ganserDrag.m_shapeFactors.clear();
        CStreamCapture output(CStreamCapture::Output);
        QElapsedTimer timer;
        timer.start();
        const CCreatorData record = read(deck);
        const qint64 elapsed = timer.elapsed();
        const QByteArray printed = output.text();
        QVERIFY2(printed.contains("too many"), printed.constData());
        QVERIFY(record == expected);
        QVERIFY2(elapsed < 5000, qPrintable(QString::number(elapsed)));
    }

    void deckCutAnywhereIsRefusedAndStays()
    {
        const DeckPaths deck = newDeck(fullDeck(14));
        const QByteArray bytes = DeckTestFiles::bytesOf(deck.dataFile);
        QCOMPARE(loadEnd(deck), QByteArray("loaded"));
        CStreamCapture error(CStreamCapture::Error);
        QStringList loaded;
        QStringList changed;
        for (int length = 0; length < bytes.size(); length += 512) {
            const QByteArray cut = bytes.left(length);
            const QByteArray end = write(deck, cut) ? loadEnd(deck) : QByteArray("loaded");
            loaded << (end == "loaded" ? QStringList(QString::number(length)) : QStringList());
            changed << (isStill(deck, cut) ? QStringList() : QStringList(QString::number(length)));
        }
        error.text();
        QCOMPARE(loaded, QStringList());
        QCOMPARE(changed, QStringList());
    }

    /// As a disk that lost a sector, which leaves the file's length as it was.
    void deckWithASectorOfZerosNeverFaultsAndStays()
    {
        const DeckPaths deck = newDeck(fullDeck(14));
        const QByteArray bytes = DeckTestFiles::bytesOf(deck.dataFile);
        CStreamCapture error(CStreamCapture::Error);
        CStreamCapture output(CStreamCapture::Output);
        int written = 0;
        QSet<QByteArray> ends;
        QStringList changed;
        for (int begin = 0; begin < bytes.size(); begin += 512) {
            const QByteArray damaged = QByteArray(bytes).replace(begin, 512, QByteArray(512, '\0'));
            written += write(deck, damaged) ? 1 : 0;
            ends << loadEnd(deck);
            changed << (isStill(deck, damaged) ? QStringList()
                                               : QStringList(QString::number(begin)));
        }
        output.text();
        error.text();
        QCOMPARE(written, (bytes.size() + 511) / 512);
        QVERIFY(ends.contains("loaded"));
        QVERIFY(ends.contains("bad data"));
        QCOMPARE(changed, QStringList());
    }
};

TARNEL_TEST_MAIN(TestHostileDeck)
#include "hostile_deck_test.moc"
