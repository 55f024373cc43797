#include "app/main_window.h"

#include "app/constants/application_strings.h"
#include "app/constants/icons.h"
#include "app/frame.h"
#include "app/startup.h"
#include "deck/app_settings.h"
#include "deck/deck_loader_frame.h"
#include "samples/player/modal_watcher.h"
#include "tests/support/native.h"
#include "tests/support/test_environment.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>
#include <QToolBar>

#include <cstring>

namespace {

const QStringList Tabs = {"m_tabDeckLoader",        "m_tabParameterEditor", "m_tabPostProccessing",
                          "m_tabProcessingOptions", "m_tabSubmitJob",       "m_tabResultsAnalysis"};

template <class T>
T* part(const CMainWindow& window, const QString& name)
{
    return window.findChild<T*>(name);
}

QAction* tab(const CMainWindow& window, int index)
{
    return part<QAction>(window, Tabs[index]);
}

QStackedWidget* stack(const CMainWindow& window)
{
    return part<QStackedWidget>(window, "m_editStack");
}

QPushButton* next(const CMainWindow& window)
{
    return part<QPushButton>(window, "m_pbNextButton");
}

QPushButton* back(const CMainWindow& window)
{
    return part<QPushButton>(window, "m_pbBackButton");
}

int s_entries = 0;

void countEntry(CDeckLoaderFrame* /*page*/)
{
    ++s_entries;
}

/// While it lives, each call of the first page's `onPageEntered` is counted: the page's own does
/// nothing that could be seen.
class CEntryCounter
{
public:
    CEntryCounter()
    {
        CDeckLoaderFrame page;
        void (CDeckLoaderFrame::*member)() = &CDeckLoaderFrame::onPageEntered;
        std::size_t offset = 0;
        std::memcpy(&offset, &member, sizeof offset);
        char* table = nullptr;
        std::memcpy(&table, static_cast<void*>(&page), sizeof table);
        m_slot = table + offset - 1;
        std::memcpy(&m_original, m_slot, sizeof m_original);
        put(reinterpret_cast<void*>(&countEntry));
        s_entries = 0;
    }

    ~CEntryCounter() { put(m_original); }

private:
    void put(void* function)
    {
        QVERIFY(Native::makeWritable(m_slot, sizeof function));
        std::memcpy(m_slot, &function, sizeof function);
    }

    char* m_slot = nullptr;
    void* m_original = nullptr;
};

} // namespace

class CMainWindowTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void atStartUpBackIsHiddenAndNextVisibleAndEnabled();
    void atStartUpTheFirstPageIsEnteredTwice();
    void theTabsStandInTheOrderOfTheWizard();
    void onTheLastPageNextIsHidden();
    void anIntermediatePageShowsBoth();
    void nextAndBackWalkOnePage();
    void pressingTheCurrentTabEntersThePageAgain();
    void everyTabWorksWithoutADeck();
    void theTabOfTheCurrentPageIsChecked();
    void thePageTitleFollowsThePage();
    void theTitleIsTheNameAlone();
    void theTitleOfAnotherBuildNamesTypeAndVersion();
    void stageCompleteDrivesNextAlone();
    void aPageIsEnteredBeforeTabsAndTitleChange();
    void slotsCalledByNobodyChangeNothing();
    void thePagesDieBeforeTheWindowsChildren();
    void aDyingWindowListensToNobody();
    void theTabsHaveTheResourceIcons();
    void aboutShowsTheFilledTemplate();
    void aWindowCanBeMadeAndDestroyedTwice();
};

void CMainWindowTest::initTestCase()
{
    startup::fillConstants();
}

void CMainWindowTest::init()
{
    CTestEnvironment::reset();
}

void CMainWindowTest::atStartUpBackIsHiddenAndNextVisibleAndEnabled()
{
    CMainWindow window;
    window.show();
    QCOMPARE(stack(window)->currentIndex(), 0);
    QVERIFY(back(window)->isHidden());
    QVERIFY(next(window)->isVisible());
    QVERIFY(next(window)->isEnabled());
}

void CMainWindowTest::atStartUpTheFirstPageIsEnteredTwice()
{
    const CEntryCounter counter;
    CMainWindow window;
    QCOMPARE(s_entries, 2);
    tab(window, 0)->trigger();
    QCOMPARE(s_entries, 3);
}

