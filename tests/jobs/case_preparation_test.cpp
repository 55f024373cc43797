#include "jobs/case_preparation.h"

#include "deck/app_settings.h"
#include "deck/deck_store.h"
#include "jobs/job_file_reader.h"
#include "jobs/job_loading.h"
#include "jobs/job_matrix.h"
#include "jobs/job_specification.h"
#include "tests/jobs/deck_row.h"
#include "tests/jobs/job_fixture.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QtTest>

#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

/// A line of the job matrix for one case.
std::string matrixLine(const CaseRow& row)
{
    std::ostringstream line;
    line << std::boolalpha << "0,";
    for (const CaseValue& value : row) {
        std::visit([&line](auto held) { line << held << ','; }, value);
    }
    line << " -c \n";
    return line.str();
}

} // namespace

class CasePreparationTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void threeCasesGiveFourTriplesAndThreeFolders();
    void caseFolderHoldsCopiesUnderTheCasesName();
    void valuesOfTheCaseEnterItsDeck();
    void everyModelOfADeckReachesTheCase_data();
    void everyModelOfADeckReachesTheCase();
    void deckOfTheJobStaysByteForByte();
    void jobWithoutCasesGivesOneTripleAndNoFolder();
    void secondPreparationUsesTheNextRoot();
    void localCommandsAreAbsoluteAndDistributedRelative();
    void exportFilesTakeTheCasesName();
    void scriptIsCopiedFromItsSource();
    void couplingFileComesFromTheJob();
    void emptyStemFailsToCreateTheRoot();
    void missingAdditionalFileEndsThePreparation();
    void missingCompanionEndsThePreparation();
    void missingScriptEndsThePreparation();
    void missingCouplingFileEndsThePreparation();
    void missingDataFileEndsThePreparation();
    void emptyPartsOfTheAdditionalFilesAreSkipped();
    void shortRowLeavesTheDefaults();

private:
    void generateAndLoad();
    void load();
    std::string m_job;
    std::string m_root;
    std::vector<CaseCommands> prepare(bool local = true)
    {
        return prepareCases(m_job + "/JobFileLocation", local, m_root);
    }

    std::unique_ptr<CJobFixture> m_fixture;
};

void CasePreparationTest::init()
{
    m_fixture = std::make_unique<CJobFixture>();
    m_root.clear();
    m_fixture->chooseDeck(plainDeck(3));
    CDeckStore::instance()->setSimulatorOptions(" -c  -r 1.000000");
    CAppSettings::instance()->setValue(CAppSettings::OrvaExeLocation, "/opt/orva");
    pushEntry("Interactions", {{"glass<>glass", {{0.75, 0.1, 0.2, 0.3}, {0.25}, {0.02}}},
                               {"glass<>steel", {{0.5}, {0.4}, {0.01}}}});
}

void CasePreparationTest::generateAndLoad()
{
    CJobMatrix matrix;
    m_job = generateJobFolder(matrix, m_fixture->folder("save")).value();
    load();
}

void CasePreparationTest::load()
{
    CJobMatrix matrix;
    CJobFileReader reader;
    QVERIFY(loadJobFolder(m_job, matrix, reader, [](const std::string&, int) {}));
}

void CasePreparationTest::threeCasesGiveFourTriplesAndThreeFolders()
{
    generateAndLoad();
    QCOMPARE(prepare().size(), std::size_t(4));
    QCOMPARE(m_root, m_job + "/JobFileLocation");
    QCOMPARE(namesIn(m_root), Names({"Job0", "Job1", "Job2"}));
}

void CasePreparationTest::caseFolderHoldsCopiesUnderTheCasesName()
{
    CAppSettings::instance()->setValue(
        CAppSettings::AdditionalFilesPath,
        QString::fromStdString(m_fixture->writeFile("wall.stl", "W")));
    generateAndLoad();
    prepare();
    QCOMPARE(namesIn(m_root + "/Job1"), Names({"bed1.ynd", "bed1.zek", "bed1_data", "wall.stl"}));
    QCOMPARE(namesIn(m_root + "/Job1/bed1_data"), Names({"0.h5"}));
    QCOMPARE(contentOf(m_root + "/Job1/bed1.zek"), contentOf(m_job + "/bed.zek"));
    QCOMPARE(contentOf(m_root + "/Job1/bed1.ynd"), contentOf(m_job + "/bed.ynd"));
    QCOMPARE(contentOf(m_root + "/Job1/wall.stl"), std::string("W"));
}

void CasePreparationTest::valuesOfTheCaseEnterItsDeck()
{
    generateAndLoad();
    prepare();
    const double expected[] = {0.1, 0.2, 0.3};
    for (int number = 0; number < 3; ++number) {
        const std::string n = std::to_string(number);
        const CCreatorData record = recordIn(m_root + "/Job" + n + "/bed" + n + "_data/0.h5");
        QVERIFY(record.m_interactions ==
                TripleMap({{"glass<>glass", {expected[number], 0.25, 0.02}},
                           {"glass<>steel", {0.5, 0.4, 0.01}}}));
    }
}

