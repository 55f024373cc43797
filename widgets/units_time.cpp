#include "widgets/units_time.h"

#include "widgets/unit_vocabulary.h"

namespace {

constexpr int MINUTES = 1;
constexpr double SECONDS_PER_MINUTE = 60.0;

} // namespace

CUnitsTime* CUnitsTime::instance()
{
    static CUnitsTime units;
    return &units;
}

CUnitsTime::CUnitsTime()
{
    m_labels = {{0, UnitVocabulary::SECOND}, {MINUTES, UnitVocabulary::MINUTE}};
    m_label = m_labels[m_unit];
}

double CUnitsTime::toDisplay(double value) const
{
    return m_unit == MINUTES ? value / SECONDS_PER_MINUTE : value;
}

double CUnitsTime::toBase(double value, int unit) const
{
    return unit == MINUTES ? value * SECONDS_PER_MINUTE : value;
}
