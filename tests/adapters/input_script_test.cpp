#include "adapters/liggghts/input_script.h"

#include "adapters/liggghts/adapter_error.h"
#include "tests/adapters/adapter_case.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QtTest>

using namespace liggghts;

namespace {

SCommandLine lineOf(double totalTime, double saveInterval, double timeStep)
{
    SCommandLine line;
    line.totalTime = totalTime;
    line.saveInterval = saveInterval;
    line.timeStep = timeStep;
    return line;
}

QStringList scriptOf(const SExperiment& experiment, const SEngineValues& values)
{
    const SSchedule schedule = scheduleOf(lineOf(2.0, 0.05, 2e-5), experiment);
    const SGeometry geometry = geometryOf(experiment, schedule);
    return QString::fromStdString(inputScript(experiment, values, schedule, geometry, 10007))
        .split(QLatin1Char('\n'));
}

SEngineValues someValues()
{
    SEngineValues values;
    values.particles = {0.1, 0.2, 0.3, 0.0};
    values.wall = {0.4, 0.5, 0.6, 0.0};
    values.floor = {0.7, 0.8, 0.9, 0.0};
    return values;
}

SExperiment experimentOf(const char* kind, const QStringList& lines = {})
{
    return AdapterCase::parsed(AdapterCase::experiment(kind, lines));
}

} // namespace

class InputScriptTest : public QObject
{
    Q_OBJECT

private slots:
    void everyPairHasItsPlaceInTheMatrices();
    void cohesionIsThereOnlyWhereItActs();
    void everyLotHasAPrimeOfItsOwn();
    void eachExperimentLetsGoOfSomethingElse_data();
    void eachExperimentLetsGoOfSomethingElse();
    void savedTimesAreThoseAskedFor();
    void anAutomaticStepFitsIntoTheInterval();
    void aStepThatDoesNotResolveAContactIsRefused();
    void aLiftedCylinderHasRoomAbove();
};

void InputScriptTest::everyPairHasItsPlaceInTheMatrices()
{
    const QStringList script = scriptOf(experimentOf("angle of repose"), someValues());
    QVERIFY(script.contains("fix m3 all property/global coefficientRestitution peratomtypepair 3 "
                            "0.1 0.4 0.7 0.4 0.4 0.7 0.7 0.7 0.7"));
    QVERIFY(script.contains("fix m4 all property/global coefficientFriction peratomtypepair 3 "
                            "0.2 0.5 0.8 0.5 0.5 0.8 0.8 0.8 0.8"));
    QVERIFY(script.contains("fix m5 all property/global coefficientRollingFriction peratomtypepair "
                            "3 0.3 0.6 0.9 0.6 0.6 0.9 0.9 0.9 0.9"));
    QVERIFY(script.contains("fix m1 all property/global youngsModulus peratomtype 5000000 5000000 "
                            "5000000"));
}

void InputScriptTest::cohesionIsThereOnlyWhereItActs()
{
    SEngineValues values = someValues();
    QVERIFY(scriptOf(experimentOf("angle of repose"), values).filter("ohesion").isEmpty());
    values.floor.cohesion = 5000.0;
    const QStringList script = scriptOf(experimentOf("angle of repose"), values);
    QVERIFY(script.contains("fix m6 all property/global cohesionEnergyDensity peratomtypepair 3 "
                            "0 0 5000 0 0 5000 5000 5000 5000"));
    QVERIFY(script.contains("pair_style gran model hertz tangential history cohesion sjkr "
                            "rolling_friction epsd2"));
}

void InputScriptTest::everyLotHasAPrimeOfItsOwn()
{
    const QStringList script =
        scriptOf(experimentOf("angle of repose", {"radius = 0.002 : 3, 0.0025 : 1"}), someValues());
    QCOMPARE(script.filter("particletemplate/sphere 10037 ").size(), 1);
    QCOMPARE(script.filter("particletemplate/sphere 10039 ").size(), 1);
    QVERIFY(script.contains("fix kinds all particledistribution/discrete/numberbased 10009 2 kind1 "
                            "0.75 kind2 0.25"));
    QCOMPARE(script.filter("fix fill all insert/pack seed 10007 ").size(), 1);
}

