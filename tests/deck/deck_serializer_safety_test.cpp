#include "deck/deck_serializer.h"

#include "deck/app_settings.h"
#include "tests/deck/deck_test_files.h"
#include "tests/deck/expected_record.h"
#include "tests/deck/stream_capture.h"
#include "tests/support/test_environment.h"

#include <QtTest>

#include <array>
#include <functional>

using DeckTestFiles::newDeck;
using DeckTestFiles::read;

namespace {

using Spoil = std::function<void(H5::H5File&)>;

const std::string physics = "/CreatorData/0/PhysicsModels/";
const std::string jkrData = physics + "SurfaceSurface/Hertz-Mindlin with JKR/data";
const std::string typeC = physics + "SurfaceGeometry/Type C Rolling Friction";
const std::string bonding = physics + "SurfaceSurface/Bonding";
const std::string ganser = physics + "ExternalForces/Ganser Drag";

DeckPaths spoiltDeck(const Spoil& spoil)
{
    const DeckPaths deck = newDeck(fullDeck(14));
    H5::H5File file(deck.dataFile.string(), H5F_ACC_RDWR);
    spoil(file);
    return deck;
}

H5::DataSpace space(const std::vector<hsize_t>& extent)
{
    return H5::DataSpace(static_cast<int>(extent.size()), extent.data());
}

/// The compound of the JKR pairs, without the members in `left`.
H5::CompType pairType(const std::string& left = std::string(), bool variableNames = false)
{
    H5::CompType type(2 * 256 + sizeof(double));
    const H5::StrType name = variableNames ? H5::StrType(H5::PredType::C_S1, H5T_VARIABLE)
                                           : H5::StrType(H5::PredType::C_S1, 256);
    if (left != "name1") {
        type.insertMember("name1", 0, name);
    }
    if (left != "name2") {
        type.insertMember("name2", 256, name);
    }
    if (left != "value") {
        type.insertMember("value", 512, H5::PredType::NATIVE_DOUBLE);
    }
    return type;
}

void replaceDataSet(H5::H5File& file, const std::string& path, const H5::DataType& type,
                    const H5::DataSpace& dataSpace)
{
    file.unlink(path);
    file.createDataSet(path, type, dataSpace);
}

void replaceAttribute(H5::H5File& file, const std::string& group, const std::string& name,
                      const H5::DataType& type, const H5::DataSpace& dataSpace)
{
    H5::Group owner = file.openGroup(group);
    owner.removeAttr(name);
    owner.createAttribute(name, type, dataSpace);
}

/// A dataset of that extent without any storage.
void replaceByHugeDataSet(H5::H5File& file, hsize_t count)
{
    file.unlink(jkrData);
    const hsize_t chunk = 16;
    H5::DSetCreatPropList list;
    list.setChunk(1, &chunk);
    file.createDataSet(jkrData, pairType(), space({count}), list);
}

} // namespace
Q_DECLARE_METATYPE(Spoil)

class TestDeckSerializerSafety : public QObject
{
    Q_OBJECT

private slots:
    void init() { CTestEnvironment::reset(); }

