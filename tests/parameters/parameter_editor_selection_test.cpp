#include "parameters/parameter_editor_frame.h"

#include "deck/app_settings.h"
#include "parameters/parameter_catalogue.h"
#include "parameters/parameter_limits.h"
#include "parameters/property_tree_widget_item.h"
#include "tests/parameters/editor_page.h"
#include "tests/support/test_environment.h"

#include <QApplication>
#include <QHeaderView>
#include <QSignalSpy>

#include <limits>
#include <stdexcept>

namespace {

/// Leaves the first variance's number half typed, with the focus in its cell.
void typeWithoutEnd(CPage& page)
{
    QApplication::setActiveWindow(&page.page);
    auto* box = page.cell(1)->findChild<CDoubleSpinBox*>();
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, "0.9");
    QVERIFY(box->hasFocus());
}

} // namespace

class CParameterEditorSelectionTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void withNothingSelectedThereAreNoRowsAndNoButtons();
    void withAnEntrySelectedItsKeysAreListedAndNoButtons();
    void withAKeySelectedItsFieldsAreListedAndNoButtons();
    void withAFieldSelectedItsValuesAreShown();
    void everyClickTogglesTheBranch();
    void anItemOfAnotherKindIsIgnored();
    void anItemThatStandsInNoTreeSelectsWithoutToggling();
    void anotherEntryEmptiesParametersAndTable();
    void clickingTheCurrentKeyAgainChangesNothing();
    void anotherKeyEmptiesTheTable();
    void clickingTheCurrentFieldAgainChangesNothing();
    void aGroupingItemLetsTheEntryBeChosenAnew();
    void anEmptiedStoreLeavesTheTreeAsItIs();
    void aDeckWithANotANumberIsRebuiltAtEveryEntry();
    void aRebuildKeepsTheOldValues();
    void afterARebuildEveryItemCanBeClicked();
    void anEmptyDeckOfThePagesOwnNameIsNotBuilt();
    void aDeckWithAModelWithoutLimitsRaisesAtEntry();
    void theLabelStaysAsLastShownUntilTheNextEdit();
    void theFirstTreeColumnFollowsItsContents();
    void theTablesSignalsAreBlockedWhileAFieldIsShown();
    void aPageDestroyedUnderAnEditTakesNothingUp();
    void aTableClearedUnderAnEditTakesNothingUp();
};

void CParameterEditorSelectionTest::initTestCase()
{
    ParameterCatalogue::initialise();
    initialiseParameterLimits();
}

void CParameterEditorSelectionTest::init()
{
    CTestEnvironment::reset();
    CAppSettings::instance()->setDeckFormat(5);
}

void CParameterEditorSelectionTest::withNothingSelectedThereAreNoRowsAndNoButtons()
{
    CPage page;
    QCOMPARE(page.materials()->count(), 0);
    QCOMPARE(page.parameters()->count(), 0);
    QCOMPARE(page.table()->rowCount(), 0);
    QVERIFY(!page.add()->isEnabled() && !page.remove()->isEnabled());
}

void CParameterEditorSelectionTest::withAnEntrySelectedItsKeysAreListedAndNoButtons()
{
    CPage page;
    page.clickTree("Interactions");
    QCOMPARE(page.materials()->count(), 2);
    QCOMPARE(page.materials()->item(0)->text(), QStringLiteral("A<>A"));
    QCOMPARE(page.parameters()->count(), 0);
    QCOMPARE(page.table()->rowCount(), 0);
    QVERIFY(!page.add()->isEnabled() && !page.remove()->isEnabled());
}

void CParameterEditorSelectionTest::withAKeySelectedItsFieldsAreListedAndNoButtons()
{
    CPage page;
    page.clickTree("Interactions");
    CPage::clickList(page.materials(), 0);
    QCOMPARE(page.parameters()->count(), 3);
    QCOMPARE(page.table()->rowCount(), 0);
    QCOMPARE(page.table()->columnCount(), 0);
    QVERIFY(!page.add()->isEnabled() && !page.remove()->isEnabled());
}

void CParameterEditorSelectionTest::withAFieldSelectedItsValuesAreShown()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    QCOMPARE(page.table()->rowCount(), 1);
    QCOMPARE(page.table()->columnCount(), 1);
    QVERIFY(page.add()->isEnabled() && !page.remove()->isEnabled());
    QCOMPARE(page.table()->horizontalHeader()->sectionResizeMode(0), QHeaderView::ResizeToContents);
    QCOMPARE(page.table()->item(0, 0)->background().color(), QColor(Qt::white));
}

