#include "parameters/table_item.h"

#include "app/checked.h"
#include "parameters/parameter_limits.h"
#include "widgets/combo_box.h"
#include "widgets/double_spin_box.h"
#include "widgets/units_none.h"

#include <QCheckBox>
#include <QFont>
#include <QHBoxLayout>
#include <QTableWidgetItem>

namespace {

constexpr int Precision = 6;
constexpr int Margin = 5;

QString choiceText(double number)
{
    return QString::number(number, 'g', Precision);
}

} // namespace

CTableItem::CTableItem(const ParameterLimit* limit, QTableWidgetItem* tableItem)
    : m_limit(limit)
    , m_layout(new QHBoxLayout(this))
    , m_tableItem(tableItem)
{
    m_layout->setContentsMargins(Margin, Margin, Margin, Margin);
    switch (m_limit->kind) {
    case Flag:
        makeCheckBox();
        break;
    case Range:
        makeSpinBox();
        break;
    case Choice:
        makeComboBox();
        break;
    default:
        break;
    }
}

CTableItem::~CTableItem()
{
    disconnectAll();
}

void CTableItem::makeCheckBox()
{
    m_checkBox = new QCheckBox(this);
    addConnection(connect(m_checkBox, &QCheckBox::stateChanged, this, &CTableItem::updateValues));
    place(m_checkBox);
}

void CTableItem::makeSpinBox()
{
    m_spinBox = new CDoubleSpinBox(this);
    m_spinBox->setup(m_limit->values[0], m_limit->values[1], CUnitsNone::instance(), Precision,
                     false, false);
    addConnection(
        connect(m_spinBox, &CDoubleSpinBox::valueModified, this, &CTableItem::updateValues));
    place(m_spinBox);
}

void CTableItem::makeComboBox()
{
    m_comboBox = new CComboBox(this);
    for (const double number : m_limit->values) {
        m_comboBox->addItem(choiceText(number), number);
    }
    addConnection(connect(m_comboBox, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
                          &CTableItem::updateValues));
    place(m_comboBox);
}

void CTableItem::place(QWidget* editor)
{
    editor->setFocusPolicy(Qt::ClickFocus);
    m_layout->addWidget(editor);
}

QWidget* CTableItem::editor() const
{
    QLayoutItem* const placed = m_layout->itemAt(0);
    return placed != nullptr ? placed->widget() : nullptr;
}

void CTableItem::setValue(CaseValue value)
{
    m_value = value;
    if (m_checkBox != nullptr) {
        m_checkBox->setChecked(checked::get<bool>(value));
    } else if (m_spinBox != nullptr) {
        m_spinBox->setValue(checked::get<double>(value));
    } else if (m_comboBox != nullptr) {
        const QString text = choiceText(checked::get<double>(value));
        m_comboBox->setCurrentIndex(
            m_comboBox->findText(text, Qt::MatchExactly | Qt::MatchCaseSensitive));
    }
}

void CTableItem::updateValues()
{
    // A number whatever the kind: a check box turns its bool into a double here.
    m_value = shownNumber();
    emit itemChanged(m_tableItem);
}

double CTableItem::shownNumber() const
{
    if (m_checkBox != nullptr) {
        return m_checkBox->isChecked() ? 1.0 : 0.0;
    }
    if (m_spinBox != nullptr) {
        return m_spinBox->storedValue();
    }
    return m_comboBox->currentText().toDouble();
}

void CTableItem::setEditable(bool editable)
{
    if (m_checkBox != nullptr) {
        m_checkBox->setCheckable(editable);
    } else if (m_spinBox != nullptr) {
        m_spinBox->setReadOnly(!editable);
        m_spinBox->setButtonSymbols(editable ? QAbstractSpinBox::UpDownArrows
                                             : QAbstractSpinBox::NoButtons);
    } else if (m_comboBox != nullptr) {
        m_comboBox->setEnabled(editable);
    }
}

void CTableItem::setSuperseded(bool superseded)
{
    if (m_checkBox != nullptr) {
        m_checkBox->setDisabled(superseded);
    } else if (m_spinBox != nullptr) {
        QFont font;
        font.setStrikeOut(superseded);
        m_spinBox->setFont(font);
        m_spinBox->setDisabled(superseded);
    } else if (m_comboBox != nullptr) {
        m_comboBox->setDisabled(superseded);
    }
    m_tableItem->setBackground(superseded ? Qt::gray : Qt::white);
}

void CTableItem::addConnection(const QMetaObject::Connection& connection)
{
    m_connections.push_back(connection);
}

void CTableItem::disconnectAll()
{
    for (const QMetaObject::Connection& connection : m_connections) {
        disconnect(connection);
    }
    m_connections.clear();
}
