#include "adapters/liggghts/deck_models.h"

#include "adapters/liggghts/deck_values.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace liggghts {
namespace DeckModels {

const char* const LinearCohesion = "Linear Cohesion V2";
const char* const StandardRollingFriction = "Standard Rolling Friction";

} // namespace DeckModels

namespace {

const char* const NoCounterpart = "no counterpart in the engine";

/// The contacts that come about in the experiment, in one of the deck's two model sets.
class CContactPairs
{
public:
    CContactPairs(std::string particles, std::vector<std::string> others)
        : m_particles(std::move(particles))
        , m_others(std::move(others))
    {
    }

    template <class Map>
    bool anyIn(const Map& map) const
    {
        return std::any_of(m_others.begin(), m_others.end(), [&](const std::string& other) {
            return findPair(map, m_particles, other) != map.end();
        });
    }

    /// As anyIn, for maps whose value of 0 is the same as no value.
    bool anyAboveZero(const SingleMap& map) const
    {
        return std::any_of(m_others.begin(), m_others.end(), [&](const std::string& other) {
            const auto found = findPair(map, m_particles, other);
            return found != map.end() && found->second != 0.0;
        });
    }

    bool particlesIn(const SingleMap& byMaterial) const
    {
        return byMaterial.count(m_particles) != 0;
    }

private:
    std::string m_particles;
    std::vector<std::string> m_others;
};

/// Gathers the models that are there; each once.
class CModelList
{
public:
    explicit CModelList(const SExperiment& experiment)
        : m_experiment(experiment)
    {
    }

    void add(bool present, const char* name, const char* reason = NoCounterpart)
    {
        const bool known =
            std::any_of(m_models.begin(), m_models.end(),
                        [name](const SMissingModel& model) { return model.name == name; });
        if (present && !known && !isLeftOut(m_experiment, name)) {
            m_models.push_back({name, reason});
        }
    }

    std::vector<SMissingModel> take() { return std::move(m_models); }

private:
    const SExperiment& m_experiment;
    std::vector<SMissingModel> m_models;
};

void addModelSet(CModelList& list, const CModelSet& set, const CContactPairs& pairs)
{
    const char* const surfaceEnergy = "the engine knows no surface energy; of 0 it would be exact";
    list.add(pairs.anyAboveZero(set.m_hertzMindlinJkr), "Hertz-Mindlin with JKR", surfaceEnergy);
    list.add(pairs.anyAboveZero(set.m_hertzMindlinJkrV2), "Hertz-Mindlin with JKR V2",
             surfaceEnergy);
    list.add(pairs.anyIn(set.m_linearSpring) || !set.m_linearSpringValue.first.empty(),
             "Linear Spring", "the adapter runs the engine with Hertz contacts");
    list.add(pairs.anyIn(set.m_hystereticInteractions), "Hysteretic Spring");
    list.add(pairs.anyIn(set.m_edinburghAdhesion), "Edinburgh Elasto-Plastic Adhesion",
             "the engine's model of that name doesn't keep the deck's restitution");
    list.add(set.m_coefficientOfRollingStiffness != 0.0 || set.m_rollingViscousDampingRatio != 0.0,
             "Type C Rolling Friction", "the engine has no rolling stiffness of its own");
    list.add(pairs.particlesIn(set.m_sprayCoating), "Spray Coating");
}

void addParticleModels(CModelList& list, const CSurfaceSurfaceModels& models,
                       const CContactPairs& pairs)
{
    addModelSet(list, models, pairs);
    list.add(pairs.anyIn(models.m_bonding), "Bonding");
    list.add(pairs.anyIn(models.m_bondingV2), "Bonding V2");
    list.add(pairs.particlesIn(models.m_heatConduction), "Heat Conduction");
}

void addGeometryModels(CModelList& list, const CSurfaceGeometryModels& models,
                       const CContactPairs& pairs)
{
    addModelSet(list, models, pairs);
    list.add(pairs.particlesIn(models.m_heatConductionParticle) ||
                 !models.m_heatConductionGeometry.empty(),
             "Heat Conduction");
    list.add(pairs.anyIn(models.m_archardWear) || pairs.particlesIn(models.m_archardWear),
             "Archard Wear");
    list.add(pairs.anyIn(models.m_okaWear), "Oka Wear");
}

void addForces(CModelList& list, const CExternalForces& forces, const std::string& particles)
{
    const std::array<const CForce*, 6> all{&forces.m_ganserDrag,  &forces.m_haiderLevenspielDrag,
                                           &forces.m_magnusLift,  &forces.m_morsiAlexanderDrag,
                                           &forces.m_saffmanLift, &forces.m_schillerNaumannDrag};
    for (const CForce* force : all) {
        list.add(!force->m_sName.empty(), force->m_sName.c_str());
    }
    list.add(forces.m_temperatureUpdate.count(particles) != 0, "Temperature Update");
}

} // namespace

bool isModel(const std::string& name)
{
    static const std::array<const char*, 21> names{"Hertz-Mindlin with JKR",
                                                   "Hertz-Mindlin with JKR V2",
                                                   "Linear Spring",
                                                   "Hysteretic Spring",
                                                   "Edinburgh Elasto-Plastic Adhesion",
                                                   "Type C Rolling Friction",
                                                   DeckModels::LinearCohesion,
                                                   "Spray Coating",
                                                   "Bonding",
                                                   "Bonding V2",
                                                   "Heat Conduction",
                                                   DeckModels::StandardRollingFriction,
                                                   "Archard Wear",
                                                   "Oka Wear",
                                                   "Ganser Drag",
                                                   "Haider and Levenspiel Drag",
                                                   "Magnus Lift",
                                                   "Morsi and Alexander Drag",
                                                   "Saffman Lift",
                                                   "Schiller and Naumann Drag",
                                                   "Temperature Update"};
    return std::any_of(names.begin(), names.end(),
                       [&name](const char* one) { return name == one; });
}

bool isLeftOut(const SExperiment& experiment, const std::string& model)
{
    const std::vector<std::string>& names = experiment.leaveOut;
    return std::find(names.begin(), names.end(), model) != names.end();
}

std::vector<SMissingModel> missingModels(const CCreatorData& deck, const SExperiment& experiment)
{
    const std::string& particles = experiment.particles.name;
    const CContactPairs amongParticles(particles, {particles});
    const CContactPairs withGeometry(particles, {experiment.wall.name, experiment.floor.name});
    CModelList list(experiment);
    addParticleModels(list, deck.m_surfaceSurface, amongParticles);
    addGeometryModels(list, deck.m_surfaceGeometry, withGeometry);
    addForces(list, deck.m_externalForces, particles);
    return list.take();
}

} // namespace liggghts
