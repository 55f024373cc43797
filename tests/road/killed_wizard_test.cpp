#include "deck/creator_data.h"
#include "deck/deck_loading.h"
#include "deck/deck_serializer.h"
#include "platform/interpreter.h"
#include "samples/deck_maker.h"
#include "tests/road/window_road.h"
#include "tests/support/faulty_places.h"
#include "tests/support/job_maker.h"
#include "tests/support/native.h"
#include "tests/support/processes.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QTemporaryDir>
#include <QThread>
#include <QtTest>

#include <filesystem>
#include <functional>
#include <map>

namespace fs = std::filesystem;

namespace {

constexpr int cases = 4;
constexpr double restitutions[cases] = {0.5, 0.1, 0.2, 0.3};
constexpr int patienceMs = 30000;
const char* const simulatorsCsv = "EXTRACTED DATA\nTIME:,0.1\nTIME,Query 1\n0.1,1\n";

using Fingerprints = std::map<std::string, std::pair<QByteArray, fs::file_time_type>>;

Fingerprints fingerprints(const fs::path& folder)
{
    Fingerprints prints;
    for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
        if (entry.is_regular_file()) {
            const QString path = QString::fromStdString(entry.path().string());
            prints[entry.path().string()] = {readFile(path), entry.last_write_time()};
        }
    }
    return prints;
}

CCreatorData recordIn(const QString& dataFile)
{
    CCreatorData record;
    CDeckSerializer serializer;
    DeckLoading::readDataFile(serializer, dataFile.toStdString(), record);
    return record;
}

double restitutionIn(const QString& dataFile)
{
    const CCreatorData record = recordIn(dataFile);
    const auto found = record.m_interactions.find("glass<>steel");
    return found == record.m_interactions.end() ? -1.0 : std::get<0>(found->second);
}

} // namespace

/// The program in a process of its own, ended from outside or by what nothing catches.
class KilledWizardTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { qInfo("Full disks: %s", FaultyPlaces::kind()); }
    void init();
    void cleanup();

    void jobLoadsAndFinishedCasesAreWhole_data();
    void jobLoadsAndFinishedCasesAreWhole();
    void deckOfACaseThatIsReducedIsNeverLost();
    void diskThatIsFullEndsTheProgramAndTheDeckStays();
    void caseRootThatIsRemovedEndsTheReductionByName();

private:
    void begin(const QStringList& more = QStringList());
    bool hasCome(const QString& file) const;
    void killWhen(const std::function<bool()>& moment);
    bool isAnythingLeft() const;
    QString job() const { return m_root->filePath(QStringLiteral("save/JobSpec")); }
    QString inRoot(const QString& name) const;
    QString dataFile(int number, const char* suffix = "") const;

    std::unique_ptr<QTemporaryDir> m_root;
    std::unique_ptr<QProcess> m_wizard;
    qint64 m_wizardId = 0;
    QString m_deck;
};

void KilledWizardTest::init()
{
    m_root = std::make_unique<QTemporaryDir>();
    for (const char* folder : {"deck", "save", "temporary"}) {
        QVERIFY(QDir(m_root->path()).mkpath(QLatin1String(folder)));
    }
    const std::string folder = m_root->filePath(QStringLiteral("deck")).toStdString();
    m_deck = QString::fromStdString(writeDeck(plainDeck(14), folder, "bed").deck.string());
    qputenv("TARNEL_FAKE", "started;sleep:40;time step;csv");
}

void KilledWizardTest::cleanup()
{
    m_wizard.reset();
}

QString KilledWizardTest::inRoot(const QString& name) const
{
    return job() + QStringLiteral("/JobFileLocation/") + name;
}

QString KilledWizardTest::dataFile(int number, const char* suffix) const
{
    return inRoot(QStringLiteral("Job%1/bed%1_data%2/0.h5").arg(number).arg(QLatin1String(suffix)));
}

void KilledWizardTest::begin(const QStringList& more)
{
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(Native::temporaryFolderVariable(),
                       m_root->filePath(QStringLiteral("temporary")));
    m_wizard = std::make_unique<QProcess>();
    m_wizard->setProcessEnvironment(environment);
    m_wizard->start(QStringLiteral(TARNEL_RUN_PROBE),
                    QStringList{m_deck, m_root->filePath(QStringLiteral("save")),
                                QStringLiteral(TARNEL_FAKE_SIMULATOR), QString::number(cases)} +
                        more);
    QVERIFY(m_wizard->waitForStarted());
    m_wizardId = m_wizard->processId();
}

/// A file of the case root, or nothing for the root itself.
bool KilledWizardTest::hasCome(const QString& file) const
{
    return QFileInfo::exists(inRoot(file));
}

void KilledWizardTest::killWhen(const std::function<bool()>& moment)
{
    QElapsedTimer clock;
    clock.start();
    while (!moment()) {
        QVERIFY2(clock.elapsed() < patienceMs, m_wizard->readAllStandardError().constData());
        QThread::usleep(200);
    }
    m_wizard->kill();
    QVERIFY(m_wizard->waitForFinished());
    QCOMPARE(m_wizard->exitStatus(), QProcess::CrashExit);
}

/// Simulators that ran when the wizard died go on to their end. A wizard that dies while it starts
/// one leaves a copy of itself, which has to go as well.
bool KilledWizardTest::isAnythingLeft() const
{
    return isAnythingLeftOf(m_wizardId, m_root->path());
}

