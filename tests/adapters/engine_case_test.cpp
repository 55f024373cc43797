#include "adapters/liggghts/adapter_error.h"
#include "adapters/liggghts/engine_run.h"
#include "adapters/liggghts/input_script.h"
#include "tests/adapters/adapter_case.h"
#include "tests/support/test_environment.h"

#include <H5Cpp.h>

#include <QApplication>
#include <QProcess>
#include <QtTest>

#include <csignal>

// Whole cases with the engine itself: few spheres and one or two seeds, so that each takes a second
// or two.

namespace {

const QStringList Quick{"count = 150", "vessel radius = 0.018", "seeds = 15485863"};
const QStringList Usual{"-r", "3", "-w", "0.05", "-p", "2", "-e", "case.dfg"};

QStringList filesOf(const QString& folder)
{
    return QDir(folder).entryList(QDir::Files, QDir::Name);
}

/// Process id of the only child, whichever thread has started it.
QByteArray childOf(qint64 process)
{
    const QString tasks = QString("/proc/%1/task").arg(process);
    QByteArray children;
    for (const QString& task : QDir(tasks).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        children += SampleCase::contentOf(tasks + '/' + task + "/children");
    }
    return children.trimmed();
}

/// What a heap comes to with these values for all contacts.
QMap<QString, double> heapWith(double restitution, double staticFriction, double rollingFriction,
                               const QString& experiment)
{
    const QTemporaryDir folder;
    AdapterCase::write(SampleCase::deckOf(restitution, staticFriction, rollingFriction), experiment,
                       folder.path());
    const SProgramEnd end = AdapterCase::run(folder.path(), Usual);
    if (end.exitCode != 0) {
        qWarning("%s", end.errors.constData());
    }
    return AdapterCase::results(folder.path());
}

} // namespace

class EngineCaseTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void aCaseLeavesStepsExportAndInput();
    void theSameCaseGivesTheSameNumbers();
    void rollingFrictionMakesAHeap();
    void staticFrictionMakesAHeap();
    void cohesionMakesAHeap();
    void frictionSlowsADischarge();
    void frictionShortensARunOut();
    void aLiftedCylinderLeavesAHeap();
    void twoRadiiAreMixed();
    void tooFewSpheresPutInAreTold();
    void anEngineThatIsAskedToEndIsNotGood();
    void aHeapThatStillMovesIsRefused();
    void aLiftThatTakesTooLongIsRefused();
    void theDecksFilesStayAsTheyWere();

private:
    QString file(const QString& name) const { return m_folder->filePath(name); }

    QScopedPointer<QTemporaryDir> m_folder;
};

void EngineCaseTest::initTestCase()
{
    if (!AdapterCase::engineIsThere()) {
        QSKIP("LIGGGHTS is not installed.");
    }
}

void EngineCaseTest::init()
{
    m_folder.reset(new QTemporaryDir);
    AdapterCase::write(SampleCase::deckOf(0.5, 0.5, 0.2),
                       AdapterCase::experiment("angle of repose", Quick), m_folder->path());
}

void EngineCaseTest::aCaseLeavesStepsExportAndInput()
{
    const SProgramEnd end =
        AdapterCase::run(m_folder->path(), Usual + QStringList{"-g", "2", "-R"});
    QVERIFY2(end.exitCode == 0, end.errors.constData());
    QVERIFY(end.output.contains("The option -g changes nothing for this engine.\n"));
    QVERIFY(end.output.contains("seed 15485863: released, time 0.1 s, 150 spheres, mean kinetic"));
    QVERIFY(end.output.endsWith("finished\n"));
    const SampleTable table = SampleCase::tableOf(file("case.csv"));
    const QVector<double> times = table.value("TIME");
    QVERIFY(times.size() > 3);
    for (int index = 0; index < times.size(); ++index) {
        QVERIFY(qAbs(times[index] - 0.05 * index) < 1e-6);
    }
    QStringList steps{"0.h5"};
    for (int index = 1; index < times.size(); ++index) {
        steps << QString("%1.h5").arg(index);
    }
    steps.sort();
    QCOMPARE(filesOf(file("case_data")), steps);
    QCOMPARE(filesOf(file("case_engine/seed15485863")),
             (QStringList{"in.liggghts", "log.liggghts"}));
    const H5::H5File step(file("case_data/2.h5").toStdString(), H5F_ACC_RDONLY);
    double time = 0.0;
    step.openAttribute("time").read(H5::PredType::NATIVE_DOUBLE, &time);
    QVERIFY(qAbs(time - 0.1) < 1e-6);
    QCOMPARE(step.openDataSet("/Particles/radius").getSpace().getSimpleExtentNpoints(), 150);
    QCOMPARE(step.openDataSet("/Particles/position").getSpace().getSimpleExtentNpoints(), 450);
}