    void spoiltPairsStayEmptyAndTheRestIsRead_data()
    {
        QTest::addColumn<Spoil>("spoil");
        QTest::addColumn<QByteArray>("printed");
        const auto row = [](const char* name, const QByteArray& printed, const Spoil& spoil) {
            QTest::newRow(name) << spoil << printed;
        };
        row("two dimensions", "not one-dimensional", [](H5::H5File& file) {
            replaceDataSet(file, jkrData, pairType(), space({2, 3}));
        });
        row("no dimension", "not one-dimensional", [](H5::H5File& file) {
            replaceDataSet(file, jkrData, pairType(), H5::DataSpace(H5S_SCALAR));
        });
        row("no extent", "not one-dimensional", [](H5::H5File& file) {
            replaceDataSet(file, jkrData, pairType(), H5::DataSpace(H5S_NULL));
        });
        row("more than memory", "too many elements",
            [](H5::H5File& file) { replaceByHugeDataSet(file, hsize_t(1) << 50U); });
        row("numbers", "another class", [](H5::H5File& file) {
            replaceDataSet(file, jkrData, H5::PredType::NATIVE_DOUBLE, space({3}));
        });
        row("no second name", "lacks \"name2\"",
            [](H5::H5File& file) { replaceDataSet(file, jkrData, pairType("name2"), space({3})); });
        row("no value", "lacks \"value\"",
            [](H5::H5File& file) { replaceDataSet(file, jkrData, pairType("value"), space({3})); });
        row("names of variable length", "HDF5-DIAG", [](H5::H5File& file) {
            replaceDataSet(file, jkrData, pairType(std::string(), true), space({3}));
        });
        row("a group", "HDF5-DIAG", [](H5::H5File& file) {
            file.unlink(jkrData);
            file.createGroup(jkrData);
        });
        row("a link to nothing", "HDF5-DIAG", [](H5::H5File& file) {
            file.unlink(jkrData);
            file.link(H5L_TYPE_SOFT, "/nowhere", jkrData);
        });
    }
    void spoiltPairsStayEmptyAndTheRestIsRead()
    {
        QFETCH(Spoil, spoil);
        QFETCH(QByteArray, printed);
        CCreatorData expected = expectedRecord(fullDeck(14), 14);
        expected.m_surfaceSurface.m_hertzMindlinJkr.clear();
        checkRead(spoil, printed, expected);
    }

    void spoiltPairsOutliveAWrite_data() { spoiltPairsStayEmptyAndTheRestIsRead_data(); }
    void spoiltPairsOutliveAWrite()
    {
        QFETCH(Spoil, spoil);
        const DeckPaths whole = newDeck(fullDeck(14));
        CCreatorData changed = changedRecord(read(whole));
        const DeckPaths deck = spoiltDeck(spoil);
        {
            CStreamCapture error(CStreamCapture::Error);
            CStreamCapture output(CStreamCapture::Output);
            DeckTestFiles::walk(deck, changed, CDeckSerializer::Write);
        }
        changed.m_surfaceSurface.m_hertzMindlinJkr.clear();
        QVERIFY(read(deck) == changed);
    }

    void emptyDatasetIsReadAndWritten()
    {
        const Spoil spoil = [](H5::H5File& file) {
            replaceDataSet(file, jkrData, pairType(), space({0}));
        };
        CCreatorData expected = expectedRecord(fullDeck(14), 14);
        expected.m_surfaceSurface.m_hertzMindlinJkr.clear();
        const DeckPaths deck = spoiltDeck(spoil);
        CCreatorData record = read(deck);
        QVERIFY(record == expected);
        CStreamCapture error(CStreamCapture::Error);
        CStreamCapture output(CStreamCapture::Output);
        DeckTestFiles::walk(deck, record, CDeckSerializer::Read);
        DeckTestFiles::walk(deck, record, CDeckSerializer::Write);
        const QByteArray printed = error.text() + output.text();
        QVERIFY2(printed.isEmpty(), printed.constData());
    }

