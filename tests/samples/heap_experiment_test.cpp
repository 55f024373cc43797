#include "samples/heap_experiment.h"
#include "samples/heap_measures.h"

#include "tests/support/test_environment.h"

#include <QApplication>
#include <QtTest>

#include <cmath>

namespace {

SCaseValues ordinaryValues()
{
    SCaseValues values;
    values.particles.rollingFriction = 0.1;
    values.walls.rollingFriction = 0.1;
    return values;
}

CHeapExperiment advanced(unsigned seed, unsigned long steps)
{
    CHeapExperiment experiment(ordinaryValues(), seed);
    experiment.advance(steps, CHeapExperiment::automaticTimeStep());
    return experiment;
}

bool samePlaces(const std::vector<SBody>& a, const std::vector<SBody>& b)
{
    return std::equal(a.begin(), a.end(), b.begin(), b.end(), [](const SBody& x, const SBody& y) {
        return x.x == y.x && x.y == y.y && x.spin == y.spin;
    });
}

SBody bodyAt(double x, double y)
{
    SBody body;
    body.radius = 0.005;
    body.mass = 0.001;
    body.x = x;
    body.y = y;
    return body;
}

} // namespace

class HeapExperimentTest : public QObject
{
    Q_OBJECT

private slots:
    void theColumnRestsBehindTheGateBeforeItOpens();
    void theRestingColumnIsTheSameForAllValues();
    void theSameSeedGivesTheSameMotion();
    void anotherSeedGivesAnotherColumn();
    void noBodyLeavesTheBox();
    void halfTheTimeStepGivesNearlyTheSameHeap();
    void measuresOfAKnownHeap();
    void anEmptyHeapMeasuresNothing();
    void theMeanOfSeveralHeapsIsTakenMeasureByMeasure();
};

void HeapExperimentTest::theColumnRestsBehindTheGateBeforeItOpens()
{
    const SHeapMeasures measures = measureHeap(CHeapExperiment(ordinaryValues(), 1).bodies());
    QVERIFY(measures.runOut < 0.081);
    QVERIFY(measures.height > 0.1);
    QVERIFY(measures.centreHeight < 0.07);
    QVERIFY(measures.kineticEnergy < 1e-7);
}

void HeapExperimentTest::theRestingColumnIsTheSameForAllValues()
{
    SCaseValues bouncy = ordinaryValues();
    bouncy.particles.restitution = 0.9;
    bouncy.walls.staticFriction = 0.0;
    QVERIFY(samePlaces(CHeapExperiment(ordinaryValues(), 1).bodies(),
                       CHeapExperiment(bouncy, 1).bodies()));
}

void HeapExperimentTest::theSameSeedGivesTheSameMotion()
{
    QVERIFY(samePlaces(advanced(2, 3000).bodies(), advanced(2, 3000).bodies()));
}

void HeapExperimentTest::anotherSeedGivesAnotherColumn()
{
    QVERIFY(!samePlaces(advanced(1, 0).bodies(), advanced(2, 0).bodies()));
}

void HeapExperimentTest::noBodyLeavesTheBox()
{
    const CHeapExperiment experiment = advanced(3, 8000);
    for (const SBody& body : experiment.bodies()) {
        QVERIFY(body.x > 0.0);
        QVERIFY(body.x < 0.8);
        QVERIFY(body.y > 0.0);
        QVERIFY(body.y < 0.3);
    }
}

void HeapExperimentTest::halfTheTimeStepGivesNearlyTheSameHeap()
{
    // Early on, before chance collisions part the two columns for good.
    const double timeStep = CHeapExperiment::automaticTimeStep();
    CHeapExperiment coarse(ordinaryValues(), 1);
    CHeapExperiment fine(ordinaryValues(), 1);
    const double start = measureHeap(coarse.bodies()).centreHeight;
    coarse.advance(1000, timeStep);
    fine.advance(2000, timeStep / 2.0);
    const double coarseHeight = measureHeap(coarse.bodies()).centreHeight;
    const double difference = coarseHeight - measureHeap(fine.bodies()).centreHeight;
    QVERIFY(start - coarseHeight > 0.003);
    QVERIFY2(std::abs(difference) < 0.0001, qPrintable(QString::number(difference)));
}

void HeapExperimentTest::measuresOfAKnownHeap()
{
    // Two on the floor and one on top at the wall; the second strip of the surface is lower.
    std::vector<SBody> bodies{bodyAt(0.005, 0.005), bodyAt(0.005, 0.015), bodyAt(0.015, 0.005)};
    bodies.back().speedX = 2.0;
    bodies.back().spin = 100.0;
    const SHeapMeasures measures = measureHeap(bodies);
    QCOMPARE(measures.runOut, 0.02);
    QCOMPARE(measures.height, 0.015);
    QCOMPARE(measures.centreHeight, 0.025 / 3.0);
    QCOMPARE(measures.reposeAngle, 45.0);
    const double spinning = 0.5 * bodies.back().inertia() * 100.0 * 100.0;
    QCOMPARE(measures.kineticEnergy, (0.5 * 0.001 * 4.0 + spinning) / 3.0);
}

void HeapExperimentTest::anEmptyHeapMeasuresNothing()
{
    QCOMPARE(measureHeap({}).runOut, 0.0);
    QCOMPARE(measureHeap({}).reposeAngle, 0.0);
}

void HeapExperimentTest::theMeanOfSeveralHeapsIsTakenMeasureByMeasure()
{
    SHeapMeasures a;
    a.runOut = 1.0;
    a.kineticEnergy = 4.0;
    SHeapMeasures b;
    b.runOut = 2.0;
    b.height = 3.0;
    QCOMPARE(meanOf({a, b}).runOut, 1.5);
    QCOMPARE(meanOf({a, b}).height, 1.5);
    QCOMPARE(meanOf({a, b}).kineticEnergy, 2.0);
}

TARNEL_TEST_MAIN(HeapExperimentTest)
#include "heap_experiment_test.moc"
