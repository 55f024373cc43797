#include "parameters/parameter_editor_frame.h"

#include "deck/app_settings.h"
#include "parameters/parameter_catalogue.h"
#include "parameters/parameter_limits.h"
#include "tests/parameters/editor_page.h"
#include "tests/support/test_environment.h"
#include "widgets/combo_box.h"

#include <QApplication>
#include <QCheckBox>
#include <QSignalSpy>

class CParameterEditorFrameTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void anEmptyStoreShowsAnEmptyTreeAndNoButtons();
    void enteringTwiceWithTheSameDeckChangesNothing();
    void enteringAgainKeepsTheSelectionAndDisablesTheButtons();
    void aDifferentDeckAppendsItsEntriesBehindTheOldOnes();
    void aRebuildForgetsTheSelection();
    void aGroupingItemListsNothing();
    void clickingTheCurrentItemAgainTogglesItsBranchAlone();
    void walkingFromTreeToKeyToField();
    void choosingAFieldShowsItsDeckValueReadOnly();
    void addingFromTheFirstColumnCopiesTheDefault();
    void editingTheNewCellGivesTwoVariances();
    void aReplacedValueStaysACase();
    void theFieldShownAnewHasAColumnPerValue();
    void anEditWithinAMillionthIsNoNewValue();
    void removeNeedsTheExactValue();
    void removeWithNothingCurrentTakesTheLastColumn();
    void removeOnTheFirstColumnOnlyDisablesTheButton();
    void theLastColumnGoneRestoresTheFirst();
    void removingOneOfTwoEqualColumnsErasesTheValue();
    void theTreeSumsVariancesUpToTheTop();
    void caseCountMultipliesFields();
    void aTrueFlagShowsUncheckedAndCantBeVaried();
    void aFalseFlagGetsAVarianceThatRaisesWhenToggled();
    void aChoiceCellVariesBetweenItsNumbers();
    void aClickOnACellsItemEnablesRemoveBehindTheFirstColumn();
    void aForceOutsideItsBoundsShowsRed();
    void theTableKeepsItsWidth();
    void thePageNeverTellsOfItsStage();
};

void CParameterEditorFrameTest::initTestCase()
{
    ParameterCatalogue::initialise();
    initialiseParameterLimits();
}

void CParameterEditorFrameTest::init()
{
    CTestEnvironment::reset();
    CAppSettings::instance()->setDeckFormat(5);
}

void CParameterEditorFrameTest::anEmptyStoreShowsAnEmptyTreeAndNoButtons()
{
    CParameterEditorFrame page;
    page.onPageEntered();
    QCOMPARE(page.findChild<QTreeWidget*>("m_treeWidget")->topLevelItemCount(), 0);
    QVERIFY(!page.findChild<QPushButton*>("m_pbAdd")->isEnabled());
    QVERIFY(!page.findChild<QPushButton*>("m_pbRemove")->isEnabled());
    QCOMPARE(page.findChild<QLabel*>("m_lblGeneratedCasesNo")->text(), QStringLiteral("0"));
}

void CParameterEditorFrameTest::enteringTwiceWithTheSameDeckChangesNothing()
{
    CPage page;
    const auto entries = CDeckStore::instance()->parameters();
    QTreeWidgetItem* item = page.treeItem("Bonding");
    page.page.onPageEntered();
    QVERIFY(CDeckStore::instance()->parameters() == entries);
    QCOMPARE(page.treeItem("Bonding"), item);
    // The next field is counted on from those of one walk.
    const int lastIndex = entries.back()->m_keys.back()->m_fields.back()->m_index;
    page.enterWith(sampleDeck("other"));
    QCOMPARE(fieldAt(entries.size(), 0, 0).m_index, lastIndex + 1);
}

void CParameterEditorFrameTest::enteringAgainKeepsTheSelectionAndDisablesTheButtons()
{
    CPage page;
    page.choose("Interactions", 0, 1);
    QVERIFY(page.add()->isEnabled());
    page.page.onPageEntered();
    QVERIFY(!page.add()->isEnabled());
    QCOMPARE(page.table()->columnCount(), 1);
    CPage::clickList(page.parameters(), 1);
    QVERIFY(!page.add()->isEnabled());
    CPage::clickList(page.parameters(), 0);
    QVERIFY(page.add()->isEnabled());
}