void EngineCaseTest::theSameCaseGivesTheSameNumbers()
{
    QCOMPARE(AdapterCase::run(m_folder->path(), Usual).exitCode, 0);
    const QByteArray first = SampleCase::contentOf(file("case.csv"));
    QCOMPARE(AdapterCase::run(m_folder->path(), Usual).exitCode, 0);
    QCOMPARE(SampleCase::contentOf(file("case.csv")), first);
}

void EngineCaseTest::rollingFrictionMakesAHeap()
{
    const QString experiment = AdapterCase::experiment("angle of repose", Quick);
    const auto little = heapWith(0.5, 0.5, 0.05, experiment);
    const auto much = heapWith(0.5, 0.5, 0.4, experiment);
    QVERIFY(much["Heap height (m)"] > 1.15 * little["Heap height (m)"]);
    QVERIFY(much["Radius of 90 % (m)"] < 0.9 * little["Radius of 90 % (m)"]);
    QVERIFY(much["Angle of repose (deg)"] > little["Angle of repose (deg)"]);
}

void EngineCaseTest::staticFrictionMakesAHeap()
{
    const QString experiment = AdapterCase::experiment("angle of repose", Quick);
    const auto little = heapWith(0.5, 0.1, 0.2, experiment);
    const auto much = heapWith(0.5, 0.6, 0.2, experiment);
    QVERIFY(much["Heap height (m)"] > 1.15 * little["Heap height (m)"]);
    QVERIFY(much["Radius of 90 % (m)"] < 0.9 * little["Radius of 90 % (m)"]);
}

void EngineCaseTest::cohesionMakesAHeap()
{
    DeckDescription deck = SampleCase::deckOf(0.5, 0.5, 0.2);
    deck.surfaceSurface.linearCohesionV2 = {{{"Gravel", "Gravel"}, {1e5}}};
    AdapterCase::write(deck, {}, m_folder->path());
    QCOMPARE(AdapterCase::run(m_folder->path(), Usual).exitCode, 0);
    const auto sticky = AdapterCase::results(m_folder->path());
    const auto dry = heapWith(0.5, 0.5, 0.2, AdapterCase::experiment("angle of repose", Quick));
    QVERIFY(sticky["Heap height (m)"] > 1.3 * dry["Heap height (m)"]);
}

void EngineCaseTest::frictionSlowsADischarge()
{
    const QString experiment = AdapterCase::experiment(
        "draw-down", {"count = 200", "vessel radius = 0.02", "seeds = 15485863"});
    const auto smooth = heapWith(0.5, 0.1, 0.05, experiment);
    const auto rough = heapWith(0.5, 0.7, 0.3, experiment);
    QVERIFY(smooth["Discharge rate (kg/s)"] > 0.05);
    QVERIFY(rough["Discharge rate (kg/s)"] < 0.9 * smooth["Discharge rate (kg/s)"]);
    // All 200 spheres of 65.45 mm3 and 2500 kg/m3.
    QVERIFY(qAbs(smooth["Discharged mass (kg)"] - 0.032725) < 1e-5);
}

void EngineCaseTest::frictionShortensARunOut()
{
    const QString experiment =
        AdapterCase::experiment("column collapse", {"count = 150", "seeds = 15485863"});
    const auto smooth = heapWith(0.5, 0.2, 0.05, experiment);
    const auto rough = heapWith(0.5, 0.6, 0.3, experiment);
    QVERIFY(rough["Run-out (m)"] > 0.03);
    QVERIFY(rough["Run-out (m)"] < 0.85 * smooth["Run-out (m)"]);
    QVERIFY(rough["Heap height (m)"] > smooth["Heap height (m)"]);
}

void EngineCaseTest::aLiftedCylinderLeavesAHeap()
{
    const auto heap = heapWith(
        0.5, 0.5, 0.2,
        AdapterCase::experiment("angle of repose",
                                Quick + QStringList{"release = lifted", "lift speed = 0.2"}));
    QVERIFY(heap["Heap height (m)"] > 0.01);
    QVERIFY(heap["Radius of 90 % (m)"] > 0.018);
}

void EngineCaseTest::twoRadiiAreMixed()
{
    AdapterCase::write(
        SampleCase::deckOf(0.5, 0.5, 0.2),
        AdapterCase::experiment("angle of repose", Quick + QStringList{"radius = 0.002, 0.003"}),
        m_folder->path());
    QCOMPARE(AdapterCase::run(m_folder->path(), Usual).exitCode, 0);
    const H5::H5File step(file("case_data/1.h5").toStdString(), H5F_ACC_RDONLY);
    std::vector<double> radii(150);
    step.openDataSet("/Particles/radius").read(radii.data(), H5::PredType::NATIVE_DOUBLE);
    const auto small = std::count_if(radii.begin(), radii.end(),
                                     [](double radius) { return qAbs(radius - 0.002) < 1e-9; });
    const auto large = std::count_if(radii.begin(), radii.end(),
                                     [](double radius) { return qAbs(radius - 0.003) < 1e-9; });
    QCOMPARE(small + large, 150);
    QVERIFY(small > 50 && large > 50);
}

