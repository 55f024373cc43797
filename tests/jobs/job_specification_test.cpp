#include "jobs/job_specification.h"

#include "deck/app_settings.h"
#include "deck/deck_store.h"
#include "jobs/job_matrix.h"
#include "tests/jobs/job_fixture.h"
#include "tests/support/native.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QProcess>
#include <QtTest>

namespace fs = std::filesystem;

namespace {

using Names = std::vector<std::string>;

void setAdditionalFiles(const std::string& files)
{
    CAppSettings::instance()->setValue(CAppSettings::AdditionalFilesPath,
                                       QString::fromStdString(files));
}

std::optional<std::string> generated(const std::string& save)
{
    CJobMatrix matrix;
    return generateJobFolder(matrix, save);
}

QString generationError(const std::string& save)
{
    return QString::fromStdString(filesystemErrorOf([&] { generated(save); }));
}

} // namespace

class JobSpecificationTest : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void jobHoldsMatrixDeckAndListsOnly();
    void copiesAreTheSourcesByteForByteAndSourcesStay();
    void onlyTheDataFileOfTheDataFolderIsCopied();
    void missingSaveLocationDoesNothing_data();
    void missingSaveLocationDoesNothing();
    void fileAsSaveLocationFailsToCreateTheFolder();
    void nextFreeCounterNamesTheFolder();
    void secondGenerationNeverOverwritesTheFirst();
    void withoutOptionsTheFolderHoldsAnEmptyMatrix();
    void withoutDeckTheFolderHoldsAHeadingOnly();
    void unsetDeckPathFailsToCopyAfterTheMatrix();
    void folderInPlaceOfTheDeckFailsToCopy();
    void additionalFilesAreCopiedAndListed();
    void missingAdditionalFilesAreSkipped();
    void twoAdditionalFilesOfOneNameFailAfterTheFirstLine();
    void uncaughtErrorLeavesOnDiskWhatWasWritten();
    void additionalFileNamedLikeTheDeckFails();
    void couplingFileIsCopiedAndListed();
    void missingCouplingFileFailsBeforeItsList();
    void couplingFileNamedLikeAnAdditionalFileFails();
    void missingDataFileFailsToCopyIntoItsFolder();
    void missingCompanionFailsBehindTheData();
    void exportFilesTakeTheDecksName();
    void missingExportFileFails();
    void scriptNamedLikeAnAdditionalFileIsTakenWhereNewer_data();
    void scriptNamedLikeAnAdditionalFileIsTakenWhereNewer();
    void missingScriptFailsBeforeItsDetails();
    void scriptAndItsArgumentsAreKept();
    void deckPathWithTheExtensionTwiceKeepsItsData();

private:
    std::string m_save;
    DeckPaths m_deck;
    std::unique_ptr<CJobFixture> m_fixture;
};

void JobSpecificationTest::init()
{
    m_fixture = std::make_unique<CJobFixture>();
    m_save = m_fixture->folder("save here");
    m_deck = m_fixture->chooseDeck(plainDeck(3));
    pushPlainInteractions();
    CDeckStore::instance()->setSimulatorOptions(" -c  -r 1.000000");
}

void JobSpecificationTest::jobHoldsMatrixDeckAndListsOnly()
{
    const std::optional<std::string> job = generated(m_save);
    QVERIFY(job.has_value());
    QCOMPARE(*job, m_save + "/JobSpec");
    QCOMPARE(namesIn(*job), Names({"Additional File Directory.txt", "bed.ynd", "bed.zek",
                                   "bed_data", "input_jobID-Matrix.csv"}));
    QCOMPARE(namesIn(*job + "/bed_data"), Names({"0.h5"}));
    QCOMPARE(contentOf(*job + "/Additional File Directory.txt"), std::string("bed\n"));
}

void JobSpecificationTest::copiesAreTheSourcesByteForByteAndSourcesStay()
{
    const auto timeBefore = fs::last_write_time(m_deck.dataFile);
    const std::string dataBefore = contentOf(m_deck.dataFile.string());
    const std::string job = generated(m_save).value();
    QCOMPARE(contentOf(job + "/bed.zek"), contentOf(m_deck.deck.string()));
    QCOMPARE(contentOf(job + "/bed.ynd"), contentOf(m_deck.companion.string()));
    QCOMPARE(contentOf(job + "/bed_data/0.h5"), dataBefore);
    QCOMPARE(contentOf(m_deck.dataFile.string()), dataBefore);
    QVERIFY(fs::last_write_time(m_deck.dataFile) == timeBefore);
}

