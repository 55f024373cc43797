#include "deck/deck_serializer.h"

#include "deck/compound_types.h"
#include "samples/player/modal_watcher.h"
#include "tests/deck/deck_test_files.h"
#include "tests/deck/expected_record.h"
#include "tests/deck/stream_capture.h"
#include "tests/support/test_environment.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QtTest>

using DeckTestFiles::newDeck;
using DeckTestFiles::read;

namespace {

const char* const jkrData =
    "/CreatorData/0/PhysicsModels/SurfaceSurface/Hertz-Mindlin with JKR/data";

void write(const DeckPaths& deck, CCreatorData record)
{
    DeckTestFiles::walk(deck, record, CDeckSerializer::Write);
}

/// The pairs as they lie in the file, without the program's own reading.
std::vector<HDF5DATATYPES::SAdvCmpd> rawPairs(const DeckPaths& deck, const char* path)
{
    const H5::H5File file(deck.dataFile.string(), H5F_ACC_RDONLY);
    const H5::DataSet dataset = file.openDataSet(path);
    std::vector<HDF5DATATYPES::SAdvCmpd> records(
        static_cast<std::size_t>(dataset.getSpace().getSimpleExtentNpoints()));
    dataset.read(records.data(), HDF5DATATYPES::SAdvCmpdType());
    return records;
}

std::vector<std::string> rawTypes(const DeckPaths& deck, const char* force)
{
    const std::string script = R"(
import h5py, sys
with h5py.File(sys.argv[1], 'r') as f:
    g = f['/CreatorData/0/PhysicsModels/ExternalForces/' + sys.argv[2]]
    print(' '.join('%s=%g' % (t.decode(), v) for t, v in zip(g['type'][()], g['value'][()])))
)";
    const QByteArray line =
        DeckTestFiles::runPython(
            QString::fromStdString(script),
            {QString::fromStdString(deck.dataFile.string()), QString::fromLatin1(force)})
            .output.trimmed();
    std::vector<std::string> types;
    for (const QByteArray& type : line.split(' ')) {
        types.push_back(type.toStdString());
    }
    return types;
}

} // namespace

class TestDeckSerializerWrite : public QObject
{
    Q_OBJECT

private slots:
    void init() { CTestEnvironment::reset(); }

    void everyModelOfAFormatIsWritten_data()
    {
        QTest::addColumn<int>("format");
        for (int format = 0; format <= 14; ++format) {
            QTest::newRow(qPrintable(QStringLiteral("format %1").arg(format))) << format;
        }
    }
    void everyModelOfAFormatIsWritten()
    {
        QFETCH(int, format);
        const DeckPaths deck = newDeck(fullDeck(format));
        const CCreatorData original = read(deck);
        const CCreatorData changed = changedRecord(original);
        QVERIFY(changed != original);
        CModalWatcher watcher;
        CStreamCapture error(CStreamCapture::Error);
        write(deck, changed);
        QCOMPARE(error.text(), QByteArray());
        QVERIFY(watcher.messages().empty());
        QVERIFY(read(deck) == changed);
    }

    void anotherLibraryReadsWhatWasWritten()
    {
        const DeckPaths deck = newDeck(fullDeck(14));
        write(deck, changedRecord(read(deck)));
        const QString script = QStringLiteral(R"(
import h5py, json, sys
with h5py.File(sys.argv[1], 'r') as f:
    d = f['/CreatorData/0']
    p = d['PhysicsModels']
    oka = p['SurfaceGeometry/Oka Wear/data'][0]
    drag = p['ExternalForces/Ganser Drag']
    print(json.dumps({
        'interactions': [[r['key'].decode(), r['restitution'], r['staticFriction'],
                          r['rollingFriction']] for r in d['Interactions'][()]],
        'oka': [oka['name1'].decode(), oka['name2'].decode(), oka['wearConstant'],
                oka['vickersHardness'], oka['scalingFactor']],
        'feedback': int(p['SurfaceSurface/Bonding'].attrs['torque feedback']),
        'velocity': list(drag.attrs['steady flow velocity']),
        'shapes': [[t.decode(), v] for t, v in zip(drag['type'][()], drag['value'][()])],
        'revision': int(d.attrs['svn version'])}))
)");
        const auto end =
            DeckTestFiles::runPython(script, {QString::fromStdString(deck.dataFile.string())});
        QVERIFY2(end.exitCode == 0, end.error.constData());
        const DeckDescription description = fullDeck(14);
        const std::vector<double>& wear = description.surfaceGeometry.okaWear->at(1).values;
        const ForceModel& drag = description.forces.at("Ganser Drag");
        const auto twice = [](double number) { return QJsonValue(2.0 * number); };
        const QJsonObject expected{
            {"interactions",
             QJsonArray{QJsonArray{"glass<>glass", twice(0.75), twice(0.25), twice(0.02)},
                        QJsonArray{"glass<>steel", twice(0.5), twice(0.4), twice(0.01)}}},
            {"oka", QJsonArray{"glass", "steel", twice(wear[0]), twice(wear[1]), twice(wear[2])}},
            {"feedback", 0},
            {"velocity",
             QJsonArray{twice(drag.steadyFlowVelocity[0]), twice(drag.steadyFlowVelocity[1]),
                        twice(drag.steadyFlowVelocity[2])}},
            {"shapes", QJsonArray{QJsonArray{"chip", twice(drag.shapeFactors->at(1).second)},
                                  QJsonArray{"sphere", twice(drag.shapeFactors->at(0).second)}}},
            {"revision", 40000}};
        QCOMPARE(QJsonDocument::fromJson(end.output).object(), expected);
    }

