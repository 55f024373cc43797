#include "jobs/job_loading.h"

#include "deck/app_settings.h"
#include "deck/deck_store.h"
#include "jobs/job_file_reader.h"
#include "jobs/job_matrix.h"
#include "jobs/job_specification.h"
#include "platform/paths.h"
#include "samples/player/modal_watcher.h"
#include "tests/jobs/job_fixture.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QtTest>

#include <H5Cpp.h>

#include <fstream>

namespace fs = std::filesystem;

namespace {

const char* const MistypedText =
    "Internal values are mistyped when generating jobs, data is corrupted - contact Quillon ORVA "
    "if you receive this message.";

std::string setting(CAppSettings::Selector selector)
{
    return CAppSettings::instance()->text(selector).toStdString();
}

/// The fields that the given text of a heading stands over, in the matrix' data line.
QString fieldUnder(const QStringList& lines, const QString& heading, int occurrence = 0)
{
    int column = -1;
    for (int skip = 0; skip <= occurrence; ++skip) {
        column = lines[0].split(',').indexOf(heading, column + 1);
    }
    return lines[1].split(',').value(column);
}

} // namespace

class JobLoadingTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void generatedJobComesBackAsRecordsAndCases();
    void valuesComeBackWithSixDigits();
    void settingsPointIntoTheJob();
    void jobWithoutAdditionalFilesEmptiesTheirSetting();
    void optionsCouplingAndExportComeFromTheJob();
    void pythonDetailsAreTheFirstThreeLines_data();
    void pythonDetailsAreTheFirstThreeLines();
    void exportFileComesBeforePythonDetails();
    void jobWithoutAnalysisIsModeNone();
    void absentCouplingListClearsTheCoupling();
    void moreCouplingLinesEndWithTheLastPair();
    void loadingTwiceGivesTheSameAndLeavesTheJobAsItIs();
    void missingDataFileStopsWithABoxAndKeepsTheSettings();
    void missingListStopsLikeAMissingDataFile();
    void missingMatrixStopsWithABoxBehindTheDeck();
    void headingAloneGivesTheDeckOnly();
    void flagInAFloatColumnWarnsAndTakesZero();
    void windowsFilesReadAlike();
    void brokenDataFileRaisesItsException();

    void crossedBondingWarnsAtWritingAndAtLoading_data();
    void crossedBondingWarnsAtWritingAndAtLoading();
    void bondingV2OfFormat3IsNotCrossed();
    void heatConductionBelowFormat2ShiftsTheColumns();
    void yieldsWithoutInteractionsShiftTheColumns();

private:
    bool load(const std::string& job);
    std::string generate();
    QStringList matrixLines(const std::string& job) const;

    std::string m_job;
    std::vector<std::pair<std::string, int>> m_cases;
    CJobMatrix m_matrix;
    std::unique_ptr<CJobFixture> m_fixture;
};

void JobLoadingTest::init()
{
    m_fixture = std::make_unique<CJobFixture>();
    m_cases.clear();
    m_fixture->chooseDeck(plainDeck(3));
    CDeckStore::instance()->setSimulatorOptions(" -c  -r 1.000000");
}

bool JobLoadingTest::load(const std::string& job)
{
    m_cases.clear();
    CJobFileReader reader;
    return loadJobFolder(job, m_matrix, reader, [this](const std::string& deck, int number) {
        m_cases.emplace_back(deck, number);
    });
}

std::string JobLoadingTest::generate()
{
    return generateJobFolder(m_matrix, m_fixture->folder("save")).value();
}

QStringList JobLoadingTest::matrixLines(const std::string& job) const
{
    return QString::fromStdString(contentOf(job + "/input_jobID-Matrix.csv")).split('\n');
}

void JobLoadingTest::generatedJobComesBackAsRecordsAndCases()
{
    pushEntry("Interactions", {{"glass<>glass", {{0.75, 0.1, 0.2}, {0.25}, {0.02}}},
                               {"glass<>steel", {{0.5}, {0.4}, {0.01, 0.03}}}});
    const CCreatorData deck = CDeckStore::instance()->creatorData().front();
    QVERIFY(load(generate()));
    const std::vector<std::pair<std::string, int>> expected = {{"bed", 0}, {"bed", 1}};
    QVERIFY(m_cases == expected);
    const std::vector<CCreatorData>& records = CDeckStore::instance()->creatorData();
    QCOMPARE(records.size(), std::size_t(3));
    QVERIFY(records[0] == deck);
    QVERIFY(records[1].m_interactions ==
            TripleMap({{"glass<>glass", {0.1, 0.25, 0.02}}, {"glass<>steel", {0.5, 0.4, 0.03}}}));
    QCOMPARE(std::get<0>(records[2].m_interactions.at("glass<>glass")), 0.2);
    QCOMPARE(records[2].m_sName, std::string("bed2"));
}

