#include "parameters/parameter_catalogue.h"

#include <QCoreApplication>

namespace ParameterCatalogue {

QString ContactModels;
QString ParticleToParticle;
QString ParticleToGeometry;
QString ParticleBodyForce;

std::string Interactions;
std::string Yields;
std::string HertzMindlinJkr;
std::string HertzMindlinJkrV2;
std::string LinearSpring;
std::string HystereticSpring;
std::string EdinburghAdhesion;
std::string Bonding;
std::string BondingV2;
std::string BondingStartTime;
std::string BondingTorqueFeedback;
std::string HeatConduction;
std::string LinearCohesion;
std::string SprayCoating;
std::string StandardRollingFriction;
std::string ArchardWear;
std::string OkaWear;
std::string TemperatureUpdate;
std::string GanserDrag;
std::string HaiderLevenspielDrag;
std::string MagnusLift;
std::string MorsiAlexanderDrag;
std::string SaffmanLift;
std::string SchillerNaumannDrag;
std::string GanserDragParticle;
std::string HaiderLevenspielDragParticle;
std::string SimulatorOptions;

std::string Restitution;
std::string StaticFriction;
std::string RollingFriction;
std::string Damping;
std::string Stiffness;
std::string ConstantPullOffForce;
std::string SurfaceEnergy;
std::string ContactPlasticityRatio;
std::string SlopeExponent;
std::string TensileExponent;
std::string TangentialStiffMultiplier;
std::string NormalStiffness;
std::string ShearStiffness;
std::string CriticalNormalStress;
std::string CriticalShearStress;
std::string BondedDiskRadius;
std::string NormalRange;
std::string TangentialStiffness;
std::string TangentialRange;
std::string NormalStrength;
std::string ShearStrength;
std::string BondedDiskScale;
std::string WearConstant;
std::string VickersHardness;
std::string ScalingFactor;
std::string SteadyVelocityX;
std::string SteadyVelocityY;
std::string SteadyVelocityZ;
std::string Density;
std::string Viscosity;
std::string Scale;
std::string UsingSteadyVelocity;
std::string CharacteristicVelocity;
std::string YieldStrength;
std::string InterfacialSurfaceEnergy;
std::string TorqueFeedback;
std::string StartTime;
std::string ThermalConductivity;
std::string GeometryTemperature;
std::string EnableRollingFriction;
std::string EnableDeformation;
std::string HeatCapacity;
std::string Spherocity;
std::string EnergyDensity;
std::string ActiveSprays;

std::string SteadyFlowVelocity;

std::vector<std::string> InteractionParameters;
std::vector<std::string> HystereticParameters;
std::vector<std::string> EdinburghParameters;
std::vector<std::string> BondingParameters;
std::vector<std::string> BondingV2Parameters;
std::vector<std::string> OkaWearParameters;
std::vector<std::string> SteadyFlowParameters;
std::vector<std::string> FlowFieldParameters;

namespace {

QString translated(const char* text)
{
    return QCoreApplication::translate("GUI Parameters", text);
}

void nameGroups()
{
    ContactModels = translated("Contact Models");
    ParticleToParticle = translated("Particle to Particle");
    ParticleToGeometry = translated("Particle to Geometry");
    ParticleBodyForce = translated("Particle Body Force");
}

void nameModels()
{
    Interactions = "Interactions";
    Yields = "Yields";
    HertzMindlinJkr = "Hertz-Mindlin with JKR";
    HertzMindlinJkrV2 = "Hertz-Mindlin with JKR V2";
    LinearSpring = "Linear Spring";
    HystereticSpring = "Hysteretic Spring";
    EdinburghAdhesion = "Edinburgh Elasto-Plastic Adhesion";
    Bonding = "Bonding";
    BondingV2 = "Bonding V2";
    BondingStartTime = "Bonding Start Time";
    BondingTorqueFeedback = "Bonding Torque Feedback";
    HeatConduction = "Heat Conduction";
    LinearCohesion = "Spray Coating";
    StandardRollingFriction = "Rolling friction";
    ArchardWear = "Archard Wear";
    TemperatureUpdate = "Temperature Update";
    GanserDrag = "Ganser Drag";
    HaiderLevenspielDrag = "Haider and Levenspiel Drag";
    MagnusLift = "Magnus Lift";
    MorsiAlexanderDrag = "Morsi and Alexander Drag";
    SaffmanLift = "Saffman Lift";
    SchillerNaumannDrag = "Schiller and Naumann Drag";
    GanserDragParticle = "Ganser Drag Particle ";
    HaiderLevenspielDragParticle = "Haider and Levenspiel Drag Particle ";
    SimulatorOptions = "Simulator Options";
}

void nameFields()
{
    Restitution = "Restitution";
    StaticFriction = "Static Friction";
    RollingFriction = "Rolling Friction";
    Damping = "Damping";
    Stiffness = "Stiffness";
    ConstantPullOffForce = "Constant pull-off force";
    SurfaceEnergy = "Surface Energy";
    ContactPlasticityRatio = "Contact Plasticity Ratio";
    SlopeExponent = "Slope Exp";
    TensileExponent = "Tensile Exp";
    TangentialStiffMultiplier = "Tangential Stiff Multiplier";
    NormalStiffness = "Normal Stiffness per unit area";
    ShearStiffness = "Shear Stiffness per unit area";
    CriticalNormalStress = "Critical Normal Stress";
    CriticalShearStress = "Critical Shear Stress";
    BondedDiskRadius = "Bonded Disk Radius";
    NormalRange = "Normal Range";
    TangentialStiffness = "Tangential Stiffness";
    TangentialRange = "Tangential Range";
    NormalStrength = "Normal Strength";
    ShearStrength = "Shear Strength";
    BondedDiskScale = "Bonded Disk Scale";
    WearConstant = "Wear Constant";
    VickersHardness = "Vickers Hardness";
    ScalingFactor = "Scaling Factor";
    SteadyVelocityX = "Steady Velocity Flow X";
    SteadyVelocityY = "Steady Velocity Flow Y";
    SteadyVelocityZ = "Steady Velocity Flow Z";
    Density = "Density";
    Viscosity = "Viscosity";
    Scale = "Scale";
    UsingSteadyVelocity = "Using Steady Velocity Flow";
    CharacteristicVelocity = "Characteristic Velocity";
    YieldStrength = "Yield Strength";
    InterfacialSurfaceEnergy = "Interfacial Surface energy";
    TorqueFeedback = "Torque Feedback";
    StartTime = "Start Time";
    ThermalConductivity = "Thermal Conductivity";
    GeometryTemperature = "Geometry Temperature";
    EnableRollingFriction = "Enable Rolling Friction";
    EnableDeformation = "Enable Deformation";
    HeatCapacity = "Heat Capacity";
    Spherocity = "Spherocity";
    EnergyDensity = "Active Sprays";
    SteadyFlowVelocity = "Steady Flow Velocity";
}

void fillLists()
{
    InteractionParameters = {Restitution, StaticFriction, RollingFriction};
    HystereticParameters = {Damping, Stiffness};
    EdinburghParameters = {ConstantPullOffForce, SurfaceEnergy,   ContactPlasticityRatio,
                           SlopeExponent,        TensileExponent, TangentialStiffMultiplier};
    BondingParameters = {NormalStiffness, ShearStiffness, CriticalNormalStress, CriticalShearStress,
                         BondedDiskRadius};
    BondingV2Parameters = {NormalStiffness, NormalRange,   TangentialStiffness, TangentialRange,
                           NormalStrength,  ShearStrength, BondedDiskScale};
    OkaWearParameters = {WearConstant, VickersHardness, ScalingFactor};
    SteadyFlowParameters = {SteadyVelocityX, SteadyVelocityY, SteadyVelocityZ};
    FlowFieldParameters = {Density, Viscosity, Scale, UsingSteadyVelocity};
}

} // namespace

void initialise()
{
    nameGroups();
    nameModels();
    nameFields();
    fillLists();
}

} // namespace ParameterCatalogue
