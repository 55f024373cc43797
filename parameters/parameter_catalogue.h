#pragma once

#include <QString>

#include <string>
#include <vector>

/// The vocabulary of everything that can vary: the labels of the property tree and of the fields
/// below it, which are also the words of the job matrix's headings.
namespace ParameterCatalogue {

// Groups of the tree
extern QString ContactModels;
extern QString ParticleToParticle;
extern QString ParticleToGeometry;
extern QString ParticleBodyForce;

// Models. LinearCohesion bears the label of spray coating; SprayCoating and OkaWear have none.
extern std::string Interactions;
extern std::string Yields;
extern std::string HertzMindlinJkr;
extern std::string HertzMindlinJkrV2;
extern std::string LinearSpring;
extern std::string HystereticSpring;
extern std::string EdinburghAdhesion;
extern std::string Bonding;
extern std::string BondingV2;
extern std::string BondingStartTime;
extern std::string BondingTorqueFeedback;
extern std::string HeatConduction;
extern std::string LinearCohesion;
extern std::string SprayCoating;
extern std::string StandardRollingFriction;
extern std::string ArchardWear;
extern std::string OkaWear;
extern std::string TemperatureUpdate;
extern std::string GanserDrag;
extern std::string HaiderLevenspielDrag;
extern std::string MagnusLift;
extern std::string MorsiAlexanderDrag;
extern std::string SaffmanLift;
extern std::string SchillerNaumannDrag;
extern std::string GanserDragParticle;
extern std::string HaiderLevenspielDragParticle;
extern std::string SimulatorOptions;

// Fields. EnergyDensity bears the label of the active sprays; ActiveSprays has none.
extern std::string Restitution;
extern std::string StaticFriction;
extern std::string RollingFriction;
extern std::string Damping;
extern std::string Stiffness;
extern std::string ConstantPullOffForce;
extern std::string SurfaceEnergy;
extern std::string ContactPlasticityRatio;
extern std::string SlopeExponent;
extern std::string TensileExponent;
extern std::string TangentialStiffMultiplier;
extern std::string NormalStiffness;
extern std::string ShearStiffness;
extern std::string CriticalNormalStress;
extern std::string CriticalShearStress;
extern std::string BondedDiskRadius;
extern std::string NormalRange;
extern std::string TangentialStiffness;
extern std::string TangentialRange;
extern std::string NormalStrength;
extern std::string ShearStrength;
extern std::string BondedDiskScale;
extern std::string WearConstant;
extern std::string VickersHardness;
extern std::string ScalingFactor;
extern std::string SteadyVelocityX;
extern std::string SteadyVelocityY;
extern std::string SteadyVelocityZ;
extern std::string Density;
extern std::string Viscosity;
extern std::string Scale;
extern std::string UsingSteadyVelocity;
extern std::string CharacteristicVelocity;
extern std::string YieldStrength;
extern std::string InterfacialSurfaceEnergy;
extern std::string TorqueFeedback;
extern std::string StartTime;
extern std::string ThermalConductivity;
extern std::string GeometryTemperature;
extern std::string EnableRollingFriction;
extern std::string EnableDeformation;
extern std::string HeatCapacity;
extern std::string Spherocity;
extern std::string EnergyDensity;
extern std::string ActiveSprays;

/// Key of a force's one-element map.
extern std::string SteadyFlowVelocity;

// Fields under one key, in the order of the deck's tuple
extern std::vector<std::string> InteractionParameters;
extern std::vector<std::string> HystereticParameters;
extern std::vector<std::string> EdinburghParameters;
extern std::vector<std::string> BondingParameters;
extern std::vector<std::string> BondingV2Parameters;
extern std::vector<std::string> OkaWearParameters;
extern std::vector<std::string> SteadyFlowParameters;
extern std::vector<std::string> FlowFieldParameters;

void initialise();

} // namespace ParameterCatalogue
