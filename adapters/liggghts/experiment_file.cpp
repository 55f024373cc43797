#include "adapters/liggghts/experiment_file.h"

#include "adapters/liggghts/adapter_error.h"
#include "adapters/liggghts/experiment_keys.h"
#include "adapters/liggghts/measure_table.h"
#include "adapters/liggghts/numbers.h"

#include <algorithm>
#include <fstream>
#include <set>

namespace liggghts {
namespace {

constexpr unsigned long LeastSeed = 10007;
constexpr double LeastYoungsModulus = 5e6;
constexpr double MostYoungsModulus = 1e9;
constexpr double MostPoissonsRatio = 0.5;

[[noreturn]] void refuse(const std::string& sentence)
{
    throw CAdapterError(CAdapterError::BadDeck, sentence);
}

/// A name may hold a "#" that follows no blank.
std::string withoutComment(const std::string& line)
{
    for (std::size_t at = line.find('#'); at != std::string::npos; at = line.find('#', at + 1)) {
        if (at == 0 || line[at - 1] == ' ' || line[at - 1] == '\t') {
            return line.substr(0, at);
        }
    }
    return line;
}

/// "key = value" without its comment; an empty key for a blank line.
std::pair<std::string, std::string> splitLine(const std::string& line)
{
    const std::string text = trimmed(withoutComment(line));
    const std::size_t at = text.find('=');
    if (text.empty()) {
        return {};
    }
    if (at == std::string::npos || trimmed(text.substr(0, at)).empty()) {
        refuse("\"" + text + R"(" is not "key = value")");
    }
    return {trimmed(text.substr(0, at)), trimmed(text.substr(at + 1))};
}

void takeLine(SExperiment& experiment, const std::string& line, std::set<std::string>& seen)
{
    const auto [name, value] = splitLine(line);
    if (name.empty()) {
        return;
    }
    const SExperimentKey* const key = findKey(name);
    if (key == nullptr) {
        refuse("there is no key \"" + name + "\"");
    }
    if (!seen.insert(name).second) {
        refuse("\"" + name + "\" stands twice");
    }
    if (seen.count("experiment") == 0) {
        refuse("the first key has to be \"experiment\"");
    }
    key->take(experiment, value);
    if (!key->servesFor(experiment.kind)) {
        refuse("the experiment \"" + std::string(nameOf(experiment.kind)) + "\" has no \"" + name +
               "\"");
    }
}

void checkMaterial(const SMaterial& material, const char* role)
{
    if (material.name.empty()) {
        refuse("The experiment doesn't say which material the " + std::string(role) + " is of.");
    }
    if (material.youngsModulus < LeastYoungsModulus || material.youngsModulus > MostYoungsModulus) {
        refuse("The " + std::string(role) + " young's modulus is " +
               numberText(material.youngsModulus) + " Pa; the engine takes 5e6 to 1e9 Pa.");
    }
    if (material.poissonsRatio < 0.0 || material.poissonsRatio > MostPoissonsRatio) {
        refuse("The " + std::string(role) + " poisson's ratio is " +
               numberText(material.poissonsRatio) + "; the engine takes 0 to 0.5.");
    }
}

void checkSeeds(const std::vector<unsigned long>& seeds)
{
    if (seeds.empty()) {
        refuse("The experiment names no seeds.");
    }
    for (const unsigned long seed : seeds) {
        if (seed < LeastSeed || seed > MostSeed || !isPrime(seed)) {
            refuse("The seed " + std::to_string(seed) + " is not a prime from " +
                   std::to_string(LeastSeed) + " to " + std::to_string(MostSeed) +
                   "; the engine takes no other.");
        }
    }
    if (std::set<unsigned long>(seeds.begin(), seeds.end()).size() != seeds.size()) {
        refuse("A seed stands twice: it would give the same spheres again.");
    }
}

void checkVessel(const SExperiment& experiment)
{
    const double radius = experiment.largestRadius();
    const auto demand = [radius](double size, const char* name, double diameters) {
        if (size < 2.0 * diameters * radius) {
            refuse("The " + std::string(name) + " of " + numberText(size) +
                   " m has no room for spheres of " + numberText(radius) + " m.");
        }
    };
    if (experiment.kind == EExperiment::Collapse) {
        demand(experiment.columnWidth, "column width", 2.0);
        demand(experiment.columnDepth, "column depth", 2.0);
        return;
    }
    demand(experiment.vesselRadius, "vessel radius", 2.0);
    if (experiment.kind == EExperiment::DrawDown) {
        demand(experiment.orificeRadius, "orifice radius", 0.5);
        if (experiment.orificeRadius >= experiment.vesselRadius) {
            refuse("The orifice is as wide as the vessel.");
        }
        demand(experiment.dropHeight, "drop height", 2.0);
    }
}

void checkMeasures(const SExperiment& experiment)
{
    for (const std::string& word : experiment.measures) {
        const std::vector<SMeasure> known = measuresOf(experiment.kind);
        const auto found = std::find_if(known.begin(), known.end(),
                                        [&word](const SMeasure& one) { return word == one.word; });
        if (found == known.end()) {
            refuse("The experiment \"" + std::string(nameOf(experiment.kind)) +
                   "\" doesn't measure \"" + word + "\".");
        }
    }
}

} // namespace

std::filesystem::path findExperimentFile(const std::filesystem::path& deck)
{
    const std::filesystem::path folder = deck.has_parent_path() ? deck.parent_path() : ".";
    std::vector<std::filesystem::path> found;
    std::error_code error;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error)) {
        if (entry.path().extension() == ".experiment") {
            found.push_back(entry.path());
        }
    }
    if (found.size() != 1) {
        refuse("There has to be one file with the ending .experiment beside the deck, but there " +
               std::string(found.empty() ? "is none" : "are " + std::to_string(found.size())) +
               "; name it among the additional files.");
    }
    return found.front();
}

SExperiment readExperiment(std::istream& stream)
{
    SExperiment experiment;
    std::set<std::string> seen;
    std::string line;
    for (int number = 1; std::getline(stream, line); ++number) {
        try {
            takeLine(experiment, line, seen);
        } catch (const CAdapterError& error) {
            refuse("Line " + std::to_string(number) + " of the experiment: " + error.what() + ".");
        }
    }
    if (seen.count("experiment") == 0) {
        refuse("The experiment file doesn't say which experiment it is.");
    }
    if (experiment.floor.name.empty()) {
        experiment.floor = experiment.wall;
    }
    checkExperiment(experiment);
    return experiment;
}

SExperiment readExperimentFile(const std::filesystem::path& file)
{
    std::ifstream stream(file);
    if (!stream) {
        refuse("The experiment \"" + file.string() + "\" can't be read.");
    }
    return readExperiment(stream);
}

void checkExperiment(const SExperiment& experiment)
{
    checkMaterial(experiment.particles, "particle");
    checkMaterial(experiment.wall, "wall");
    checkMaterial(experiment.floor, "floor");
    checkMeasures(experiment);
    if (experiment.isHeap()) {
        checkSeeds(experiment.seeds);
        checkVessel(experiment);
    }
}

} // namespace liggghts
