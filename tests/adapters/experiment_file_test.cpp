#include "adapters/liggghts/experiment_file.h"

#include "adapters/liggghts/adapter_error.h"
#include "adapters/liggghts/numbers.h"
#include "tests/adapters/adapter_case.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QtTest>

using namespace liggghts;

class ExperimentFileTest : public QObject
{
    Q_OBJECT

private slots:
    void whatIsSaidIsTaken();
    void whatIsNotSaidHasADefault();
    void sharesOfRadiiAddUpToOne();
    void theFloorIsOfTheWallsMaterialUnlessSaid();
    void aBadLineIsNamed_data();
    void aBadLineIsNamed();
    void whatTheEngineRefusesIsNamedWithItsValue_data();
    void whatTheEngineRefusesIsNamedWithItsValue();
    void oneFileIsFoundBesideTheDeck();
    void primesAreTold();
};

void ExperimentFileTest::whatIsSaidIsTaken()
{
    const SExperiment experiment = AdapterCase::parsed(
        "# a heap\nexperiment = angle of repose\n\n  particles = Sand # 3 mm\nwall = Steel\n"
        "floor = Mat #2\ncount = 250\nradius = 0.003\nvessel radius = 0.03\nrelease = lifted\n"
        "lift speed = 0.2\ngravity = 1.62\nseeds = 10007, 32452843\nmeasure = height, radius 90\n"
        "density = 2600\nparticle young's modulus = 1e7\nfloor poisson's ratio = 0.25\n"
        "rest speed = 0.01\nrolling model = cdt\nleave out = Bonding, Oka Wear\r\n");
    QCOMPARE(experiment.kind, EExperiment::AngleOfRepose);
    QCOMPARE(experiment.particles.name, std::string("Sand"));
    QCOMPARE(experiment.floor.name, std::string("Mat"));
    QCOMPARE(experiment.count, std::size_t(250));
    QCOMPARE(experiment.largestRadius(), 0.003);
    QCOMPARE(experiment.vesselRadius, 0.03);
    QVERIFY(experiment.lifted);
    QCOMPARE(experiment.liftSpeed, 0.2);
    QCOMPARE(experiment.gravity, 1.62);
    QCOMPARE(experiment.seeds, (std::vector<unsigned long>{10007, 32452843}));
    QCOMPARE(experiment.measures, (std::vector<std::string>{"height", "radius 90"}));
    QCOMPARE(experiment.density, 2600.0);
    QCOMPARE(experiment.particles.youngsModulus, 1e7);
    QCOMPARE(experiment.floor.poissonsRatio, 0.25);
    QCOMPARE(experiment.restSpeed, 0.01);
    QCOMPARE(experiment.rolling, std::string("cdt"));
    QCOMPARE(experiment.leaveOut, (std::vector<std::string>{"Bonding", "Oka Wear"}));
}

void ExperimentFileTest::whatIsNotSaidHasADefault()
{
    const SExperiment experiment = AdapterCase::parsed(AdapterCase::experiment("draw-down"));
    QCOMPARE(experiment.kind, EExperiment::DrawDown);
    QCOMPARE(experiment.count, std::size_t(400));
    QCOMPARE(experiment.seeds.size(), std::size_t(3));
    QCOMPARE(experiment.gravity, 9.81);
    QVERIFY(experiment.measures.empty());
}

void ExperimentFileTest::sharesOfRadiiAddUpToOne()
{
    const SExperiment experiment = AdapterCase::parsed(
        AdapterCase::experiment("angle of repose", {"radius = 0.002 : 3, 0.004 : 1"}));
    QCOMPARE(experiment.radii.size(), std::size_t(2));
    QCOMPARE(experiment.radii[0].share, 0.75);
    QCOMPARE(experiment.radii[1].radius, 0.004);
    QCOMPARE(experiment.smallestRadius(), 0.002);
    QCOMPARE(experiment.largestRadius(), 0.004);
    // 4/3 pi (0.75 * 8 + 0.25 * 64) mm3
    QVERIFY(qAbs(experiment.meanVolume() - 9.2153e-8) < 1e-11);
}

void ExperimentFileTest::theFloorIsOfTheWallsMaterialUnlessSaid()
{
    const SExperiment experiment = AdapterCase::parsed(
        AdapterCase::experiment("column collapse", {"wall young's modulus = 2e7"}));
    QCOMPARE(experiment.floor.name, std::string("Steel"));
    QCOMPARE(experiment.floor.youngsModulus, 2e7);
}