void EngineCaseTest::tooFewSpheresPutInAreTold()
{
    const liggghts::SExperiment experiment =
        AdapterCase::parsed(AdapterCase::experiment("angle of repose", Quick));
    liggghts::SCommandLine line;
    const liggghts::SSchedule schedule = liggghts::scheduleOf(line, experiment);
    liggghts::SGeometry geometry = liggghts::geometryOf(experiment, schedule);
    geometry.fillTo = geometry.fillFrom + 4.0 * experiment.largestRadius();
    QFile input(file(liggghts::EngineFiles::Input));
    QVERIFY(input.open(QIODevice::WriteOnly));
    input.write(QByteArray::fromStdString(liggghts::inputScript(
        experiment, liggghts::SEngineValues(), schedule, geometry, experiment.seeds.front())));
    input.close();
    liggghts::SEngineTask task{"a crowd", m_folder->path().toStdString(), experiment.count,
                               schedule.timeStep};
    try {
        liggghts::runEngines({task}, 1, [](const std::string&) {});
        QFAIL("It was good.");
    } catch (const liggghts::CAdapterError& error) {
        QVERIFY2(QString(error.what())
                     .contains(" of 150 spheres. The engine says: WARNING: "
                               "Particle insertion: Less insertions"),
                 error.what());
    }
}

void EngineCaseTest::anEngineThatIsAskedToEndIsNotGood()
{
    QProcess adapter;
    adapter.setWorkingDirectory(m_folder->path());
    adapter.start(AdapterCase::program(), QStringList{"-i", "case.zek"} + Usual);
    QByteArray output;
    while (!output.contains("150 spheres") && adapter.waitForReadyRead(20000)) {
        output += adapter.readAllStandardOutput();
    }
    const QByteArray engine = childOf(adapter.processId());
    QVERIFY(engine.toInt() > 0);
    // It ends with the exit code 0 then.
    ::kill(engine.toInt(), SIGTERM);
    QVERIFY(adapter.waitForFinished(20000));
    QCOMPARE(adapter.exitCode(), int(liggghts::CAdapterError::EngineFailed));
    const QByteArray errors = adapter.readAllStandardError();
    QVERIFY2(errors.startsWith("The engine's run of seed 15485863 ended before its time."),
             errors.constData());
}

void EngineCaseTest::aHeapThatStillMovesIsRefused()
{
    const SProgramEnd end =
        AdapterCase::run(m_folder->path(), {"-r", "0.1", "-w", "0.05", "-e", "case.dfg"});
    QCOMPARE(end.exitCode, int(liggghts::CAdapterError::EngineFailed));
    QVERIFY2(end.errors.startsWith("The engine's run of seed 15485863 still had moving spheres"),
             end.errors.constData());
    QVERIFY(!QFile::exists(file("case.csv")));
}

void EngineCaseTest::aLiftThatTakesTooLongIsRefused()
{
    AdapterCase::write(
        SampleCase::deckOf(0.5, 0.5, 0.2),
        AdapterCase::experiment("angle of repose", Quick + QStringList{"release = lifted"}),
        m_folder->path());
    const SProgramEnd end = AdapterCase::run(m_folder->path(), {"-r", "0.2"});
    QCOMPARE(end.exitCode, int(liggghts::CAdapterError::BadCommandLine));
    QCOMPARE(end.errors,
             QByteArray("The total time behind -r ends before the cylinder is lifted.\n"));
}

void EngineCaseTest::theDecksFilesStayAsTheyWere()
{
    const QStringList names{"case.zek", "case.ynd", "case.dfg", "case.experiment",
                            "case_data/0.h5"};
    QVector<QPair<QByteArray, QDateTime>> before;
    for (const QString& name : names) {
        before.append({SampleCase::contentOf(file(name)), QFileInfo(file(name)).lastModified()});
    }
    QTest::qWait(20);
    QCOMPARE(AdapterCase::run(m_folder->path(), Usual).exitCode, 0);
    for (int index = 0; index < names.size(); ++index) {
        QCOMPARE(SampleCase::contentOf(file(names[index])), before[index].first);
        QCOMPARE(QFileInfo(file(names[index])).lastModified(), before[index].second);
    }
}

TARNEL_TEST_MAIN(EngineCaseTest)
#include "engine_case_test.moc"
