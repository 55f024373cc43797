#pragma once

#include "app/connections.h"
#include "app/frame.h"
#include "jobs/case_commands.h"
#include "jobs/job_matrix.h"
#include "jobs/local_run.h"
#include "jobs/running_rows.h"
#include "ui_submit_job_frame.h"

#include <memory>
#include <string>

class CCaseWorkers;
class CSimulationListItem;

/// Page 4: makes or loads a job, and runs its cases here or writes the files that run them
/// elsewhere. Never says that it is complete: Next stays as the page before left it.
class CSubmitJobFrame : public IFrame, private Ui::SubmitJobFrameUI
{
    Q_OBJECT

public:
    explicit CSubmitJobFrame(QWidget* parent = nullptr);
    /// Ends the cases that run and waits for their threads.
    ~CSubmitJobFrame() override;

    void onPageEntered() override;

    /// Closing the window during a run cancels the run.
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void browseForFolder();
    /// Lets std::filesystem::filesystem_error pass, as do the four slots below.
    void generateJobSpec();
    void generateDistributedCases();
    void loadJobSpec();
    /// Returns when all cases have ended or the run was cancelled; pumps events meanwhile.
    void runCasesLocally();
    /// Hands a case of the current run to a pool thread; `item` may be null.
    void executeCase(const CaseCommands& commands, int id, CSimulationListItem* item);
    /// A case of the current run has ended; `item` may be null.
    void updateLocalSimulationTracker(int exitCode, int id, CSimulationListItem* item);

private:
    void setupConnections();
    bool jobCanBeLoaded() const;
    void enableRun();
    void showRunning(bool running);
    void startQueuedCases();
    void startNextCase();
    void waitForCases();
    void pump(bool mayWait);
    void takeEndedCases();
    void cancelRun();
    void showCancelled();
    void inspect(const QListWidgetItem* item);

    static CConnectionTable<CSubmitJobFrame> s_connections;

    std::string m_caseRootStem;
    std::string m_caseRoot;
    bool m_bRunning = false;
    CLocalRun m_run;
    std::unique_ptr<CRunningRows> m_rows;
    std::unique_ptr<CJobMatrix> m_jobMatrix;
    std::unique_ptr<CCaseWorkers> m_workers;
};
