#pragma once

#include "adapters/liggghts/experiment.h"

#include <functional>
#include <string>

namespace liggghts {

/// The engine keeps seeds in an int.
constexpr unsigned long MostSeed = 2147483647;

/// One key of the experiment file.
struct SExperimentKey
{
    std::string name;
    unsigned kinds; ///< a bit per EExperiment that knows the key
    /// Throws CAdapterError with BadDeck, with half a sentence, for a value of another kind.
    std::function<void(SExperiment&, const std::string& value)> take;

    bool servesFor(EExperiment kind) const;
};

/// Null for a name that no experiment knows.
const SExperimentKey* findKey(const std::string& name);

} // namespace liggghts