    void spoiltAttributesKeepTheirTargets_data()
    {
        QTest::addColumn<Spoil>("spoil");
        QTest::addColumn<QByteArray>("printed");
        const auto row = [](const char* name, const QByteArray& printed, const Spoil& spoil) {
            QTest::newRow(name) << spoil << printed;
        };
        const std::string stiffness = "coefficient of rolling stiffness";
        row("many numbers", "does not hold one element", [stiffness](H5::H5File& file) {
            replaceAttribute(file, typeC, stiffness, H5::PredType::NATIVE_DOUBLE, space({4000}));
        });
        row("no number", "does not hold one element", [stiffness](H5::H5File& file) {
            replaceAttribute(file, typeC, stiffness, H5::PredType::NATIVE_DOUBLE,
                             H5::DataSpace(H5S_NULL));
        });
        row("a text", "HDF5-DIAG", [stiffness](H5::H5File& file) {
            replaceAttribute(file, typeC, stiffness, H5::StrType(H5::PredType::C_S1, 40),
                             H5::DataSpace());
        });
        row("an array", "HDF5-DIAG", [stiffness](H5::H5File& file) {
            const hsize_t size = 40;
            replaceAttribute(file, typeC, stiffness,
                             H5::ArrayType(H5::PredType::NATIVE_DOUBLE, 1, &size), H5::DataSpace());
        });
        row("missing", "HDF5-DIAG",
            [stiffness](H5::H5File& file) { file.openGroup(typeC).removeAttr(stiffness); });
    }
    void spoiltAttributesKeepTheirTargets()
    {
        QFETCH(Spoil, spoil);
        QFETCH(QByteArray, printed);
        CCreatorData expected = expectedRecord(fullDeck(14), 14);
        expected.m_surfaceGeometry.m_coefficientOfRollingStiffness = 0.0;
        checkRead(spoil, printed, expected);
    }

    void missingTaggedAttributeStaysUntagged()
    {
        CCreatorData expected = expectedRecord(fullDeck(14), 14);
        expected.m_surfaceSurface.m_bondingStartTime = {std::string(), 0.0};
        checkRead([](H5::H5File& file) { file.openGroup(bonding).removeAttr("start time"); },
                  "HDF5-DIAG", expected);
    }

    void manyFlagsStayUntagged()
    {
        CCreatorData expected = expectedRecord(fullDeck(14), 14);
        expected.m_surfaceSurface.m_bondingTorqueFeedback = {std::string(), false};
        checkRead(
            [](H5::H5File& file) {
                replaceAttribute(file, bonding, "torque feedback", H5::PredType::NATIVE_HBOOL,
                                 space({500}));
            },
            "does not hold one element", expected);
    }

    void velocityOfAnotherLengthStaysZero()
    {
        CCreatorData expected = expectedRecord(fullDeck(14), 14);
        expected.m_externalForces.m_ganserDrag.m_steadyFlowVelocity = {0.0, 0.0, 0.0};
        checkRead(
            [](H5::H5File& file) {
                const hsize_t size = 300;
                replaceAttribute(file, ganser, "steady flow velocity",
                                 H5::ArrayType(H5::PredType::NATIVE_DOUBLE, 1, &size),
                                 H5::DataSpace());
            },
            "HDF5-DIAG", expected);
    }

    void attributeGroupThatIsADatasetIsPrinted()
    {
        CCreatorData expected = expectedRecord(fullDeck(14), 14);
        expected.m_surfaceGeometry.m_standardRollingFriction = {std::string(), false};
        checkRead(
            [](H5::H5File& file) {
                replaceDataSet(file, physics + "SurfaceGeometry/Standard Rolling Friction",
                               H5::PredType::NATIVE_DOUBLE, space({1}));
            },
            "HDF5-DIAG", expected);
    }

    void spoiltShapeTypesLeaveNoShapes_data()
    {
        QTest::addColumn<Spoil>("spoil");
        QTest::addColumn<QByteArray>("printed");
        const auto row = [](const char* name, const QByteArray& printed, const Spoil& spoil) {
            QTest::newRow(name) << spoil << printed;
        };
        row("texts of one length", "fixed length", [](H5::H5File& file) {
            replaceDataSet(file, ganser + "/type", H5::StrType(H5::PredType::C_S1, 3), space({2}));
        });
        row("numbers", "another class", [](H5::H5File& file) {
            replaceDataSet(file, ganser + "/type", H5::PredType::NATIVE_DOUBLE, space({2}));
        });
        row("two dimensions", "not one-dimensional", [](H5::H5File& file) {
            replaceDataSet(file, ganser + "/type", H5::StrType(H5::PredType::C_S1, H5T_VARIABLE),
                           space({2, 2}));
        });
    }
    void spoiltShapeTypesLeaveNoShapes()
    {
        QFETCH(Spoil, spoil);
        QFETCH(QByteArray, printed);
        CCreatorData expected = expectedRecord(fullDeck(14), 14);
        expected.m_externalForces.m_ganserDrag.m_shapeFactors.clear();
        checkRead(spoil, printed, expected);
    }

