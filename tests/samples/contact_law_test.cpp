#include "samples/contact_law.h"

#include "tests/support/test_environment.h"

#include <QApplication>
#include <QtTest>

#include <cmath>

namespace {

constexpr double Stiffness = 3000.0;
constexpr double Mass = 0.001;
constexpr double TimeStep = 1e-6;

SContactValues smooth()
{
    SContactValues values;
    values.staticFriction = 0.0;
    return values;
}

SContactState pressed()
{
    SContactState state;
    state.overlap = 1e-4;
    state.effectiveMass = Mass;
    state.effectiveRadius = 0.005;
    return state;
}

// Speed at which a body leaves a wall that it met at this speed.
double reboundSpeed(const SContactValues& values, double speed)
{
    const CContactLaw law(values, Stiffness);
    SContactHistory history;
    SContactState state = pressed();
    state.overlap = 1e-12;
    state.approachSpeed = speed;
    while (state.overlap > 0.0) {
        state.approachSpeed -= law.force(state, history, TimeStep).normal / Mass * TimeStep;
        state.overlap += state.approachSpeed * TimeStep;
    }
    return -state.approachSpeed;
}

} // namespace

class ContactLawTest : public QObject
{
    Q_OBJECT

private slots:
    void aCollisionKeepsTheRestitutionsShareOfTheSpeed_data();
    void aCollisionKeepsTheRestitutionsShareOfTheSpeed();
    void frictionNeverPassesTheCoulombLimit();
    void frictionHoldsBelowTheLimit();
    void rollingResistanceNeverPassesItsLimit();
    void withoutRollingFrictionNothingResistsRolling();
    void surfaceEnergyPullsByTheSameForceAtAnyOverlap();
    void cohesionPullsMoreTheDeeperTheContact();
};

void ContactLawTest::aCollisionKeepsTheRestitutionsShareOfTheSpeed_data()
{
    QTest::addColumn<double>("restitution");
    for (const double restitution : {0.1, 0.3, 0.5, 0.7, 0.9, 1.0}) {
        QTest::addRow("%g", restitution) << restitution;
    }
}

void ContactLawTest::aCollisionKeepsTheRestitutionsShareOfTheSpeed()
{
    QFETCH(const double, restitution);
    SContactValues values = smooth();
    values.restitution = restitution;
    QVERIFY(std::abs(reboundSpeed(values, 0.5) / 0.5 - restitution) < 0.01);
    QVERIFY(std::abs(reboundSpeed(values, 2.0) / 2.0 - restitution) < 0.01);
}

void ContactLawTest::frictionNeverPassesTheCoulombLimit()
{
    SContactValues values;
    values.staticFriction = 0.4;
    const CContactLaw law(values, Stiffness);
    SContactHistory history;
    SContactState state = pressed();
    state.slipSpeed = 0.2;
    SContactForce force;
    for (int i = 0; i < 1000; ++i) {
        force = law.force(state, history, TimeStep);
    }
    QCOMPARE(force.tangential, -0.4 * Stiffness * state.overlap);
}

void ContactLawTest::frictionHoldsBelowTheLimit()
{
    SContactValues values;
    values.staticFriction = 0.4;
    const CContactLaw law(values, Stiffness);
    SContactHistory history;
    SContactState state = pressed();
    state.slipSpeed = 0.001;
    law.force(state, history, 0.001);
    state.slipSpeed = 0.0;
    const SContactForce force = law.force(state, history, 0.001);
    QVERIFY(force.tangential < 0.0);
    QVERIFY(force.tangential > -0.4 * Stiffness * state.overlap);
}

void ContactLawTest::rollingResistanceNeverPassesItsLimit()
{
    SContactValues values = smooth();
    values.rollingFriction = 0.1;
    const CContactLaw law(values, Stiffness);
    SContactHistory history;
    SContactState state = pressed();
    state.rollSpeed = -30.0;
    SContactForce force;
    for (int i = 0; i < 10000; ++i) {
        force = law.force(state, history, TimeStep);
    }
    QCOMPARE(force.torque, 0.1 * state.effectiveRadius * Stiffness * state.overlap);
}

void ContactLawTest::withoutRollingFrictionNothingResistsRolling()
{
    SContactHistory history;
    SContactState state = pressed();
    state.rollSpeed = 30.0;
    QCOMPARE(CContactLaw(smooth(), Stiffness).force(state, history, TimeStep).torque, 0.0);
}

void ContactLawTest::surfaceEnergyPullsByTheSameForceAtAnyOverlap()
{
    SContactValues values = smooth();
    values.surfaceEnergy = 2.0;
    const CContactLaw law(values, Stiffness);
    const CContactLaw dry(smooth(), Stiffness);
    for (const double overlap : {1e-6, 1e-4}) {
        SContactHistory history;
        SContactState state = pressed();
        state.overlap = overlap;
        const double pull =
            dry.force(state, history, TimeStep).normal - law.force(state, history, TimeStep).normal;
        QVERIFY(std::abs(pull - 1.5 * M_PI * 2.0 * 0.005) < 1e-9);
    }
}

void ContactLawTest::cohesionPullsMoreTheDeeperTheContact()
{
    SContactValues values = smooth();
    values.energyDensity = 1000.0;
    const CContactLaw law(values, Stiffness);
    SContactHistory history;
    SContactState shallow = pressed();
    shallow.overlap = 1e-5;
    const double push = Stiffness * pressed().overlap;
    const double deepPull = push - law.force(pressed(), history, TimeStep).normal;
    const double shallowPull =
        Stiffness * shallow.overlap - law.force(shallow, history, TimeStep).normal;
    QVERIFY(shallowPull > 0.0);
    QVERIFY(std::abs(deepPull / shallowPull - 10.0) < 1e-6);
}

TARNEL_TEST_MAIN(ContactLawTest)
#include "contact_law_test.moc"
