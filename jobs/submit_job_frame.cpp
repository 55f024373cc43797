#include "jobs/submit_job_frame.h"

#include "app/constants/application_strings.h"
#include "app/constants/file_names.h"
#include "app/constants/icons.h"
#include "app/message_box.h"
#include "deck/app_settings.h"
#include "deck/deck_store.h"
#include "jobs/analysis_tools.h"
#include "jobs/batch_file.h"
#include "jobs/case_output.h"
#include "jobs/case_preparation.h"
#include "jobs/case_reduction.h"
#include "jobs/case_workers.h"
#include "jobs/job_file_reader.h"
#include "jobs/job_loading.h"
#include "jobs/job_specification.h"
#include "jobs/simulation_list_item.h"
#include "platform/executable_filter.h"
#include "platform/existence.h"
#include "platform/file_manager.h"
#include "widgets/column_alignment.h"
#include "widgets/units_none.h"

#include <QCoreApplication>
#include <QEvent>
#include <QFileDialog>
#include <QThreadPool>

#include <optional>
#include <utility>

namespace {

constexpr int pythonMode = 2;

/// Empty where the user cancels.
QString chosenFolder(QWidget* parent, const QString& start)
{
    QFileDialog dialog(parent, FileNames::BrowseForFolder, start);
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    return dialog.exec() == QDialog::Accepted ? dialog.selectedFiles().value(0) : QString();
}

std::string nameOfDeck()
{
    const auto& records = CDeckStore::instance()->creatorData();
    return records.empty() ? std::string() : records.front().m_sName;
}

} // namespace

CConnectionTable<CSubmitJobFrame> CSubmitJobFrame::s_connections;

CSubmitJobFrame::CSubmitJobFrame(QWidget* parent)
    : IFrame(parent)
    , m_jobMatrix(std::make_unique<CJobMatrix>())
    , m_workers(std::make_unique<CCaseWorkers>())
{
    setupUi(this);
    m_rows = std::make_unique<CRunningRows>(m_listOngoingSimulations);
    m_sbConcurrentSimulations->setup(0, 999, CUnitsNone::instance());
    m_sbConcurrentSimulations->setValue(1);
    setupConnections();
    m_pbCancelSimulating->hide();
    m_pbCancelSimulating->setEnabled(false);
    m_pbStartSimulating->setEnabled(false);
    m_sbConcurrentSimulations->setEnabled(false);
    m_gbSimulationExecutionOptions->setEnabled(false);
    m_leORVAExeLocation->setText(CAppSettings::instance()->text(CAppSettings::OrvaExeLocation));
    alignColumns({gridLayout, gridLayout_2, gridLayout_3});
}

CSubmitJobFrame::~CSubmitJobFrame()
{
    s_connections.release(this);
}

void CSubmitJobFrame::setupConnections()
{
    using Page = CSubmitJobFrame;
    const auto clicked = &QPushButton::clicked;
    const Qt::ConnectionType unique = Qt::UniqueConnection;
    s_connections.store(
        this, {connect(m_rbSimulationLocal, &QRadioButton::clicked, this,
                       [this] { sw_SimExecution->setCurrentIndex(0); }),
               connect(m_rbSimulationDistributed, &QRadioButton::clicked, this,
                       [this] { sw_SimExecution->setCurrentIndex(1); }),
               connect(m_pbJobSaveLocationSelect, clicked, this, &Page::browseForFolder, unique),
               connect(m_pbJobLoadLocationSelect, clicked, this, &Page::browseForFolder, unique),
               connect(m_pbORVAExeLocationSelect, clicked, this, &Page::browseForFolder, unique),
               connect(m_pbGenerateJob, clicked, this, &Page::generateJobSpec, unique),
               connect(m_pbGenerateDistributedFiles, clicked, this, &Page::generateDistributedCases,
                       unique),
               connect(m_pbJobLoad, clicked, this, &Page::loadJobSpec, unique),
               connect(m_pbStartSimulating, clicked, this, &Page::runCasesLocally, unique),
               connect(m_pbCancelSimulating, clicked, this, [this] { cancelRun(); }),
               connect(m_listOngoingSimulations, &QListWidget::itemClicked, this,
                       [this](const QListWidgetItem* item) { inspect(item); }),
               connect(
                   m_workers.get(), &CCaseWorkers::caseEnded, this, [this] { takeEndedCases(); },
                   Qt::QueuedConnection)});
}

void CSubmitJobFrame::onPageEntered() {}

