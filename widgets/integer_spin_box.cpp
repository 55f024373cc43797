#include "widgets/integer_spin_box.h"

#include "widgets/caret_step.h"
#include "widgets/suffix_text.h"
#include "widgets/suffix_validator.h"
#include "widgets/text_keeper.h"
#include "widgets/units_none.h"

#include <QIntValidator>
#include <QLineEdit>
#include <QLocale>

#include <limits>

namespace {

constexpr double LOWEST = std::numeric_limits<int>::min();
constexpr double HIGHEST = std::numeric_limits<int>::max();

int truncated(double value)
{
    return static_cast<int>(qBound(LOWEST, value, HIGHEST));
}

} // namespace

CIntegerSpinBox::CIntegerSpinBox(QWidget* parent)
    : QSpinBox(parent)
    , m_units(CUnitsNone::instance())
    , m_validator(new CSuffixValidator<QIntValidator, CIntegerSpinBox>(this))
{
    lineEdit()->setValidator(m_validator);
}

CIntegerSpinBox::~CIntegerSpinBox()
{
    for (const QMetaObject::Connection& connection : m_connections) {
        disconnect(connection);
    }
}

void CIntegerSpinBox::setup(int minimum, int maximum, CUnitsConverter* units)
{
    m_minimum = minimum;
    m_maximum = maximum;
    m_units = units;
    applyUnits();
    connectSignals();
    setValue(truncated(m_units->toBase(value())));
}

void CIntegerSpinBox::connectSignals()
{
    m_connections = {
        connect(m_units, &CUnitsConverter::updateUnits, this, &CIntegerSpinBox::onUpdateUnits),
        connect(this, &QAbstractSpinBox::editingFinished, this,
                &CIntegerSpinBox::onEditingFinished),
        connect(lineEdit(), &QLineEdit::selectionChanged, this,
                &CIntegerSpinBox::onSelectionChanged),
        connect(lineEdit(), &QLineEdit::cursorPositionChanged, this,
                &CIntegerSpinBox::onCursorPositionChanged),
        connect(lineEdit(), &QLineEdit::textEdited, this, &CIntegerSpinBox::onTextEdited),
    };
}

void CIntegerSpinBox::applyUnits()
{
    const int lowest = truncated(m_units->toDisplay(m_minimum));
    const int highest = truncated(m_units->toDisplay(m_maximum));
    setRange(lowest, highest);
    m_validator->setRange(lowest, highest);
    setSuffix(QLatin1Char(' ') + m_units->label());
    applyStep(1.0);
}

void CIntegerSpinBox::applyStep(double step)
{
    m_step = truncated(m_units->toBase(step));
    const CTextKeeper keeper(*lineEdit());
    setSingleStep(truncated(step));
}

void CIntegerSpinBox::setValue(int value)
{
    m_value = value;
    display();
}

void CIntegerSpinBox::display()
{
    m_shown = truncated(m_units->toDisplay(m_value));
    QSpinBox::setValue(m_shown);
    m_shownValue = value();
    m_bEdited = false;
}

QString CIntegerSpinBox::textFromValue(int value) const
{
    return locale().toString(value).remove(QLatin1Char('+'));
}

int CIntegerSpinBox::valueFromText(const QString& text) const
{
    QString copy = text;
    int pos = lineEdit()->cursorPosition();
    validate(copy, pos);
    return locale().toInt(SuffixText::without(copy, suffix()));
}

QValidator::State CIntegerSpinBox::validate(QString& input, int& pos) const
{
    QString copy = SuffixText::without(input, suffix());
    return m_validator->validate(copy, pos);
}

bool CIntegerSpinBox::isOwnText(const QString& number) const
{
    return number == textFromValue(m_shown);
}

bool CIntegerSpinBox::wasEdited() const
{
    return m_bEdited || value() != m_shownValue;
}

void CIntegerSpinBox::onEditingFinished()
{
    const int v = wasEdited() ? truncated(m_units->toBase(value())) : m_value;
    if (v != m_value) {
        commit(v);
    } else {
        display();
    }
}

void CIntegerSpinBox::commit(int value)
{
    setValue(value);
    emit valueModified(value);
}

void CIntegerSpinBox::stepUp()
{
    stepTo(qint64(m_value) + m_step);
}

void CIntegerSpinBox::stepDown()
{
    stepTo(qint64(m_value) - m_step);
}

void CIntegerSpinBox::stepBy(int steps)
{
    if (steps < 0) {
        stepDown();
    } else {
        stepUp();
    }
}

void CIntegerSpinBox::stepTo(qint64 value)
{
    commit(truncated(double(value)));
}

void CIntegerSpinBox::focusInEvent(QFocusEvent* event)
{
    QSpinBox::focusInEvent(event);
    applyStep(1.0);
}

void CIntegerSpinBox::onSelectionChanged()
{
    SuffixText::cutSelection(*lineEdit(), suffix());
    const QString selected = lineEdit()->selectedText();
    if (selected.length() != 1 || selected == QLatin1String("-")) {
        return;
    }
    const QString number = SuffixText::without(lineEdit()->displayText(), suffix());
    const double step = CaretStep::ofWholeNumber(number.mid(lineEdit()->selectionStart()));
    if (truncated(step) > 0) {
        applyStep(step);
    }
}

void CIntegerSpinBox::onCursorPositionChanged(int /*oldPos*/, int newPos)
{
    SuffixText::keepCaretOut(*lineEdit(), suffix(), newPos);
}

void CIntegerSpinBox::onTextEdited(const QString& text)
{
    SuffixText::restore(*lineEdit(), suffix(), text);
    const QString number = SuffixText::without(lineEdit()->text(), suffix());
    m_bEdited = hasAcceptableInput() && !isOwnText(number);
}

void CIntegerSpinBox::onUpdateUnits(const QString& /*text*/)
{
    applyUnits();
    setValue(m_value);
}
