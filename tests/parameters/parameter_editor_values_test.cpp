#include "parameters/parameter_editor_frame.h"

#include "deck/app_settings.h"
#include "parameters/parameter_catalogue.h"
#include "parameters/parameter_limits.h"
#include "tests/parameters/editor_page.h"
#include "tests/support/test_environment.h"
#include "widgets/combo_box.h"

#include <QApplication>
#include <QCheckBox>
#include <QHeaderView>
#include <QSignalSpy>

namespace {

/// The first interaction's restitution with the variances 0.5 (the default's copy), 0.7 and 0.8,
/// the last two of them shown behind the default.
class CVariedPage : public CPage
{
public:
    CVariedPage()
    {
        choose("Interactions", 0, 0);
        add()->click();
        type(1, "0.7");
        add()->click();
        type(2, "0.8");
    }
};

} // namespace

class CParameterEditorValuesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void aNewColumnStandsRightBehindItsSource();
    void addWithNothingCurrentCopiesTheFirstColumn();
    void theAddedColumnIsInteractiveAndCurrent();
    void removeTakesTheCurrentColumnAndMakesNoneCurrent();
    void removeOfTheOnlyColumnOnlyDisablesTheButton();
    void removeOnTheFirstColumnLeavesWidthAndSignals();
    void removeTakesTheTreesCountBackUpToTheTop();
    void aFreshFieldAddedAndRemovedCountsNoCase();
    void theTablesSignalsAreBlockedDuringEdits();
    void anEditEndsWithTheLossOfFocus();
    void aLossOfFocusWithoutAnEditChangesNothing();
    void theWidthIsFixedByEveryEdit();
    void columnsBehindTheFirstStayEditable();
    void theFirstColumnIsGreyWhileASecondExists();
    void aFieldShownAnewStrikesItsDefaultOut();
    void aChoiceAloneInItsRowCanBeEdited();
    void aChoiceOfAnotherNumberShowsNothingAndVariesFromZero();
    void aFalseFlagAloneCantBeChecked();
    void anInputBeyondTheBoundsIsHeldInside();
    void aValueInsideItsBoundsIsNotRed();
    void aFieldWithOneVarianceTurnsTheLabelFromZeroIntoOne();
    void oldFieldsOfAnEarlierDeckCountInTheLabel();
    void aFieldThatLostAllItsValuesShowsNoColumn();
};

void CParameterEditorValuesTest::initTestCase()
{
    ParameterCatalogue::initialise();
    initialiseParameterLimits();
}

void CParameterEditorValuesTest::init()
{
    CTestEnvironment::reset();
    CAppSettings::instance()->setDeckFormat(5);
}

void CParameterEditorValuesTest::aNewColumnStandsRightBehindItsSource()
{
    CVariedPage page;
    page.table()->setCurrentItem(page.table()->item(0, 1));
    page.add()->click();
    QCOMPARE(page.table()->columnCount(), 4);
    QVERIFY(page.cell(1)->value() == CaseValue(0.7));
    QVERIFY(page.cell(2)->value() == CaseValue(0.7));
    QVERIFY(page.cell(3)->value() == CaseValue(0.8));
    QCOMPARE(page.table()->currentColumn(), 2);
    QVERIFY(fieldAt(0, 0, 0).m_values == Values({0.5, 0.5, 0.7, 0.8}));
}

void CParameterEditorValuesTest::addWithNothingCurrentCopiesTheFirstColumn()
{
    CVariedPage page;
    page.table()->setCurrentItem(nullptr);
    page.add()->click();
    QCOMPARE(page.table()->currentColumn(), 1);
    QVERIFY(page.cell(1)->value() == CaseValue(0.5));
    QVERIFY(page.cell(2)->value() == CaseValue(0.7));
}

