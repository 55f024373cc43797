#pragma once

#include "widgets/units_time.h"

/// Times shown in minutes: what the program's own converter would be with its other unit in use.
class CMinutes : public CUnitsTime
{
public:
    CMinutes() { select(1); }

    /// Changes the unit and tells the boxes that share the converter.
    void select(int unit)
    {
        m_unit = unit;
        m_label = m_labels[m_unit];
        emit updateUnits(m_label);
    }
};