void JobLoadingTest::valuesComeBackWithSixDigits()
{
    pushEntry("Interactions", {{"glass<>glass", {{0.75, 1234567.0}, {0.25}, {0.02}}},
                               {"glass<>steel", {{0.5}, {0.4}, {0.01}}}});
    QVERIFY(load(generate()));
    const CCreatorData& record = CDeckStore::instance()->creatorData().at(1);
    QCOMPARE(std::get<0>(record.m_interactions.at("glass<>glass")), 1234570.0);
}

void JobLoadingTest::settingsPointIntoTheJob()
{
    pushPlainInteractions();
    CAppSettings::instance()->setValue(CAppSettings::AdditionalFilesPath,
                                       QString::fromStdString(m_fixture->writeFile("a.txt", "A") +
                                                              ";" +
                                                              m_fixture->writeFile("b.txt", "B")));
    const std::string job = generate();
    QVERIFY(load(job));
    QCOMPARE(setting(CAppSettings::ZEKPath), platform::joinAsPath(job, "bed.zek"));
    QCOMPARE(setting(CAppSettings::AdditionalFilesPath),
             platform::joinAsPath(job, "a.txt") + ";" + platform::joinAsPath(job, "b.txt") + ";");
}

void JobLoadingTest::jobWithoutAdditionalFilesEmptiesTheirSetting()
{
    pushPlainInteractions();
    const std::string job = generate();
    CAppSettings::instance()->setValue(CAppSettings::AdditionalFilesPath,
                                       QString::fromStdString(m_fixture->writeFile("a.txt", "A")));
    QVERIFY(load(job));
    QCOMPARE(setting(CAppSettings::AdditionalFilesPath), std::string());
}

void JobLoadingTest::optionsCouplingAndExportComeFromTheJob()
{
    pushPlainInteractions();
    CDeckStore* store = CDeckStore::instance();
    store->setCoupling({m_fixture->writeFile("server", "S"), "-p 1"});
    store->setPostProcessing(
        {1, {m_fixture->writeFile("x.dfg", "D"), m_fixture->writeFile("x.qsv", "Q")}});
    const std::string job = generate();
    store->setSimulatorOptions("of the page");
    store->setCoupling({});
    store->setPostProcessing({0, {""}});
    QVERIFY(load(job));
    QCOMPARE(store->simulatorOptions(), std::string(" -c  -r 1.000000"));
    QVERIFY(store->coupling() == CDeckStore::Coupling("server", "-p 1"));
    QVERIFY(store->postProcessing() ==
            CDeckStore::PostProcessing(1, {job + "/bed.dfg", job + "/bed.qsv"}));
}

void JobLoadingTest::pythonDetailsAreTheFirstThreeLines_data()
{
    QTest::addColumn<QString>("content");
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("three") << "/s.py\n-d\nx y\n" << QStringList({"/s.py", "-d", "x y"});
    QTest::newRow("from Windows") << "/s.py\r\n-d\r\nx\r\n" << QStringList({"/s.py", "-d", "x"});
    QTest::newRow("more") << "/s.py\n-d\nx\nmore\n" << QStringList({"/s.py", "-d", "x"});
    QTest::newRow("fewer") << "/s.py\n" << QStringList({"/s.py"});
    QTest::newRow("empty last") << "/s.py\n-d\n\n" << QStringList({"/s.py", "-d", ""});
}

void JobLoadingTest::pythonDetailsAreTheFirstThreeLines()
{
    QFETCH(QString, content);
    QFETCH(QStringList, arguments);
    pushPlainInteractions();
    const std::string job = generate();
    std::ofstream(job + "/PyDetails.txt", std::ios::binary) << content.toStdString();
    QVERIFY(load(job));
    QCOMPARE(CDeckStore::instance()->postProcessing().first, 2);
    QStringList found;
    for (const std::string& argument : CDeckStore::instance()->postProcessing().second) {
        found.append(QString::fromStdString(argument));
    }
    QCOMPARE(found, arguments);
}

