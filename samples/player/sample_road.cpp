#include "samples/player/sample_road.h"

#include "samples/player/modal_watcher.h"
#include "samples/player/user_hand.h"

#include <QDateTime>
#include <QDirIterator>
#include <QFileInfo>
#include <QListWidget>
#include <QProgressBar>
#include <QTimer>

#include <stdexcept>

namespace {

/// Shows what a run looks like; by then the first cases of the sample are under way.
constexpr int PictureOfRunMs = 700;

constexpr int PatienceWithAnalysesMs = 30000;
constexpr int LookAgainMs = 100;

QString newestFolder(const QDir& parent, const QString& stem)
{
    const QFileInfoList folders = parent.entryInfoList(
        {stem + QLatin1Char('*')}, QDir::Dirs | QDir::NoDotAndDotDot, QDir::Time);
    return folders.isEmpty() ? QString() : folders.front().absoluteFilePath();
}

int countCsvFiles(const QString& folder)
{
    QDirIterator files(folder, {QStringLiteral("*.csv")}, QDir::Files,
                       QDirIterator::Subdirectories);
    int count = 0;
    for (; files.hasNext(); files.next()) {
        ++count;
    }
    return count;
}

} // namespace

SPlayedDeck columnSample()
{
    return {QStringLiteral("column"),
            QStringLiteral("box.txt"),
            QStringLiteral("Gravel<>Gravel"),
            {{QStringLiteral("Rolling Friction"), {QStringLiteral("0.3")}},
             {QStringLiteral("Static Friction"), {QStringLiteral("0.2"), QStringLiteral("0.8")}}}};
}

SPlayedDeck heapSample()
{
    return {QStringLiteral("heap"),
            QStringLiteral("heap.experiment"),
            QStringLiteral("Gravel<>Gravel"),
            {{QStringLiteral("Rolling Friction"),
              {QStringLiteral("0.05"), QStringLiteral("0.2"), QStringLiteral("0.4")}},
             {QStringLiteral("Static Friction"), {QStringLiteral("0.1"), QStringLiteral("0.8")}}}};
}

CSampleRoad::CSampleRoad(CUserHand& hand, CModalWatcher& dialogs, SPlaces places,
                         std::function<void(const QString&)> say)
    : m_hand(hand)
    , m_dialogs(dialogs)
    , m_places(std::move(places))
    , m_say(std::move(say))
{
}

void CSampleRoad::demand(bool fulfilled, const QString& otherwise) const
{
    if (!fulfilled) {
        throw std::runtime_error(otherwise.toStdString());
    }
}

void CSampleRoad::next(const QString& picture)
{
    if (!m_places.pictures.isEmpty()) {
        m_hand.pause(50);
        m_hand.photograph(QDir(m_places.pictures).filePath(picture));
    }
}

QString CSampleRoad::play(Road road)
{
    loadDeck();
    varyParameters();
    chooseAnalysis(road);
    setOptions();
    generateJob();
    if (road == Road::Distributed) {
        return writeDistributedFiles();
    }
    runCases();
    if (road == Road::Export) {
        demand(countCsvFiles(caseRoot()) >= caseCount(),
               QStringLiteral("Not every case has a result."));
    }
    if (road == Road::Python) {
        awaitAnalyses();
    }
    m_hand.click(QStringLiteral("m_pbNextButton"));
    QString combined = collate(caseRoot());
    photographCoupling();
    return combined;
}

void CSampleRoad::loadDeck()
{
    const QString deck = m_places.sample.filePath(m_places.deck.stem + QStringLiteral(".zek"));
    m_hand.openTab(QStringLiteral("m_tabDeckLoader"));
    m_hand.type(QStringLiteral("m_leDeckFilePath"), deck);
    m_hand.type(QStringLiteral("m_leAdditionalFilesPath"),
                m_places.sample.filePath(m_places.deck.additionalFile));
    demand(m_hand.isEnabled(QStringLiteral("m_pbNextButton")),
           QStringLiteral("The deck %1 was not accepted.").arg(deck));
    m_say(QStringLiteral("Load Deck: %1").arg(deck));
    next(QStringLiteral("1-load-deck.png"));
    m_hand.click(QStringLiteral("m_pbNextButton"));
}

