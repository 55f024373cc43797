#include "widgets/double_spin_box.h"

#include "widgets/caret_step.h"
#include "widgets/suffix_text.h"
#include "widgets/suffix_validator.h"
#include "widgets/text_keeper.h"
#include "widgets/units_none.h"
#include "widgets/wheel_forwarding.h"

#include <QDoubleValidator>
#include <QLineEdit>
#include <QLocale>

#include <cmath>
#include <limits>

namespace {

constexpr double OPEN_END = std::numeric_limits<double>::max();
constexpr double SNAP_TO_ZERO = 1e-12;

QChar groupSeparator(const QLocale& locale)
{
    const QString probe = locale.toString(4567.1, 'g', 6);
    return probe.length() == 7 ? probe.at(1) : QChar();
}

// The point is looked for as the system writes it, even where the box writes another.
QChar systemDecimalPoint()
{
    return QLocale::system().decimalPoint();
}

} // namespace

CDoubleSpinBox::CDoubleSpinBox(QWidget* parent)
    : QDoubleSpinBox(parent)
    , m_units(CUnitsNone::instance())
    , m_groupSeparator(groupSeparator(parent != nullptr ? parent->locale() : QLocale()))
    , m_validator(new CSuffixValidator<QDoubleValidator, CDoubleSpinBox>(this))
{
    m_validator->setNotation(QDoubleValidator::ScientificNotation);
    m_validator->setLocale(QLocale(QString()));
    lineEdit()->setValidator(m_validator);
}

CDoubleSpinBox::~CDoubleSpinBox()
{
    for (const QMetaObject::Connection& connection : m_connections) {
        disconnect(connection);
    }
}

void CDoubleSpinBox::setup(double minimum, double maximum, CUnitsConverter* units, int decimals,
                           bool unbounded, bool nonNegative)
{
    m_minimum = minimum;
    m_maximum = maximum;
    m_units = units;
    m_decimals = decimals;
    m_bUnbounded = unbounded;
    m_bNonNegative = nonNegative;
    applyUnits();
    connectSignals();
    // The range has moved the number in the field; it is the value from here on, so that no field
    // starts out of its bounds.
    setValue(qBound(m_minimum, m_units->toBase(value()), m_maximum));
}

void CDoubleSpinBox::connectSignals()
{
    m_connections = {
        connect(m_units, &CUnitsConverter::updateUnits, this, &CDoubleSpinBox::onUpdateUnits),
        connect(this, &QAbstractSpinBox::editingFinished, this, &CDoubleSpinBox::onEditingFinished),
        connect(lineEdit(), &QLineEdit::selectionChanged, this,
                &CDoubleSpinBox::onSelectionChanged),
        connect(lineEdit(), &QLineEdit::cursorPositionChanged, this,
                &CDoubleSpinBox::onCursorPositionChanged),
        connect(lineEdit(), &QLineEdit::textEdited, this, &CDoubleSpinBox::onTextEdited),
    };
}

void CDoubleSpinBox::applyUnits()
{
    applyRange();
    setDecimals(m_decimals);
    setSuffix(QLatin1Char(' ') + m_units->label());
    setSingleStep(m_units->toDisplay(m_step));
}

void CDoubleSpinBox::applyRange()
{
    if (m_bUnbounded) {
        setRange(m_bNonNegative ? 0.0 : -OPEN_END, OPEN_END);
    } else {
        setRange(m_units->toDisplay(m_minimum), m_units->toDisplay(m_maximum));
    }
    updateColour();
}

void CDoubleSpinBox::updateColour()
{
    const bool within = m_value >= m_minimum && m_value <= m_maximum;
    const QString wanted = within ? QString() : QStringLiteral("color: red;");
    if (styleSheet() != wanted) {
        setStyleSheet(wanted);
    }
}

void CDoubleSpinBox::setValue(double value)
{
    m_value = value;
    display(m_units->toDisplay(value));
    updateColour();
}

void CDoubleSpinBox::display(double shown)
{
    m_shown = shown;
    if (std::abs(shown) >= 1.0) {
        QDoubleSpinBox::setValue(shown);
    } else {
        writeText(shown);
    }
    m_shownValue = value();
    m_bEdited = false;
}

// The base class takes the number over from the changed text as if it had been typed: unrounded,
// held in its range, and with its own signals. It doesn't look where the text stays the same.
void CDoubleSpinBox::writeText(double shown)
{
    const int caret = lineEdit()->cursorPosition();
    lineEdit()->setText(textFromValue(shown) + suffix());
    lineEdit()->setCursorPosition(qMin(caret, SuffixText::limit(*lineEdit(), suffix())));
    if (value() != qBound(minimum(), shown, maximum())) {
        const CTextKeeper keeper(*lineEdit());
        interpretText();
    }
}

