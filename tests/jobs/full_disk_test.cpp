#include "deck/app_settings.h"
#include "deck/deck_store.h"
#include "jobs/case_preparation.h"
#include "jobs/job_file_reader.h"
#include "jobs/job_loading.h"
#include "jobs/job_matrix.h"
#include "jobs/job_specification.h"
#include "tests/jobs/job_fixture.h"
#include "tests/support/faulty_places.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDir>
#include <QtTest>

#include <functional>
#include <map>

namespace fs = std::filesystem;

namespace {

constexpr std::size_t diskSize = 1U << 20U;

/// A file that a step copies, and its name at the destination. The steps stand in their order.
struct SCopy
{
    const char* step;
    const char* source;      ///< below the fixture's folder
    const char* destination; ///< below the job, or below the folder of case 0
    const char* operation = "copy_file";
};

const std::vector<SCopy> copiesOfAJob = {
    {"deck", "decks/bed.zek", "bed.zek"},
    {"additional file", "more/notes.txt", "notes.txt"},
    {"coupling file", "more/server", "server"},
    {"data", "decks/bed_data/0.h5", "bed_data/0.h5", "copy"},
    {"companion", "decks/bed.ynd", "bed.ynd"},
    {"export settings", "more/values.dfg", "bed.dfg"},
    {"export queries", "more/values.qsv", "bed.qsv"},
};

const std::vector<SCopy> copiesOfACase = {
    {"deck", "jobs/JobSpec/bed.zek", "bed0.zek"},
    {"companion", "jobs/JobSpec/bed.ynd", "bed0.ynd"},
    {"additional file", "jobs/JobSpec/notes.txt", "notes.txt"},
    {"export settings", "jobs/JobSpec/bed.dfg", "bed0.dfg"},
    {"export queries", "jobs/JobSpec/bed.qsv", "bed0.qsv"},
    {"coupling file", "jobs/JobSpec/server", "server"},
    {"data", "jobs/JobSpec/bed_data/0.h5", "bed0_data/0.h5"},
};

const SCopy scriptOfAJob = {"script", "more/analyse.py", "analyse.py"};
const SCopy scriptOfACase = {"script", "more/analyse.py", "analyse.py"};

/// Beyond any room on the small disk, by zeros behind its content.
void enlarge(const std::string& file)
{
    fs::resize_file(file, fs::file_size(file) + 2 * diskSize);
}

/// What a step raises, its paths with "/" whatever separators it has used.
QString errorOf(const std::function<void()>& step)
{
    return QDir::fromNativeSeparators(QString::fromStdString(filesystemErrorOf(step)));
}

using Fingerprints = std::map<std::string, std::pair<std::string, fs::file_time_type>>;

Fingerprints fingerprints(const std::string& folder)
{
    Fingerprints prints;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            prints[entry.path().string()] = {contentOf(entry.path().string()),
                                             entry.last_write_time()};
        }
    }
    return prints;
}

} // namespace
Q_DECLARE_METATYPE(SCopy)

/// Generation and preparation where the system has no room or no right for them.
class FullDiskTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qInfo("Full disks and refused rights: %s", FaultyPlaces::kind()); }
    void init();

    void jobWhoseFileDoesNotFitNamesTheCopy_data();
    void jobWhoseFileDoesNotFitNamesTheCopy();
    void jobOnADiskWithoutAnyRoomFailsAtItsFirstCopy();
    void caseWhoseFileDoesNotFitNamesTheCopy_data();
    void caseWhoseFileDoesNotFitNamesTheCopy();
    void casesInFrontOfTheOneThatDoesNotFitAreWhole();

    void jobInAFolderWithoutPermissionIsNotBegun();
    void casesInAJobWithoutPermissionAreNotBegun();

private:
    void useScript();
    std::string save() const { return m_fixture->path("save"); }
    QString generationError() const;
    QString preparationError(const std::string& stem);
    void generateAndLoad();
    void requireWholeInFront(const std::vector<SCopy>& copies, const SCopy& failing,
                             const std::string& folder) const;

    std::unique_ptr<CJobFixture> m_fixture;
    std::string m_root;
};