void CParameterEditorSelectionTest::everyClickTogglesTheBranch()
{
    CPage page;
    page.treeItem("Contact Models")->setExpanded(true);
    QVERIFY(!page.treeItem("Particle Body Force")->isExpanded());
    page.clickTree("Particle Body Force");
    QVERIFY(page.treeItem("Particle Body Force")->isExpanded());
    page.clickTree("Particle Body Force");
    QVERIFY(!page.treeItem("Particle Body Force")->isExpanded());
}

void CParameterEditorSelectionTest::anItemOfAnotherKindIsIgnored()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    QTreeWidgetItem plain(page.tree(), {QStringLiteral("plain")});
    new QTreeWidgetItem(&plain);
    emit page.tree()->itemClicked(&plain, 0);
    QVERIFY(!plain.isExpanded());
    QCOMPARE(page.materials()->count(), 2);
    QCOMPARE(page.table()->columnCount(), 1);
}

void CParameterEditorSelectionTest::anItemThatStandsInNoTreeSelectsWithoutToggling()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    CPropertyTreeWidgetItem loose(static_cast<QTreeWidgetItem*>(nullptr), QStringLiteral("loose"),
                                  CDeckStore::instance()->parameters().at(1));
    emit page.tree()->itemClicked(&loose, 0);
    QCOMPARE(page.materials()->count(), 1);
    QCOMPARE(page.table()->columnCount(), 0);
    page.clickTree("Interactions");
}

void CParameterEditorSelectionTest::anotherEntryEmptiesParametersAndTable()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.clickTree("Bonding");
    QCOMPARE(page.materials()->count(), 1);
    QCOMPARE(page.parameters()->count(), 0);
    QCOMPARE(page.table()->rowCount(), 0);
    QCOMPARE(page.table()->columnCount(), 0);
    QVERIFY(!page.add()->isEnabled() && !page.remove()->isEnabled());
}

void CParameterEditorSelectionTest::clickingTheCurrentKeyAgainChangesNothing()
{
    CPage page;
    page.choose("Interactions", 1, 2);
    const CTableItem* cell = page.cell(0);
    CPage::clickList(page.materials(), 1);
    QCOMPARE(page.parameters()->count(), 3);
    QCOMPARE(page.cell(0), cell);
    QVERIFY(page.add()->isEnabled());
}

void CParameterEditorSelectionTest::anotherKeyEmptiesTheTable()
{
    CPage page;
    page.choose("Interactions", 1, 2);
    CPage::clickList(page.materials(), 0);
    QCOMPARE(page.parameters()->count(), 3);
    QCOMPARE(page.table()->rowCount(), 0);
    QCOMPARE(page.table()->columnCount(), 0);
    QVERIFY(!page.add()->isEnabled());
    CPage::clickList(page.parameters(), 2);
    QVERIFY(page.cell(0)->value() == CaseValue(0.01));
}

void CParameterEditorSelectionTest::clickingTheCurrentFieldAgainChangesNothing()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.add()->click();
    const CTableItem* cell = page.cell(1);
    CPage::clickList(page.parameters(), 0);
    QCOMPARE(page.table()->columnCount(), 2);
    QCOMPARE(page.cell(1), cell);
    QVERIFY(page.remove()->isEnabled());
}

void CParameterEditorSelectionTest::aGroupingItemLetsTheEntryBeChosenAnew()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.clickTree("Contact Models");
    QCOMPARE(page.materials()->count(), 0);
    page.choose("Interactions", 0, 0);
    QCOMPARE(page.materials()->count(), 2);
    QCOMPARE(page.table()->columnCount(), 1);
}

void CParameterEditorSelectionTest::anEmptiedStoreLeavesTheTreeAsItIs()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    QTreeWidgetItem* item = page.treeItem("Bonding");
    CDeckStore::instance()->creatorData().clear();
    page.page.onPageEntered();
    QCOMPARE(page.treeItem("Bonding"), item);
    QCOMPARE(page.table()->columnCount(), 1);
    QVERIFY(!page.add()->isEnabled());
}

void CParameterEditorSelectionTest::aDeckWithANotANumberIsRebuiltAtEveryEntry()
{
    CCreatorData deck = sampleDeck();
    std::get<0>(deck.m_interactions["A<>A"]) = std::numeric_limits<double>::quiet_NaN();
    CPage page;
    page.enterWith(deck);
    const std::size_t entries = CDeckStore::instance()->parameters().size();
    page.page.onPageEntered();
    QCOMPARE(CDeckStore::instance()->parameters().size(), entries + entries / 2);
    QCOMPARE(page.tree()->topLevelItemCount(), 2);
}

