#include "app/main_window.h"

#include "app/frame.h"
#include "app/startup.h"
#include "deck/deck_loader_frame.h"
#include "parameters/parameter_editor_frame.h"
#include "parameters/table_item.h"
#include "tests/support/named_child.h"
#include "tests/support/own_methods.h"
#include "tests/support/test_environment.h"

#include <QAction>
#include <QApplication>
#include <QBoxLayout>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QStackedWidget>
#include <QTest>
#include <QToolBar>

namespace {

QAction& action(const CMainWindow& window, const char* name)
{
    auto* found = window.findChild<QAction*>(QLatin1String(name));
    if (found == nullptr) {
        qFatal("no action %s", name);
    }
    return *found;
}

} // namespace

class CMainWindowFormTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void theWindowHasItsSizeAndPolicy();
    void theFormsOwnTextsAreReplaced();
    void theTabsHaveTheirTextsAndStates_data();
    void theTabsHaveTheirTextsAndStates();
    void theCaptionIsADisabledBoldAction();
    void theCentreHoldsTheStackAboveTheButtons();
    void theSpacerBetweenTheButtonsGrowsSideways();
    void thePagesAreChildrenOfTheStack();
    void theMenuHoldsTheAboutAction();
    void theToolBarLiesAtTheTop();
    void theWindowHasThreeSlots();
    void aPageHasOneSignal();
    void thePagesHaveTheirSlotsInOrder();
};

void CMainWindowFormTest::initTestCase()
{
    startup::fillConstants();
}

void CMainWindowFormTest::init()
{
    CTestEnvironment::reset();
}

void CMainWindowFormTest::theWindowHasItsSizeAndPolicy()
{
    const CMainWindow window;
    QCOMPARE(window.objectName(), QStringLiteral("MainWindow"));
    QCOMPARE(window.size(), QSize(357, 180));
    QCOMPARE(window.sizePolicy().horizontalPolicy(), QSizePolicy::Minimum);
    QCOMPARE(window.sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
    QVERIFY(window.parentWidget() == nullptr);
}

void CMainWindowFormTest::theFormsOwnTextsAreReplaced()
{
    QMainWindow bare;
    Ui::MainWindow form;
    form.setupUi(&bare);
    QCOMPARE(bare.windowTitle(), QStringLiteral("MainWindow"));
    QCOMPARE(form.m_pageTitle->text(), QStringLiteral("DefaultPageTitle"));
    QVERIFY(!form.m_tabDeckLoader->isChecked());
    const CMainWindow window;
    QCOMPARE(window.windowTitle(), QStringLiteral("Tarnel"));
    QCOMPARE(action(window, "m_pageTitle").text(), QStringLiteral("Load Deck"));
    QVERIFY(action(window, "m_tabDeckLoader").isChecked());
}

void CMainWindowFormTest::theTabsHaveTheirTextsAndStates_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("m_tabDeckLoader") << "Load Deck";
    QTest::newRow("m_tabParameterEditor") << "Parameter Editor";
    QTest::newRow("m_tabPostProccessing") << "Post-Proccessing";
    QTest::newRow("m_tabProcessingOptions") << "Processing Options";
    QTest::newRow("m_tabSubmitJob") << "Submit Job";
    QTest::newRow("m_tabResultsAnalysis") << "Results Analysis";
}

void CMainWindowFormTest::theTabsHaveTheirTextsAndStates()
{
    QFETCH(QString, text);
    const CMainWindow window;
    const QAction& tab = action(window, QTest::currentDataTag());
    QCOMPARE(tab.text(), text);
    QVERIFY(tab.isCheckable());
    QVERIFY(tab.isVisible());
    QVERIFY(tab.isEnabled());
    QVERIFY(tab.autoRepeat());
}

void CMainWindowFormTest::theCaptionIsADisabledBoldAction()
{
    const CMainWindow window;
    const QAction& title = action(window, "m_pageTitle");
    QVERIFY(!title.isEnabled());
    QCOMPARE(title.toolTip(), QStringLiteral("Page Title"));
    const QFont font = title.font();
    QCOMPARE(font.family(), QStringLiteral("MS Shell Dlg 2"));
    QCOMPARE(font.pointSize(), 10);
    QCOMPARE(font.weight(), 75);
    QCOMPARE(int(font.styleStrategy()), 256);
    QVERIFY(font.kerning());
    QVERIFY(!font.italic());
    QVERIFY(!font.underline());
    QVERIFY(!font.strikeOut());
}

void CMainWindowFormTest::theCentreHoldsTheStackAboveTheButtons()
{
    const CMainWindow window;
    auto& centre = named<QWidget>(window, QStringLiteral("centralwidget"));
    QCOMPARE(window.centralWidget(), &centre);
    auto* column = qobject_cast<QVBoxLayout*>(centre.layout());
    QVERIFY(column != nullptr);
    QCOMPARE(column->objectName(), QStringLiteral("verticalLayout_2"));
    QCOMPARE(column->spacing(), 5);
    QCOMPARE(column->contentsMargins(), QMargins(5, 5, 5, 5));
    QCOMPARE(column->count(), 2);
    QCOMPARE(column->itemAt(0)->widget()->objectName(), QStringLiteral("m_editStack"));
    QCOMPARE(column->itemAt(1)->layout()->objectName(), QStringLiteral("horizontalLayout_2"));
}