void ExperimentFileTest::aBadLineIsNamed_data()
{
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("complaint");
    QTest::newRow("unknown key") << "colour = red"
                                 << "there is no key \"colour\"";
    QTest::newRow("no key") << "= 3"
                            << "\"= 3\" is not \"key = value\"";
    QTest::newRow("no equals sign") << "count"
                                    << "\"count\" is not \"key = value\"";
    QTest::newRow("twice") << "wall = Glass"
                           << "\"wall\" stands twice";
    QTest::newRow("no number") << "density = heavy"
                               << "\"heavy\" is not a number above 0";
    QTest::newRow("not above 0") << "gravity = 0"
                                 << "\"0\" is not a number above 0";
    QTest::newRow("half a sphere") << "count = 1.5"
                                   << "\"1.5\" is not a whole number up to 1000000";
    QTest::newRow("another release") << "release = thrown"
                                     << "\"thrown\" is none of removed, lifted";
    QTest::newRow("of another experiment")
        << "orifice radius = 0.01"
        << "the experiment \"angle of repose\" has no \"orifice radius\"";
    QTest::newRow("share") << "radius = 0.002 : 1 : 2"
                           << "\"0.002 : 1 : 2\" is not \"radius\" or \"radius : share\"";
    QTest::newRow("no radii") << "radius ="
                              << "there are no radii";
}

void ExperimentFileTest::aBadLineIsNamed()
{
    QFETCH(QString, line);
    QFETCH(QString, complaint);
    try {
        AdapterCase::parsed(AdapterCase::experiment("angle of repose", {line}));
        QFAIL("It was taken.");
    } catch (const CAdapterError& error) {
        QCOMPARE(QString(error.what()), "Line 4 of the experiment: " + complaint + ".");
        QCOMPARE(error.cause(), CAdapterError::BadDeck);
    }
}

void ExperimentFileTest::whatTheEngineRefusesIsNamedWithItsValue_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("sentence");
    const auto with = [](const char* line) {
        return AdapterCase::experiment("angle of repose", {line});
    };
    QTest::newRow("soft") << with("particle young's modulus = 4.9e6")
                          << "The particle young's modulus is 4900000 Pa; the engine takes 5e6 to "
                             "1e9 Pa.";
    QTest::newRow("hard")
        << with("wall young's modulus = 2e11")
        << "The wall young's modulus is 2e+11 Pa; the engine takes 5e6 to 1e9 Pa.";
    QTest::newRow("ratio") << with("floor = Mat\nfloor poisson's ratio = 0.6")
                           << "The floor poisson's ratio is 0.6; the engine takes 0 to 0.5.";
    QTest::newRow("small seed") << with("seeds = 9973")
                                << "The seed 9973 is not a prime from 10007 to 2147483647; the "
                                   "engine takes no other.";
    QTest::newRow("no prime") << with("seeds = 15485862")
                              << "The seed 15485862 is not a prime from 10007 to 2147483647; the "
                                 "engine takes no other.";
    QTest::newRow("seed twice") << with("seeds = 10007, 10007")
                                << "A seed stands twice: it would give the same spheres again.";
    QTest::newRow("no seeds") << with("seeds =") << "The experiment names no seeds.";
    QTest::newRow("narrow") << with("vessel radius = 0.009")
                            << "The vessel radius of 0.009 m has no room for spheres of 0.0025 m.";
    QTest::newRow("no particles")
        << "experiment = angle of repose\nwall = Steel\n"
        << "The experiment doesn't say which material the particle is of.";
    QTest::newRow("no experiment") << "# nothing\n"
                                   << "The experiment file doesn't say which experiment it is.";
    QTest::newRow("measure") << with("measure = height, colour")
                             << "The experiment \"angle of repose\" doesn't measure \"colour\".";
}

void ExperimentFileTest::whatTheEngineRefusesIsNamedWithItsValue()
{
    QFETCH(QString, text);
    QFETCH(QString, sentence);
    try {
        AdapterCase::parsed(text);
        QFAIL("It was taken.");
    } catch (const CAdapterError& error) {
        QCOMPARE(QString(error.what()), sentence);
    }
}

void ExperimentFileTest::oneFileIsFoundBesideTheDeck()
{
    const QTemporaryDir folder;
    const std::filesystem::path deck = folder.filePath("heap1.zek").toStdString();
    QVERIFY_EXCEPTION_THROWN(findExperimentFile(deck), CAdapterError);
    QFile first(folder.filePath("tall heap.experiment"));
    QVERIFY(first.open(QIODevice::WriteOnly));
    QCOMPARE(findExperimentFile(deck).filename().string(), std::string("tall heap.experiment"));
    QFile second(folder.filePath("other.experiment"));
    QVERIFY(second.open(QIODevice::WriteOnly));
    QVERIFY_EXCEPTION_THROWN(findExperimentFile(deck), CAdapterError);
}

void ExperimentFileTest::primesAreTold()
{
    QVERIFY(isPrime(2));
    QVERIFY(isPrime(15485863));
    QVERIFY(!isPrime(1));
    QVERIFY(!isPrime(15485861));
    QCOMPARE(primesFrom(10007, 3), (std::vector<unsigned long>{10007, 10009, 10037}));
}

TARNEL_TEST_MAIN(ExperimentFileTest)
#include "experiment_file_test.moc"
