#pragma once

#include "app/connections.h"
#include "app/frame.h"
#include "ui_post_processing_frame.h"

#include <memory>
#include <string>
#include <vector>

class QRegularExpressionValidator;

/// Page 2: what happens to a case once its simulation has finished. Each change is stored at once;
/// Next needs the files that the visible mode names.
class CPostProcessingFrame : public IFrame, private Ui::PostProcessingFrameUI
{
    Q_OBJECT

public:
    explicit CPostProcessingFrame(QWidget* parent = nullptr);
    ~CPostProcessingFrame() override;

    /// Proposes the files beside the deck, whatever was chosen before, and shows the stored mode.
    void onPageEntered() override;

private slots:
    void browseForFile();
    /// Lets std::filesystem::filesystem_error "exists" pass.
    void validateFields();

private:
    void setupConnections();
    void setPostProcessingMode(int mode);
    std::vector<std::string> arguments(int mode) const;
    bool isComplete(int mode) const;

    static CConnectionTable<CPostProcessingFrame> s_connections;

    std::shared_ptr<QRegularExpressionValidator> m_argumentValidator;
};
