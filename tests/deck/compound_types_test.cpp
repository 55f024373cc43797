#include "deck/compound_types.h"

#include "app/constants/deck_keys.h"
#include "tests/support/test_environment.h"

#include <QtTest>

using namespace HDF5DATATYPES;

namespace {

/// "name@offset:class:size" of each member.
QStringList layoutOf(const H5::CompType& type)
{
    QStringList members;
    for (unsigned int index = 0; index < static_cast<unsigned int>(type.getNmembers()); ++index) {
        const H5::DataType member = type.getMemberDataType(index);
        const bool isText = type.getMemberClass(index) == H5T_STRING;
        members << QStringLiteral("%1@%2:%3%4")
                       .arg(QString::fromStdString(type.getMemberName(index)))
                       .arg(type.getMemberOffset(index))
                       .arg(isText ? QStringLiteral("text") : QStringLiteral("number"))
                       .arg(member.getSize());
        if (!isText && !(member == H5::PredType::NATIVE_DOUBLE)) {
            members << QStringLiteral("no double");
        }
        if (isText && type.getMemberStrType(index).isVariableStr()) {
            members << QStringLiteral("variable");
        }
    }
    return members;
}

} // namespace

class TestCompoundTypes : public QObject
{
    Q_OBJECT

private slots:
    void membersLieAsTheFileKeepsThem_data()
    {
        QTest::addColumn<QStringList>("layout");
        QTest::addColumn<uint>("size");
        QTest::addColumn<uint>("expectedSize");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* name, const H5::CompType& type, uint size,
                            const char* expected) {
            QTest::newRow(name) << layoutOf(type) << static_cast<uint>(type.getSize()) << size
                                << QString::fromLatin1(expected);
        };
        row("SBasicCmpd", SBasicCmpdType(), 264, "name@0:text256 value@256:number8");
        row("SAdvCmpd", SAdvCmpdType(), 520, "name1@0:text256 name2@256:text256 value@512:number8");
        row("SInteraction", SInteractionType(), 536,
            "key@0:text512 restitution@512:number8 staticFriction@520:number8 "
            "rollingFriction@528:number8");
        row("SHystereticCmpdInter", SHystereticCmpdInterType(), 528,
            "name1@0:text256 name2@256:text256 damping@512:number8 stiffness@520:number8");
        row("SOkaWearParamCmpd", SOkaWearParamCmpdType(), 536,
            "name1@0:text256 name2@256:text256 wearConstant@512:number8 "
            "vickersHardness@520:number8 scalingFactor@528:number8");
        row("SEcmCmpd", SEcmCmpdType(), 1072,
            "name1@0:text512 name2@512:text512 constPullOffForce@1024:number8 "
            "surfaceEnergy@1032:number8 contactPlasticityRatio@1040:number8 "
            "slopeExponential@1048:number8 tensileExponential@1056:number8 "
            "tangentStiffMultiplier@1064:number8");
        row("SBondParamCmpd", SBondParamCmpdType(), 552,
            "key@0:text512 normalStiffness@512:number8 shearStiffness@520:number8 "
            "normalStrength@528:number8 shearStrength@536:number8 bondRadius@544:number8");
        row("SBondV2ParamCmpd", SBondV2ParamCmpdType(), 568,
            "key@0:text512 normalStiffness@512:number8 normalRange@520:number8 "
            "tangStiffness@528:number8 tangRange@536:number8 normalStrength@544:number8 "
            "shearStrength@552:number8 bondDiskScale@560:number8");
        row("SCharDoubleDouble", SCharDoubleDoubleType(), 528,
            "name@0:text512 first@512:number8 second@520:number8");
    }
    void membersLieAsTheFileKeepsThem()
    {
        QFETCH(QStringList, layout);
        QFETCH(uint, size);
        QFETCH(uint, expectedSize);
        QFETCH(QString, expected);
        QCOMPARE(size, expectedSize);
        QCOMPARE(layout.join(QLatin1Char(' ')), expected);
    }

    void failureOfTheLibraryPasses()
    {
        // Two members of one name are what HDF5 refuses.
        DeckKeys::Value = DeckKeys::Name;
        QVERIFY_EXCEPTION_THROWN(SBasicCmpdType(), H5::DataTypeIException);
        DeckKeys::initialise();
    }

    void lengthsOfTheNames()
    {
        QCOMPARE(sizeof(SAdvCmpd::name1), std::size_t(256));
        QCOMPARE(sizeof(SAdvCmpd::name2), std::size_t(256));
        QCOMPARE(sizeof(SEcmCmpd::name1), std::size_t(512));
        QCOMPARE(sizeof(SEcmCmpd::name2), std::size_t(512));
    }

    void furtherMembersOfADatasetAreLeftOut()
    {
        struct SWide
        {
            double first;
            SAdvCmpd pair;
            double last;
        };
        H5::CompType wide(sizeof(SWide));
        wide.insertMember("further", HOFFSET(SWide, first), H5::PredType::NATIVE_DOUBLE);
        const SAdvCmpdType type;
        for (unsigned int index = 0; index < 3; ++index) {
            wide.insertMember(type.getMemberName(index),
                              HOFFSET(SWide, pair) + type.getMemberOffset(index),
                              type.getMemberDataType(index));
        }
        wide.insertMember("last", HOFFSET(SWide, last), H5::PredType::NATIVE_DOUBLE);
        const SWide written = {1.0, {"glass", "steel", 2.0}, 3.0};
        const QTemporaryDir folder;
        H5::H5File file(folder.filePath("wide.h5").toStdString(), H5F_ACC_TRUNC);
        H5::DataSet dataset = file.createDataSet("data", wide, H5::DataSpace());
        dataset.write(&written, wide);
        SAdvCmpd read = {};
        dataset.read(&read, type);
        QCOMPARE(std::string(read.name1), std::string("glass"));
        QCOMPARE(std::string(read.name2), std::string("steel"));
        QCOMPARE(read.value, 2.0);
    }
};

TARNEL_TEST_MAIN(TestCompoundTypes)
#include "compound_types_test.moc"