void CParameterEditorValuesTest::theAddedColumnIsInteractiveAndCurrent()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.add()->click();
    const QHeaderView* header = page.table()->horizontalHeader();
    QCOMPARE(header->sectionResizeMode(0), QHeaderView::ResizeToContents);
    QCOMPARE(header->sectionResizeMode(1), QHeaderView::Interactive);
    QCOMPARE(page.table()->currentItem(), page.table()->item(0, 1));
}

void CParameterEditorValuesTest::removeTakesTheCurrentColumnAndMakesNoneCurrent()
{
    CVariedPage page;
    page.table()->setCurrentItem(page.table()->item(0, 1));
    page.remove()->click();
    QCOMPARE(page.table()->columnCount(), 2);
    QVERIFY(page.cell(1)->value() == CaseValue(0.8));
    QVERIFY(fieldAt(0, 0, 0).m_values == Values({0.5, 0.5, 0.8}));
    QVERIFY(page.table()->currentItem() == nullptr);
    QCOMPARE(page.caseCount(), QStringLiteral("2"));
}

void CParameterEditorValuesTest::removeOfTheOnlyColumnOnlyDisablesTheButton()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.remove()->setEnabled(true);
    page.remove()->click();
    QVERIFY(!page.remove()->isEnabled());
    QVERIFY(page.add()->isEnabled());
    QCOMPARE(page.table()->columnCount(), 1);
    QVERIFY(fieldAt(0, 0, 0).m_values == Values({0.5}));
}

void CParameterEditorValuesTest::removeOnTheFirstColumnLeavesWidthAndSignals()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.remove()->setEnabled(true);
    page.remove()->click();
    QVERIFY(!page.table()->signalsBlocked());
    QCOMPARE(page.table()->minimumWidth(), 0);
    QCOMPARE(page.table()->maximumWidth(), QWIDGETSIZE_MAX);
}

void CParameterEditorValuesTest::removeTakesTheTreesCountBackUpToTheTop()
{
    CPage page;
    page.choose("Bonding", 0, 0);
    page.add()->click();
    page.type(1, "7");
    page.remove()->click();
    QCOMPARE(page.treeItem("Bonding")->text(1), QStringLiteral("      1"));
    QCOMPARE(page.treeItem("Particle to Particle")->text(1), QStringLiteral("    1"));
    QCOMPARE(page.treeItem("Contact Models")->text(1), QStringLiteral("  1"));
    QCOMPARE(page.treeItem("Interactions")->text(1), QStringLiteral("  0"));
}

void CParameterEditorValuesTest::aFreshFieldAddedAndRemovedCountsNoCase()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.add()->click();
    QCOMPARE(page.caseCount(), QStringLiteral("1"));
    page.remove()->click();
    QVERIFY(fieldAt(0, 0, 0).m_values == Values({0.5}));
    QCOMPARE(page.caseCount(), QStringLiteral("0"));
    QCOMPARE(page.variances("Interactions"), QStringLiteral("0"));
}

void CParameterEditorValuesTest::theTablesSignalsAreBlockedDuringEdits()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    const QSignalSpy current(page.table(), &QTableWidget::currentItemChanged);
    const QSignalSpy changed(page.table(), &QTableWidget::itemChanged);
    page.add()->click();
    page.type(1, "0.7");
    page.remove()->click();
    QCOMPARE(current.count(), 0);
    QCOMPARE(changed.count(), 0);
    QVERIFY(!page.table()->signalsBlocked());
}

void CParameterEditorValuesTest::anEditEndsWithTheLossOfFocus()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.add()->click();
    QApplication::setActiveWindow(&page.page);
    auto* box = page.cell(1)->findChild<CDoubleSpinBox*>();
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, "0.9");
    QVERIFY(fieldAt(0, 0, 0).m_values == Values({0.5, 0.5}));
    page.tree()->setFocus();
    QVERIFY(fieldAt(0, 0, 0).m_values == Values({0.5, 0.5, 0.9}));
    QCOMPARE(page.caseCount(), QStringLiteral("2"));
    QCOMPARE(page.variances("Interactions"), QStringLiteral("2"));
}

