#include "adapters/liggghts/experiment_keys.h"

#include "adapters/liggghts/adapter_error.h"
#include "adapters/liggghts/experiment_file.h"
#include "adapters/liggghts/numbers.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace liggghts {
namespace {

using Take = std::function<void(SExperiment&, const std::string& value)>;

constexpr double MostSpheres = 1e6;

constexpr unsigned bit(EExperiment kind)
{
    return 1U << static_cast<unsigned>(kind);
}

constexpr unsigned Repose = bit(EExperiment::AngleOfRepose);
constexpr unsigned Draw = bit(EExperiment::DrawDown);
constexpr unsigned Column = bit(EExperiment::Collapse);
constexpr unsigned Meeting = bit(EExperiment::Collision);
constexpr unsigned Thrown = bit(EExperiment::SlidingSphere) | bit(EExperiment::RollingSphere);
constexpr unsigned Heaps = Repose | Draw | Column;
constexpr unsigned All = Heaps | Meeting | Thrown;

const std::array<std::pair<EExperiment, const char*>, 6>& kindNames()
{
    static const std::array<std::pair<EExperiment, const char*>, 6> names{
        {{EExperiment::AngleOfRepose, "angle of repose"},
         {EExperiment::DrawDown, "draw-down"},
         {EExperiment::Collapse, "column collapse"},
         {EExperiment::Collision, "collision"},
         {EExperiment::SlidingSphere, "sliding sphere"},
         {EExperiment::RollingSphere, "rolling sphere"}}};
    return names;
}

[[noreturn]] void refuse(const std::string& halfSentence)
{
    throw CAdapterError(CAdapterError::BadDeck, halfSentence);
}

double positiveNumber(const std::string& text)
{
    const std::optional<double> number = numberFrom(text);
    if (!number || *number <= 0.0) {
        refuse("\"" + text + "\" is not a number above 0");
    }
    return *number;
}

double plainNumber(const std::string& text)
{
    const std::optional<double> number = numberFrom(text);
    if (!number) {
        refuse("\"" + text + "\" is not a number");
    }
    return *number;
}

std::string oneOf(const std::string& text, const std::vector<std::string>& words)
{
    if (std::find(words.begin(), words.end(), text) == words.end()) {
        std::string choice;
        for (const std::string& word : words) {
            choice += (choice.empty() ? "" : ", ") + word;
        }
        refuse("\"" + text + "\" is none of " + choice);
    }
    return text;
}

std::size_t wholeNumber(const std::string& text, double most)
{
    const double number = positiveNumber(text);
    if (number != std::floor(number) || number > most) {
        refuse("\"" + text + "\" is not a whole number up to " + numberText(most));
    }
    return static_cast<std::size_t>(number);
}

Take into(double SExperiment::*member)
{
    return [member](SExperiment& experiment, const std::string& value) {
        experiment.*member = positiveNumber(value);
    };
}

Take nameInto(SMaterial SExperiment::*material)
{
    return [material](SExperiment& experiment, const std::string& value) {
        (experiment.*material).name = value;
    };
}

Take stiffnessInto(SMaterial SExperiment::*material)
{
    return [material](SExperiment& experiment, const std::string& value) {
        (experiment.*material).youngsModulus = positiveNumber(value);
    };
}

Take ratioInto(SMaterial SExperiment::*material)
{
    return [material](SExperiment& experiment, const std::string& value) {
        (experiment.*material).poissonsRatio = plainNumber(value);
    };
}

void takeKind(SExperiment& experiment, const std::string& value)
{
    std::vector<std::string> words;
    for (const auto& [kind, name] : kindNames()) {
        words.emplace_back(name);
        if (value == name) {
            experiment.kind = kind;
        }
    }
    oneOf(value, words);
}

/// "0.0025", or "0.002 : 2, 0.003 : 1" for two small spheres to a large one.
void takeRadii(SExperiment& experiment, const std::string& value)
{
    experiment.radii.clear();
    double sum = 0.0;
    for (const std::string& part : partsOf(value, ',')) {
        const std::vector<std::string> pair = partsOf(part, ':');
        if (pair.empty() || pair.size() > 2) {
            refuse("\"" + part + R"(" is not "radius" or "radius : share")");
        }
        const double share = pair.size() == 2 ? positiveNumber(pair[1]) : 1.0;
        experiment.radii.push_back({positiveNumber(pair[0]), share});
        sum += share;
    }
    if (experiment.radii.empty()) {
        refuse("there are no radii");
    }
    for (SRadius& one : experiment.radii) {
        one.share /= sum;
    }
}

void takeSeeds(SExperiment& experiment, const std::string& value)
{
    experiment.seeds.clear();
    for (const std::string& part : partsOf(value, ',')) {
        experiment.seeds.push_back(wholeNumber(part, static_cast<double>(MostSeed)));
    }
}

void takeConeAngle(SExperiment& experiment, const std::string& value)
{
    experiment.coneAngle = positiveNumber(value);
    if (experiment.coneAngle >= 90.0) {
        refuse("\"" + value + "\" is not below 90 degrees");
    }
}

/// What single bodies are and how they move.
std::vector<SExperimentKey> materialKeys()
{
    return {{"experiment", All, takeKind},
            {"particles", All, nameInto(&SExperiment::particles)},
            {"wall", All, nameInto(&SExperiment::wall)},
            {"floor", All, nameInto(&SExperiment::floor)},
            {"density", All, into(&SExperiment::density)},
            {"radius", All, takeRadii},
            {"particle young's modulus", All, stiffnessInto(&SExperiment::particles)},
            {"wall young's modulus", All, stiffnessInto(&SExperiment::wall)},
            {"floor young's modulus", All, stiffnessInto(&SExperiment::floor)},
            {"particle poisson's ratio", All, ratioInto(&SExperiment::particles)},
            {"wall poisson's ratio", All, ratioInto(&SExperiment::wall)},
            {"floor poisson's ratio", All, ratioInto(&SExperiment::floor)},
            {"gravity", Heaps | Thrown, into(&SExperiment::gravity)},
            {"rolling model", All,
             [](SExperiment& experiment, const std::string& value) {
                 experiment.rolling = oneOf(value, {"epsd2", "cdt"});
             }},
            {"leave out", All, [](SExperiment& experiment, const std::string& value) {
                 experiment.leaveOut = partsOf(value, ',');
             }}};
}

/// Vessels, seeds and what is measured.
std::vector<SExperimentKey> vesselKeys()
{
    return {{"count", Heaps,
             [](SExperiment& experiment, const std::string& value) {
                 experiment.count = wholeNumber(value, MostSpheres);
             }},
            {"vessel radius", Repose | Draw, into(&SExperiment::vesselRadius)},
            {"column width", Column, into(&SExperiment::columnWidth)},
            {"column depth", Column, into(&SExperiment::columnDepth)},
            {"orifice radius", Draw, into(&SExperiment::orificeRadius)},
            {"cone angle", Draw, takeConeAngle},
            {"drop height", Draw, into(&SExperiment::dropHeight)},
            {"release", Repose,
             [](SExperiment& experiment, const std::string& value) {
                 experiment.lifted = oneOf(value, {"removed", "lifted"}) == "lifted";
             }},
            {"lift speed", Repose, into(&SExperiment::liftSpeed)},
            {"speed", Meeting | Thrown, into(&SExperiment::speed)},
            {"against", Meeting,
             [](SExperiment& experiment, const std::string& value) {
                 experiment.against = oneOf(value, {"particles", "wall", "floor"});
             }},
            {"rest speed", Heaps, into(&SExperiment::restSpeed)},
            {"seeds", Heaps, takeSeeds},
            {"measure", All, [](SExperiment& experiment, const std::string& value) {
                 experiment.measures = partsOf(value, ',');
             }}};
}

std::vector<SExperimentKey> allKeys()
{
    std::vector<SExperimentKey> keys = materialKeys();
    for (SExperimentKey& key : vesselKeys()) {
        keys.push_back(std::move(key));
    }
    return keys;
}

} // namespace

bool SExperimentKey::servesFor(EExperiment kind) const
{
    return (kinds & bit(kind)) != 0;
}

const SExperimentKey* findKey(const std::string& name)
{
    static const std::vector<SExperimentKey> keys = allKeys();
    const auto found = std::find_if(
        keys.begin(), keys.end(), [&name](const SExperimentKey& key) { return key.name == name; });
    return found == keys.end() ? nullptr : &*found;
}

const char* nameOf(EExperiment kind)
{
    return kindNames().at(static_cast<std::size_t>(kind)).second;
}

} // namespace liggghts