void CMainWindowFormTest::theSpacerBetweenTheButtonsGrowsSideways()
{
    const CMainWindow window;
    auto* row = window.findChild<QHBoxLayout*>(QStringLiteral("horizontalLayout_2"));
    QVERIFY(row != nullptr);
    QCOMPARE(row->spacing(), 5);
    QCOMPARE(row->count(), 3);
    QCOMPARE(row->itemAt(0)->widget()->objectName(), QStringLiteral("m_pbBackButton"));
    QCOMPARE(row->itemAt(2)->widget()->objectName(), QStringLiteral("m_pbNextButton"));
    const QSpacerItem* spacer = row->itemAt(1)->spacerItem();
    QVERIFY(spacer != nullptr);
    QCOMPARE(spacer->sizeHint(), QSize(0, 0));
    QCOMPARE(spacer->sizePolicy().horizontalPolicy(), QSizePolicy::MinimumExpanding);
    QCOMPARE(spacer->sizePolicy().verticalPolicy(), QSizePolicy::Minimum);
    QCOMPARE(named<QPushButton>(window, QStringLiteral("m_pbBackButton")).text(),
             QStringLiteral("Back"));
    QCOMPARE(named<QPushButton>(window, QStringLiteral("m_pbNextButton")).text(),
             QStringLiteral("Next"));
}

void CMainWindowFormTest::thePagesAreChildrenOfTheStack()
{
    const CMainWindow window;
    auto& stack = named<QStackedWidget>(window, QStringLiteral("m_editStack"));
    QCOMPARE(stack.count(), 6);
    QCOMPARE(stack.currentIndex(), 0);
    QStringList classes;
    for (int index = 0; index < stack.count(); ++index) {
        QCOMPARE(stack.widget(index)->parentWidget(), &stack);
        classes << QLatin1String(stack.widget(index)->metaObject()->className());
    }
    QCOMPARE(classes,
             QStringList({"CDeckLoaderFrame", "CParameterEditorFrame", "CPostProcessingFrame",
                          "CProcessingOptionsFrame", "CSubmitJobFrame", "CResultsAnalysisFrame"}));
}

void CMainWindowFormTest::theMenuHoldsTheAboutAction()
{
    const CMainWindow window;
    const auto& bar = named<QMenuBar>(window, QStringLiteral("menubar"));
    const auto& help = named<QMenu>(window, QStringLiteral("menuHelp"));
    QCOMPARE(bar.actions(), QList<QAction*>{help.menuAction()});
    QCOMPARE(bar.geometry(), QRect(0, 0, 357, 21));
    QCOMPARE(help.title(), QStringLiteral("Help"));
    QCOMPARE(help.actions(), QList<QAction*>{&action(window, "m_actionAbout")});
    QCOMPARE(action(window, "m_actionAbout").text(), QStringLiteral("About..."));
}

void CMainWindowFormTest::theToolBarLiesAtTheTop()
{
    const CMainWindow window;
    auto& bar = named<QToolBar>(window, QStringLiteral("toolBar"));
    QCOMPARE(window.toolBarArea(&bar), Qt::TopToolBarArea);
    QCOMPARE(bar.windowTitle(), QStringLiteral("Section Toolbar"));
    QCOMPARE(bar.layoutDirection(), Qt::LeftToRight);
    QVERIFY(bar.testAttribute(Qt::WA_SetLayoutDirection));
}

void CMainWindowFormTest::theWindowHasThreeSlots()
{
    QCOMPARE(ownMethods(CMainWindow::staticMetaObject, QMetaMethod::Slot),
             QStringList({"nextPage()", "previousPage()", "goToPage()"}));
}

void CMainWindowFormTest::aPageHasOneSignal()
{
    QCOMPARE(ownMethods(IFrame::staticMetaObject, QMetaMethod::Signal),
             QStringList({"stageComplete(bool)"}));
}

void CMainWindowFormTest::thePagesHaveTheirSlotsInOrder()
{
    QCOMPARE(
        ownMethods(CDeckLoaderFrame::staticMetaObject, QMetaMethod::Slot),
        QStringList({"browseForFile()", "browseForAdditionalFiles()", "validateFileSelections()"}));
    QCOMPARE(ownMethods(CParameterEditorFrame::staticMetaObject, QMetaMethod::Slot),
             QStringList({"onTreeItemClicked(QTreeWidgetItem*,int)",
                          "onMaterialListItemClicked(QListWidgetItem*)",
                          "onParameterListItemClicked(QListWidgetItem*)"}));
    QCOMPARE(ownMethods(CTableItem::staticMetaObject, QMetaMethod::Signal),
             QStringList({"valueChanged()", "itemChanged(QTableWidgetItem*)"}));
    QCOMPARE(ownMethods(CTableItem::staticMetaObject, QMetaMethod::Slot),
             QStringList({"updateValues()"}));
}

TARNEL_TEST_MAIN(CMainWindowFormTest)
#include "main_window_form_test.moc"