    void whatAnotherLibraryWroteIsRead()
    {
        const DeckPaths deck = newDeck(plainDeck(14));
        const QString script = QStringLiteral(R"(
import h5py, numpy, sys
with h5py.File(sys.argv[1], 'r+') as f:
    p = f['/CreatorData/0/PhysicsModels']
    pair = numpy.dtype([('name1', 'S256'), ('name2', 'S256'), ('value', '<f8')])
    p.create_dataset('SurfaceSurface/Linear Spring/data', data=numpy.array(
        [(b'sand', b'sand', 1.5), (b'clay', b'sand', 2.5)], dtype=pair))
    bond = p.create_group('SurfaceSurface/Bonding')
    bond.attrs['start time'] = 0.25
    bond.attrs['torque feedback'] = True
    drag = p.create_group('ExternalForces/Haider and Levenspiel Drag')
    for name in ('density', 'field scale', 'viscosity', 'using steady flow'):
        drag.attrs[name] = float(len(name))
    vector = numpy.dtype((numpy.float64, (3,)))
    drag.attrs.create('steady flow velocity', numpy.array([1.0, 2.0, 3.0]), shape=(3,), dtype=vector)
    drag.create_dataset('type', data=['flake', 'rod'], dtype=h5py.string_dtype())
    drag.create_dataset('value', data=[0.25, 0.5])
)");
        const auto end =
            DeckTestFiles::runPython(script, {QString::fromStdString(deck.dataFile.string())});
        QVERIFY2(end.exitCode == 0, end.error.constData());
        const CCreatorData record = read(deck);
        const SingleMap springs = {{"sand<>sand", 1.5}, {"clay<>sand", 2.5}};
        QVERIFY(record.m_surfaceSurface.m_linearSpring == springs);
        QCOMPARE(record.m_surfaceSurface.m_bondingStartTime.second, 0.25);
        QCOMPARE(record.m_surfaceSurface.m_bondingTorqueFeedback,
                 CTaggedValue<bool>("Active", true));
        const CShapeForce& drag = record.m_externalForces.m_haiderLevenspielDrag;
        QCOMPARE(drag.m_fieldScale, 11.0);
        QVERIFY(drag.m_steadyFlowVelocity == std::make_tuple(1.0, 2.0, 3.0));
        const SingleMap shapes = {{"flake", 0.25}, {"rod", 0.5}};
        QVERIFY(drag.m_shapeFactors == shapes);
    }

    void timeModeOfACaseIsZeroAndShowsNoWarning()
    {
        DeckDescription description = fullDeck(3);
        description.surfaceSurface.bondingV2->timeMode = 1.0;
        const DeckPaths deck = newDeck(description);
        CModalWatcher watcher;
        write(deck, read(deck));
        QVERIFY(watcher.messages().empty());
        const H5::H5File file(deck.dataFile.string(), H5F_ACC_RDONLY);
        double timeMode = 5.0;
        file.openGroup("/CreatorData/0/PhysicsModels/SurfaceSurface/Bonding V2")
            .openAttribute("bonding time mode")
            .read(H5::PredType::NATIVE_DOUBLE, &timeMode);
        QCOMPARE(timeMode, 0.0);
    }