void JobLoadingTest::exportFileComesBeforePythonDetails()
{
    pushPlainInteractions();
    CAppSettings::instance()->setValue(
        CAppSettings::AdditionalFilesPath,
        QString::fromStdString(m_fixture->writeFile("bed.dfg", "D")));
    CDeckStore::instance()->setPostProcessing({2, {m_fixture->writeFile("s.py", "S"), "-d", "x"}});
    const std::string job = generate();
    QVERIFY(load(job));
    QVERIFY(CDeckStore::instance()->postProcessing() ==
            CDeckStore::PostProcessing(1, {job + "/bed.dfg", job + "/bed.qsv"}));
}

void JobLoadingTest::jobWithoutAnalysisIsModeNone()
{
    pushPlainInteractions();
    const std::string job = generate();
    CDeckStore::instance()->setPostProcessing({2, {"a", "b", "c"}});
    QVERIFY(load(job));
    QVERIFY(CDeckStore::instance()->postProcessing() == CDeckStore::PostProcessing(0, {""}));
}

void JobLoadingTest::absentCouplingListClearsTheCoupling()
{
    pushPlainInteractions();
    const std::string job = generate();
    CDeckStore::instance()->setCoupling({"server", "-p"});
    QVERIFY(load(job));
    QVERIFY(CDeckStore::instance()->coupling() == CDeckStore::Coupling());
}

void JobLoadingTest::moreCouplingLinesEndWithTheLastPair()
{
    pushPlainInteractions();
    const std::string job = generate();
    std::ofstream(job + "/Coupling File Directory.txt") << "one\n-1\ntwo\n-2\n";
    QVERIFY(load(job));
    QVERIFY(CDeckStore::instance()->coupling() == CDeckStore::Coupling("two", "-2"));
}

void JobLoadingTest::loadingTwiceGivesTheSameAndLeavesTheJobAsItIs()
{
    pushPlainInteractions();
    const std::string job = generate();
    QVERIFY(load(job));
    const std::vector<CCreatorData> records = CDeckStore::instance()->creatorData();
    const auto time = fs::last_write_time(job + "/bed_data/0.h5");
    const std::string data = contentOf(job + "/bed_data/0.h5");
    const std::vector<std::string> names = namesIn(job);
    QVERIFY(load(job));
    QVERIFY(CDeckStore::instance()->creatorData() == records);
    QVERIFY(fs::last_write_time(job + "/bed_data/0.h5") == time);
    QCOMPARE(contentOf(job + "/bed_data/0.h5"), data);
    QCOMPARE(namesIn(job), names);
}

void JobLoadingTest::missingDataFileStopsWithABoxAndKeepsTheSettings()
{
    pushPlainInteractions();
    const std::string job = generate();
    fs::remove(job + "/bed_data/0.h5");
    const CModalWatcher watcher;
    const std::size_t recordsBefore = CDeckStore::instance()->creatorData().size();
    QVERIFY(!load(job));
    QCOMPARE(watcher.messages().size(), std::size_t(1));
    QCOMPARE(watcher.messages().front().title, QStringLiteral("Warning"));
    QCOMPARE(watcher.messages().front().text,
             QStringLiteral("Jobspec does not contain valid h5 file"));
    QCOMPARE(watcher.messages().front().icon, QMessageBox::Information);
    QCOMPARE(setting(CAppSettings::ZEKPath), platform::joinAsPath(job, "bed.zek"));
    QCOMPARE(CDeckStore::instance()->creatorData().size(), recordsBefore);
    QVERIFY(m_cases.empty());
}

void JobLoadingTest::missingListStopsLikeAMissingDataFile()
{
    pushPlainInteractions();
    const std::string job = generate();
    fs::remove(job + "/Additional File Directory.txt");
    const CModalWatcher watcher;
    QVERIFY(!load(job));
    QCOMPARE(watcher.texts(), QStringList("Jobspec does not contain valid h5 file"));
    QCOMPARE(setting(CAppSettings::ZEKPath), platform::joinAsPath(job, ".zek"));
}

void JobLoadingTest::missingMatrixStopsWithABoxBehindTheDeck()
{
    pushPlainInteractions();
    const std::string job = generate();
    fs::remove(job + "/input_jobID-Matrix.csv");
    const CModalWatcher watcher;
    QVERIFY(!load(job));
    QCOMPARE(watcher.messages().size(), std::size_t(1));
    QCOMPARE(watcher.messages().front().title, QStringLiteral("Warning"));
    QCOMPARE(watcher.messages().front().text,
             QStringLiteral("Jobspec does not contain valid csv file"));
    QCOMPARE(watcher.messages().front().icon, QMessageBox::Information);
    QCOMPARE(CDeckStore::instance()->creatorData().size(), std::size_t(1));
    QCOMPARE(CDeckStore::instance()->creatorData().front().m_interactions.size(), std::size_t(2));
}