void CMainWindowTest::theTabsStandInTheOrderOfTheWizard()
{
    CMainWindow window;
    QStringList texts;
    for (const QAction* action : part<QToolBar>(window, "toolBar")->actions()) {
        texts << (action->isSeparator() ? QStringLiteral("|") : action->text());
    }
    QCOMPARE(texts, QStringList({"Load Deck", "|", "Parameter Editor", "|", "Post-Proccessing", "|",
                                 "Processing Options", "|", "Submit Job", "|", "Results Analysis",
                                 "|", "Load Deck"}));
    QStringList pages;
    for (int i = 0; i < stack(window)->count(); ++i) {
        pages << stack(window)->widget(i)->objectName();
    }
    QCOMPARE(pages,
             QStringList({"m_pageDeckLoader", "m_pageParameterEditor", "m_pagePostProcessing",
                          "m_pageProcessingOptions", "m_pageSubmitJob", "m_pageResultsAnalysis"}));
}

void CMainWindowTest::onTheLastPageNextIsHidden()
{
    CMainWindow window;
    tab(window, 5)->trigger();
    QVERIFY(next(window)->isHidden());
    QVERIFY(!back(window)->isHidden());
}

void CMainWindowTest::anIntermediatePageShowsBoth()
{
    CMainWindow window;
    for (int index = 1; index < 5; ++index) {
        tab(window, index)->trigger();
        QVERIFY(!next(window)->isHidden());
        QVERIFY(!back(window)->isHidden());
    }
}

void CMainWindowTest::nextAndBackWalkOnePage()
{
    CMainWindow window;
    next(window)->click();
    QCOMPARE(stack(window)->currentIndex(), 1);
    next(window)->click();
    QCOMPARE(stack(window)->currentIndex(), 2);
    back(window)->click();
    QCOMPARE(stack(window)->currentIndex(), 1);
}

void CMainWindowTest::pressingTheCurrentTabEntersThePageAgain()
{
    CMainWindow window;
    CAppSettings::instance()->setValue(CAppSettings::ZEKPath, QStringLiteral("/decks/a.zek"));
    tab(window, 2)->trigger();
    auto* location = part<QLineEdit>(window, "m_leDfgLocation");
    QCOMPARE(location->text(), QStringLiteral("/decks/a.dfg"));
    location->setText(QStringLiteral("elsewhere.dfg"));
    tab(window, 2)->trigger();
    QCOMPARE(location->text(), QStringLiteral("/decks/a.dfg"));
    QVERIFY(tab(window, 2)->isChecked());
}

void CMainWindowTest::everyTabWorksWithoutADeck()
{
    CMainWindow window;
    for (int index : {3, 1, 2, 4, 5, 0, 3}) {
        tab(window, index)->trigger();
        QCOMPARE(stack(window)->currentIndex(), index);
        for (int other = 0; other < Tabs.size(); ++other) {
            QVERIFY(tab(window, other)->isEnabled());
        }
    }
}

void CMainWindowTest::theTabOfTheCurrentPageIsChecked()
{
    CMainWindow window;
    QVERIFY(tab(window, 0)->isChecked());
    tab(window, 4)->trigger();
    for (int index = 0; index < Tabs.size(); ++index) {
        QVERIFY(tab(window, index)->isCheckable());
        QCOMPARE(tab(window, index)->isChecked(), index == 4);
    }
}

void CMainWindowTest::thePageTitleFollowsThePage()
{
    CMainWindow window;
    auto* title = part<QAction>(window, "m_pageTitle");
    QCOMPARE(title->text(), QStringLiteral("Load Deck"));
    QVERIFY(!title->isEnabled());
    tab(window, 2)->trigger();
    QCOMPARE(title->text(), QStringLiteral("Post-Proccessing"));
}

void CMainWindowTest::theTitleIsTheNameAlone()
{
    QCOMPARE(CMainWindow().windowTitle(), QStringLiteral("Tarnel"));
}

void CMainWindowTest::theTitleOfAnotherBuildNamesTypeAndVersion()
{
    ApplicationStrings::BuildType = QStringLiteral("Beta");
    QCOMPARE(CMainWindow().windowTitle(), QStringLiteral("Tarnel Beta 1.0"));
    ApplicationStrings::initialise();
}

