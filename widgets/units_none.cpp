#include "widgets/units_none.h"

CUnitsNone* CUnitsNone::instance()
{
    static CUnitsNone units;
    return &units;
}

double CUnitsNone::toBase(double value, int /*unit*/) const
{
    return value;
}