void CParameterEditorFrameTest::aDifferentDeckAppendsItsEntriesBehindTheOldOnes()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.add()->click();
    const auto before = CDeckStore::instance()->parameters();
    const int lastIndex = before.back()->m_keys.back()->m_fields.back()->m_index;
    CCreatorData other("other");
    other.m_interactions["C<>C"] = {0.5, 0.4, 0.01};
    page.enterWith(other);
    const auto after = CDeckStore::instance()->parameters();
    QCOMPARE(after.size(), before.size() + 13);
    QVERIFY(std::equal(before.begin(), before.end(), after.begin()));
    QCOMPARE(after.at(before.size())->m_keys.front()->m_fields.front()->m_index, lastIndex + 1);
    QCOMPARE(page.tree()->topLevelItemCount(), 2);
    // Every old field has one more bit, so that the varied one counts double.
    page.choose("Interactions", 0, 0);
    page.add()->click();
    QCOMPARE(page.caseCount(), QStringLiteral("2"));
}

void CParameterEditorFrameTest::aRebuildForgetsTheSelection()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.enterWith(sampleDeck("other"));
    QCOMPARE(page.materials()->count(), 0);
    QCOMPARE(page.parameters()->count(), 0);
    QCOMPARE(page.table()->rowCount(), 0);
    QCOMPARE(page.table()->columnCount(), 0);
    page.choose("Interactions", 0, 0);
    QCOMPARE(page.table()->columnCount(), 1);
}

void CParameterEditorFrameTest::aGroupingItemListsNothing()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.clickTree("Particle Body Force");
    QCOMPARE(page.materials()->count(), 0);
    QCOMPARE(page.parameters()->count(), 0);
    QCOMPARE(page.table()->rowCount(), 0);
    QVERIFY(!page.add()->isEnabled());
}

void CParameterEditorFrameTest::clickingTheCurrentItemAgainTogglesItsBranchAlone()
{
    CPage page;
    page.choose("Bonding", 0, 0);
    const bool expanded = page.treeItem("Bonding")->isExpanded();
    page.clickTree("Bonding");
    QCOMPARE(page.treeItem("Bonding")->isExpanded(), !expanded);
    QCOMPARE(page.table()->columnCount(), 1);
    QCOMPARE(page.parameters()->count(), 5);
}

void CParameterEditorFrameTest::walkingFromTreeToKeyToField()
{
    CPage page;
    page.clickTree("Interactions");
    QCOMPARE(page.materials()->count(), 2);
    QCOMPARE(page.materials()->item(1)->text(), QStringLiteral("A<>B"));
    CPage::clickList(page.materials(), 1);
    QCOMPARE(page.parameters()->count(), 3);
    QCOMPARE(page.parameters()->item(2)->text(), QStringLiteral("Rolling Friction"));
    QCOMPARE(page.table()->rowCount(), 0);
    CPage::clickList(page.parameters(), 2);
    QCOMPARE(page.table()->rowCount(), 1);
    QVERIFY(page.cell(0)->value() == CaseValue(0.02));
}

void CParameterEditorFrameTest::choosingAFieldShowsItsDeckValueReadOnly()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    auto* box = page.cell(0)->findChild<CDoubleSpinBox*>();
    QVERIFY(box->isReadOnly());
    QVERIFY(!box->font().strikeOut());
    QVERIFY(page.add()->isEnabled());
    QVERIFY(!page.remove()->isEnabled());
}

void CParameterEditorFrameTest::addingFromTheFirstColumnCopiesTheDefault()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.add()->click();
    QVERIFY(fieldAt(0, 0, 0).m_values == Values({0.5, 0.5}));
    QCOMPARE(page.table()->columnCount(), 2);
    QCOMPARE(page.table()->currentColumn(), 1);
    QVERIFY(page.cell(0)->findChild<CDoubleSpinBox*>()->font().strikeOut());
    QVERIFY(page.remove()->isEnabled());
    QCOMPARE(page.caseCount(), QStringLiteral("1"));
}

void CParameterEditorFrameTest::editingTheNewCellGivesTwoVariances()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.add()->click();
    page.type(1, "0.7");
    QVERIFY(fieldAt(0, 0, 0).m_values == Values({0.5, 0.5, 0.7}));
    QCOMPARE(page.variances("Interactions"), QStringLiteral("2"));
    QCOMPARE(page.caseCount(), QStringLiteral("2"));
    QCOMPARE(page.table()->columnCount(), 2);
}

