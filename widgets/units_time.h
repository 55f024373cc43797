#pragma once

#include "widgets/units_converter.h"

/// Times: seconds in the model (unit 0, "s"), minutes as the alternative (unit 1, "min").
class CUnitsTime : public CUnitsConverter
{
    Q_OBJECT

public:
    /// Lives from the first call to the end of the process.
    static CUnitsTime* instance();

    double toDisplay(double value) const override;
    double toBase(double value, int unit) const override;
    double toBase(double value) const override { return toBase(value, m_unit); }
    void unitSelected() override {}

protected:
    CUnitsTime();
};