void FullDiskTest::init()
{
    if (!FaultyPlaces::canBeMade()) {
        QSKIP("nothing may be mounted here");
    }
    m_fixture = std::make_unique<CJobFixture>();
    m_fixture->folder("more");
    m_fixture->folder("save");
    m_fixture->folder("jobs");
    m_fixture->chooseDeck(plainDeck(3));
    pushPlainInteractions();
    CDeckStore* store = CDeckStore::instance();
    store->setSimulatorOptions(" -c  -r 1.000000");
    CAppSettings::instance()->setValue(
        CAppSettings::AdditionalFilesPath,
        QString::fromStdString(m_fixture->writeFile("more/notes.txt", "notes")));
    store->setCoupling({m_fixture->writeFile("more/server", "server"), "--port 1"});
    store->setPostProcessing({1,
                              {m_fixture->writeFile("more/values.dfg", "settings"),
                               m_fixture->writeFile("more/values.qsv", "queries")}});
    m_fixture->writeFile("more/analyse.py", "print()");
}

void FullDiskTest::useScript()
{
    CDeckStore::instance()->setPostProcessing(
        {2, {m_fixture->path("more/analyse.py"), "PYTHON_NO_DECK_FLAG", "-v"}});
}

QString FullDiskTest::generationError() const
{
    CJobMatrix matrix;
    return errorOf([&] { generateJobFolder(matrix, m_fixture->path("save")); });
}

QString FullDiskTest::preparationError(const std::string& stem)
{
    return errorOf([&] { prepareCases(stem, true, m_root); });
}

void FullDiskTest::generateAndLoad()
{
    CJobMatrix matrix;
    const std::string job = generateJobFolder(matrix, m_fixture->path("jobs")).value();
    CJobFileReader reader;
    QVERIFY(loadJobFolder(job, matrix, reader, [](const std::string&, int) {}));
}

void FullDiskTest::requireWholeInFront(const std::vector<SCopy>& copies, const SCopy& failing,
                                       const std::string& folder) const
{
    bool behind = false;
    for (const SCopy& copy : copies) {
        const std::string destination = folder + "/" + copy.destination;
        if (copy.step == QByteArray(failing.step)) {
            behind = true;
        } else if (behind) {
            QVERIFY2(!fs::exists(destination), copy.step);
        } else {
            QVERIFY2(contentOf(destination) == contentOf(m_fixture->path(copy.source)), copy.step);
        }
    }
}

void FullDiskTest::jobWhoseFileDoesNotFitNamesTheCopy_data()
{
    QTest::addColumn<SCopy>("copy");
    for (const SCopy& copy : copiesOfAJob) {
        QTest::newRow(copy.step) << copy;
    }
    QTest::newRow(scriptOfAJob.step) << scriptOfAJob;
}

void FullDiskTest::jobWhoseFileDoesNotFitNamesTheCopy()
{
    QFETCH(SCopy, copy);
    const bool script = copy.step == QByteArray(scriptOfAJob.step);
    if (script) {
        useScript();
    }
    const std::string source = m_fixture->path(copy.source);
    const auto whole = fs::file_size(source);
    enlarge(source);
    const Fingerprints decks = fingerprints(m_fixture->path("decks"));
    const Fingerprints more = fingerprints(m_fixture->path("more"));
    {
        const CSmallDisk disk(save(), diskSize);
        const QString error = generationError();
        QVERIFY2(error.contains(QLatin1String(copy.operation) + QLatin1String(": ")),
                 qPrintable(error));
        QVERIFY2(error.contains(QString::fromStdString(source)), qPrintable(error));
        std::vector<SCopy> copies = copiesOfAJob;
        if (script) {
            copies.resize(5);
            copies.push_back(scriptOfAJob);
        }
        requireWholeInFront(copies, copy, save() + "/JobSpec");
        QVERIFY(!contentOf(save() + "/JobSpec/input_jobID-Matrix.csv").empty());
    }
    QVERIFY(fingerprints(m_fixture->path("decks")) == decks);
    QVERIFY(fingerprints(m_fixture->path("more")) == more);

    // With room again, the next job is complete.
    fs::resize_file(source, whole);
    QCOMPARE(generationError(), QString());
}