void CParameterEditorFrameTest::aReplacedValueStaysACase()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.add()->click();
    page.type(1, "0.7");
    page.add()->click();
    page.type(2, "0.8");
    QVERIFY(fieldAt(0, 0, 0).m_values == Values({0.5, 0.5, 0.7, 0.8}));
    page.type(2, "0.9");
    QVERIFY(fieldAt(0, 0, 0).m_values == Values({0.5, 0.5, 0.7, 0.8, 0.9}));
    QCOMPARE(page.caseCount(), QStringLiteral("4"));
    QCOMPARE(page.table()->columnCount(), 3);
}

void CParameterEditorFrameTest::theFieldShownAnewHasAColumnPerValue()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.add()->click();
    page.type(1, "0.7");
    page.type(1, "0.8");
    CPage::clickList(page.parameters(), 1);
    CPage::clickList(page.parameters(), 0);
    QCOMPARE(page.table()->columnCount(), 4);
    QVERIFY(page.cell(1)->value() == CaseValue(0.5));
    QVERIFY(page.cell(3)->value() == CaseValue(0.8));
    QVERIFY(page.remove()->isEnabled());
}

void CParameterEditorFrameTest::anEditWithinAMillionthIsNoNewValue()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.add()->click();
    page.cell(1)->setValue(0.5 + 5e-07);
    page.cell(1)->updateValues();
    QVERIFY(fieldAt(0, 0, 0).m_values == Values({0.5, 0.5}));
}

void CParameterEditorFrameTest::removeNeedsTheExactValue()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.add()->click();
    page.cell(1)->setValue(0.5 + 5e-07);
    page.cell(1)->updateValues();
    page.remove()->click();
    QVERIFY(fieldAt(0, 0, 0).m_values == Values({0.5, 0.5}));
    QCOMPARE(page.table()->columnCount(), 1);
    QCOMPARE(page.caseCount(), QStringLiteral("1"));
}

void CParameterEditorFrameTest::removeWithNothingCurrentTakesTheLastColumn()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.add()->click();
    page.type(1, "0.7");
    page.add()->click();
    page.type(2, "0.8");
    page.table()->setCurrentItem(nullptr);
    page.remove()->click();
    QVERIFY(fieldAt(0, 0, 0).m_values == Values({0.5, 0.5, 0.7}));
    QCOMPARE(page.table()->columnCount(), 2);
    QVERIFY(page.cell(1)->value() == CaseValue(0.7));
}

void CParameterEditorFrameTest::removeOnTheFirstColumnOnlyDisablesTheButton()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.add()->click();
    page.table()->setCurrentItem(page.table()->item(0, 0));
    page.remove()->click();
    QVERIFY(!page.remove()->isEnabled());
    QCOMPARE(page.table()->columnCount(), 2);
    QVERIFY(fieldAt(0, 0, 0).m_values == Values({0.5, 0.5}));
}

void CParameterEditorFrameTest::theLastColumnGoneRestoresTheFirst()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.add()->click();
    page.type(1, "0.7");
    page.remove()->click();
    QCOMPARE(page.table()->columnCount(), 1);
    QVERIFY(!page.cell(0)->findChild<CDoubleSpinBox*>()->font().strikeOut());
    QCOMPARE(page.table()->item(0, 0)->background().color(), QColor(Qt::white));
    QVERIFY(!page.remove()->isEnabled());
    // The copy of the default that Add took up has no column, and stays a case.
    QVERIFY(fieldAt(0, 0, 0).m_values == Values({0.5, 0.5}));
    QCOMPARE(page.variances("Interactions"), QStringLiteral("1"));
    QCOMPARE(page.caseCount(), QStringLiteral("1"));
}

void CParameterEditorFrameTest::removingOneOfTwoEqualColumnsErasesTheValue()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.add()->click();
    page.type(1, "0.7");
    page.add()->click();
    QCOMPARE(page.table()->columnCount(), 3);
    page.remove()->click();
    QCOMPARE(page.table()->columnCount(), 2);
    QVERIFY(page.cell(1)->value() == CaseValue(0.7));
    QVERIFY(fieldAt(0, 0, 0).m_values == Values({0.5, 0.5}));
}

