#include "adapters/liggghts/measurements.h"

#include "adapters/liggghts/adapter_error.h"
#include "adapters/liggghts/heap_shape.h"
#include "adapters/liggghts/results.h"
#include "tests/adapters/adapter_case.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QtTest>

#include <cmath>

using namespace liggghts;

namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr double Radius = 0.001;

SSphere sphereAt(double x, double y, double z)
{
    SSphere sphere;
    sphere.radius = Radius;
    sphere.place = {x, y, z};
    return sphere;
}

/// Spheres on a grid below the surface of a cone about a middle of its own.
std::vector<SSphere> coneOf(double degrees, double foot)
{
    std::vector<SSphere> spheres;
    const double slope = std::tan(degrees * Pi / 180.0);
    for (double x = -foot; x <= foot; x += 2.0 * Radius) {
        for (double y = -foot; y <= foot; y += 2.0 * Radius) {
            const double surface = slope * (foot - std::hypot(x, y));
            for (double z = 0.1 * Radius; z <= surface; z += 0.25 * Radius) {
                spheres.push_back(sphereAt(x + 0.01, y - 0.02, z));
            }
        }
    }
    return spheres;
}

bool near(double value, double expected, double tolerance)
{
    return std::abs(value - expected) <= tolerance;
}

SRunRecord runOf(const std::vector<double>& heights)
{
    SRunRecord run;
    run.timeStep = 0.001;
    for (std::size_t index = 0; index < heights.size(); ++index) {
        SState state;
        state.step = 500 + 100 * index;
        state.spheres = {sphereAt(0.0, 0.0, heights[index] - Radius)};
        run.states.push_back(state);
    }
    return run;
}

} // namespace

class MeasurementsTest : public QObject
{
    Q_OBJECT

private slots:
    void aConeHasItsAngle_data();
    void aConeHasItsAngle();
    void aStraySphereChangesLittle();
    void aLeaningHeapHasItsRunOut();
    void aSteadyFlowHasItsRate();
    void aCollisionHasItsRestitution();
    void aSlidingSphereHasItsFriction();
    void aRollingSphereHasItsFriction();
    void spreadIsThatOfASample();
    void aRunThatHasEndedStaysAsItWas();
    void onlyWhatIsAskedForIsInTheTable();
    void theExportHasTheSimulatorsLayout();
};

void MeasurementsTest::aConeHasItsAngle_data()
{
    QTest::addColumn<double>("degrees");
    QTest::newRow("flat") << 12.0;
    QTest::newRow("steep") << 35.0;
}

void MeasurementsTest::aConeHasItsAngle()
{
    QFETCH(double, degrees);
    const SRoundHeap heap = roundHeapOf(coneOf(degrees, 0.04));
    QVERIFY2(near(heap.angle, degrees, 1.5), qPrintable(QString::number(heap.angle)));
    QVERIFY(near(heap.height, 0.04 * std::tan(degrees * Pi / 180.0), 2.0 * Radius));
    // 90 % of a cone's volume lies within 0.80 of its foot: 3 s^2 - 2 s^3 = 0.9.
    QVERIFY2(near(heap.radius90, 0.804 * 0.04, Radius), qPrintable(QString::number(heap.radius90)));
}

void MeasurementsTest::aStraySphereChangesLittle()
{
    std::vector<SSphere> spheres = coneOf(20.0, 0.04);
    const SRoundHeap before = roundHeapOf(spheres);
    spheres.push_back(sphereAt(0.5, 0.0, Radius));
    const SRoundHeap after = roundHeapOf(spheres);
    QVERIFY(near(after.angle, before.angle, 0.5));
    QVERIFY(near(after.radius90, before.radius90, Radius));
}

void MeasurementsTest::aLeaningHeapHasItsRunOut()
{
    std::vector<SSphere> spheres;
    for (int index = 0; index < 100; ++index) {
        const double x = 0.001 * index;
        spheres.push_back(sphereAt(x, 0.0, 0.06 - 0.5 * x));
    }
    const SLeaningHeap heap = leaningHeapOf(spheres);
    QVERIFY(near(heap.runOut, 0.094 + Radius, 1e-9));
    QVERIFY(near(heap.height, 0.061, 1e-9));
    QVERIFY2(near(heap.angle, 26.565, 0.5), qPrintable(QString::number(heap.angle)));
}

void MeasurementsTest::aSteadyFlowHasItsRate()
{
    const SExperiment experiment = AdapterCase::parsed(AdapterCase::experiment("draw-down"));
    SRunRecord run = runOf({0.1, 0.1, 0.1});
    // Slow at first, then 0.2 kg/s, slow at last.
    double mass = 0.0;
    for (int index = 0; index <= 200; ++index) {
        mass += index < 20 || index > 180 ? 0.00005 : 0.0002;
        run.samples.emplace_back(0.5 + 0.001 * index, mass);
    }
    const std::vector<double> end = measure(experiment, run, 2);
    QVERIFY2(near(end.at(0), 0.2, 0.002), qPrintable(QString::number(end.at(0))));
    QVERIFY(near(end.at(1), mass, 1e-12));
    QVERIFY(measure(experiment, run, 1).at(1) < mass);
}