void FullDiskTest::jobOnADiskWithoutAnyRoomFailsAtItsFirstCopy()
{
    const CSmallDisk disk(save(), FaultyPlaces::mayMount() ? 4096 : 0);
    if (FaultyPlaces::mayMount()) {
        m_fixture->writeFile("save/filler", std::string(4096, 'x'));
    }
    const QString error = generationError();
    QVERIFY2(error.contains("copy_file") && error.contains("bed.zek"), qPrintable(error));
    QCOMPARE(contentOf(save() + "/JobSpec/bed.zek"), std::string());
    QVERIFY(!fs::exists(save() + "/JobSpec/bed_data"));
}

void FullDiskTest::caseWhoseFileDoesNotFitNamesTheCopy_data()
{
    QTest::addColumn<SCopy>("copy");
    for (const SCopy& copy : copiesOfACase) {
        QTest::newRow(copy.step) << copy;
    }
    QTest::newRow(scriptOfACase.step) << scriptOfACase;
}

void FullDiskTest::caseWhoseFileDoesNotFitNamesTheCopy()
{
    QFETCH(SCopy, copy);
    const bool script = copy.step == QByteArray(scriptOfACase.step);
    if (script) {
        useScript();
    }
    generateAndLoad();
    const std::string source = m_fixture->path(copy.source);
    enlarge(source);
    const Fingerprints job = fingerprints(m_fixture->path("jobs"));
    const CSmallDisk disk(save(), diskSize);
    const QString error = preparationError(save() + "/JobFileLocation");
    QVERIFY2(error.contains("copy_file") && error.contains(QString::fromStdString(source)),
             qPrintable(error));
    std::vector<SCopy> copies = copiesOfACase;
    if (script) {
        copies = {copies[0], copies[1], copies[2], scriptOfACase, copies[5], copies[6]};
    }
    requireWholeInFront(copies, copy, save() + "/JobFileLocation/Job0");
    QVERIFY(fingerprints(m_fixture->path("jobs")) == job);
}

void FullDiskTest::casesInFrontOfTheOneThatDoesNotFitAreWhole()
{
    if (!FaultyPlaces::mayMount()) {
        QSKIP("RLIMIT_FSIZE knows no sum of several files");
    }
    ValueList values = {{0.1}};
    for (int value = 1; value <= 60; ++value) {
        values.push_back({value / 100.0});
    }
    *CDeckStore::instance() = CDeckStore();
    m_fixture->chooseDeck(plainDeck(3));
    CDeckStore::instance()->setSimulatorOptions(" -c ");
    pushEntry("Interactions", {{"glass<>glass", {values, {0.25}, {0.02}}},
                               {"glass<>steel", {{0.5}, {0.4}, {0.01}}}});
    generateAndLoad();
    const CSmallDisk disk(save(), diskSize);
    const QString error = preparationError(save() + "/JobFileLocation");
    QVERIFY2(error.contains("copy_file"), qPrintable(error));
    const std::size_t begun = namesIn(save() + "/JobFileLocation").size();
    QVERIFY(begun > 1 && begun < 60);
    for (std::size_t number = 0; number + 1 < begun; ++number) {
        const std::string name = std::to_string(number);
        const std::string data = save() + "/JobFileLocation/Job" + name + "/bed" + name;
        QVERIFY(recordIn(data + "_data/0.h5").m_interactions ==
                CDeckStore::instance()->creatorData()[number + 1].m_interactions);
    }
}

void FullDiskTest::jobInAFolderWithoutPermissionIsNotBegun()
{
    {
        const CReadOnlyPlace place(save());
        const QString error = generationError();
        QVERIFY2(error.contains("create_directory") && error.contains("JobSpec"),
                 qPrintable(error));
    }
    QVERIFY(namesIn(save()).empty());
    QCOMPARE(generationError(), QString());
}

void FullDiskTest::casesInAJobWithoutPermissionAreNotBegun()
{
    generateAndLoad();
    const std::string job = m_fixture->path("jobs/JobSpec");
    const Fingerprints before = fingerprints(job);
    {
        const CReadOnlyPlace place(job);
        const QString error = preparationError(job + "/JobFileLocation");
        QVERIFY2(error.contains("create_directory") && error.contains("JobFileLocation"),
                 qPrintable(error));
    }
    QVERIFY(fingerprints(job) == before);
    QCOMPARE(preparationError(job + "/JobFileLocation"), QString());
}

TARNEL_FAULTY_PLACES_TEST_MAIN(FullDiskTest)
#include "full_disk_test.moc"