    void absentDatasetIsSkippedInSilence()
    {
        const DeckPaths deck = newDeck(plainDeck(14));
        const QByteArray before = DeckTestFiles::bytesOf(deck.dataFile);
        CCreatorData record = read(deck);
        record.m_surfaceSurface.m_sprayCoating = {{"glass", 1.0}};
        record.m_externalForces.m_ganserDrag.m_shapeFactors = {{"chip", 1.0}};
        CStreamCapture error(CStreamCapture::Error);
        write(deck, record);
        QCOMPARE(error.text(), QByteArray());
        const H5::H5File file(deck.dataFile.string(), H5F_ACC_RDONLY);
        const H5::Group surface = file.openGroup("/CreatorData/0/PhysicsModels/SurfaceSurface");
        QCOMPARE(surface.getNumObjs(), hsize_t(0));
    }

    void elementsAreWrittenInKeyOrder()
    {
        const DeckPaths deck = newDeck(fullDeck(14));
        write(deck, read(deck));
        const auto records = rawPairs(deck, jkrData);
        QCOMPARE(records.size(), std::size_t(3));
        QCOMPARE(records[0].name2, "glass");
        QCOMPARE(records[1].name1, "glass");
        QCOMPARE(records[1].name2, "rubber");
        QCOMPARE(records[2].name1, "rubber");
    }

    void keySplitsAtItsFirstSeparator()
    {
        DeckDescription description = plainDeck(14);
        description.surfaceSurface.hertzMindlinJkr = std::vector<DeckRow>{{{"A<>B", "C"}, {0.5}}};
        const DeckPaths deck = newDeck(description);
        CModalWatcher watcher;
        const CCreatorData record = read(deck);
        QCOMPARE(watcher.messages().size(), std::size_t(1));
        QCOMPARE(std::string(rawPairs(deck, jkrData).front().name1), std::string("A<>B"));
        write(deck, record);
        const auto records = rawPairs(deck, jkrData);
        QCOMPARE(std::string(records.front().name1), std::string("A"));
        QCOMPARE(std::string(records.front().name2), std::string("B<>C"));
        QCOMPARE(records.front().value, 0.5);
        QCOMPARE(watcher.messages().size(), std::size_t(1));
    }

    void emptyMapLeavesTheDatasetAndIsNamed()
    {
        const DeckPaths deck = newDeck(fullDeck(14));
        const CCreatorData original = read(deck);
        CCreatorData record = changedRecord(original);
        record.m_surfaceSurface.m_hertzMindlinJkr.clear();
        record.m_externalForces.m_ganserDrag.m_shapeFactors.clear();
        QByteArray printed;
        {
            CStreamCapture error(CStreamCapture::Error);
            write(deck, record);
            printed = error.text();
        }
        QCOMPARE(printed.count('\n'), 2);
        QVERIFY2(printed.contains("\"Hertz-Mindlin with JKR/data\""), printed.constData());
        const CCreatorData written = read(deck);
        QVERIFY(written.m_surfaceSurface.m_hertzMindlinJkr ==
                original.m_surfaceSurface.m_hertzMindlinJkr);
        QVERIFY(written.m_externalForces.m_ganserDrag.m_shapeFactors ==
                original.m_externalForces.m_ganserDrag.m_shapeFactors);
        QVERIFY(written.m_surfaceSurface.m_hertzMindlinJkrV2 ==
                record.m_surfaceSurface.m_hertzMindlinJkrV2);
    }

    void otherCountKeepsTheFilesKeysAndTakesKnownValues()
    {
        const DeckPaths deck = newDeck(fullDeck(14));
        const CCreatorData original = read(deck);
        CCreatorData record = original;
        record.m_surfaceSurface.m_hertzMindlinJkr = {{"glass<>rubber", 77.0},
                                                     {"unknown<>pair", 1.0}};
        record.m_surfaceGeometry.m_hystereticYields["unknown"] = 5.0;
        record.m_surfaceGeometry.m_hystereticYields["rubber"] = 66.0;
        QByteArray printed;
        {
            CStreamCapture error(CStreamCapture::Error);
            write(deck, record);
            printed = error.text();
        }
        QCOMPARE(printed.count('\n'), 2);
        QVERIFY2(printed.contains("\"Hysteretic Spring/yields\""), printed.constData());
        const CCreatorData written = read(deck);
        SingleMap pairs = original.m_surfaceSurface.m_hertzMindlinJkr;
        pairs["glass<>rubber"] = 77.0;
        QVERIFY(written.m_surfaceSurface.m_hertzMindlinJkr == pairs);
        SingleMap yields = original.m_surfaceGeometry.m_hystereticYields;
        yields["rubber"] = 66.0;
        QVERIFY(written.m_surfaceGeometry.m_hystereticYields == yields);
    }

