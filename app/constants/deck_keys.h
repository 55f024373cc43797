#pragma once

#include <map>
#include <string>

/// Names of groups, datasets, attributes and members in a deck's HDF5 file. The pointers can be
/// assigned anew: reading a deck of format 1 or 2 renames one dataset for the rest of the process.
namespace DeckKeys {

extern std::string CreatorData;
extern std::string PhysicsModels;
extern std::string SurfaceSurface;
extern std::string SurfaceGeometry;
extern std::string ExternalForces;
extern std::string Separator;

// Datasets and groups
extern const char* Data;
extern const char* Active;
extern const char* Interactions;
extern const char* HertzMindlinWithJKRData;
extern const char* HertzMindlinWithJKRV2Data;
extern const char* LinearSpring;
extern const char* HystereticSpringInteractions;
extern const char* HystereticSpringYields;
extern const char* EdinburghElastoPlasticAdhesionData;
extern const char* BondingData;
extern const char* Bonding;
extern const char* BondingV2Data;
extern const char* BondingV2;
extern const char* HeatConductionData;
extern const char* HeatConductionParticleData;
extern const char* HeatConductionGeometryData;
extern const char* LinearCohesionV2Data;
extern const char* SprayCoatingData;
extern const char* StandardRollingFriction;
extern const char* TypeCRollingFriction;
extern const char* ArchardWear;
extern const char* ArchardWearData;
extern const char* OkaWear;
extern const char* OkaWearData;
extern const char* TemperatureUpdateData;
extern const char* TemperatureUpdateParticleData;
extern const char* GanserDrag;
extern const char* HaiderAndLevenspielDrag;
extern const char* MagnusLift;
extern const char* MorsiAndAlexanderDrag;
extern const char* SaffmanLift;
extern const char* SchillerAndNaumannDrag;

// Attributes
extern const char* BondingTimeMode;
extern const char* StartTime;
extern const char* TorqueFeedback;
extern const char* EnableRollingFriction;
extern const char* Deformation;
extern const char* OkaDeformation;
extern const char* SvnVersion;
extern const char* FileVersion;

// Members and fields
extern const char* Name;
extern const char* Name1;
extern const char* Name2;
extern const char* Key;
extern const char* Type;
extern const char* Value;
extern const char* BondDiskScale;
extern const char* BondRadius;
extern const char* CoefficientOfRollingStiffness;
extern const char* ConstPullOffForce;
extern const char* ContactPlasticityRatio;
extern const char* Damping;
extern const char* Density;
extern const char* FieldScale;
extern const char* NormalRange;
extern const char* NormalStiffness;
extern const char* NormalStrength;
extern const char* Restitution;
extern const char* RollingFriction;
extern const char* RollingViscousDampingRatio;
extern const char* ScalingFactor;
extern const char* ShearStiffness;
extern const char* ShearStrength;
extern const char* SlopeExponential;
extern const char* StaticFriction;
extern const char* SteadyFlowVelocity;
extern const char* Stiffness;
extern const char* SurfaceEnergy;
extern const char* TangRange;
extern const char* TangentialRotationOnly;
extern const char* TangStiffness;
extern const char* TangentStiffMultiplier;
extern const char* TensileExponential;
extern const char* UndampedForceOnly;
extern const char* UsingSteadyFlow;
extern const char* WearConstant;
extern const char* VickersHardness;
extern const char* Viscosity;

/// Revision of the program that wrote a deck ("svn version") to deck format index.
extern std::map<unsigned int, int> FormatForRevision;

void initialise();

} // namespace DeckKeys
