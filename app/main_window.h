#pragma once

#include "app/connections.h"
#include "ui_main_window.h"

#include <QMainWindow>

#include <map>
#include <memory>
#include <vector>

class CDeckLoaderFrame;
class CParameterEditorFrame;
class CPostProcessingFrame;
class CProcessingOptionsFrame;
class CResultsAnalysisFrame;
class CSubmitJobFrame;
class IFrame;

/// The program's window: a tab action per page, the pages in a stack, Back and Next below. It knows
/// nothing of what a page does beyond the contract of IFrame.
class CMainWindow : public QMainWindow, private Ui::MainWindow
{
    Q_OBJECT

public:
    CMainWindow();
    ~CMainWindow() override;

private slots:
    void nextPage();
    void previousPage();
    void goToPage();

private:
    /// Makes the pages, each a child of the stack: one of them is shown in its own constructor.
    void makePages();
    void openToKeyboard();
    void setupConnections();
    std::vector<QMetaObject::Connection> connectTabs();
    std::vector<QMetaObject::Connection> connectStages();
    void adoptPages();
    void setTabIcons();
    void updatePage();
    void onAbout();

    static CConnectionTable<CMainWindow> s_connections;

    CDeckLoaderFrame* m_pageDeckLoader = nullptr;
    CParameterEditorFrame* m_pageParameterEditor = nullptr;
    CPostProcessingFrame* m_pagePostProcessing = nullptr;
    CProcessingOptionsFrame* m_pageProcessingOptions = nullptr;
    CSubmitJobFrame* m_pageSubmitJob = nullptr;
    CResultsAnalysisFrame* m_pageResultsAnalysis = nullptr;
    std::map<QAction*, std::shared_ptr<IFrame>> m_pageForAction;
};
