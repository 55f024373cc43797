#include "parameters/table_item.h"

#include "parameters/parameter_catalogue.h"
#include "parameters/parameter_limits.h"
#include "tests/support/test_environment.h"
#include "widgets/combo_box.h"
#include "widgets/double_spin_box.h"

#include <QApplication>
#include <QCheckBox>
#include <QLayout>
#include <QSignalSpy>
#include <QTableWidgetItem>
#include <QTest>

namespace {

/// A cell for the row of a label, with the item that it colours.
struct SCell
{
    explicit SCell(const char* label)
        : cell(&limitOf(label), &item)
    {
    }

    QTableWidgetItem item;
    CTableItem cell;
};

} // namespace

class CTableItemTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void aRangeGetsASpinBoxWithItsBounds();
    void aRangeCellKeepsTheStoredNumber();
    void aChoiceOffersItsNumbersAlone();
    void aChoiceOutsideTheListTurnsIntoZero();
    void aTrueFlagTurnsIntoANumber();
    void aFalseFlagStaysAFlag();
    void aWrongAlternativeRaises();
    void aFlagThatCantBeEditedLosesItsCheckMark();
    void aRangeThatCantBeEditedIsReadOnlyWithoutButtons();
    void aSupersededRangeIsStruckOutAndGrey();
    void aSupersededFlagIsDisabled();
    void aSupersededChoiceIsDisabled();
    void aChoiceThatCantBeEditedIsDisabled();
    void aChoiceIsFoundByItsWholeText();
    void anUncheckedFlagTurnsIntoZero();
    void anEditTellsOfTheItem();
    void aDisconnectedCellIsSilent();
    void everyEditorTakesTheFocusByClick();
    void theMarginsAreFive();
};

void CTableItemTest::initTestCase()
{
    ParameterCatalogue::initialise();
    initialiseParameterLimits();
}

void CTableItemTest::aRangeGetsASpinBoxWithItsBounds()
{
    SCell restitution("Restitution");
    auto* box = restitution.cell.findChild<CDoubleSpinBox*>();
    QVERIFY(box != nullptr);
    QCOMPARE(box->maximum(), 1.0);
    QCOMPARE(box->decimals(), 6);
    QVERIFY(box->minimum() > 0.0);
}

void CTableItemTest::aRangeCellKeepsTheStoredNumber()
{
    SCell friction("Static Friction");
    friction.cell.setValue(0.123456789);
    QVERIFY(friction.cell.value() == CaseValue(0.123456789));
    friction.cell.updateValues();
    QVERIFY(friction.cell.value() == CaseValue(0.123456789));
}

void CTableItemTest::aChoiceOffersItsNumbersAlone()
{
    SCell slope("Slope Exp");
    auto* box = slope.cell.findChild<CComboBox*>();
    QVERIFY(box != nullptr);
    QCOMPARE(box->count(), 2);
    QCOMPARE(box->itemText(0), QStringLiteral("1"));
    QCOMPARE(box->itemText(1), QStringLiteral("1.5"));
    QCOMPARE(box->itemData(1).toDouble(), 1.5);
    slope.cell.setValue(1.5);
    QCOMPARE(box->currentIndex(), 1);
    QVERIFY(slope.cell.value() == CaseValue(1.5));
}

void CTableItemTest::aChoiceOutsideTheListTurnsIntoZero()
{
    SCell slope("Slope Exp");
    slope.cell.setValue(1.3);
    QCOMPARE(slope.cell.findChild<CComboBox*>()->currentIndex(), -1);
    QVERIFY(slope.cell.value() == CaseValue(0.0));
}

void CTableItemTest::aTrueFlagTurnsIntoANumber()
{
    SCell torque("Torque Feedback");
    torque.cell.setValue(true);
    QVERIFY(torque.cell.findChild<QCheckBox*>()->isChecked());
    QVERIFY(torque.cell.value() == CaseValue(1.0));
}

void CTableItemTest::aFalseFlagStaysAFlag()
{
    SCell torque("Torque Feedback");
    torque.cell.setValue(false);
    QVERIFY(torque.cell.value() == CaseValue(false));
}

void CTableItemTest::aWrongAlternativeRaises()
{
    QVERIFY_EXCEPTION_THROWN(SCell("Torque Feedback").cell.setValue(1.0), std::bad_variant_access);
    QVERIFY_EXCEPTION_THROWN(SCell("Restitution").cell.setValue(true), std::bad_variant_access);
    QVERIFY_EXCEPTION_THROWN(SCell("Slope Exp").cell.setValue(true), std::bad_variant_access);
}

void CTableItemTest::aFlagThatCantBeEditedLosesItsCheckMark()
{
    SCell torque("Torque Feedback");
    torque.cell.setValue(true);
    torque.cell.setEditable(false);
    QVERIFY(!torque.cell.findChild<QCheckBox*>()->isChecked());
    QVERIFY(torque.cell.value() == CaseValue(1.0));
}

