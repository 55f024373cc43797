#pragma once

#include "widgets/units_converter.h"

/// Numbers without a unit: nothing is converted and the label is empty.
class CUnitsNone : public CUnitsConverter
{
    Q_OBJECT

public:
    /// Lives from the first call to the end of the process.
    static CUnitsNone* instance();

    double toDisplay(double value) const override { return value; }
    double toBase(double value, int unit) const override;
    double toBase(double value) const override { return value; }
    void unitSelected() override {}

protected:
    CUnitsNone() = default;
};