    void shapeTypesThatWereNeverWrittenAreEmptyTexts()
    {
        CCreatorData expected = expectedRecord(fullDeck(14), 14);
        const double value = fullDeck(14).forces.at("Ganser Drag").shapeFactors->at(0).second;
        expected.m_externalForces.m_ganserDrag.m_shapeFactors = {{std::string(), value}};
        const DeckPaths deck = spoiltDeck([](H5::H5File& file) {
            replaceDataSet(file, ganser + "/type", H5::StrType(H5::PredType::C_S1, H5T_VARIABLE),
                           space({2}));
        });
        QVERIFY(read(deck) == expected);
    }

    void fewerShapeValuesThanTypesRaiseTheSubscript_data()
    {
        QTest::addColumn<Spoil>("spoil");
        const std::string value = ganser + "/value";
        QTest::newRow("one value") << Spoil([value](H5::H5File& file) {
            replaceDataSet(file, value, H5::PredType::NATIVE_DOUBLE, space({1}));
        });
        QTest::newRow("no dataset") << Spoil([value](H5::H5File& file) { file.unlink(value); });
        QTest::newRow("floats of four bytes") << Spoil([value](H5::H5File& file) {
            replaceDataSet(file, value, H5::PredType::NATIVE_FLOAT, space({2}));
        });
        QTest::newRow("whole numbers") << Spoil([value](H5::H5File& file) {
            replaceDataSet(file, value, H5::PredType::NATIVE_LLONG, space({2}));
        });
    }
    void fewerShapeValuesThanTypesRaiseTheSubscript()
    {
        QFETCH(Spoil, spoil);
        const DeckPaths deck = spoiltDeck(spoil);
        try {
            read(deck);
            QFAIL("nothing was raised");
        } catch (const std::out_of_range& error) {
            QCOMPARE(error.what(), "invalid vector subscript");
        }
    }

    void moreShapeValuesThanTypesAreLeftAlone()
    {
        const DeckPaths deck = spoiltDeck([](H5::H5File& file) {
            replaceDataSet(file, ganser + "/value", H5::PredType::NATIVE_DOUBLE, space({5}));
        });
        CCreatorData record = read(deck);
        SingleMap& factors = record.m_externalForces.m_ganserDrag.m_shapeFactors;
        QCOMPARE(factors.size(), std::size_t(2));
        factors["sphere"] = 7.0;
        DeckTestFiles::walk(deck, record, CDeckSerializer::Write);
        QVERIFY(read(deck) == record);
    }

    void noShapesAreReadFromTablesWithoutElements()
    {
        CCreatorData expected = expectedRecord(fullDeck(14), 14);
        expected.m_externalForces.m_ganserDrag.m_shapeFactors.clear();
        const DeckPaths deck = spoiltDeck([](H5::H5File& file) {
            replaceDataSet(file, ganser + "/type", H5::StrType(H5::PredType::C_S1, H5T_VARIABLE),
                           space({0}));
        });
        QVERIFY(read(deck) == expected);
    }

    void shapeValuesWithoutTypesStayWhereTheirCountIsAnother()
    {
        const DeckPaths deck = spoiltDeck([](H5::H5File& file) {
            file.unlink(ganser + "/type");
            replaceDataSet(file, ganser + "/value", H5::PredType::NATIVE_DOUBLE, space({5}));
        });
        CCreatorData record = expectedRecord(fullDeck(14), 14);
        QCOMPARE(record.m_externalForces.m_ganserDrag.m_shapeFactors.size(), std::size_t(2));
        QByteArray printed;
        {
            CStreamCapture output(CStreamCapture::Output);
            DeckTestFiles::walk(deck, record, CDeckSerializer::Write);
            printed = output.text();
        }
        QVERIFY(printed.contains("has another number of elements"));
        std::array<double, 5> values = {1.0, 1.0, 1.0, 1.0, 1.0};
        const H5::H5File file(deck.dataFile.string(), H5F_ACC_RDONLY);
        file.openDataSet(ganser + "/value").read(values.data(), H5::PredType::NATIVE_DOUBLE);
        QVERIFY(values == (std::array<double, 5>{}));
    }

