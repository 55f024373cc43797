#pragma once

#include <array>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

/// One element of a dataset: the names that make its key and its numbers, in the order in which the
/// file keeps them.
struct DeckRow
{
    std::vector<std::string> names;
    std::vector<double> values;
};

/// A dataset, absent from the file where there is none. An empty vector is a dataset of no element.
using DeckRows = std::optional<std::vector<DeckRow>>;

struct TypeCRollingFriction
{
    double coefficientOfRollingStiffness = 0.0;
    double rollingViscousDampingRatio = 0.0;
    bool tangentialRotationOnly = false;
    bool undampedForceOnly = false;
};

/// What particles do to each other and to geometry alike.
struct ContactModels
{
    DeckRows hertzMindlinJkr;                ///< pair; value
    DeckRows hertzMindlinJkrV2;              ///< pair; value
    DeckRows linearSpring;                   ///< pair; value (format 2 on)
    std::optional<double> linearSpringValue; ///< below format 2
    DeckRows hystereticInteractions;         ///< pair; damping, stiffness
    DeckRows hystereticYields;               ///< name; value
    DeckRows edinburghAdhesion;              ///< pair; the six numbers
    std::optional<TypeCRollingFriction> typeCRollingFriction;
    DeckRows linearCohesionV2; ///< pair; value
    DeckRows sprayCoating;     ///< name; value (format 11 on)
};

struct BondingModel
{
    DeckRows data; ///< key; the numbers in member order
    std::optional<double> timeMode;
    std::optional<double> startTime;
    std::optional<bool> torqueFeedback;
};

struct ParticleModels : ContactModels
{
    std::optional<BondingModel> bonding;
    std::optional<BondingModel> bondingV2;
    DeckRows heatConduction; ///< name; value
    std::string heatConductionName = "Heat Conduction/data";
};

struct GeometryModels : ContactModels
{
    std::optional<bool> standardRollingFriction;
    DeckRows heatConductionParticle; ///< name; value
    DeckRows heatConductionGeometry; ///< name; first, second
    DeckRows archardWear;            ///< name in format 0, pair from format 1 on; value
    std::optional<bool> archardDeformation;
    DeckRows okaWear; ///< pair; wearConstant, vickersHardness, scalingFactor
    std::optional<bool> okaDeformation;
};

struct ForceModel
{
    double density = 0.0;
    double fieldScale = 0.0;
    double viscosity = 0.0;
    std::array<double, 3> steadyFlowVelocity = {0.0, 0.0, 0.0};
    double usingSteadyFlow = 0.0;
    /// Type and value, in the file's order; the drag models of Ganser and of Haider and Levenspiel.
    std::optional<std::vector<std::pair<std::string, double>>> shapeFactors;
};

/// Everything that a deck's data file says of materials and models, as the simulator writes it.
struct DeckDescription
{
    std::optional<unsigned int> revision;
    DeckRows interactions; ///< key; restitution, staticFriction, rollingFriction
    ParticleModels surfaceSurface;
    GeometryModels surfaceGeometry;
    std::map<std::string, ForceModel> forces; ///< by the name of the group
    DeckRows temperatureUpdate;               ///< name; value
    std::string temperatureUpdateName = "Temperature Update/data";
    std::string opaqueText = "A deck of the bundled sample.\n";    ///< content of the .zek file
    std::string companionText = "Companion of the sample deck.\n"; ///< content of the .ynd file
};

/// Revision of the program that writes decks of a format index from 0 to 14.
unsigned int revisionOfFormat(int format);

/// The material pairs' key as decks keep it.
std::string pairKey(const std::string& first, const std::string& second);

/// A deck of that format with interactions alone.
DeckDescription plainDeck(int format);

/// A deck with every model that the format knows; no two of its numbers are alike.
DeckDescription fullDeck(int format);