void CSampleRoad::varyField(const QString& parameter, const QStringList& numbers)
{
    m_hand.chooseRow(QStringLiteral("m_parameterListWidget"), parameter);
    int column = 1;
    for (const QString& number : numbers) {
        // Each new column stands behind the current one and starts as its copy.
        m_hand.click(QStringLiteral("m_pbAdd"));
        m_hand.typeValue(column++, number);
    }
    m_say(QStringLiteral("Parameter Editor: %1 varies, %2 cases")
              .arg(parameter, m_hand.textOf(QStringLiteral("m_lblGeneratedCasesNo"))));
}

void CSampleRoad::varyParameters()
{
    m_hand.chooseProperty({QStringLiteral("Interactions")});
    m_hand.chooseRow(QStringLiteral("m_materialListWidget"), m_places.deck.pair);
    for (const auto& [parameter, numbers] : m_places.deck.varied) {
        varyField(parameter, numbers);
    }
    next(QStringLiteral("2-parameter-editor.png"));
    m_hand.click(QStringLiteral("m_pbNextButton"));
}

void CSampleRoad::chooseAnalysis(Road road)
{
    QString chosen;
    if (road == Road::NoAnalysis) {
        m_hand.click(QStringLiteral("m_rbNoPostProcessing"));
        chosen = QStringLiteral("none");
    } else if (road == Road::Python) {
        m_hand.click(QStringLiteral("m_rbPythonPostProcessing"));
        chosen = m_places.sample.filePath(QStringLiteral("analyse.py"));
        m_hand.type(QStringLiteral("m_lePythonLocation"), chosen);
    } else {
        m_hand.click(QStringLiteral("m_rbPostProcessingORVA"));
        chosen = m_hand.textOf(QStringLiteral("m_leDfgLocation"));
    }
    m_say(QStringLiteral("Post-Proccessing: %1").arg(chosen));
    next(QStringLiteral("3-post-processing.png"));
    m_hand.click(QStringLiteral("m_pbNextButton"));
}

void CSampleRoad::setOptions()
{
    m_hand.type(QStringLiteral("sbNumProcs"), QStringLiteral("1"));
    m_say(QStringLiteral("Processing Options: total time %1, save interval %2, %3 core")
              .arg(m_hand.textOf(QStringLiteral("sbSimTime")).trimmed(),
                   m_hand.textOf(QStringLiteral("fbWriteEvery")).trimmed(),
                   m_hand.textOf(QStringLiteral("sbNumProcs")).trimmed()));
    next(QStringLiteral("4-processing-options.png"));
    m_hand.click(QStringLiteral("m_pbNextButton"));
}

void CSampleRoad::generateJob()
{
    m_dialogs.answerNextFileDialog({m_places.simulator});
    m_hand.click(QStringLiteral("m_pbORVAExeLocationSelect"));
    m_hand.type(QStringLiteral("m_leJobSaveLocation"), m_places.work.absolutePath());
    m_hand.click(QStringLiteral("m_pbGenerateJob"));
    demand(m_dialogs.messages().empty(), m_dialogs.texts().join(QLatin1Char(' ')));
    const int cases = m_hand.find<QListWidget>(QStringLiteral("m_listOngoingSimulations"))->count();
    demand(cases > 0, QStringLiteral("The job has no cases."));
    m_say(QStringLiteral("Submit Job: %1 cases in %2")
              .arg(cases)
              .arg(m_hand.textOf(QStringLiteral("m_leJobLoadLocation"))));
}

QString CSampleRoad::caseRoot() const
{
    return newestFolder(QDir(m_hand.textOf(QStringLiteral("m_leJobLoadLocation"))),
                        QStringLiteral("JobFileLocation"));
}

