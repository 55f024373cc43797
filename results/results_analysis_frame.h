#pragma once

#include "app/connections.h"
#include "app/frame.h"
#include "ui_results_analysis_frame.h"

/// The wizard page that collates the CSV files of all cases below a folder into one file there.
class CResultsAnalysisFrame : public IFrame, private Ui::ResultsAnalysisFrameUI
{
    Q_OBJECT

public:
    explicit CResultsAnalysisFrame(QWidget* parent = nullptr);
    ~CResultsAnalysisFrame() override;

    void onPageEntered() override;

signals:
    /// From any thread: the collation turns to the file of this index, from 0.
    void fileStarted(int index);

private:
    void setupConnections();
    void browseForFolder();
    void generateCombinedResults();
    void collate(const QString& folder);

    static CConnectionTable<CResultsAnalysisFrame> s_connections;
};