void CParameterEditorValuesTest::aLossOfFocusWithoutAnEditChangesNothing()
{
    CCreatorData deck = sampleDeck("awkward");
    std::get<0>(deck.m_interactions["A<>A"]) = 0.123456789;
    CPage page;
    page.enterWith(deck);
    page.choose("Interactions", 0, 0);
    page.add()->click();
    const Values before =
        CDeckStore::instance()->parameters().back()->m_keys[0]->m_fields[0]->m_values;
    QApplication::setActiveWindow(&page.page);
    page.cell(1)->findChild<CDoubleSpinBox*>()->setFocus();
    page.tree()->setFocus();
    QVERIFY(page.cell(1)->value() == CaseValue(0.123456789));
    QVERIFY(CDeckStore::instance()->parameters().back()->m_keys[0]->m_fields[0]->m_values ==
            before);
}

void CParameterEditorValuesTest::theWidthIsFixedByEveryEdit()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    QCOMPARE(page.table()->minimumWidth(), 0);
    const int width = page.table()->width();
    page.add()->click();
    QCOMPARE(page.table()->minimumWidth(), width);
    page.table()->setMinimumWidth(0);
    page.type(1, "0.7");
    QCOMPARE(page.table()->minimumWidth(), width);
    page.table()->setMinimumWidth(0);
    page.remove()->click();
    QCOMPARE(page.table()->minimumWidth(), width);
    QCOMPARE(page.table()->maximumWidth(), width);
}

void CParameterEditorValuesTest::columnsBehindTheFirstStayEditable()
{
    CVariedPage page;
    CPage::clickList(page.parameters(), 1);
    CPage::clickList(page.parameters(), 0);
    for (int column = 0; column < 4; ++column) {
        const auto* box = page.cell(column)->findChild<CDoubleSpinBox*>();
        QCOMPARE(box->isReadOnly(), column == 0);
        QCOMPARE(box->isEnabled(), column != 0);
        QCOMPARE(box->font().strikeOut(), column == 0);
        QCOMPARE(page.table()->horizontalHeader()->sectionResizeMode(column),
                 QHeaderView::ResizeToContents);
    }
}

void CParameterEditorValuesTest::theFirstColumnIsGreyWhileASecondExists()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.add()->click();
    QCOMPARE(page.table()->item(0, 0)->background().color(), QColor(Qt::gray));
    QVERIFY(!page.cell(0)->findChild<CDoubleSpinBox*>()->isEnabled());
    page.remove()->click();
    QCOMPARE(page.table()->item(0, 0)->background().color(), QColor(Qt::white));
    QVERIFY(page.cell(0)->findChild<CDoubleSpinBox*>()->isEnabled());
    QVERIFY(page.cell(0)->findChild<CDoubleSpinBox*>()->isReadOnly());
}

void CParameterEditorValuesTest::aFieldShownAnewStrikesItsDefaultOut()
{
    CVariedPage page;
    CPage::clickList(page.parameters(), 1);
    QVERIFY(!page.remove()->isEnabled());
    CPage::clickList(page.parameters(), 0);
    QCOMPARE(page.table()->item(0, 0)->background().color(), QColor(Qt::gray));
    QVERIFY(page.remove()->isEnabled());
}

void CParameterEditorValuesTest::aChoiceAloneInItsRowCanBeEdited()
{
    CPage page;
    page.choose("Edinburgh Elasto-Plastic Adhesion", 0, 3);
    auto* box = page.cell(0)->findChild<CComboBox*>();
    QVERIFY(box->isEnabled());
    box->setCurrentIndex(0);
    QVERIFY(fieldAt(1, 0, 3).m_values == Values({1.5, 1.0}));
    QCOMPARE(page.table()->columnCount(), 1);
    QCOMPARE(page.caseCount(), QStringLiteral("1"));
}