void CSubmitJobFrame::browseForFolder()
{
    CAppSettings* const settings = CAppSettings::instance();
    const QString start = settings->text(CAppSettings::RootPath);
    if (sender() == m_pbORVAExeLocationSelect) {
        const QString executable =
            QFileDialog::getOpenFileName(this, FileNames::ChooseExecutable, start,
                                         platform::executableFilter(FileNames::ExecutableFilter));
        m_leORVAExeLocation->setText(executable);
        settings->setValue(CAppSettings::OrvaExeLocation, executable);
        return;
    }
    const QObject* const button = sender();
    const QString folder = chosenFolder(this, start);
    if (button == m_pbJobSaveLocationSelect) {
        m_leJobSaveLocation->setText(folder);
    } else if (button == m_pbJobLoadLocationSelect) {
        m_leJobLoadLocation->setText(folder);
    }
}

void CSubmitJobFrame::generateJobSpec()
{
    const std::optional<std::string> job =
        generateJobFolder(*m_jobMatrix, m_leJobSaveLocation->text().toStdString());
    if (job) {
        m_leJobLoadLocation->setText(QString::fromStdString(*job));
        loadJobSpec();
    }
}

void CSubmitJobFrame::generateDistributedCases()
{
    m_distributedFileProgress->setValue(0);
    const bool local = sw_SimExecution->currentIndex() == 0;
    const std::vector<CaseCommands> commands = prepareCases(m_caseRootStem, local, m_caseRoot);
    CBatchFiles files(m_caseRoot);
    m_distributedFileProgress->setValue(50);
    files.write(commands);
    m_distributedFileProgress->setValue(100);
    platform::openFolder(m_caseRoot);
}

bool CSubmitJobFrame::jobCanBeLoaded() const
{
    if (!platform::exists(m_leJobLoadLocation->text().toStdString())) {
        MessageBox::information(ApplicationStrings::InformationTitle,
                                ApplicationStrings::InvalidPath);
        return false;
    }
    if (m_leORVAExeLocation->text().isEmpty()) {
        MessageBox::information(ApplicationStrings::InformationTitle,
                                ApplicationStrings::NoExecutable);
        return false;
    }
    return true;
}

void CSubmitJobFrame::loadJobSpec()
{
    if (!jobCanBeLoaded()) {
        return;
    }
    m_listOngoingSimulations->clear();
    if (!m_bRunning) {
        // Cases of a cancelled run may still have to end; the new rows are none of theirs.
        m_run.leave();
    }
    const std::string job = m_leJobLoadLocation->text().toStdString();
    m_caseRootStem = job + "/" + FileNames::CaseRootStem;
    m_caseRoot = m_caseRootStem;
    const auto addRow = [this](const std::string& deck, int caseNumber) {
        const QString text = QString::fromStdString(deck) + QString::number(caseNumber);
        m_rows->add(new CSimulationListItem(Icons::PreSim, text, caseNumber));
    };
    CJobFileReader reader;
    if (loadJobFolder(job, *m_jobMatrix, reader, addRow)) {
        enableRun();
    }
}

void CSubmitJobFrame::enableRun()
{
    m_pbCancelSimulating->setEnabled(true);
    m_pbStartSimulating->setEnabled(true);
    m_sbConcurrentSimulations->setEnabled(true);
    m_gbSimulationExecutionOptions->setEnabled(true);
}

void CSubmitJobFrame::runCasesLocally()
{
    // A job that is loaded during a run enables the hidden start button.
    if (m_sbConcurrentSimulations->value() == 0 || m_bRunning) {
        return;
    }
    std::optional<std::string> python = FileNames::Python;
    if (CDeckStore::instance()->postProcessing().first == pythonMode) {
        python = findAnalysisTools();
    }
    if (!python) {
        return;
    }
    m_run.clearCancel();
    showRunning(true);
    const bool local = sw_SimExecution->currentIndex() == 0;
    const auto commands = prepareCases(m_caseRootStem, local, m_caseRoot, *python);
    const int concurrency = m_sbConcurrentSimulations->value();
    m_run.begin(commands, m_caseRoot, nameOfDeck(), concurrency);
    m_rows->begin();
    m_progBarCompletedSimulations->setRange(0, m_run.queuedCount());
    QThreadPool::globalInstance()->setMaxThreadCount(concurrency);
    startQueuedCases();
    waitForCases();
    m_rows->end();
    if (m_run.isCancelled()) {
        showCancelled();
    }
    showRunning(false);
}