    void spoiltRevisionKeepsTheFormat_data()
    {
        QTest::addColumn<Spoil>("spoil");
        QTest::newRow("a text") << Spoil([](H5::H5File& file) {
            replaceAttribute(file, "/CreatorData/0", "svn version",
                             H5::StrType(H5::PredType::C_S1, 20), H5::DataSpace());
        });
        QTest::newRow("many") << Spoil([](H5::H5File& file) {
            replaceAttribute(file, "/CreatorData/0", "svn version", H5::PredType::NATIVE_UINT,
                             space({1000}));
        });
    }
    void spoiltRevisionKeepsTheFormat()
    {
        QFETCH(Spoil, spoil);
        CAppSettings::instance()->setDeckFormat(13);
        const DeckPaths deck = spoiltDeck(spoil);
        CStreamCapture error(CStreamCapture::Error);
        CStreamCapture output(CStreamCapture::Output);
        const CCreatorData record = read(deck);
        QVERIFY(!(error.text() + output.text()).isEmpty());
        QCOMPARE(CAppSettings::instance()->deckFormat(), 13);
        QVERIFY(record == expectedRecord(fullDeck(14), 14));
    }

    void namesNeedNoNulBehindThem()
    {
        DeckDescription description = plainDeck(14);
        const std::string name(256, 'n');
        const std::string key(512, 'k');
        description.interactions = std::vector<DeckRow>{{{key}, {0.1, 0.2, 0.3}}};
        description.surfaceSurface.hystereticYields = std::vector<DeckRow>{{{name}, {4.0}}};
        description.surfaceSurface.hertzMindlinJkr = std::vector<DeckRow>{{{name, name}, {5.0}}};
        const CCreatorData record = read(newDeck(description));
        QVERIFY(record == expectedRecord(description, 14));
    }

    void furtherMembersAreLeftOut()
    {
        const std::string path = physics + "SurfaceSurface/Hysteretic Spring/yields";
        const DeckPaths deck = spoiltDeck([path](H5::H5File& file) {
            struct SWide
            {
                double before;
                double value;
                char name[256];
                int behind;
            };
            H5::CompType type(sizeof(SWide));
            type.insertMember("before", HOFFSET(SWide, before), H5::PredType::NATIVE_DOUBLE);
            type.insertMember("value", HOFFSET(SWide, value), H5::PredType::NATIVE_DOUBLE);
            type.insertMember("name", HOFFSET(SWide, name), H5::StrType(H5::PredType::C_S1, 256));
            type.insertMember("behind", HOFFSET(SWide, behind), H5::PredType::NATIVE_INT);
            const SWide wide = {1.0, 2.0, "glass", 3};
            file.unlink(path);
            file.createDataSet(path, type, space({1})).write(&wide, type);
        });
        const SingleMap expected = {{"glass", 2.0}};
        QVERIFY(read(deck).m_surfaceSurface.m_hystereticYields == expected);
    }

private:
    static void checkRead(const Spoil& spoil, const QByteArray& expectedText,
                          const CCreatorData& expected)
    {
        const DeckPaths deck = spoiltDeck(spoil);
        QByteArray printed;
        CCreatorData record;
        {
            CStreamCapture error(CStreamCapture::Error);
            CStreamCapture output(CStreamCapture::Output);
            record = read(deck);
            // HDF5's failures go to one stream, the program's own to the other.
            printed = expectedText.startsWith("HDF5") ? error.text() : output.text();
        }
        QVERIFY2(printed.contains(expectedText), printed.constData());
        QVERIFY(record == expected);
    }
};

TARNEL_TEST_MAIN(TestDeckSerializerSafety)
#include "deck_serializer_safety_test.moc"
