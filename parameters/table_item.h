#pragma once

#include "parameters/case_value.h"

#include <QMetaObject>
#include <QWidget>

#include <vector>

class CComboBox;
class CDoubleSpinBox;
class QCheckBox;
class QHBoxLayout;
class QTableWidgetItem;
struct ParameterLimit;

/// The editor in one cell of the value table: a check box, a number or a choice, as the limit says.
class CTableItem : public QWidget
{
    Q_OBJECT

public:
    /// `tableItem` is the item of the cell; neither is owned.
    CTableItem(const ParameterLimit* limit, QTableWidgetItem* tableItem);
    ~CTableItem() override;

    const CaseValue& value() const { return m_value; }

    /// Throws std::bad_variant_access for a value of the wrong alternative: a check box takes a
    /// bool, the others a double.
    void setValue(CaseValue value);

    /// The box that shows the value; null where the limit is of no kind.
    QWidget* editor() const;

    void setEditable(bool editable);

    /// Strikes the cell out: the deck's value takes no part in the job once there is a variance.
    void setSuperseded(bool superseded);

    void addConnection(const QMetaObject::Connection& connection);

    /// From here on the cell tells nobody of its changes; call it before the cell is taken away.
    void disconnectAll();

signals:
    void valueChanged();
    void itemChanged(QTableWidgetItem* item);

public slots:
    void updateValues();

private:
    void makeCheckBox();
    void makeSpinBox();
    void makeComboBox();
    void place(QWidget* editor);
    double shownNumber() const;

    const ParameterLimit* m_limit;
    std::vector<QMetaObject::Connection> m_connections;
    CaseValue m_value;
    QHBoxLayout* m_layout;
    QCheckBox* m_checkBox = nullptr;
    CDoubleSpinBox* m_spinBox = nullptr;
    CComboBox* m_comboBox = nullptr;
    QTableWidgetItem* m_tableItem;
};