void JobSpecificationTest::onlyTheDataFileOfTheDataFolderIsCopied()
{
    m_fixture->writeFile("decks/bed_data/1.h5", "a time step");
    QCOMPARE(namesIn(generated(m_save).value() + "/bed_data"), Names({"0.h5"}));
}

void JobSpecificationTest::missingSaveLocationDoesNothing_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("empty") << "";
    QTest::newRow("missing") << "/no such folder/anywhere";
}

void JobSpecificationTest::missingSaveLocationDoesNothing()
{
    QFETCH(QString, name);
    QVERIFY(!generated(name.toStdString()).has_value());
    QCOMPARE(CDeckStore::instance()->creatorData().size(), std::size_t(1));
}

void JobSpecificationTest::fileAsSaveLocationFailsToCreateTheFolder()
{
    const std::string file = m_fixture->writeFile("file", "");
    QVERIFY(generationError(file).contains("create_directory"));
}

void JobSpecificationTest::nextFreeCounterNamesTheFolder()
{
    fs::create_directory(m_save + "/JobSpec");
    m_fixture->writeFile("save here/JobSpec0", "a file counts as well");
    QCOMPARE(generated(m_save).value(), m_save + "/JobSpec1");
}

void JobSpecificationTest::secondGenerationNeverOverwritesTheFirst()
{
    const std::string first = generated(m_save).value();
    const std::string before = contentOf(first + "/input_jobID-Matrix.csv");
    CDeckStore::instance()->setSimulatorOptions(" -c  -r 2.000000");
    QCOMPARE(generated(m_save).value(), m_save + "/JobSpec0");
    QCOMPARE(contentOf(first + "/input_jobID-Matrix.csv"), before);
}

void JobSpecificationTest::withoutOptionsTheFolderHoldsAnEmptyMatrix()
{
    CDeckStore::instance()->setSimulatorOptions("");
    QVERIFY(!generated(m_save).has_value());
    QCOMPARE(namesIn(m_save + "/JobSpec"), Names({"input_jobID-Matrix.csv"}));
    QCOMPARE(contentOf(m_save + "/JobSpec/input_jobID-Matrix.csv"), std::string());
}

void JobSpecificationTest::withoutDeckTheFolderHoldsAHeadingOnly()
{
    CDeckStore::instance()->creatorData().clear();
    QVERIFY(!generated(m_save).has_value());
    QCOMPARE(namesIn(m_save + "/JobSpec"), Names({"input_jobID-Matrix.csv"}));
    QCOMPARE(contentOf(m_save + "/JobSpec/input_jobID-Matrix.csv"),
             std::string("Job ID#,Simulator Options\n"));
}

void JobSpecificationTest::unsetDeckPathFailsToCopyAfterTheMatrix()
{
    CAppSettings::instance()->setValue(CAppSettings::ZEKPath, QString());
    QVERIFY(generationError(m_save).contains("copy_file"));
    QCOMPARE(namesIn(m_save + "/JobSpec"), Names({"input_jobID-Matrix.csv"}));
    QVERIFY(contentOf(m_save + "/JobSpec/input_jobID-Matrix.csv").size() > 50);
}

/// Root may read any file, yet no folder as one.
void JobSpecificationTest::folderInPlaceOfTheDeckFailsToCopy()
{
    fs::remove(m_deck.deck);
    fs::create_directory(m_deck.deck);
    const QString error = generationError(m_save);
    QVERIFY2(error.contains("copy_file") && error.contains("bed.zek"), qPrintable(error));
    QVERIFY(fs::is_directory(m_deck.deck));
}

void JobSpecificationTest::additionalFilesAreCopiedAndListed()
{
    m_fixture->folder("x");
    setAdditionalFiles(m_fixture->writeFile("x/b.stl", "B") + ";" +
                       m_fixture->writeFile("a file.txt", "A"));
    const std::string job = generated(m_save).value();
    QCOMPARE(contentOf(job + "/Additional File Directory.txt"),
             std::string("bed\nb.stl\na file.txt\n"));
    QCOMPARE(contentOf(job + "/b.stl"), std::string("B"));
    QCOMPARE(contentOf(job + "/a file.txt"), std::string("A"));
}

