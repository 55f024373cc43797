#include "app/main_window.h"

#include "app/constants/application_strings.h"
#include "app/constants/icons.h"
#include "deck/deck_loader_frame.h"
#include "jobs/submit_job_frame.h"
#include "parameters/parameter_editor_frame.h"
#include "results/results_analysis_frame.h"
#include "setup/post_processing_frame.h"
#include "setup/processing_options_frame.h"
#include "widgets/keyboard_click.h"

#include <QListWidget>
#include <QMessageBox>
#include <QTableWidget>
#include <QTreeWidget>

CConnectionTable<CMainWindow> CMainWindow::s_connections;

namespace {

template <class Page>
Page* makePage(QStackedWidget* stack, const char* name)
{
    auto* page = new Page(stack);
    page->setObjectName(QLatin1String(name));
    stack->addWidget(page);
    return page;
}

/// The last widget below `window` that the tab key reaches.
QWidget* lastTabStop(QWidget* window)
{
    QWidget* widget = window->previousInFocusChain();
    while (widget != window && (widget->focusPolicy() & Qt::TabFocus) == 0) {
        widget = widget->previousInFocusChain();
    }
    return widget;
}

QString titleOfWindow()
{
    if (ApplicationStrings::BuildType == QLatin1String("Release")) {
        return ApplicationStrings::Name;
    }
    return ApplicationStrings::Name + QLatin1Char(' ') + ApplicationStrings::BuildType +
           QLatin1Char(' ') + ApplicationStrings::Version;
}

} // namespace

CMainWindow::CMainWindow()
{
    setupUi(this);
    makePages();
    openToKeyboard();
    setWindowIcon(Icons::MainWindow);
    setWindowTitle(titleOfWindow());
    setupConnections();
    adoptPages();
    m_editStack->setCurrentIndex(0);
    m_pageDeckLoader->onPageEntered();
    updatePage();
    setTabIcons();
    m_pageTitle->setText(m_tabDeckLoader->text());
}

CMainWindow::~CMainWindow()
{
    s_connections.release(this);
    m_pageForAction.clear();
}

void CMainWindow::makePages()
{
    m_pageDeckLoader = makePage<CDeckLoaderFrame>(m_editStack, "m_pageDeckLoader");
    m_pageParameterEditor = makePage<CParameterEditorFrame>(m_editStack, "m_pageParameterEditor");
    m_pagePostProcessing = makePage<CPostProcessingFrame>(m_editStack, "m_pagePostProcessing");
    m_pageProcessingOptions =
        makePage<CProcessingOptionsFrame>(m_editStack, "m_pageProcessingOptions");
    m_pageSubmitJob = makePage<CSubmitJobFrame>(m_editStack, "m_pageSubmitJob");
    m_pageResultsAnalysis = makePage<CResultsAnalysisFrame>(m_editStack, "m_pageResultsAnalysis");
}

void CMainWindow::openToKeyboard()
{
    // The pages were made behind the buttons that stand below them.
    setTabOrder(lastTabStop(this), m_pbBackButton);
    setTabOrder(m_pbBackButton, m_pbNextButton);
    for (auto* view : m_editStack->findChildren<QAbstractItemView*>()) {
        if (qobject_cast<QTreeWidget*>(view) != nullptr ||
            qobject_cast<QListWidget*>(view) != nullptr ||
            qobject_cast<QTableWidget*>(view) != nullptr) {
            new CKeyboardClick(view);
        }
    }
}

void CMainWindow::setupConnections()
{
    std::vector<QMetaObject::Connection> connections = {
        connect(m_pbNextButton, &QPushButton::clicked, this, &CMainWindow::nextPage,
                Qt::UniqueConnection),
        connect(m_pbBackButton, &QPushButton::clicked, this, &CMainWindow::previousPage,
                Qt::UniqueConnection),
        connect(m_actionAbout, &QAction::triggered, this, &CMainWindow::onAbout),
    };
    for (const auto& more : {connectTabs(), connectStages()}) {
        connections.insert(connections.end(), more.begin(), more.end());
    }
    s_connections.store(this, std::move(connections));
}