void CTableItemTest::aRangeThatCantBeEditedIsReadOnlyWithoutButtons()
{
    SCell restitution("Restitution");
    auto* box = restitution.cell.findChild<CDoubleSpinBox*>();
    restitution.cell.setEditable(false);
    QVERIFY(box->isReadOnly());
    QCOMPARE(box->buttonSymbols(), QAbstractSpinBox::NoButtons);
    restitution.cell.setEditable(true);
    QVERIFY(!box->isReadOnly());
    QCOMPARE(box->buttonSymbols(), QAbstractSpinBox::UpDownArrows);
}

void CTableItemTest::aSupersededRangeIsStruckOutAndGrey()
{
    SCell restitution("Restitution");
    auto* box = restitution.cell.findChild<CDoubleSpinBox*>();
    restitution.cell.setSuperseded(true);
    QVERIFY(box->font().strikeOut());
    QVERIFY(!box->isEnabled());
    QCOMPARE(restitution.item.background().color(), QColor(Qt::gray));
    restitution.cell.setSuperseded(false);
    QVERIFY(!box->font().strikeOut());
    QVERIFY(box->isEnabled());
    QCOMPARE(restitution.item.background().color(), QColor(Qt::white));
}

void CTableItemTest::aSupersededFlagIsDisabled()
{
    SCell torque("Torque Feedback");
    torque.cell.setSuperseded(true);
    QVERIFY(!torque.cell.findChild<QCheckBox*>()->isEnabled());
    QCOMPARE(torque.item.background().color(), QColor(Qt::gray));
}

void CTableItemTest::aSupersededChoiceIsDisabled()
{
    SCell slope("Slope Exp");
    auto* box = slope.cell.findChild<CComboBox*>();
    slope.cell.setSuperseded(true);
    QVERIFY(!box->isEnabled());
    QCOMPARE(slope.item.background().color(), QColor(Qt::gray));
    slope.cell.setSuperseded(false);
    QVERIFY(box->isEnabled());
}

void CTableItemTest::aChoiceThatCantBeEditedIsDisabled()
{
    SCell slope("Slope Exp");
    slope.cell.setEditable(false);
    QVERIFY(!slope.cell.findChild<CComboBox*>()->isEnabled());
    slope.cell.setEditable(true);
    QVERIFY(slope.cell.findChild<CComboBox*>()->isEnabled());
}

void CTableItemTest::aChoiceIsFoundByItsWholeText()
{
    const ParameterLimit limit = {Choice, {1.5, 1.0}};
    QTableWidgetItem item;
    CTableItem cell(&limit, &item);
    cell.setValue(1.0);
    QCOMPARE(cell.findChild<CComboBox*>()->currentIndex(), 1);
}

void CTableItemTest::anUncheckedFlagTurnsIntoZero()
{
    SCell torque("Torque Feedback");
    torque.cell.setValue(true);
    torque.cell.findChild<QCheckBox*>()->click();
    QVERIFY(torque.cell.value() == CaseValue(0.0));
}

void CTableItemTest::anEditTellsOfTheItem()
{
    SCell torque("Torque Feedback");
    QTableWidgetItem* told = nullptr;
    connect(&torque.cell, &CTableItem::itemChanged, this,
            [&told](QTableWidgetItem* item) { told = item; });
    torque.cell.findChild<QCheckBox*>()->click();
    QCOMPARE(told, &torque.item);
}

void CTableItemTest::aDisconnectedCellIsSilent()
{
    SCell torque("Torque Feedback");
    QTableWidgetItem* told = nullptr;
    connect(&torque.cell, &CTableItem::itemChanged, this,
            [&told](QTableWidgetItem* item) { told = item; });
    torque.cell.disconnectAll();
    torque.cell.findChild<QCheckBox*>()->click();
    QVERIFY(told == nullptr);
}

void CTableItemTest::everyEditorTakesTheFocusByClick()
{
    QCOMPARE(SCell("Restitution").cell.findChild<CDoubleSpinBox*>()->focusPolicy(), Qt::ClickFocus);
    QCOMPARE(SCell("Slope Exp").cell.findChild<CComboBox*>()->focusPolicy(), Qt::ClickFocus);
    QCOMPARE(SCell("Torque Feedback").cell.findChild<QCheckBox*>()->focusPolicy(), Qt::ClickFocus);
}

void CTableItemTest::theMarginsAreFive()
{
    QCOMPARE(SCell("Restitution").cell.layout()->contentsMargins(), QMargins(5, 5, 5, 5));
}

TARNEL_TEST_MAIN(CTableItemTest)
#include "table_item_test.moc"