void JobSpecificationTest::missingAdditionalFilesAreSkipped()
{
    setAdditionalFiles(";/none/x.stl;" + m_fixture->writeFile("a.txt", "A") + ";");
    const std::string job = generated(m_save).value();
    QCOMPARE(contentOf(job + "/Additional File Directory.txt"), std::string("bed\na.txt\n"));
    QVERIFY(!fs::exists(job + "/x.stl"));
}

void JobSpecificationTest::twoAdditionalFilesOfOneNameFailAfterTheFirstLine()
{
    m_fixture->folder("x");
    setAdditionalFiles(m_fixture->writeFile("x/a.txt", "first") + ";" +
                       m_fixture->writeFile("a.txt", "second"));
    std::string listWhenRaised;
    try {
        generated(m_save);
    } catch (const fs::filesystem_error& error) {
        QVERIFY(QString(error.what()).contains("copy_file"));
        listWhenRaised = contentOf(m_save + "/JobSpec/Additional File Directory.txt");
    }
    QCOMPARE(listWhenRaised, std::string("bed\n"));
    QCOMPARE(contentOf(m_save + "/JobSpec/a.txt"), std::string("first"));
    QVERIFY(!fs::exists(m_save + "/JobSpec/bed_data"));
}

void JobSpecificationTest::uncaughtErrorLeavesOnDiskWhatWasWritten()
{
    QProcess probe;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    // What the probe can't remove any more goes with this test's own folder.
    environment.insert(Native::temporaryFolderVariable(),
                       QString::fromStdString(m_fixture->folder("probe")));
    probe.setProcessEnvironment(environment);
    probe.start(TARNEL_JOB_PROBE, {QString::fromStdString(m_save)});
    QVERIFY(probe.waitForFinished(30000));
    QVERIFY(Native::isAbort(probe.exitStatus(), probe.exitCode()));
    QVERIFY(probe.readAllStandardError().contains("copy_file"));
    QCOMPARE(contentOf(m_save + "/JobSpec/input_jobID-Matrix.csv"),
             std::string("Job ID#,Simulator Options\n0, -c \n"));
    QCOMPARE(contentOf(m_save + "/JobSpec/Additional File Directory.txt"), std::string("bed\n"));
}

void JobSpecificationTest::additionalFileNamedLikeTheDeckFails()
{
    setAdditionalFiles(m_deck.deck.string());
    QVERIFY(generationError(m_save).contains("copy_file"));
}

void JobSpecificationTest::couplingFileIsCopiedAndListed()
{
    m_fixture->folder("x");
    CDeckStore::instance()->setCoupling({m_fixture->writeFile("x/server", "S"), "-p 1, 2"});
    const std::string job = generated(m_save).value();
    QCOMPARE(contentOf(job + "/Coupling File Directory.txt"), std::string("server\n-p 1, 2\n"));
    QCOMPARE(contentOf(job + "/server"), std::string("S"));
}

void JobSpecificationTest::missingCouplingFileFailsBeforeItsList()
{
    CDeckStore::instance()->setCoupling({"/none/server", "-p"});
    QVERIFY(generationError(m_save).contains("copy_file"));
    QVERIFY(!fs::exists(m_save + "/JobSpec/Coupling File Directory.txt"));
    QCOMPARE(namesIn(m_save + "/JobSpec"),
             Names({"Additional File Directory.txt", "bed.zek", "input_jobID-Matrix.csv"}));
}

void JobSpecificationTest::couplingFileNamedLikeAnAdditionalFileFails()
{
    m_fixture->folder("x");
    setAdditionalFiles(m_fixture->writeFile("server", "additional"));
    CDeckStore::instance()->setCoupling({m_fixture->writeFile("x/server", "S"), "-p"});
    QVERIFY(generationError(m_save).contains("copy_file"));
    QCOMPARE(contentOf(m_save + "/JobSpec/server"), std::string("additional"));
    QCOMPARE(contentOf(m_save + "/JobSpec/Additional File Directory.txt"),
             std::string("bed\nserver\n"));
}

void JobSpecificationTest::missingDataFileFailsToCopyIntoItsFolder()
{
    fs::remove(m_deck.dataFile);
    const QString error = generationError(m_save);
    QVERIFY2(error.contains(" copy:"), qPrintable(error));
    QVERIFY(namesIn(m_save + "/JobSpec/bed_data").empty());
    QVERIFY(!fs::exists(m_save + "/JobSpec/bed.ynd"));
}