void KilledWizardTest::jobLoadsAndFinishedCasesAreWhole_data()
{
    QTest::addColumn<QString>("moment");
    QTest::newRow("case root made") << "";
    QTest::newRow("first case folder") << "Job0";
    QTest::newRow("first case's data") << "Job0/bed0_data/0.h5";
    QTest::newRow("last case folder") << "Job3";
    QTest::newRow("last case's data") << "Job3/bed3_data/0.h5";
    QTest::newRow("first case starts") << "Job0/started";
    QTest::newRow("first case has run") << "Job0/results.csv";
    QTest::newRow("third case starts") << "Job2/started";
    QTest::newRow("third case has run") << "Job2/results.csv";
    QTest::newRow("last case has run") << "Job3/results.csv";
}

void KilledWizardTest::jobLoadsAndFinishedCasesAreWhole()
{
    QFETCH(QString, moment);
    const Fingerprints deck = fingerprints(fs::path(m_deck.toStdString()).parent_path());
    begin();
    killWhen([&] { return hasCome(moment); });
    QTRY_VERIFY(!isAnythingLeft());
    QVERIFY(fingerprints(fs::path(m_deck.toStdString()).parent_path()) == deck);

    for (int number = 0; number < cases; ++number) {
        const QString folder = QStringLiteral("Job%1/").arg(number);
        if (hasCome(folder + QStringLiteral("started"))) {
            QCOMPARE(restitutionIn(dataFile(number)), restitutions[number]);
            QTRY_COMPARE(readFile(inRoot(folder + QStringLiteral("results.csv"))),
                         QByteArray(simulatorsCsv));
            QCOMPARE(readFile(dataFile(number).replace("0.h5", "1.h5")), QByteArray("a time step"));
        }
    }

    qputenv("TARNEL_FAKE", "csv");
    CWindowRoad road(QStringLiteral(TARNEL_FAKE_SIMULATOR));
    road.load(job());
    QCOMPARE(road.rows(), cases);
    QVERIFY(road.dialogs().messages().empty());
    road.start(2);
    for (int number = 0; number < cases; ++number) {
        QVERIFY(road.hasSucceeded(number));
    }
    QVERIFY(QFileInfo::exists(job() + QStringLiteral("/JobFileLocation0/Job3/results.csv")));
}

/// The reduction moves the data folder aside and copies the deck back out of it.
void KilledWizardTest::deckOfACaseThatIsReducedIsNeverLost()
{
    qputenv("TARNEL_FAKE", "time steps:3000");
    begin({QStringLiteral("reduce")});
    // Removing the many files takes a while; the wizard dies in it.
    killWhen([&] { return hasCome(QStringLiteral("Job0/bed0_data_to_delete")); });
    const qint64 whole = QFileInfo(job() + QStringLiteral("/bed_data/0.h5")).size();
    const bool back = QFileInfo(dataFile(0)).size() == whole;
    QCOMPARE(restitutionIn(dataFile(0, back ? "" : "_to_delete")), restitutions[0]);
}

void KilledWizardTest::diskThatIsFullEndsTheProgramAndTheDeckStays()
{
    const QString save = m_root->filePath(QStringLiteral("save"));
    if (!FaultyPlaces::mayMount()) {
        QSKIP("nothing may be mounted, and a limit would keep the program from its other files");
    }
    const CSmallDisk disk(save.toStdString(), 16384);
    const Fingerprints deck = fingerprints(fs::path(m_deck.toStdString()).parent_path());
    begin();
    QVERIFY(m_wizard->waitForFinished(patienceMs));
    QVERIFY(Native::isAbort(m_wizard->exitStatus(), m_wizard->exitCode()));
    const QByteArray error = m_wizard->readAllStandardError();
    QVERIFY2(error.contains("what():") && error.contains("copy"), error.constData());
    QVERIFY(fingerprints(fs::path(m_deck.toStdString()).parent_path()) == deck);
    QVERIFY(!readFile(job() + QStringLiteral("/input_jobID-Matrix.csv")).isEmpty());
}

void KilledWizardTest::caseRootThatIsRemovedEndsTheReductionByName()
{
    if (platform::speaksBatch()) {
        QSKIP("a folder in which a program runs can't be removed there");
    }
    const QString gate = m_root->filePath(QStringLiteral("gate"));
    qputenv("TARNEL_FAKE", "started;wait for:" + gate.toUtf8());
    begin({QStringLiteral("reduce")});
    QTRY_VERIFY_WITH_TIMEOUT(hasCome(QStringLiteral("Job0/started")), patienceMs);
    QVERIFY(QDir(inRoot(QString())).removeRecursively());
    writeFile(gate, "");
    QVERIFY(m_wizard->waitForFinished(patienceMs));
    QVERIFY(Native::isAbort(m_wizard->exitStatus(), m_wizard->exitCode()));
    const QByteArray error = m_wizard->readAllStandardError();
    QVERIFY2(error.contains("what():") && error.contains("rename"), error.constData());
    QVERIFY(QFileInfo::exists(job() + QStringLiteral("/bed_data/0.h5")));
}

TARNEL_FAULTY_PLACES_TEST_MAIN(KilledWizardTest)
#include "killed_wizard_test.moc"
