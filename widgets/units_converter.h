#pragma once

#include <QMap>
#include <QObject>
#include <QString>

/// Stands between a number of the model, held in one base unit, and the number that a spin box
/// shows. Shared by any number of boxes, which follow `updateUnits`.
class CUnitsConverter : public QObject
{
    Q_OBJECT

public:
    /// A model value in the unit in use.
    virtual double toDisplay(double value) const = 0;
    /// The model value of a number in the given unit.
    virtual double toBase(double value, int unit) const = 0;
    /// The model value of a number in the unit in use.
    virtual double toBase(double value) const = 0;
    /// Room for a converter that has something to do when its unit changes; nothing calls it yet.
    virtual void unitSelected() = 0;

    /// The text of the unit in use, empty where there is none.
    QString label() const { return m_label; }

signals:
    void updateUnits(QString txt);

protected:
    CUnitsConverter() = default;

    int m_unit = 0;
    QString m_label;
    QMap<int, QString> m_labels;
};