void JobSpecificationTest::missingCompanionFailsBehindTheData()
{
    fs::remove(m_deck.companion);
    CDeckStore::instance()->setPostProcessing(
        {1, {m_fixture->writeFile("abc.dfg", "D"), m_fixture->writeFile("def.qsv", "Q")}});
    const QString error = generationError(m_save);
    QVERIFY2(error.contains("copy_file"), qPrintable(error));
    QVERIFY(fs::exists(m_save + "/JobSpec/bed_data/0.h5"));
    QVERIFY(!fs::exists(m_save + "/JobSpec/bed.dfg"));
}

void JobSpecificationTest::exportFilesTakeTheDecksName()
{
    CDeckStore::instance()->setPostProcessing(
        {1, {m_fixture->writeFile("abc.dfg", "D"), m_fixture->writeFile("def.qsv", "Q")}});
    const std::string job = generated(m_save).value();
    QCOMPARE(contentOf(job + "/bed.dfg"), std::string("D"));
    QCOMPARE(contentOf(job + "/bed.qsv"), std::string("Q"));
    QVERIFY(!fs::exists(job + "/abc.dfg"));
}

void JobSpecificationTest::missingExportFileFails()
{
    CDeckStore::instance()->setPostProcessing({1, {m_fixture->writeFile("abc.dfg", "D"), ""}});
    QVERIFY(generationError(m_save).contains("copy_file"));
    QVERIFY(fs::exists(m_save + "/JobSpec/bed.dfg"));
}

void JobSpecificationTest::scriptAndItsArgumentsAreKept()
{
    const std::string script = m_fixture->writeFile("s 1.py", "print()");
    CDeckStore::instance()->setPostProcessing({2, {script, "PYTHON_NO_DECK_FLAG", "x y"}});
    const std::string job = generated(m_save).value();
    QCOMPARE(contentOf(job + "/s 1.py"), std::string("print()"));
    QCOMPARE(contentOf(job + "/PyDetails.txt"), script + "\nPYTHON_NO_DECK_FLAG\nx y\n");
}

void JobSpecificationTest::scriptNamedLikeAnAdditionalFileIsTakenWhereNewer_data()
{
    QTest::addColumn<int>("lead");
    QTest::addColumn<QString>("expected");
    QTest::newRow("newer") << 3600 << "script";
    QTest::newRow("older") << -3600 << "additional";
}

void JobSpecificationTest::scriptNamedLikeAnAdditionalFileIsTakenWhereNewer()
{
    QFETCH(int, lead);
    QFETCH(QString, expected);
    m_fixture->folder("x");
    setAdditionalFiles(m_fixture->writeFile("s.py", "additional"));
    const std::string script = m_fixture->writeFile("x/s.py", "script");
    fs::last_write_time(script, fs::last_write_time(script) + std::chrono::seconds(lead));
    CDeckStore::instance()->setPostProcessing({2, {script, "-d", "x"}});
    const std::string job = generated(m_save).value();
    QCOMPARE(QString::fromStdString(contentOf(job + "/s.py")), expected);
}

void JobSpecificationTest::missingScriptFailsBeforeItsDetails()
{
    CDeckStore::instance()->setPostProcessing({2, {"/none/s.py", "-d", "x"}});
    QVERIFY(generationError(m_save).contains("copy_file"));
    QVERIFY(fs::exists(m_save + "/JobSpec/bed.ynd"));
    QVERIFY(!fs::exists(m_save + "/JobSpec/PyDetails.txt"));
}

void JobSpecificationTest::deckPathWithTheExtensionTwiceKeepsItsData()
{
    // The data file of "run.zek.old.zek" is "run_data/0.h5.old.zek", and its name "run.old".
    m_fixture->folder("decks/run_data");
    m_fixture->writeFile("decks/run_data/0.h5.old.zek", "data");
    m_fixture->writeFile("decks/run.zek.old.ynd", "companion");
    const std::string deck = m_fixture->writeFile("decks/run.zek.old.zek", "deck");
    CAppSettings::instance()->setValue(CAppSettings::ZEKPath, QString::fromStdString(deck));
    CDeckStore::instance()->creatorData() = {CCreatorData("run.old")};
    const std::string job = generated(m_save).value();
    QCOMPARE(namesIn(job), Names({"Additional File Directory.txt", "input_jobID-Matrix.csv",
                                  "run.old.ynd", "run.old.zek", "run.old_data"}));
    QCOMPARE(namesIn(job + "/run.old_data"), Names({"0.h5.old.zek"}));
}

TARNEL_TEST_MAIN(JobSpecificationTest)
#include "job_specification_test.moc"
