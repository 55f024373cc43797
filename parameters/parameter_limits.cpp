#include "parameters/parameter_limits.h"

#include "app/checked.h"
#include "parameters/parameter_catalogue.h"

#include <limits>

namespace Catalogue = ParameterCatalogue;

std::map<std::string, ParameterLimit> ParameterLimits;

namespace {

constexpr double Max = std::numeric_limits<double>::max();

struct LimitRow
{
    std::string label;
    int kind;
    double first;
    double second;
};

std::vector<LimitRow> contactRows()
{
    return {
        {Catalogue::Restitution, Range, 0.0001, 1},
        {Catalogue::StaticFriction, Range, 0, 1e+100},
        {Catalogue::RollingFriction, Range, 0, 1e+100},
        {Catalogue::Damping, Range, 0, Max},
        {Catalogue::Stiffness, Range, 0, Max},
        {Catalogue::ConstantPullOffForce, Range, -Max, 0},
        {Catalogue::SurfaceEnergy, Range, 0, Max},
        {Catalogue::ContactPlasticityRatio, Range, 0, 1},
        {Catalogue::SlopeExponent, Choice, 1, 1.5},
        {Catalogue::TensileExponent, Range, 1, Max},
        {Catalogue::TangentialStiffMultiplier, Range, 1e-06, Max},
        {Catalogue::NormalStiffness, Range, 0, Max},
        {Catalogue::ShearStiffness, Range, 0, Max},
        {Catalogue::CriticalNormalStress, Range, 0, Max},
        {Catalogue::CriticalShearStress, Range, 0, Max},
        {Catalogue::ShearStrength, Range, 0, Max},
        {Catalogue::BondedDiskRadius, Range, 0, Max},
        {Catalogue::NormalRange, Range, 0, Max},
        {Catalogue::NormalStrength, Range, 0, Max},
        {Catalogue::ShearStrength, Range, 0, Max},
        {Catalogue::TangentialStiffness, Range, 0, Max},
        {Catalogue::TangentialRange, Range, 0, Max},
        {Catalogue::BondedDiskScale, Range, 0, Max},
    };
}

std::vector<LimitRow> modelRows()
{
    return {
        {Catalogue::SurfaceEnergy, Range, -Max, Max},
        {Catalogue::CharacteristicVelocity, Range, -Max, Max},
        {Catalogue::YieldStrength, Range, 1e-24, Max},
        {Catalogue::InterfacialSurfaceEnergy, Range, -Max, Max},
        {Catalogue::TorqueFeedback, Flag, 0, 1},
        {Catalogue::StartTime, Range, 0, Max},
        {Catalogue::ThermalConductivity, Range, 0, Max},
        {Catalogue::GeometryTemperature, Range, 0, Max},
        {Catalogue::EnergyDensity, Range, -Max, Max},
        {Catalogue::EnableRollingFriction, Flag, 0, 1},
        {Catalogue::WearConstant, Range, -Max, Max},
        {Catalogue::HeatCapacity, Range, 0, Max},
        {Catalogue::Density, Range, 1e-08, Max},
        {Catalogue::Viscosity, Range, 1e-08, Max},
        {Catalogue::Spherocity, Range, 1e-06, Max},
        {Catalogue::Scale, Range, 1e-06, Max},
        {Catalogue::SteadyVelocityX, Range, -Max, Max},
        {Catalogue::SteadyVelocityY, Range, -Max, Max},
        {Catalogue::SteadyVelocityZ, Range, -Max, Max},
        {Catalogue::UsingSteadyVelocity, Flag, 0, 1},
    };
}

void insertRows(const std::vector<LimitRow>& rows)
{
    for (const LimitRow& row : rows) {
        // A label that is there already keeps its first row.
        ParameterLimits.insert({row.label, {row.kind, {row.first, row.second}}});
    }
}

} // namespace

void initialiseParameterLimits()
{
    insertRows(contactRows());
    insertRows(modelRows());
}

const ParameterLimit& limitOf(const std::string& label)
{
    return checked::at(ParameterLimits, label);
}
