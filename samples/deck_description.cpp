#include "samples/deck_description.h"

namespace {

/// Hands out numbers that differ, so that two values which change places show.
class CNumbers
{
public:
    double next() { return ++m_count * 0.125; }

    std::vector<double> next(std::size_t count)
    {
        std::vector<double> numbers(count);
        for (double& number : numbers) {
            number = next();
        }
        return numbers;
    }

    std::vector<DeckRow> rows(const std::vector<std::vector<std::string>>& names, std::size_t count)
    {
        std::vector<DeckRow> rows;
        rows.reserve(names.size());
        for (const std::vector<std::string>& name : names) {
            rows.push_back({name, next(count)});
        }
        return rows;
    }

private:
    int m_count = 0;
};

using Names = std::vector<std::vector<std::string>>;

// Not in alphabetical order, since the simulator's tables aren't either.
const Names particlePairs = {{"glass", "rubber"}, {"glass", "glass"}, {"rubber", "rubber"}};
const Names geometryPairs = {{"rubber", "steel"}, {"glass", "steel"}};
const Names materials = {{"rubber"}, {"glass"}};

Names wholeKeys(const Names& pairs)
{
    Names keys;
    for (const std::vector<std::string>& pair : pairs) {
        keys.push_back({pairKey(pair.at(0), pair.at(1))});
    }
    return keys;
}

void fillContactModels(ContactModels& models, const Names& pairs, int format, CNumbers& numbers)
{
    models.hertzMindlinJkr = numbers.rows(pairs, 1);
    models.hertzMindlinJkrV2 = numbers.rows(pairs, 1);
    if (format < 2) {
        models.linearSpringValue = numbers.next();
    } else {
        models.linearSpring = numbers.rows(pairs, 1);
    }
    models.hystereticInteractions = numbers.rows(pairs, 2);
    models.hystereticYields = numbers.rows(materials, 1);
    models.edinburghAdhesion = numbers.rows(pairs, 6);
    models.typeCRollingFriction = TypeCRollingFriction{numbers.next(), numbers.next(), true, false};
    models.linearCohesionV2 = numbers.rows(pairs, 1);
    if (format >= 11) {
        models.sprayCoating = numbers.rows(materials, 1);
    }
}

void fillParticleModels(ParticleModels& models, int format, CNumbers& numbers)
{
    fillContactModels(models, particlePairs, format, numbers);
    models.bonding =
        BondingModel{numbers.rows(wholeKeys(particlePairs), 5), {}, numbers.next(), true};
    if (format >= 1) {
        models.bondingV2 = BondingModel{numbers.rows(wholeKeys(particlePairs), 7), 0.0, {}, true};
    }
    if (format == 1 || format == 2) {
        models.bondingV2->startTime = numbers.next();
    }
    models.heatConduction = numbers.rows(materials, 1);
    if (format == 2) {
        models.heatConductionName = "Heat Conduction/particle data";
    }
}

void fillGeometryModels(GeometryModels& models, int format, CNumbers& numbers)
{
    fillContactModels(models, geometryPairs, format, numbers);
    models.standardRollingFriction = true;
    models.heatConductionParticle = numbers.rows(materials, 1);
    models.heatConductionGeometry = numbers.rows({{"wall"}, {"floor"}}, 2);
    models.archardWear = numbers.rows(format == 0 ? materials : geometryPairs, 1);
    if (format >= 11) {
        models.archardDeformation = true;
        models.okaWear = numbers.rows(geometryPairs, 3);
        models.okaDeformation = true;
    }
}

ForceModel force(CNumbers& numbers)
{
    ForceModel model;
    model.density = numbers.next();
    model.fieldScale = numbers.next();
    model.viscosity = numbers.next();
    model.steadyFlowVelocity = {numbers.next(), numbers.next(), numbers.next()};
    model.usingSteadyFlow = 1.0;
    return model;
}

} // namespace

unsigned int revisionOfFormat(int format)
{
    static const std::array<unsigned int, 15> revisions = {27785, 27923, 28116, 28414, 28993,
                                                           31638, 31856, 32371, 32856, 33718,
                                                           34860, 36588, 37575, 38329, 40000};
    return revisions.at(static_cast<std::size_t>(format));
}

std::string pairKey(const std::string& first, const std::string& second)
{
    return first + "<>" + second;
}

DeckDescription plainDeck(int format)
{
    DeckDescription deck;
    deck.revision = revisionOfFormat(format);
    deck.interactions = std::vector<DeckRow>{{{pairKey("glass", "steel")}, {0.5, 0.4, 0.01}},
                                             {{pairKey("glass", "glass")}, {0.75, 0.25, 0.02}}};
    return deck;
}

DeckDescription fullDeck(int format)
{
    CNumbers numbers;
    DeckDescription deck = plainDeck(format);
    fillParticleModels(deck.surfaceSurface, format, numbers);
    fillGeometryModels(deck.surfaceGeometry, format, numbers);
    for (const char* name :
         {"Ganser Drag", "Haider and Levenspiel Drag", "Magnus Lift", "Morsi and Alexander Drag",
          "Saffman Lift", "Schiller and Naumann Drag"}) {
        deck.forces[name] = force(numbers);
    }
    for (const char* name : {"Ganser Drag", "Haider and Levenspiel Drag"}) {
        deck.forces[name].shapeFactors = {{"sphere", numbers.next()}, {"chip", numbers.next()}};
    }
    deck.temperatureUpdate = numbers.rows(materials, 1);
    if (format == 1) {
        deck.temperatureUpdateName = "Temperature Update/particle data";
    }
    return deck;
}