void CSampleRoad::runCases()
{
    m_hand.type(QStringLiteral("m_sbConcurrentSimulations"), QStringLiteral("2"));
    // The button returns when all cases have ended, so the picture takes itself in between.
    QTimer picture;
    picture.setSingleShot(true);
    const auto take = [this] { next(QStringLiteral("5-submit-job.png")); };
    QObject::connect(&picture, &QTimer::timeout, take);
    picture.start(PictureOfRunMs);
    m_hand.click(QStringLiteral("m_pbStartSimulating"));
    if (picture.isActive()) {
        take();
    }
    auto* bar = m_hand.find<QProgressBar>(QStringLiteral("m_progBarCompletedSimulations"));
    demand(bar->value() == bar->maximum(), QStringLiteral("Not every case has ended."));
    m_say(
        QStringLiteral("Submit Job: %1 cases have run below %2").arg(bar->value()).arg(caseRoot()));
    m_hand.chooseRow(QStringLiteral("m_listOngoingSimulations"),
                     m_places.deck.stem + QLatin1Char('2'));
    next(QStringLiteral("5-submit-job-inspector.png"));
}

int CSampleRoad::caseCount() const
{
    return m_hand.find<QListWidget>(QStringLiteral("m_listOngoingSimulations"))->count();
}

void CSampleRoad::awaitAnalyses()
{
    // A case counts as finished when its analysis has just begun.
    const int cases = caseCount();
    for (int waited = 0; countCsvFiles(caseRoot()) < cases; waited += LookAgainMs) {
        demand(waited < PatienceWithAnalysesMs, QStringLiteral("Not every analysis has ended."));
        m_hand.pause(LookAgainMs);
    }
    m_say(QStringLiteral("Submit Job: %1 analyses have ended").arg(cases));
}

QString CSampleRoad::writeDistributedFiles()
{
    m_hand.click(QStringLiteral("m_rbSimulationDistributed"));
    m_hand.click(QStringLiteral("m_pbGenerateDistributedFiles"));
    next(QStringLiteral("5-submit-job-distributed.png"));
    QString batch = QDir(caseRoot()).filePath(QStringLiteral("RunAllSimulations.bat"));
    demand(QFileInfo::exists(batch), QStringLiteral("There is no %1.").arg(batch));
    m_say(QStringLiteral("Submit Job: files for another machine in %1").arg(caseRoot()));
    return batch;
}

QString CSampleRoad::combine(const QString& folder)
{
    m_hand.openTab(QStringLiteral("m_tabResultsAnalysis"));
    return collate(folder);
}

QString CSampleRoad::collate(const QString& folder)
{
    m_hand.type(QStringLiteral("m_leDistributedFilePath"), folder);
    next(QStringLiteral("6-results-analysis.png"));
    m_dialogs.clear();
    m_hand.click(QStringLiteral("m_pbGenerateMasterResults"));
    demand(m_dialogs.texts() == QStringList{QStringLiteral("Operation Complete")},
           m_dialogs.texts().join(QLatin1Char(' ')));
    QString combined = QDir(folder).filePath(QStringLiteral("CollatedResults.csv"));
    m_say(QStringLiteral("Results Analysis: %1").arg(combined));
    return combined;
}

void CSampleRoad::photographCoupling()
{
    const QFileInfo simulator(m_places.simulator);
    const QString ending = simulator.suffix().isEmpty() ? QString() : "." + simulator.suffix();
    const QString server = simulator.dir().filePath(QStringLiteral("coupling_sample") + ending);
    if (m_places.pictures.isEmpty() || !QFileInfo::exists(server)) {
        return;
    }
    m_hand.openTab(QStringLiteral("m_tabProcessingOptions"));
    m_hand.click(QStringLiteral("gbCouplingServer"));
    m_hand.type(QStringLiteral("m_leCouplingLocation"), server);
    m_hand.type(QStringLiteral("leCouplingCommand"), QStringLiteral("3"));
    next(QStringLiteral("4-processing-options-coupling.png"));
}