void JobLoadingTest::headingAloneGivesTheDeckOnly()
{
    pushPlainInteractions();
    const std::string job = generate();
    std::ofstream(job + "/input_jobID-Matrix.csv") << "Job ID#,Simulator Options\n";
    QVERIFY(load(job));
    QVERIFY(m_cases.empty());
    QCOMPARE(CDeckStore::instance()->creatorData().size(), std::size_t(1));
}

void JobLoadingTest::flagInAFloatColumnWarnsAndTakesZero()
{
    pushPlainInteractions();
    const std::string job = generate();
    std::ofstream(job + "/input_jobID-Matrix.csv") << "h\n0,true,0.25,0.02,0.5,0.4,0.01, -c \n";
    const CModalWatcher watcher;
    QVERIFY(load(job));
    QCOMPARE(watcher.texts(), QStringList(MistypedText));
    QVERIFY(CDeckStore::instance()->creatorData().at(1).m_interactions.at("glass<>glass") ==
            std::make_tuple(0.0, 0.25, 0.02));
}

void JobLoadingTest::windowsFilesReadAlike()
{
    pushPlainInteractions();
    m_fixture->writeFile("a.txt", "A");
    CAppSettings::instance()->setValue(CAppSettings::AdditionalFilesPath,
                                       QString::fromStdString(m_fixture->path("a.txt")));
    const std::string job = generate();
    QVERIFY(load(job));
    const std::vector<CCreatorData> records = CDeckStore::instance()->creatorData();
    for (const char* name : {"/input_jobID-Matrix.csv", "/Additional File Directory.txt"}) {
        const QString content = QString::fromStdString(contentOf(job + name));
        std::ofstream(job + name, std::ios::binary)
            << QString(content).replace("\n", "\r\n").toStdString();
    }
    QVERIFY(load(job));
    QVERIFY(CDeckStore::instance()->creatorData() == records);
    QCOMPARE(CDeckStore::instance()->simulatorOptions(), std::string(" -c  -r 1.000000"));
    QCOMPARE(setting(CAppSettings::AdditionalFilesPath), platform::joinAsPath(job, "a.txt") + ";");
}

void JobLoadingTest::brokenDataFileRaisesItsException()
{
    pushPlainInteractions();
    const std::string job = generate();
    std::ofstream(job + "/bed_data/0.h5", std::ios::binary) << "no HDF5";
    QVERIFY_EXCEPTION_THROWN(load(job), H5::FileIException);
    QVERIFY(CDeckStore::instance()->creatorData().empty());
}

void JobLoadingTest::crossedBondingWarnsAtWritingAndAtLoading_data()
{
    QTest::addColumn<int>("format");
    QTest::addColumn<bool>("second");
    QTest::newRow("bonding") << 3 << false;
    QTest::newRow("bonding V2 of format 1") << 1 << true;
    QTest::newRow("bonding V2 of format 2") << 2 << true;
}

void JobLoadingTest::crossedBondingWarnsAtWritingAndAtLoading()
{
    QFETCH(int, format);
    QFETCH(bool, second);
    DeckDescription description = plainDeck(format);
    BondingModel& model =
        (second ? description.surfaceSurface.bondingV2 : description.surfaceSurface.bonding)
            .emplace();
    model.data = std::vector<DeckRow>{{{"glass<>glass"}, std::vector<double>(second ? 7 : 5, 1.0)}};
    model.startTime = 2.5;
    model.torqueFeedback = true;
    if (second) {
        model.timeMode = 0.0;
    }
    m_fixture->chooseDeck(description);
    pushPlainInteractions();
    pushEntry("Bonding", {{"glass<>glass", std::vector<ValueList>(second ? 7 : 5, {1.0})}});
    pushEntry("Bonding Start Time", {{"Active", {{2.5}}}});
    pushEntry("Bonding Torque Feedback", {{"Active", {{true}}}});

    const CModalWatcher watcher;
    const std::string job = generate();
    QCOMPARE(watcher.texts(), QStringList({MistypedText, MistypedText}));
    const QStringList lines = matrixLines(job);
    QCOMPARE(fieldUnder(lines, "Torque Feedback"), QStringLiteral("2.5"));
    QCOMPARE(fieldUnder(lines, "Start Time"), QStringLiteral("true"));
    QVERIFY(load(job));
    QCOMPARE(watcher.texts().size(), 4);
    const CSurfaceSurfaceModels& record =
        CDeckStore::instance()->creatorData().at(1).m_surfaceSurface;
    QVERIFY((second ? record.m_bondingV2TorqueFeedback : record.m_bondingTorqueFeedback) ==
            CTaggedValue<bool>("Active", false));
    QVERIFY((second ? record.m_bondingV2StartTime : record.m_bondingStartTime) ==
            CTaggedValue<double>("Active", 0.0));
}

