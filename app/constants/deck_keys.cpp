#include "app/constants/deck_keys.h"

namespace DeckKeys {

std::string CreatorData;
std::string PhysicsModels;
std::string SurfaceSurface;
std::string SurfaceGeometry;
std::string ExternalForces;
std::string Separator;

const char* Data = nullptr;
const char* Active = nullptr;
const char* Interactions = nullptr;
const char* HertzMindlinWithJKRData = nullptr;
const char* HertzMindlinWithJKRV2Data = nullptr;
const char* LinearSpring = nullptr;
const char* HystereticSpringInteractions = nullptr;
const char* HystereticSpringYields = nullptr;
const char* EdinburghElastoPlasticAdhesionData = nullptr;
const char* BondingData = nullptr;
const char* Bonding = nullptr;
const char* BondingV2Data = nullptr;
const char* BondingV2 = nullptr;
const char* HeatConductionData = nullptr;
const char* HeatConductionParticleData = nullptr;
const char* HeatConductionGeometryData = nullptr;
const char* LinearCohesionV2Data = nullptr;
const char* SprayCoatingData = nullptr;
const char* StandardRollingFriction = nullptr;
const char* TypeCRollingFriction = nullptr;
const char* ArchardWear = nullptr;
const char* ArchardWearData = nullptr;
const char* OkaWear = nullptr;
const char* OkaWearData = nullptr;
const char* TemperatureUpdateData = nullptr;
const char* TemperatureUpdateParticleData = nullptr;
const char* GanserDrag = nullptr;
const char* HaiderAndLevenspielDrag = nullptr;
const char* MagnusLift = nullptr;
const char* MorsiAndAlexanderDrag = nullptr;
const char* SaffmanLift = nullptr;
const char* SchillerAndNaumannDrag = nullptr;

const char* BondingTimeMode = nullptr;
const char* StartTime = nullptr;
const char* TorqueFeedback = nullptr;
const char* EnableRollingFriction = nullptr;
const char* Deformation = nullptr;
const char* OkaDeformation = nullptr;
const char* SvnVersion = nullptr;
const char* FileVersion = nullptr;

const char* Name = nullptr;
const char* Name1 = nullptr;
const char* Name2 = nullptr;
const char* Key = nullptr;
const char* Type = nullptr;
const char* Value = nullptr;
const char* BondDiskScale = nullptr;
const char* BondRadius = nullptr;
const char* CoefficientOfRollingStiffness = nullptr;
const char* ConstPullOffForce = nullptr;
const char* ContactPlasticityRatio = nullptr;
const char* Damping = nullptr;
const char* Density = nullptr;
const char* FieldScale = nullptr;
const char* NormalRange = nullptr;
const char* NormalStiffness = nullptr;
const char* NormalStrength = nullptr;
const char* Restitution = nullptr;
const char* RollingFriction = nullptr;
const char* RollingViscousDampingRatio = nullptr;
const char* ScalingFactor = nullptr;
const char* ShearStiffness = nullptr;
const char* ShearStrength = nullptr;
const char* SlopeExponential = nullptr;
const char* StaticFriction = nullptr;
const char* SteadyFlowVelocity = nullptr;
const char* Stiffness = nullptr;
const char* SurfaceEnergy = nullptr;
const char* TangRange = nullptr;
const char* TangentialRotationOnly = nullptr;
const char* TangStiffness = nullptr;
const char* TangentStiffMultiplier = nullptr;
const char* TensileExponential = nullptr;
const char* UndampedForceOnly = nullptr;
const char* UsingSteadyFlow = nullptr;
const char* WearConstant = nullptr;
const char* VickersHardness = nullptr;
const char* Viscosity = nullptr;

std::map<unsigned int, int> FormatForRevision;

namespace {

void nameGroups()
{
    CreatorData = "/CreatorData/0/";
    PhysicsModels = "PhysicsModels/";
    SurfaceSurface = "SurfaceSurface/";
    SurfaceGeometry = "SurfaceGeometry/";
    ExternalForces = "ExternalForces/";
    Separator = "<>";
}

void nameDatasets()
{
    Data = "data";
    Active = "Active";
    Interactions = "Interactions";
    HertzMindlinWithJKRData = "Hertz-Mindlin with JKR/data";
    HertzMindlinWithJKRV2Data = "Hertz-Mindlin with JKR V2/data";
    LinearSpring = "Linear Spring";
    HystereticSpringInteractions = "Hysteretic Spring/interactions";
    HystereticSpringYields = "Hysteretic Spring/yields";
    EdinburghElastoPlasticAdhesionData = "Edinburgh Elasto-Plastic Adhesion/data";
    BondingData = "Bonding/data";
    Bonding = "Bonding";
    BondingV2Data = "Bonding V2/data";
    BondingV2 = "Bonding V2";
    HeatConductionData = "Heat Conduction/data";
    HeatConductionParticleData = "Heat Conduction/particle data";
    HeatConductionGeometryData = "Heat Conduction/geometry data";
    LinearCohesionV2Data = "Linear Cohesion V2/data";
    SprayCoatingData = "Spray Coating/data";
    StandardRollingFriction = "Standard Rolling Friction";
    TypeCRollingFriction = "Type C Rolling Friction";
    ArchardWear = "Archard Wear";
    ArchardWearData = "Archard Wear/data";
    OkaWear = "Oka Wear";
    OkaWearData = "Oka Wear/data";
    TemperatureUpdateData = "Temperature Update/data";
    TemperatureUpdateParticleData = "Temperature Update/particle data";
    GanserDrag = "Ganser Drag";
    HaiderAndLevenspielDrag = "Haider and Levenspiel Drag";
    MagnusLift = "Magnus Lift";
    MorsiAndAlexanderDrag = "Morsi and Alexander Drag";
    SaffmanLift = "Saffman Lift";
    SchillerAndNaumannDrag = "Schiller and Naumann Drag";
}

void nameAttributes()
{
    BondingTimeMode = "bonding time mode";
    StartTime = "start time";
    TorqueFeedback = "torque feedback";
    EnableRollingFriction = "enable rolling friction";
    Deformation = "deformation";
    OkaDeformation = "oka deformation";
    SvnVersion = "svn version";
    FileVersion = "file version";
}

void nameMembers()
{
    Name = "name";
    Name1 = "name1";
    Name2 = "name2";
    Key = "key";
    Type = "type";
    Value = "value";
    BondDiskScale = "bondDiskScale";
    BondRadius = "bondRadius";
    CoefficientOfRollingStiffness = "coefficient of rolling stiffness";
    ConstPullOffForce = "constPullOffForce";
    ContactPlasticityRatio = "contactPlasticityRatio";
    Damping = "damping";
    Density = "density";
    FieldScale = "field scale";
    NormalRange = "normalRange";
    NormalStiffness = "normalStiffness";
    NormalStrength = "normalStrength";
    Restitution = "restitution";
    RollingFriction = "rollingFriction";
    RollingViscousDampingRatio = "rolling viscous damping ratio";
    ScalingFactor = "scalingFactor";
    ShearStiffness = "shearStiffness";
    ShearStrength = "shearStrength";
    SlopeExponential = "slopeExponential";
    StaticFriction = "staticFriction";
    SteadyFlowVelocity = "steady flow velocity";
    Stiffness = "stiffness";
    SurfaceEnergy = "surfaceEnergy";
    TangRange = "tangRange";
    TangentialRotationOnly = "tangential rotation only";
    TangStiffness = "tangStiffness";
    TangentStiffMultiplier = "tangentStiffMultiplier";
    TensileExponential = "tensileExponential";
    UndampedForceOnly = "undamped force only";
    UsingSteadyFlow = "using steady flow";
    WearConstant = "wearConstant";
    VickersHardness = "vickersHardness";
    Viscosity = "viscosity";
}

void fillFormats()
{
    FormatForRevision = {
        {27785U, 0},  {27923U, 1},  {28116U, 2},  {28414U, 3},  {28993U, 4},
        {31638U, 5},  {31856U, 6},  {32371U, 7},  {32856U, 8},  {33718U, 9},
        {34860U, 10}, {36588U, 11}, {37575U, 12}, {38329U, 13}, {40000U, 14},
    };
}

} // namespace

void initialise()
{
    nameGroups();
    nameDatasets();
    nameAttributes();
    nameMembers();
    fillFormats();
}

} // namespace DeckKeys