void CMainWindowTest::stageCompleteDrivesNextAlone()
{
    CMainWindow window;
    for (int index = 0; index < stack(window)->count(); ++index) {
        auto* page = qobject_cast<IFrame*>(stack(window)->widget(index));
        emit page->stageComplete(false);
        QVERIFY(!next(window)->isEnabled());
        QVERIFY(tab(window, index)->isEnabled());
        emit page->stageComplete(true);
        QVERIFY(next(window)->isEnabled());
    }
}

void CMainWindowTest::aPageIsEnteredBeforeTabsAndTitleChange()
{
    CMainWindow window;
    QStringList seen;
    const auto note = [&window, &seen] {
        seen << QStringLiteral("%1 %2 %3")
                    .arg(stack(window)->currentIndex())
                    .arg(tab(window, 2)->isChecked())
                    .arg(part<QAction>(window, "m_pageTitle")->text());
    };
    CAppSettings::instance()->setValue(CAppSettings::ZEKPath, QStringLiteral("/decks/a.zek"));
    auto* filledOnEntry = part<QLineEdit>(window, "m_leDfgLocation");
    connect(filledOnEntry, &QLineEdit::textChanged, filledOnEntry, note);
    next(window)->click();
    next(window)->click();
    QCOMPARE(seen, QStringList("2 0 Parameter Editor"));
    note();
    QCOMPARE(seen.last(), QStringLiteral("2 1 Post-Proccessing"));
}

void CMainWindowTest::slotsCalledByNobodyChangeNothing()
{
    CMainWindow window;
    tab(window, 3)->trigger();
    QVERIFY(QMetaObject::invokeMethod(&window, "goToPage"));
    QCOMPARE(stack(window)->currentIndex(), 3);
    QVERIFY(tab(window, 3)->isChecked());
}

void CMainWindowTest::thePagesDieBeforeTheWindowsChildren()
{
    int deaths = 0;
    int withChildren = 0;
    {
        CMainWindow window;
        // The tabs are the window's first children, gone before the stack would end its pages.
        const QPointer<QAction> firstTab(tab(window, 0));
        const QPointer<QPushButton> button(next(window));
        for (int index = 0; index < stack(window)->count(); ++index) {
            connect(stack(window)->widget(index), &QObject::destroyed, this,
                    [&deaths, &withChildren, firstTab, button] {
                        ++deaths;
                        withChildren += firstTab != nullptr && button != nullptr ? 1 : 0;
                    });
        }
    }
    QCOMPARE(deaths, 6);
    QCOMPARE(withChildren, 6);
}

void CMainWindowTest::aDyingWindowListensToNobody()
{
    const CModalWatcher watcher;
    bool asked = false;
    {
        CMainWindow window;
        auto* about = part<QAction>(window, "m_actionAbout");
        connect(stack(window)->widget(0), &QObject::destroyed, about, [about, &asked] {
            asked = true;
            about->trigger();
        });
    }
    QVERIFY(asked);
    QCOMPARE(watcher.texts(), QStringList());
}

void CMainWindowTest::theTabsHaveTheResourceIcons()
{
    CMainWindow window;
    const std::vector<QIcon> icons = {Icons::OpenFile,  Icons::Creator,   Icons::Analyst,
                                      Icons::Simulator, Icons::Checkmark, Icons::Results};
    for (int index = 0; index < Tabs.size(); ++index) {
        QCOMPARE(tab(window, index)->icon().cacheKey(), icons[std::size_t(index)].cacheKey());
        QVERIFY(!tab(window, index)->icon().pixmap(32, 32).isNull());
    }
    QCOMPARE(window.windowIcon().cacheKey(), Icons::MainWindow.cacheKey());
}

void CMainWindowTest::aboutShowsTheFilledTemplate()
{
    CMainWindow window;
    CModalWatcher watcher;
    part<QAction>(window, "m_actionAbout")->trigger();
    QCOMPARE(watcher.messages().size(), std::size_t(1));
    QCOMPARE(watcher.messages().front().title, QStringLiteral("About Tarnel"));
    QCOMPARE(watcher.messages().front().text, ApplicationStrings::aboutText());
    QVERIFY(watcher.messages().front().hasParent);
}

void CMainWindowTest::aWindowCanBeMadeAndDestroyedTwice()
{
    {
        CMainWindow first;
        tab(first, 4)->trigger();
    }
    CMainWindow second;
    QCOMPARE(stack(second)->count(), 6);
}

TARNEL_TEST_MAIN(CMainWindowTest)
#include "main_window_test.moc"