std::vector<QMetaObject::Connection> CMainWindow::connectTabs()
{
    std::vector<QMetaObject::Connection> connections;
    for (QAction* tab : {m_tabDeckLoader, m_tabParameterEditor, m_tabPostProccessing,
                         m_tabProcessingOptions, m_tabSubmitJob, m_tabResultsAnalysis}) {
        connections.push_back(
            connect(tab, &QAction::triggered, this, &CMainWindow::goToPage, Qt::UniqueConnection));
    }
    return connections;
}

std::vector<QMetaObject::Connection> CMainWindow::connectStages()
{
    std::vector<QMetaObject::Connection> connections;
    for (int index = 1; index < m_editStack->count(); ++index) {
        connections.push_back(connect(qobject_cast<IFrame*>(m_editStack->widget(index)),
                                      &IFrame::stageComplete, m_pbNextButton, &QWidget::setEnabled,
                                      Qt::UniqueConnection));
    }
    connections.push_back(connect(
        m_pageDeckLoader, &IFrame::stageComplete, m_pbNextButton,
        [this](bool complete) { m_pbNextButton->setEnabled(complete); }, Qt::DirectConnection));
    return connections;
}

void CMainWindow::adoptPages()
{
    // The pages die with this map, before the window's Qt children do.
    m_pageForAction[m_tabDeckLoader] = std::shared_ptr<IFrame>(m_pageDeckLoader);
    m_pageForAction[m_tabParameterEditor] = std::shared_ptr<IFrame>(m_pageParameterEditor);
    m_pageForAction[m_tabPostProccessing] = std::shared_ptr<IFrame>(m_pagePostProcessing);
    m_pageForAction[m_tabProcessingOptions] = std::shared_ptr<IFrame>(m_pageProcessingOptions);
    m_pageForAction[m_tabSubmitJob] = std::shared_ptr<IFrame>(m_pageSubmitJob);
    m_pageForAction[m_tabResultsAnalysis] = std::shared_ptr<IFrame>(m_pageResultsAnalysis);
}

void CMainWindow::setTabIcons()
{
    m_tabDeckLoader->setIcon(Icons::OpenFile);
    m_tabParameterEditor->setIcon(Icons::Creator);
    m_tabPostProccessing->setIcon(Icons::Analyst);
    m_tabProcessingOptions->setIcon(Icons::Simulator);
    m_tabSubmitJob->setIcon(Icons::Checkmark);
    m_tabResultsAnalysis->setIcon(Icons::Results);
}

void CMainWindow::nextPage()
{
    m_editStack->setCurrentIndex(m_editStack->currentIndex() + 1);
    updatePage();
}

void CMainWindow::previousPage()
{
    m_editStack->setCurrentIndex(m_editStack->currentIndex() - 1);
    updatePage();
}

void CMainWindow::goToPage()
{
    auto* const action = dynamic_cast<QAction*>(sender());
    if (action == nullptr) {
        return;
    }
    m_editStack->setCurrentWidget(m_pageForAction[action].get());
    updatePage();
}

void CMainWindow::updatePage()
{
    auto* const current = dynamic_cast<IFrame*>(m_editStack->currentWidget());
    if (current == nullptr) {
        return;
    }
    current->onPageEntered();
    for (const auto& [action, page] : m_pageForAction) {
        action->setChecked(page.get() == current);
        if (page.get() == current) {
            m_pageTitle->setText(action->text());
        }
    }
    m_pbBackButton->setHidden(m_editStack->currentIndex() == 0);
    m_pbNextButton->setHidden(m_editStack->currentIndex() == m_editStack->count() - 1);
}

void CMainWindow::onAbout()
{
    QMessageBox::about(this, ApplicationStrings::AboutTitle, ApplicationStrings::aboutText());
}
