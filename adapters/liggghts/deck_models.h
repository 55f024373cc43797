#pragma once

#include "adapters/liggghts/experiment.h"

#include <string>

namespace liggghts {

/// Names of the deck's models where the adapter treats one of its own.
namespace DeckModels {

extern const char* const LinearCohesion;
extern const char* const StandardRollingFriction;

} // namespace DeckModels

/// Whether a deck can hold a model of that name.
bool isModel(const std::string& name);

bool isLeftOut(const SExperiment& experiment, const std::string& model);

/// The value of a pair, in whichever order the map names its materials.
template <class Map>
typename Map::const_iterator findPair(const Map& map, const std::string& first,
                                      const std::string& second)
{
    const auto found = map.find(first + "<>" + second);
    return found != map.end() ? found : map.find(second + "<>" + first);
}

} // namespace liggghts