void InputScriptTest::eachExperimentLetsGoOfSomethingElse_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("further");
    QTest::addColumn<QString>("holds");
    QTest::addColumn<QString>("release");
    QTest::newRow("removed") << "angle of repose"
                             << ""
                             << "zcylinder 0.025 0 0"
                             << "unfix vessel";
    QTest::newRow("lifted") << "angle of repose"
                            << "release = lifted"
                            << "mesh n_meshes 1"
                            << "fix lift all move/mesh mesh surface linear 0 0 0.1";
    QTest::newRow("draw-down") << "draw-down"
                               << ""
                               << "zplane 0.06"
                               << "unfix lid";
    QTest::newRow("collapse") << "column collapse"
                              << ""
                              << "xplane 0.03"
                              << "unfix gate";
}

void InputScriptTest::eachExperimentLetsGoOfSomethingElse()
{
    QFETCH(QString, kind);
    QFETCH(QString, further);
    QFETCH(QString, holds);
    QFETCH(QString, release);
    const SExperiment experiment = AdapterCase::parsed(AdapterCase::experiment(kind, {further}));
    const QStringList script = scriptOf(experiment, someValues());
    QCOMPARE(script.filter(holds).size(), 1);
    const int settled = script.indexOf("print \"@ settled\"");
    QVERIFY(settled > 0);
    QCOMPARE(script.indexOf(release), script.lastIndexOf(release));
    QVERIFY(script.indexOf(release) > settled);
    QVERIFY(script.indexOf("print \"@ released\"") > script.indexOf(release) - 1);
    QVERIFY(script.contains("print \"@ done\""));
}

void InputScriptTest::savedTimesAreThoseAskedFor()
{
    const SSchedule schedule = scheduleOf(lineOf(1.0, 0.05, 2e-5), experimentOf("angle of repose"));
    QCOMPARE(schedule.timeStep, 2e-5);
    QCOMPARE(schedule.saveSteps, 2500UL);
    QCOMPARE(schedule.saveTurns, 20UL);
    QCOMPARE(schedule.surelyMoving, 2UL);
}

void InputScriptTest::anAutomaticStepFitsIntoTheInterval()
{
    const SExperiment experiment = experimentOf("angle of repose");
    const SSchedule schedule = scheduleOf(lineOf(1.0, 0.03, 0.0), experiment);
    QVERIFY(schedule.timeStep < 0.14 * rayleighTime(experiment));
    QVERIFY(schedule.timeStep > 0.12 * rayleighTime(experiment));
    QVERIFY(qAbs(static_cast<double>(schedule.saveSteps) * schedule.timeStep - 0.03) < 1e-12);
    // pi * 0.0025 m * sqrt(2500 kg/m3 / (5e6 Pa / 2.6)) / (0.1631 * 0.3 + 0.8766)
    QVERIFY(qAbs(rayleighTime(experiment) - 3.0597e-4) < 1e-8);
}

void InputScriptTest::aStepThatDoesNotResolveAContactIsRefused()
{
    const SExperiment experiment = experimentOf("angle of repose");
    scheduleOf(lineOf(1.0, 0.05, 9e-5), experiment);
    try {
        scheduleOf(lineOf(1.0, 0.05, 1e-4), experiment);
        QFAIL("It was taken.");
    } catch (const CAdapterError& error) {
        QCOMPARE(error.cause(), CAdapterError::BadCommandLine);
        QVERIFY2(QString(error.what()).startsWith("The time step of 0.0001 s behind -t is longer"),
                 error.what());
    }
}

void InputScriptTest::aLiftedCylinderHasRoomAbove()
{
    const SExperiment experiment = experimentOf("angle of repose", {"release = lifted"});
    const SSchedule schedule = scheduleOf(lineOf(2.0, 0.05, 2e-5), experiment);
    const SGeometry lifted = geometryOf(experiment, schedule);
    const SGeometry removed = geometryOf(experimentOf("angle of repose"), schedule);
    QCOMPARE(removed.liftTurns, 0UL);
    const double way = static_cast<double>(lifted.liftTurns) * 0.05 * experiment.liftSpeed;
    QVERIFY(way > 0.03);
    QVERIFY(qAbs(lifted.domainTop - removed.domainTop - way) < 1e-12);
}

TARNEL_TEST_MAIN(InputScriptTest)
#include "input_script_test.moc"
