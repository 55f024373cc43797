#pragma once

#include <QDoubleSpinBox>

#include <vector>

class CUnitsConverter;
class QDoubleValidator;

/// A numeric field that keeps the true value itself, apart from the rounded number that it shows.
/// Numbers below 1 are shown in general format, the step follows the digit that is selected, a
/// value out of bounds is red, and the wheel is left to the surroundings.
///
/// `value()` is what the field shows, in the unit in use; `valueChanged` follows it with every
/// keystroke. `valueModified` tells of a commit: return, loss of focus or a step.
class CDoubleSpinBox : public QDoubleSpinBox
{
    Q_OBJECT

public:
    explicit CDoubleSpinBox(QWidget* parent = nullptr);
    ~CDoubleSpinBox() override;

    /// Bounds in the base unit; `decimals` is the number of significant digits, too. An unbounded
    /// field takes any number (`nonNegative`: from 0 up) and only colours it. Call it once.
    void setup(double minimum, double maximum, CUnitsConverter* units, int decimals, bool unbounded,
               bool nonNegative);

    /// Stores and shows `value`, in the base unit, without `valueModified`. Out of bounds is fine.
    void setValue(double value);

    /// The true value, in the base unit, with all its digits.
    double storedValue() const { return m_value; }

    /// Whether `number`, a text without suffix, is how the field writes the number it was given.
    bool isOwnText(const QString& number) const;

    QValidator::State validate(QString& input, int& pos) const override;
    void stepBy(int steps) override;
    double valueFromText(const QString& text) const override;
    QString textFromValue(double value) const override;

signals:
    void valueModified(double newVal);

public slots:
    void onUpdateUnits(const QString& text);
    void onEditingFinished();
    void onSelectionChanged();
    void onCursorPositionChanged(int oldPos, int newPos);
    void onTextEdited(const QString& text);
    void stepDown();
    void stepUp();

protected:
    bool event(QEvent* e) override;
    void focusInEvent(QFocusEvent* event) override;

private:
    void connectSignals();
    void applyUnits();
    void applyRange();
    void updateColour();
    void display(double shown);
    void showAgain();
    void writeText(double shown);
    void stepTo(double value);
    void adjustStep(int pos);
    bool wasEdited() const;

    CUnitsConverter* m_units;
    bool m_bAdjustStep = true;
    int m_decimals = 6;
    bool m_bUnbounded = true;
    bool m_bNonNegative = false;
    double m_value = 0;
    double m_step = 1.0;
    double m_minimum = 0;
    double m_maximum = 0;
    QChar m_groupSeparator;
    QDoubleValidator* m_validator;

    double m_shown = 0;      ///< what was last given to the field to show, unrounded
    double m_shownValue = 0; ///< what `value()` made of it
    bool m_bEdited = false;  ///< the user has left another number in the field since
    std::vector<QMetaObject::Connection> m_connections;
};