QString CDoubleSpinBox::textFromValue(double value) const
{
    QString text = locale().toString(value, 'g', decimals());
    if (std::abs(value) >= 1000.0) {
        text.remove(m_groupSeparator);
    }
    return text;
}

double CDoubleSpinBox::valueFromText(const QString& text) const
{
    QString copy = text;
    int pos = lineEdit()->cursorPosition();
    validate(copy, pos);
    const QString number = SuffixText::without(copy, suffix());
    return isOwnText(number) ? m_shown : locale().toDouble(number);
}

QValidator::State CDoubleSpinBox::validate(QString& input, int& pos) const
{
    QString copy = SuffixText::without(input, suffix());
    return m_validator->validate(copy, pos);
}

bool CDoubleSpinBox::isOwnText(const QString& number) const
{
    return number == textFromValue(m_shown);
}

bool CDoubleSpinBox::wasEdited() const
{
    return m_bEdited || value() != m_shownValue;
}

void CDoubleSpinBox::onEditingFinished()
{
    const double v = m_units->toBase(value());
    if (wasEdited() && !(v == m_value)) {
        setValue(v);
        emit valueModified(v);
    } else {
        showAgain();
    }
}

void CDoubleSpinBox::showAgain()
{
    const double shown = m_units->toDisplay(m_value);
    if (lineEdit()->text() != textFromValue(shown) + suffix()) {
        display(shown);
    }
}

void CDoubleSpinBox::stepUp()
{
    stepTo(m_value + m_step);
}

void CDoubleSpinBox::stepDown()
{
    stepTo(m_value - m_step);
}

void CDoubleSpinBox::stepBy(int steps)
{
    if (steps >= 0) {
        stepUp();
    } else {
        stepDown();
    }
}

void CDoubleSpinBox::stepTo(double value)
{
    double shown = qBound(minimum(), m_units->toDisplay(value), maximum());
    double stored = qBound(m_minimum, value, m_maximum);
    if (std::abs(shown) < SNAP_TO_ZERO) {
        shown = qBound(minimum(), 0.0, maximum());
        stored = qBound(m_minimum, 0.0, m_maximum);
    }
    m_value = stored;
    display(shown);
    updateColour();
    emit valueModified(m_value);
}

void CDoubleSpinBox::adjustStep(int pos)
{
    if (!m_bAdjustStep) {
        return;
    }
    const double step = CaretStep::atPosition(cleanText(), pos, systemDecimalPoint());
    if (step > 0.0) {
        m_step = m_units->toBase(step);
        const CTextKeeper keeper(*lineEdit());
        setSingleStep(step);
    }
}

void CDoubleSpinBox::focusInEvent(QFocusEvent* event)
{
    QDoubleSpinBox::focusInEvent(event);
    adjustStep(CaretStep::entryPosition(cleanText(), systemDecimalPoint()));
}

void CDoubleSpinBox::onSelectionChanged()
{
    SuffixText::cutSelection(*lineEdit(), suffix());
    const QString selected = lineEdit()->selectedText();
    const QString noDigits = QStringLiteral("e+-") + systemDecimalPoint();
    if (selected.length() == 1 && !noDigits.contains(selected)) {
        adjustStep(lineEdit()->selectionStart());
    }
}

void CDoubleSpinBox::onCursorPositionChanged(int /*oldPos*/, int newPos)
{
    SuffixText::keepCaretOut(*lineEdit(), suffix(), newPos);
}

void CDoubleSpinBox::onTextEdited(const QString& text)
{
    SuffixText::restore(*lineEdit(), suffix(), text);
    const QString number = SuffixText::without(lineEdit()->text(), suffix());
    m_bEdited = hasAcceptableInput() && !isOwnText(number);
}

void CDoubleSpinBox::onUpdateUnits(const QString& /*text*/)
{
    applyUnits();
    setValue(m_value);
}

bool CDoubleSpinBox::event(QEvent* e)
{
    if (e->type() == QEvent::Wheel) {
        return forwardWheel(*this, e);
    }
    if (e->type() == QEvent::Show) {
        // The base class would write a number out of its range as the nearest one within.
        const CTextKeeper keeper(*lineEdit());
        return QDoubleSpinBox::event(e);
    }
    return QDoubleSpinBox::event(e);
}