void CSubmitJobFrame::showRunning(bool running)
{
    m_bRunning = running;
    m_pbCancelSimulating->setVisible(running);
    m_pbCancelSimulating->setEnabled(running);
    m_pbStartSimulating->setVisible(!running);
    m_pbStartSimulating->setEnabled(!running);
    const QList<QWidget*> others{
        m_pbGenerateDistributedFiles,   m_pbGenerateJob,          m_pbJobLoadLocationSelect,
        m_pbJobSaveLocationSelect,      m_leJobLoadLocation,      m_leJobSaveLocation,
        m_gbSimulationExecutionOptions, m_sbConcurrentSimulations};
    for (QWidget* widget : others) {
        widget->setEnabled(!running);
    }
    if (running) {
        window()->installEventFilter(this);
    } else {
        window()->removeEventFilter(this);
    }
}

void CSubmitJobFrame::startQueuedCases()
{
    while (m_run.hasQueued() && !m_run.isCancelled()) {
        pump(!m_run.canStart());
        if (m_run.canStart() && !m_run.isCancelled()) {
            startNextCase();
        }
    }
}

void CSubmitJobFrame::startNextCase()
{
    const QueuedCase head = m_run.takeHead();
    CSimulationListItem* const row = m_rows->find(head.m_iCaseNumber);
    executeCase(head.m_commands, head.m_iCaseNumber, row);
    if (row != nullptr) {
        m_rows->append(row);
    }
}

void CSubmitJobFrame::waitForCases()
{
    while (!m_rows->isEmpty() && !m_run.isCancelled()) {
        pump(true);
    }
}

/// Where no case can start, only an event can change that: a case that ends, a click, a frame of
/// the animation. Waiting for one leaves the processors to the simulations.
void CSubmitJobFrame::pump(bool mayWait)
{
    QCoreApplication::processEvents(mayWait ? QEventLoop::WaitForMoreEvents
                                            : QEventLoop::AllEvents);
    m_rows->showFrame();
}

void CSubmitJobFrame::executeCase(const CaseCommands& commands, int id, CSimulationListItem* item)
{
    CaseTask task = m_run.task(id);
    task.m_commands = commands;
    task.m_output = item == nullptr ? nullptr : item->output();
    m_workers->start(task);
}

/// The cases of an earlier run have a claim on their own folders only.
void CSubmitJobFrame::takeEndedCases()
{
    for (const EndedCase& ended : m_workers->takeEnded()) {
        const int number = ended.m_task.m_iCaseNumber;
        if (ended.m_task.m_iRun == m_run.number()) {
            updateLocalSimulationTracker(ended.m_iExitCode, number, m_rows->find(number));
        } else if (CDeckStore::instance()->simulationOutputs()) {
            reduceToFirstFile(ended.m_task);
        }
    }
}

void CSubmitJobFrame::updateLocalSimulationTracker(int exitCode, int id, CSimulationListItem* item)
{
    m_run.countEnded();
    m_rows->remove(id);
    if (CDeckStore::instance()->simulationOutputs()) {
        reduceToFirstFile(m_run.task(id));
    }
    if (!m_run.isCancelled()) {
        m_progBarCompletedSimulations->setValue(m_run.completedCases());
    }
    if (item != nullptr) {
        const bool success = exitCode == 0 && !m_run.isCancelled();
        m_rows->setIcon(item, success ? Icons::PostSimSuccess : Icons::PostSimFailure);
    }
}

void CSubmitJobFrame::cancelRun()
{
    m_run.cancel();
    m_workers->cancel(m_run.number());
}

void CSubmitJobFrame::showCancelled()
{
    for (int row = 0; row < m_listOngoingSimulations->count(); ++row) {
        m_listOngoingSimulations->item(row)->setIcon(Icons::PostSimFailure);
    }
    m_progBarCompletedSimulations->setValue(0);
}

bool CSubmitJobFrame::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Close) {
        cancelRun();
    }
    return IFrame::eventFilter(watched, event);
}

void CSubmitJobFrame::inspect(const QListWidgetItem* item)
{
    const auto* const row = static_cast<const CSimulationListItem*>(item);
    m_lblJobName->setText(row->text() +
                          QCoreApplication::translate("SubmitJobFrameUI", " finished output"));
    m_inspectorDetails->setPlainText(QString::fromStdString(row->output()->bytes()));
    if (m_inspectorDetails->document()->isEmpty()) {
        m_inspectorDetails->setPlainText(ApplicationStrings::Unfinished);
    }
}
