#pragma once

#include "adapters/liggghts/experiment.h"
#include "deck/creator_data.h"

#include <filesystem>
#include <string>
#include <vector>

namespace liggghts {

/// One kind of contact in the engine's terms.
struct SContact
{
    double restitution = 0.5;
    double staticFriction = 0.5;
    double rollingFriction = 0.0;
    double cohesion = 0.0; ///< J/m3, cohesion energy density
};

/// What the particles do to one another and to the two materials around them.
struct SEngineValues
{
    SContact particles;
    SContact wall;
    SContact floor;

    bool hasCohesion() const;
};

/// A model of the deck that the engine can't do, and why.
struct SMissingModel
{
    std::string name;
    std::string reason;
};

/// Reads `<deck>_data/0.h5` and leaves it as it is. Throws CAdapterError with BadDeck.
CCreatorData readDeck(const std::filesystem::path& deck);

/// The models that would act in this experiment and have no exact counterpart in the engine; those
/// that the experiment leaves out are not among them.
std::vector<SMissingModel> missingModels(const CCreatorData& deck, const SExperiment& experiment);

/// The deck's values for the experiment's materials. Throws CAdapterError with BadDeck, by name and
/// value, for a missing pair, a value that the engine refuses, a model that the engine can't do,
/// and for a name in "leave out" that is no model.
SEngineValues engineValues(const CCreatorData& deck, const SExperiment& experiment);

} // namespace liggghts