void JobLoadingTest::bondingV2OfFormat3IsNotCrossed()
{
    DeckDescription description = plainDeck(3);
    BondingModel& model = description.surfaceSurface.bondingV2.emplace();
    model.data = std::vector<DeckRow>{{{"glass<>glass"}, std::vector<double>(7, 1.0)}};
    model.timeMode = 0.0;
    model.torqueFeedback = true;
    m_fixture->chooseDeck(description);
    pushPlainInteractions();
    pushEntry("Bonding V2", {{"glass<>glass", std::vector<ValueList>(7, {1.0})}});
    pushEntry("Bonding Torque Feedback", {{"Active", {{true}}}});
    const CModalWatcher watcher;
    const std::string job = generate();
    QVERIFY(load(job));
    QCOMPARE(watcher.texts(), QStringList());
    // The only heading hangs on the tag of the other value.
    QCOMPARE(fieldUnder(matrixLines(job), "Start Time"), QStringLiteral("true"));
    QVERIFY(!matrixLines(job)[0].contains("Torque Feedback"));
    QVERIFY(
        CDeckStore::instance()->creatorData().at(1).m_surfaceSurface.m_bondingV2TorqueFeedback ==
        CTaggedValue<bool>("Active", true));
}

void JobLoadingTest::heatConductionBelowFormat2ShiftsTheColumns()
{
    DeckDescription description = plainDeck(0);
    description.surfaceGeometry.heatConductionParticle = std::vector<DeckRow>{{{"glass"}, {0.5}}};
    description.surfaceGeometry.archardWear = std::vector<DeckRow>{{{"glass"}, {0.25}}};
    m_fixture->chooseDeck(description);
    pushPlainInteractions();
    pushEntry("Archard Wear", {{"glass", {{0.25}}}});
    const std::string job = generate();
    QVERIFY(load(job));
    const QStringList lines = matrixLines(job);
    QCOMPARE(fieldUnder(lines, "glass Thermal Conductivity"), QStringLiteral("0.25"));
    const CCreatorData& record = CDeckStore::instance()->creatorData().at(1);
    QVERIFY(record.m_surfaceGeometry.m_heatConductionParticle == SingleMap({{"glass", 0.25}}));
    // The row has ended by then.
    QVERIFY(record.m_surfaceGeometry.m_archardWear == SingleMap({{"glass", 0.0}}));
}

void JobLoadingTest::yieldsWithoutInteractionsShiftTheColumns()
{
    DeckDescription description = plainDeck(3);
    description.surfaceSurface.hystereticYields = std::vector<DeckRow>{{{"glass"}, {7.0}}};
    description.surfaceSurface.heatConduction = std::vector<DeckRow>{{{"glass"}, {9.0}}};
    m_fixture->chooseDeck(description);
    pushPlainInteractions();
    pushEntry("Heat Conduction", {{"glass", {{9.0, 11.0}}}});
    for (int force = 0; force < 6; ++force) {
        pushAbsentForce("force");
    }
    const CModalWatcher watcher;
    const std::string job = generate();
    QVERIFY(load(job));
    QCOMPARE(fieldUnder(matrixLines(job), "glass Yield Strength"), QStringLiteral("11"));
    const CCreatorData& record = CDeckStore::instance()->creatorData().at(1);
    QVERIFY(record.m_surfaceSurface.m_hystereticYields == SingleMap({{"glass", 11.0}}));
    // What follows takes the first column of the absent forces.
    QVERIFY(record.m_surfaceSurface.m_heatConduction == SingleMap({{"glass", 0.0}}));
    QCOMPARE(watcher.texts(), QStringList());
}

TARNEL_TEST_MAIN(JobLoadingTest)
#include "job_loading_test.moc"
