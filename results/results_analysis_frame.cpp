#include "results/results_analysis_frame.h"

#include "app/constants/file_names.h"
#include "app/constants/messages.h"
#include "app/constants/progress_strings.h"
#include "app/message_box.h"
#include "deck/app_settings.h"
#include "results/result_files.h"
#include "results/result_table.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFutureWatcher>
#include <QProgressDialog>
#include <QThreadPool>
#include <QtConcurrent>

#include <fstream>
#include <mutex>

namespace fs = std::filesystem;

namespace {

/// A path made of wide characters would refuse those outside ASCII in the neutral locale.
fs::path pathOf(const QString& text)
{
    return fs::u8path(text.toStdString());
}

/// Runs a task off the GUI thread and keeps the window alive until it has ended, well or by an
/// exception, which stays with the task. Pumps at least once, so that each step gets painted.
template <class Task>
void runAndWait(QThreadPool& pool, Task task)
{
    // Qt's own order would do; this lock is one that the thread sanitizer sees as well.
    std::mutex handover;
    const auto held = [&handover, &task] {
        const std::lock_guard<std::mutex> lock(handover);
        task();
    };
    const QFuture<void> future = QtConcurrent::run(&pool, held);
    // The watcher's event at the task's end wakes the pump, which therefore needn't spin.
    QFutureWatcher<void> watcher;
    watcher.setFuture(future);
    do {
        QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    } while (future.isRunning());
    const std::lock_guard<std::mutex> lock(handover);
}

/// With a name, by which the thread sanitizer can be told what Qt's queue does to it.
void tellStarted(CResultsAnalysisFrame& page, int index)
{
    emit page.fileStarted(index);
}

} // namespace

CConnectionTable<CResultsAnalysisFrame> CResultsAnalysisFrame::s_connections;

CResultsAnalysisFrame::CResultsAnalysisFrame(QWidget* parent)
    : IFrame(parent)
{
    setupUi(this);
    setupConnections();
}

CResultsAnalysisFrame::~CResultsAnalysisFrame()
{
    s_connections.release(this);
}

void CResultsAnalysisFrame::onPageEntered() {}

void CResultsAnalysisFrame::setupConnections()
{
    s_connections.store(this, {connect(m_pbDistributedSelectFile, &QPushButton::pressed, this,
                                       &CResultsAnalysisFrame::browseForFolder),
                               connect(m_pbGenerateMasterResults, &QPushButton::pressed, this,
                                       &CResultsAnalysisFrame::generateCombinedResults)});
}

void CResultsAnalysisFrame::browseForFolder()
{
    QFileDialog dialog(this, FileNames::BrowseForFolder,
                       CAppSettings::instance()->text(CAppSettings::RootPath));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly);
    if (dialog.exec() == QDialog::Accepted) {
        m_leDistributedFilePath->setText(dialog.selectedFiles().constFirst());
    }
}

void CResultsAnalysisFrame::generateCombinedResults()
{
    const QString folder = m_leDistributedFilePath->text();
    if (folder.isEmpty()) {
        MessageBox::plain(Messages::EnterDirectory);
    } else if (!QDir(folder).exists()) {
        MessageBox::plain(Messages::DirectoryMissing);
    } else {
        collate(folder);
        MessageBox::plain(ProgressStrings::OperationComplete);
    }
}

/// The dialog's label trails the work by one step.
void CResultsAnalysisFrame::collate(const QString& folder)
{
    const std::vector<fs::path> files = ResultFiles::csvFiles(pathOf(folder));
    const bool simulatorLayout = !ResultFiles::hasScript(pathOf(folder));

    QProgressDialog dialog(ProgressStrings::GatheringData, ProgressStrings::ClosingFile, 0,
                           static_cast<int>(files.size()), this);
    dialog.setModal(true);
    dialog.setMinimumDuration(0);
    dialog.show();
    // Told late, perhaps when the dialog has been closed and mustn't show itself again.
    const auto advance = [&dialog, simulatorLayout](int index) {
        if (dialog.isVisible()) {
            dialog.setValue(simulatorLayout ? index : 0);
        }
    };
    connect(this, &CResultsAnalysisFrame::fileStarted, &dialog, advance, Qt::QueuedConnection);

    // A pool of its own: in the global one the tasks would queue behind the cases of a local run.
    QThreadPool pool;
    ResultTable table;
    runAndWait(pool, [this, &files, &table, simulatorLayout] {
        const auto gather = simulatorLayout ? gatherSimulatorResults : gatherScriptResults;
        gather(
            files, [this](int index) { tellStarted(*this, index); }, table);
    });

    dialog.setLabelText(ProgressStrings::CloseProgressBar);
    std::ofstream stream(pathOf(folder + QString::fromStdString(FileNames::CombinedResultsStem) +
                                QString::fromStdString(FileNames::CsvExtension)));
    runAndWait(pool, [&table, &stream] { writeResults(table, stream); });

    dialog.setLabelText(ProgressStrings::WritingData);
    runAndWait(pool, [&stream] { stream.close(); });
    dialog.close();
}