void CParameterEditorValuesTest::aChoiceOfAnotherNumberShowsNothingAndVariesFromZero()
{
    CCreatorData deck = sampleDeck();
    std::get<3>(deck.m_surfaceSurface.m_edinburghAdhesion["A<>A"]) = 1.2;
    CPage page;
    CTestEnvironment::reset();
    CAppSettings::instance()->setDeckFormat(5);
    page.enterWith(deck);
    page.choose("Edinburgh Elasto-Plastic Adhesion", 0, 3);
    QCOMPARE(page.cell(0)->findChild<CComboBox*>()->currentText(), QString());
    QVERIFY(page.cell(0)->value() == CaseValue(0.0));
    QVERIFY(fieldAt(1, 0, 3).m_values == Values({1.2}));
    page.add()->click();
    QVERIFY(fieldAt(1, 0, 3).m_values == Values({1.2, 0.0}));
    page.cell(1)->findChild<CComboBox*>()->setCurrentIndex(1);
    QVERIFY(fieldAt(1, 0, 3).m_values == Values({1.2, 0.0, 1.5}));
}

void CParameterEditorValuesTest::aFalseFlagAloneCantBeChecked()
{
    CPage page;
    page.choose("Rolling friction", 0, 0);
    auto* box = page.cell(0)->findChild<QCheckBox*>();
    QVERIFY(!box->isCheckable());
    QVERIFY(box->isEnabled());
    box->click();
    QVERIFY(!box->isChecked());
    QVERIFY(page.cell(0)->value() == CaseValue(false));
}

void CParameterEditorValuesTest::anInputBeyondTheBoundsIsHeldInside()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    page.add()->click();
    page.type(1, "7");
    const CaseValue value = page.cell(1)->value();
    QVERIFY(std::get<double>(value) <= 1.0 && std::get<double>(value) >= 0.0001);
    for (const CaseValue& known : fieldAt(0, 0, 0).m_values) {
        QVERIFY(std::get<double>(known) <= 1.0);
    }
}

void CParameterEditorValuesTest::aValueInsideItsBoundsIsNotRed()
{
    CPage page;
    page.choose("Interactions", 0, 0);
    QVERIFY(!page.cell(0)->findChild<CDoubleSpinBox*>()->styleSheet().contains("red"));
}

void CParameterEditorValuesTest::aFieldWithOneVarianceTurnsTheLabelFromZeroIntoOne()
{
    CPage page;
    QCOMPARE(page.caseCount(), QStringLiteral("0"));
    page.choose("Bonding", 0, 0);
    page.add()->click();
    QCOMPARE(page.caseCount(), QStringLiteral("1"));
}

void CParameterEditorValuesTest::oldFieldsOfAnEarlierDeckCountInTheLabel()
{
    CVariedPage page;
    QCOMPARE(page.caseCount(), QStringLiteral("3"));
    page.enterWith(sampleDeck("other"));
    page.choose("Bonding", 0, 0);
    page.add()->click();
    // Each of the old fields got a further bit: three variances count as four, one value as one.
    QCOMPARE(page.caseCount(), QStringLiteral("4"));
}

void CParameterEditorValuesTest::aFieldThatLostAllItsValuesShowsNoColumn()
{
    CPage page;
    page.clickTree("Interactions");
    CPage::clickList(page.materials(), 0);
    CDeckStore::instance()->parameters().at(0)->m_keys[0]->m_fields[0]->m_values.clear();
    CPage::clickList(page.parameters(), 0);
    QCOMPARE(page.table()->columnCount(), 0);
    page.add()->click();
    page.remove()->setEnabled(true);
    page.remove()->click();
    QCOMPARE(page.table()->columnCount(), 0);
    QVERIFY(fieldAt(0, 0, 0).m_values.empty());
}

TARNEL_TEST_MAIN(CParameterEditorValuesTest)
#include "parameter_editor_values_test.moc"
