#pragma once

#include <QSpinBox>

#include <vector>

class CUnitsConverter;
class QIntValidator;

/// A field for whole numbers that keeps the true value itself, apart from what its range lets it
/// show. The step follows the digit that is selected; the wheel acts as in any spin box.
///
/// `value()` is what the field shows, in the unit in use; `valueModified` tells of a commit.
class CIntegerSpinBox : public QSpinBox
{
    Q_OBJECT

public:
    explicit CIntegerSpinBox(QWidget* parent = nullptr);
    ~CIntegerSpinBox() override;

    /// Bounds in the base unit. Call it once.
    void setup(int minimum, int maximum, CUnitsConverter* units);

    /// Stores `value`, in the base unit, and shows what the range allows of it, without
    /// `valueModified`.
    void setValue(int value);

    /// The true value, in the base unit.
    int storedValue() const { return m_value; }

    /// Whether `number`, a text without suffix, is how the field writes the number it was given.
    bool isOwnText(const QString& number) const;

    QValidator::State validate(QString& input, int& pos) const override;
    void stepBy(int steps) override;
    int valueFromText(const QString& text) const override;
    QString textFromValue(int value) const override;

signals:
    void valueModified(int newVal);

public slots:
    void onUpdateUnits(const QString& text);
    void onEditingFinished();
    void onSelectionChanged();
    void onCursorPositionChanged(int oldPos, int newPos);
    void onTextEdited(const QString& text);
    void stepDown();
    void stepUp();

protected:
    void focusInEvent(QFocusEvent* event) override;

private:
    void connectSignals();
    void applyUnits();
    void applyStep(double step);
    void display();
    void stepTo(qint64 value);
    void commit(int value);
    bool wasEdited() const;

    CUnitsConverter* m_units;
    int m_value = 0;
    int m_minimum = 0;
    int m_maximum = 0;
    int m_step = 1;
    QIntValidator* m_validator;

    int m_shown = 0;        ///< what was last given to the field to show
    int m_shownValue = 0;   ///< what `value()` made of it
    bool m_bEdited = false; ///< the user has left another number in the field since
    std::vector<QMetaObject::Connection> m_connections;
};