void CasePreparationTest::everyModelOfADeckReachesTheCase_data()
{
    QTest::addColumn<int>("format");
    QTest::newRow("0") << 0;
    QTest::newRow("1") << 1;
    QTest::newRow("2") << 2;
    QTest::newRow("3") << 3;
    QTest::newRow("14") << 14;
}

void CasePreparationTest::everyModelOfADeckReachesTheCase()
{
    QFETCH(int, format);
    m_fixture = std::make_unique<CJobFixture>();
    m_fixture->chooseDeck(fullDeck(format));
    CDeckStore::instance()->setSimulatorOptions(" -c ");
    CJobMatrix matrix;
    m_job = generateJobFolder(matrix, m_fixture->folder("save")).value();
    const CCreatorData deck = recordIn(m_job + "/bed_data/0.h5");
    std::ofstream(m_job + "/input_jobID-Matrix.csv") << "h\n" << matrixLine(CDeckRow::of(deck));
    load();
    prepare();
    CCreatorData record = recordIn(m_root + "/Job0/bed0_data/0.h5");
    // Type C rolling friction isn't part of the scheme, so the case's record holds none of it.
    for (CModelSet* set : {static_cast<CModelSet*>(&record.m_surfaceSurface),
                           static_cast<CModelSet*>(&record.m_surfaceGeometry)}) {
        QCOMPARE(set->m_coefficientOfRollingStiffness, 0.0);
        QCOMPARE(set->m_bTangentialRotationOnly, false);
    }
    QVERIFY(record.m_interactions == deck.m_interactions);
    QVERIFY(record.m_externalForces == deck.m_externalForces);
    QVERIFY(record.m_surfaceSurface.m_edinburghAdhesion ==
            deck.m_surfaceSurface.m_edinburghAdhesion);
    QVERIFY(record.m_surfaceSurface.m_bonding == deck.m_surfaceSurface.m_bonding);
    QVERIFY(record.m_surfaceSurface.m_bondingV2 == deck.m_surfaceSurface.m_bondingV2);
    QVERIFY(record.m_surfaceGeometry.m_sprayCoating == deck.m_surfaceGeometry.m_sprayCoating);
    QVERIFY(record.m_surfaceGeometry.m_okaWear == deck.m_surfaceGeometry.m_okaWear);
}

void CasePreparationTest::deckOfTheJobStaysByteForByte()
{
    generateAndLoad();
    const std::string before = contentOf(m_job + "/bed_data/0.h5");
    const auto time = fs::last_write_time(m_job + "/bed_data/0.h5");
    prepare();
    QCOMPARE(contentOf(m_job + "/bed_data/0.h5"), before);
    QVERIFY(fs::last_write_time(m_job + "/bed_data/0.h5") == time);
    QVERIFY(contentOf(m_root + "/Job0/bed0_data/0.h5") != before);
}

void CasePreparationTest::jobWithoutCasesGivesOneTripleAndNoFolder()
{
    generateAndLoad();
    std::ofstream(m_job + "/input_jobID-Matrix.csv") << "Job ID#,Simulator Options\n";
    load();
    QCOMPARE(prepare().size(), std::size_t(1));
    QVERIFY(namesIn(m_root).empty());
}

void CasePreparationTest::secondPreparationUsesTheNextRoot()
{
    generateAndLoad();
    prepare();
    m_fixture->writeFile("save/JobSpec/JobFileLocation/Job0/result.csv", "precious");
    prepare();
    QCOMPARE(m_root, m_job + "/JobFileLocation0");
    prepare();
    QCOMPARE(m_root, m_job + "/JobFileLocation1");
    QCOMPARE(contentOf(m_job + "/JobFileLocation/Job0/result.csv"), std::string("precious"));
    QCOMPARE(CDeckStore::instance()->creatorData().size(), std::size_t(4));
}

void CasePreparationTest::localCommandsAreAbsoluteAndDistributedRelative()
{
    generateAndLoad();
    const std::vector<CaseCommands> local = prepare(true);
    QCOMPARE(local.at(2).m_sSimulator,
             "\"/opt/orva\" -i \"" + m_root + "/Job2/bed2.zek\" -c  -r 1.000000");
    QCOMPARE(prepare(false).at(2).m_sSimulator,
             std::string("\"/opt/orva\" -i \"Job2/bed2.zek\" -c  -r 1.000000"));
}

void CasePreparationTest::exportFilesTakeTheCasesName()
{
    CDeckStore::instance()->setPostProcessing(
        {1, {m_fixture->writeFile("x.dfg", "D"), m_fixture->writeFile("x.qsv", "Q")}});
    generateAndLoad();
    const std::vector<CaseCommands> commands = prepare();
    QCOMPARE(contentOf(m_root + "/Job2/bed2.dfg"), std::string("D"));
    QCOMPARE(contentOf(m_root + "/Job2/bed2.qsv"), std::string("Q"));
    QVERIFY(QString::fromStdString(commands.at(2).m_sSimulator)
                .endsWith(QString::fromStdString(" -e \"" + m_job + "/bed.dfg\"")));
}