void MeasurementsTest::aCollisionHasItsRestitution()
{
    const SExperiment experiment =
        AdapterCase::parsed(AdapterCase::experiment("collision", {"against = particles"}));
    SRunRecord run = runOf({0.1, 0.1});
    for (SState& state : run.states) {
        state.spheres.push_back(sphereAt(0.0, 0.0, 0.1));
    }
    run.states[0].spheres[0].speed[2] = 0.1;
    run.states[0].spheres[1].speed[2] = -0.1;
    run.states[1].spheres[0].speed[2] = -0.03;
    run.states[1].spheres[1].speed[2] = 0.03;
    QVERIFY(near(measure(experiment, run, 1).at(0), 0.3, 1e-12));
}

void MeasurementsTest::aSlidingSphereHasItsFriction()
{
    const SExperiment experiment = AdapterCase::parsed(AdapterCase::experiment("sliding sphere"));
    SRunRecord run = runOf({0.1, 0.1});
    for (int index = 0; index < 100; ++index) {
        const double time = 0.0005 * index;
        run.samples.emplace_back(time, std::max(0.2 * 5.0 / 7.0, 0.2 - 0.4 * 9.81 * time));
    }
    QVERIFY(near(measure(experiment, run, 1).at(0), 0.4, 1e-6));
}

void MeasurementsTest::aRollingSphereHasItsFriction()
{
    const SExperiment experiment = AdapterCase::parsed(AdapterCase::experiment("rolling sphere"));
    SRunRecord run = runOf({0.1, 0.1});
    for (int index = 0; index < 600; ++index) {
        const double time = 0.0005 * index;
        run.samples.emplace_back(time, std::max(0.0, 0.2 - 5.0 / 7.0 * 0.1 * 9.81 * time));
    }
    QVERIFY(near(measure(experiment, run, 1).at(0), 0.1, 1e-6));
}

void MeasurementsTest::spreadIsThatOfASample()
{
    const SSpread spread = spreadOf({2.0, 4.0, 6.0});
    QCOMPARE(spread.mean, 4.0);
    QCOMPARE(spread.deviation, 2.0);
    QCOMPARE(spreadOf({3.0}).deviation, 0.0);
}

void MeasurementsTest::aRunThatHasEndedStaysAsItWas()
{
    const SExperiment experiment = AdapterCase::parsed(AdapterCase::experiment("angle of repose"));
    const SResultTable table = resultsOf(experiment, {runOf({0.4, 0.2}), runOf({0.4, 0.3, 0.1})});
    QCOMPARE(table.rows.size(), std::size_t(3));
    QCOMPARE(table.rows[1].time, 0.1);
    QCOMPARE(table.rows[2].time, 0.2);
    const SSpread height = table.rows[2].values.at(1);
    QVERIFY(near(height.mean, 0.15, 1e-12));
    QVERIFY(near(height.deviation, 0.1 / std::sqrt(2.0), 1e-12));
}

void MeasurementsTest::onlyWhatIsAskedForIsInTheTable()
{
    const SExperiment experiment = AdapterCase::parsed(
        AdapterCase::experiment("angle of repose", {"measure = radius 90, height"}));
    const SResultTable table = resultsOf(experiment, {runOf({0.4, 0.2})});
    QCOMPARE(table.measures.size(), std::size_t(2));
    QCOMPARE(table.measures[0].word, std::string("height"));
    QCOMPARE(table.rows[0].values.size(), std::size_t(2));
    QVERIFY(near(table.rows[0].values[0].mean, 0.4, 1e-12));
}

void MeasurementsTest::theExportHasTheSimulatorsLayout()
{
    const SExperiment experiment = AdapterCase::parsed(
        AdapterCase::experiment("angle of repose", {"measure = height", "seeds = 10007"}));
    const QTemporaryDir folder;
    const QString file = folder.filePath("heap1.csv");
    writeExport(file.toStdString(), "heap1", experiment,
                resultsOf(experiment, {runOf({0.5, 0.25})}));
    QCOMPARE(SampleCase::linesOf(file),
             (QStringList{"LIGGGHTS through orva-liggghts: exported results", "EXTRACTED DATA",
                          "Name,heap1", "Experiment,angle of repose", "Runs,1", "TIME:,0",
                          "TIME,Heap height (m),Spread of Heap height (m),Mean kinetic energy (J)",
                          "0,0.5,0,0", "0.1,0.25,0,0"}));
    QVERIFY_EXCEPTION_THROWN(writeExport(folder.filePath("none/heap1.csv").toStdString(), "heap1",
                                         experiment, resultsOf(experiment, {runOf({0.5})})),
                             CAdapterError);
}

TARNEL_TEST_MAIN(MeasurementsTest)
#include "measurements_test.moc"
