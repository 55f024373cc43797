#include "adapters/liggghts/deck_values.h"

#include "adapters/liggghts/adapter_error.h"
#include "adapters/liggghts/command_line.h"
#include "adapters/liggghts/deck_models.h"
#include "adapters/liggghts/numbers.h"
#include "deck/deck_loading.h"
#include "deck/deck_serializer.h"

#include <algorithm>
#include <cmath>

namespace liggghts {
namespace {

constexpr double RestitutionAbove = 0.05;

[[noreturn]] void refuse(const std::string& sentence)
{
    throw CAdapterError(CAdapterError::BadDeck, sentence);
}

void checkRange(const SContact& contact, const std::string& pair)
{
    if (!(contact.restitution > RestitutionAbove && contact.restitution <= 1.0)) {
        refuse("The restitution of " + pair + " is " + numberText(contact.restitution) +
               "; the engine takes values above 0.05 up to 1.");
    }
    if (!(contact.staticFriction >= 0.0) || !std::isfinite(contact.staticFriction)) {
        refuse("The static friction of " + pair + " is " + numberText(contact.staticFriction) +
               "; the engine takes values from 0.");
    }
    if (!(contact.rollingFriction >= 0.0) || !std::isfinite(contact.rollingFriction)) {
        refuse("The rolling friction of " + pair + " is " + numberText(contact.rollingFriction) +
               "; the engine takes values from 0.");
    }
    if (!(contact.cohesion >= 0.0) || !std::isfinite(contact.cohesion)) {
        refuse("The energy density of " + pair + " is " + numberText(contact.cohesion) +
               " J/m3; the engine takes values from 0.");
    }
}

SContact contactOf(const CCreatorData& deck, const std::string& first, const std::string& second)
{
    const auto found = findPair(deck.m_interactions, first, second);
    if (found == deck.m_interactions.end()) {
        refuse("The deck has no interaction of \"" + first + "\" with \"" + second + "\".");
    }
    SContact contact;
    std::tie(contact.restitution, contact.staticFriction, contact.rollingFriction) = found->second;
    return contact;
}

double cohesionOf(const SingleMap& densities, const std::string& first, const std::string& second)
{
    const auto found = findPair(densities, first, second);
    return found == densities.end() ? 0.0 : found->second;
}

SContact surroundingContact(const CCreatorData& deck, const SExperiment& experiment,
                            const std::string& material)
{
    SContact contact = contactOf(deck, experiment.particles.name, material);
    if (!isLeftOut(experiment, DeckModels::LinearCohesion)) {
        contact.cohesion = cohesionOf(deck.m_surfaceGeometry.m_linearCohesionV2,
                                      experiment.particles.name, material);
    }
    const CTaggedValue<bool>& rolling = deck.m_surfaceGeometry.m_standardRollingFriction;
    if (!rolling.first.empty() && !rolling.second &&
        !isLeftOut(experiment, DeckModels::StandardRollingFriction)) {
        contact.rollingFriction = 0.0;
    }
    checkRange(contact, experiment.particles.name + "<>" + material);
    return contact;
}

SContact particleContact(const CCreatorData& deck, const SExperiment& experiment)
{
    const std::string& name = experiment.particles.name;
    SContact contact = contactOf(deck, name, name);
    if (!isLeftOut(experiment, DeckModels::LinearCohesion)) {
        contact.cohesion = cohesionOf(deck.m_surfaceSurface.m_linearCohesionV2, name, name);
    }
    checkRange(contact, name + "<>" + name);
    return contact;
}

void refuseMissing(const std::vector<SMissingModel>& models)
{
    if (models.empty()) {
        return;
    }
    std::string names;
    for (const SMissingModel& model : models) {
        names += (names.empty() ? "\"" : ", \"") + model.name + "\" (" + model.reason + ")";
    }
    refuse("The engine can't do what the deck asks for: " + names +
           ". Name what is to be ignored under \"leave out\" in the experiment file.");
}

} // namespace

bool SEngineValues::hasCohesion() const
{
    return particles.cohesion > 0.0 || wall.cohesion > 0.0 || floor.cohesion > 0.0;
}

CCreatorData readDeck(const std::filesystem::path& deck)
{
    if (!std::filesystem::is_regular_file(deck)) {
        refuse("There is no deck \"" + deck.string() + "\".");
    }
    const std::string data = (dataFolderOf(deck) / "0.h5").string();
    CCreatorData record(deck.stem().string());
    try {
        H5::Exception::dontPrint();
        CDeckSerializer serializer;
        DeckLoading::readDataFile(serializer, data, record);
    } catch (const H5::Exception& failure) {
        refuse("The deck's data \"" + data + "\" can't be read (" + failure.getDetailMsg() + ").");
    }
    return record;
}

SEngineValues engineValues(const CCreatorData& deck, const SExperiment& experiment)
{
    for (const std::string& name : experiment.leaveOut) {
        if (!isModel(name)) {
            refuse("The experiment leaves out \"" + name + "\", which is no model of a deck.");
        }
    }
    refuseMissing(missingModels(deck, experiment));
    SEngineValues values;
    values.particles = particleContact(deck, experiment);
    values.wall = surroundingContact(deck, experiment, experiment.wall.name);
    values.floor = surroundingContact(deck, experiment, experiment.floor.name);
    return values;
}

} // namespace liggghts