    void otherCountOfEqualKeysWritesAllOfThem()
    {
        DeckDescription description = plainDeck(14);
        description.surfaceSurface.hertzMindlinJkr =
            std::vector<DeckRow>{{{"A", "C"}, {1.0}}, {{"A", "C"}, {2.0}}, {{"B", "C"}, {3.0}}};
        const DeckPaths deck = newDeck(description);
        CCreatorData record = read(deck);
        record.m_surfaceSurface.m_hertzMindlinJkr.at("A<>C") = 9.0;
        write(deck, record);
        const auto records = rawPairs(deck, jkrData);
        QCOMPARE(records.size(), std::size_t(3));
        QCOMPARE(records[0].value, 9.0);
        QCOMPARE(records[1].value, 9.0);
        QCOMPARE(records[2].value, 3.0);
    }

    void otherCountOfShapesTakesKnownValues()
    {
        const DeckPaths deck = newDeck(fullDeck(14));
        CCreatorData record = read(deck);
        record.m_externalForces.m_ganserDrag.m_shapeFactors = {{"chip", 3.5}};
        record.m_externalForces.m_haiderLevenspielDrag.m_shapeFactors["rod"] = 1.0;
        record.m_externalForces.m_haiderLevenspielDrag.m_shapeFactors["sphere"] = 4.5;
        const DeckDescription description = fullDeck(14);
        write(deck, record);
        const auto factor = [&description](const char* force, std::size_t shape) {
            return QStringLiteral("%1")
                .arg(description.forces.at(force).shapeFactors->at(shape).second)
                .toStdString();
        };
        const std::vector<std::string> ganser = {"sphere=" + factor("Ganser Drag", 0), "chip=3.5"};
        QCOMPARE(rawTypes(deck, "Ganser Drag"), ganser);
        const std::vector<std::string> haider = {"sphere=4.5",
                                                 "chip=" + factor("Haider and Levenspiel Drag", 1)};
        QCOMPARE(rawTypes(deck, "Haider and Levenspiel Drag"), haider);
    }

    void writingNamesTheForcesOfTheFile()
    {
        const DeckPaths deck = newDeck(fullDeck(14));
        CCreatorData record = read(deck);
        record.m_externalForces.m_saffmanLift.m_sName.clear();
        DeckTestFiles::walk(deck, record, CDeckSerializer::Write);
        QCOMPARE(record.m_externalForces.m_saffmanLift.m_sName, std::string("Saffman Lift"));
    }

    void nameOfTheLastLengthThatFitsIsWritten()
    {
        const DeckPaths deck = newDeck(plainDeck(14));
        const auto end = DeckTestFiles::runProbe({"long-name", path(deck), "511"});
        QVERIFY2(!end.aborted && end.exitCode == 0, end.error.constData());
        QCOMPARE(read(deck).m_interactions.count(std::string(511, 'y')), std::size_t(1));
    }

    void longerNameEndsTheProcess()
    {
        const DeckPaths deck = newDeck(plainDeck(14));
        const auto end = DeckTestFiles::runProbe({"long-name", path(deck), "512"});
        QVERIFY(end.aborted);
        QVERIFY(!end.output.contains("written"));
        QVERIFY2(end.error.contains("longer than 511 characters"), end.error.constData());
    }

    void pairNamesHoldHalfAsMuchButForTheAdhesion_data()
    {
        QTest::addColumn<QString>("command");
        QTest::addColumn<int>("length");
        QTest::addColumn<bool>("fits");
        QTest::newRow("255") << "long-pair" << 255 << true;
        QTest::newRow("256") << "long-pair" << 256 << false;
        QTest::newRow("adhesion 511") << "long-adhesion" << 511 << true;
        QTest::newRow("adhesion 512") << "long-adhesion" << 512 << false;
    }
    void pairNamesHoldHalfAsMuchButForTheAdhesion()
    {
        QFETCH(QString, command);
        QFETCH(int, length);
        QFETCH(bool, fits);
        const DeckPaths deck = newDeck(fullDeck(14));
        const auto end = DeckTestFiles::runProbe({command, path(deck), QString::number(length)});
        QCOMPARE(end.aborted, !fits);
        QCOMPARE(end.output.contains("written"), fits);
    }

private:
    static QString path(const DeckPaths& deck)
    {
        return QString::fromStdString(deck.dataFile.string());
    }
};

TARNEL_TEST_MAIN(TestDeckSerializerWrite)
#include "deck_serializer_write_test.moc"