void CasePreparationTest::scriptIsCopiedFromItsSource()
{
    const std::string script = m_fixture->writeFile("s.py", "old");
    CDeckStore::instance()->setPostProcessing({2, {script, "-d", "x"}});
    generateAndLoad();
    m_fixture->writeFile("s.py", "new");
    prepare();
    QCOMPARE(contentOf(m_root + "/Job0/s.py"), std::string("new"));
    QCOMPARE(contentOf(m_job + "/s.py"), std::string("old"));
}

void CasePreparationTest::couplingFileComesFromTheJob()
{
    m_fixture->folder("elsewhere");
    CDeckStore::instance()->setCoupling({m_fixture->writeFile("elsewhere/server", "S"), "-p"});
    generateAndLoad();
    fs::remove(m_fixture->path("elsewhere/server"));
    prepare();
    QCOMPARE(contentOf(m_root + "/Job1/server"), std::string("S"));
}

void CasePreparationTest::emptyStemFailsToCreateTheRoot()
{
    const std::string error = filesystemErrorOf([this] { prepareCases("", false, m_root); });
    QVERIFY2(QString::fromStdString(error).contains("create_directory"), error.c_str());
}

void CasePreparationTest::missingAdditionalFileEndsThePreparation()
{
    CAppSettings::instance()->setValue(
        CAppSettings::AdditionalFilesPath,
        QString::fromStdString(m_fixture->writeFile("wall.stl", "W")));
    generateAndLoad();
    fs::remove(m_job + "/wall.stl");
    const std::string error = filesystemErrorOf([this] { prepare(); });
    QVERIFY2(QString::fromStdString(error).contains("copy_file"), error.c_str());
    QCOMPARE(m_root, m_job + "/JobFileLocation");
    QCOMPARE(namesIn(m_root), Names({"Job0"}));
    QCOMPARE(namesIn(m_root + "/Job0"), Names({"bed0.ynd", "bed0.zek"}));
}

void CasePreparationTest::missingCompanionEndsThePreparation()
{
    generateAndLoad();
    fs::remove(m_job + "/bed.ynd");
    const std::string error = filesystemErrorOf([this] { prepare(); });
    QVERIFY2(QString::fromStdString(error).contains("copy_file"), error.c_str());
    QCOMPARE(namesIn(m_root + "/Job0"), Names({"bed0.zek"}));
}

void CasePreparationTest::missingScriptEndsThePreparation()
{
    CDeckStore::instance()->setPostProcessing({2, {m_fixture->writeFile("s.py", "s"), "-d", "x"}});
    generateAndLoad();
    fs::remove(m_fixture->path("s.py"));
    const std::string error = filesystemErrorOf([this] { prepare(); });
    QVERIFY2(QString::fromStdString(error).contains("copy_file"), error.c_str());
    QVERIFY(!fs::exists(m_root + "/Job0/bed0_data"));
}

void CasePreparationTest::missingCouplingFileEndsThePreparation()
{
    CDeckStore::instance()->setCoupling({m_fixture->writeFile("server", "S"), "-p"});
    CDeckStore::instance()->setPostProcessing({2, {m_fixture->writeFile("s.py", "s"), "-d", "x"}});
    generateAndLoad();
    fs::remove(m_job + "/server");
    const std::string error = filesystemErrorOf([this] { prepare(); });
    QVERIFY2(QString::fromStdString(error).contains("copy_file"), error.c_str());
    QCOMPARE(namesIn(m_root + "/Job0"), Names({"bed0.ynd", "bed0.zek", "s.py"}));
}

void CasePreparationTest::missingDataFileEndsThePreparation()
{
    generateAndLoad();
    fs::remove(m_job + "/bed_data/0.h5");
    const std::string error = filesystemErrorOf([this] { prepare(); });
    QVERIFY2(QString::fromStdString(error).contains("copy_file"), error.c_str());
    QCOMPARE(namesIn(m_root), Names({"Job0"}));
    QVERIFY(namesIn(m_root + "/Job0/bed0_data").empty());
}

void CasePreparationTest::emptyPartsOfTheAdditionalFilesAreSkipped()
{
    generateAndLoad();
    const std::string files = ";;" + m_fixture->writeFile("wall.stl", "W") + ";;";
    CAppSettings::instance()->setValue(CAppSettings::AdditionalFilesPath,
                                       QString::fromStdString(files));
    prepare();
    QCOMPARE(namesIn(m_root + "/Job0"), Names({"bed0.ynd", "bed0.zek", "bed0_data", "wall.stl"}));
}

void CasePreparationTest::shortRowLeavesTheDefaults()
{
    generateAndLoad();
    std::ofstream(m_job + "/input_jobID-Matrix.csv") << "h\n0,0.9, -c \n";
    load();
    prepare();
    const CCreatorData record = recordIn(m_root + "/Job0/bed0_data/0.h5");
    QVERIFY(record.m_interactions ==
            TripleMap({{"glass<>glass", {0.9, 0.0, 0.0}}, {"glass<>steel", {0.0, 0.0, 0.0}}}));
}

TARNEL_TEST_MAIN(CasePreparationTest)
#include "case_preparation_test.moc"