void CParameterEditorSelectionTest::aRebuildKeepsTheOldValues()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.add()->click();
    page.type(1, "0.7");
    page.cell(1)->findChild<CDoubleSpinBox*>()->setFocus();
    QTest::keyClicks(page.cell(1)->findChild<CDoubleSpinBox*>(), "1");
    page.enterWith(sampleDeck("other"));
    QVERIFY(fieldAt(0, 0, 0).m_values == Values({0.5, 0.5, 0.7}));
    QCOMPARE(page.variances("Interactions"), QStringLiteral("0"));
}

void CParameterEditorSelectionTest::afterARebuildEveryItemCanBeClicked()
{
    // An item may stand in the memory of the one that was clicked before the rebuild.
    CPage page;
    const std::size_t count = page.items().size();
    for (std::size_t before = 0; before < count; ++before) {
        for (std::size_t after = 0; after < count; ++after) {
            CTestEnvironment::reset();
            page.enterWith(sampleDeck(std::to_string(before * count + after)));
            emit page.tree()->itemClicked(page.items()[before], 0);
            page.enterWith(sampleDeck("other"));
            CPropertyTreeWidgetItem* item = page.items()[after];
            emit page.tree()->itemClicked(item, 0);
            const std::size_t keys = item->entry() ? item->entry()->m_keys.size() : 0;
            QCOMPARE(page.materials()->count(), static_cast<int>(keys));
        }
    }
}

void CParameterEditorSelectionTest::anEmptyDeckOfThePagesOwnNameIsNotBuilt()
{
    CParameterEditorFrame page;
    CDeckStore::instance()->creatorData() = {CCreatorData("Default")};
    page.onPageEntered();
    QVERIFY(CDeckStore::instance()->parameters().empty());
    CDeckStore::instance()->creatorData() = {CCreatorData("default")};
    page.onPageEntered();
    QVERIFY(!CDeckStore::instance()->parameters().empty());
}

void CParameterEditorSelectionTest::aDeckWithAModelWithoutLimitsRaisesAtEntry()
{
    CAppSettings::instance()->setDeckFormat(11);
    CCreatorData deck = sampleDeck();
    deck.m_surfaceGeometry.m_okaDeformation = {"Active", false};
    CDeckStore::instance()->creatorData() = {deck};
    CParameterEditorFrame page;
    QString failure;
    try {
        page.onPageEntered();
    } catch (const std::out_of_range& raised) {
        failure = QString::fromLatin1(raised.what());
    }
    QCOMPARE(failure, QStringLiteral("invalid map<K, T> key"));
}

void CParameterEditorSelectionTest::theLabelStaysAsLastShownUntilTheNextEdit()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.add()->click();
    page.type(1, "0.7");
    page.page.onPageEntered();
    QCOMPARE(page.caseCount(), QStringLiteral("2"));
    page.enterWith(sampleDeck("other"));
    QCOMPARE(page.caseCount(), QStringLiteral("2"));
}

void CParameterEditorSelectionTest::theFirstTreeColumnFollowsItsContents()
{
    CParameterEditorFrame page;
    page.onPageEntered();
    const auto& tree = named<QTreeWidget>(page, QStringLiteral("m_treeWidget"));
    QCOMPARE(tree.header()->sectionResizeMode(0), QHeaderView::ResizeToContents);
    QCOMPARE(tree.header()->sectionResizeMode(1), QHeaderView::Interactive);
}

void CParameterEditorSelectionTest::theTablesSignalsAreBlockedWhileAFieldIsShown()
{
    CPage page;
    page.clickTree("Interactions");
    CPage::clickList(page.materials(), 0);
    const QSignalSpy changed(page.table(), &QTableWidget::itemChanged);
    CPage::clickList(page.parameters(), 0);
    QCOMPARE(changed.count(), 0);
    QVERIFY(!page.table()->signalsBlocked());
}

void CParameterEditorSelectionTest::aPageDestroyedUnderAnEditTakesNothingUp()
{
    {
        CPage page;
        page.choose("Interactions", 0, 0);
        page.add()->click();
        typeWithoutEnd(page);
    }
    QVERIFY(fieldAt(0, 0, 0).m_values == Values({0.5, 0.5}));
}

void CParameterEditorSelectionTest::aTableClearedUnderAnEditTakesNothingUp()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.add()->click();
    typeWithoutEnd(page);
    emit page.tree()->itemClicked(page.treeItem("Bonding"), 0);
    QCOMPARE(page.table()->columnCount(), 0);
    QVERIFY(fieldAt(0, 0, 0).m_values == Values({0.5, 0.5}));
    QCOMPARE(page.variances("Interactions"), QStringLiteral("1"));
}

TARNEL_TEST_MAIN(CParameterEditorSelectionTest)
#include "parameter_editor_selection_test.moc"