void CParameterEditorFrameTest::theTreeSumsVariancesUpToTheTop()
{
    CPage page;
    page.choose("Bonding", 0, 0);
    page.add()->click();
    page.type(1, "7");
    page.choose("Edinburgh Elasto-Plastic Adhesion", 0, 1);
    page.add()->click();
    QCOMPARE(page.treeItem("Bonding")->text(1), QStringLiteral("      2"));
    QCOMPARE(page.treeItem("Particle to Particle")->text(1), QStringLiteral("    3"));
    QCOMPARE(page.treeItem("Contact Models")->text(1), QStringLiteral("  3"));
    QCOMPARE(page.treeItem("Particle to Geometry")->text(1), QStringLiteral("    0"));
}

void CParameterEditorFrameTest::caseCountMultipliesFields()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.add()->click();
    page.type(1, "0.7");
    page.add()->click();
    page.type(2, "0.8");
    QCOMPARE(page.caseCount(), QStringLiteral("3"));
    page.choose("Bonding", 0, 0);
    page.add()->click();
    QCOMPARE(page.caseCount(), QStringLiteral("3"));
    page.type(1, "7");
    QCOMPARE(page.caseCount(), QStringLiteral("6"));
}

void CParameterEditorFrameTest::aTrueFlagShowsUncheckedAndCantBeVaried()
{
    CPage page;
    page.choose("Bonding Torque Feedback", 0, 0);
    QVERIFY(!page.cell(0)->findChild<QCheckBox*>()->isChecked());
    QVERIFY(page.cell(0)->value() == CaseValue(1.0));
    QVERIFY_EXCEPTION_THROWN(page.add()->click(), std::bad_variant_access);
}

void CParameterEditorFrameTest::aFalseFlagGetsAVarianceThatRaisesWhenToggled()
{
    CPage page;
    page.choose("Rolling friction", 0, 0);
    page.add()->click();
    QCOMPARE(page.table()->columnCount(), 2);
    QCOMPARE(page.caseCount(), QStringLiteral("1"));
    QVERIFY_EXCEPTION_THROWN(page.cell(1)->findChild<QCheckBox*>()->click(),
                             std::bad_variant_access);
}

void CParameterEditorFrameTest::aChoiceCellVariesBetweenItsNumbers()
{
    CPage page;
    page.choose("Edinburgh Elasto-Plastic Adhesion", 0, 3);
    page.add()->click();
    page.cell(1)->findChild<CComboBox*>()->setCurrentIndex(0);
    QVERIFY(fieldAt(1, 0, 3).m_values == Values({1.5, 1.5, 1.0}));
    QVERIFY(!page.cell(0)->findChild<CComboBox*>()->isEnabled());
}

void CParameterEditorFrameTest::aClickOnACellsItemEnablesRemoveBehindTheFirstColumn()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.add()->click();
    emit page.table()->itemClicked(page.table()->item(0, 0));
    QVERIFY(!page.remove()->isEnabled());
    emit page.table()->itemClicked(page.table()->item(0, 1));
    QVERIFY(page.remove()->isEnabled());
}

void CParameterEditorFrameTest::aForceOutsideItsBoundsShowsRed()
{
    CPage page;
    page.choose("Magnus Lift", 0, 0);
    auto* box = page.cell(0)->findChild<CDoubleSpinBox*>();
    QVERIFY(page.cell(0)->value() == CaseValue(0.0));
    QCOMPARE(box->styleSheet(), QStringLiteral("color: red;"));
}

void CParameterEditorFrameTest::theTableKeepsItsWidth()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    const int width = page.table()->width();
    page.add()->click();
    QCOMPARE(page.table()->minimumWidth(), width);
    QCOMPARE(page.table()->maximumWidth(), width);
}

void CParameterEditorFrameTest::thePageNeverTellsOfItsStage()
{
    CPage page;
    const QSignalSpy spy(&page.page, &IFrame::stageComplete);
    page.enterWith(sampleDeck("other"));
    page.choose("Interactions", 0, 0);
    page.add()->click();
    page.type(1, "0.7");
    page.remove()->click();
    QCOMPARE(spy.count(), 0);
}

TARNEL_TEST_MAIN(CParameterEditorFrameTest)
#include "parameter_editor_frame_test.moc"
