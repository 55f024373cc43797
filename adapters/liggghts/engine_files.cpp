#include "adapters/liggghts/engine_files.h"

#include "adapters/liggghts/adapter_error.h"

#include <algorithm>
#include <cmath>
#include <fstream>
#include <sstream>
#include <string>

namespace liggghts {
namespace {

[[noreturn]] void refuse(const std::filesystem::path& file)
{
    throw CAdapterError(CAdapterError::EngineFailed,
                        "The engine's \"" + file.string() + "\" is missing or incomplete.");
}

bool isFinite(const std::array<double, 3>& vector)
{
    return std::all_of(vector.begin(), vector.end(),
                       [](double number) { return std::isfinite(number); });
}

/// Numbers that a stream can't read, "nan" among them, make it fail.
bool readSphere(const std::string& line, SSphere& sphere)
{
    std::istringstream words(line);
    words >> sphere.id >> sphere.material >> sphere.radius;
    for (std::array<double, 3>* vector : {&sphere.place, &sphere.speed}) {
        words >> (*vector)[0] >> (*vector)[1] >> (*vector)[2];
    }
    return !words.fail() && isFinite(sphere.place) && isFinite(sphere.speed);
}

/// The number in the line behind the heading that is next.
unsigned long numberBehind(std::istream& stream, const std::string& heading)
{
    std::string line;
    unsigned long number = 0;
    if (!std::getline(stream, line) || line.rfind("ITEM: " + heading, 0) != 0 ||
        !(stream >> number) || !std::getline(stream, line)) {
        stream.setstate(std::ios::failbit);
    }
    return number;
}

bool isSave(const std::filesystem::path& file)
{
    const std::string name = file.filename().string();
    return name.rfind("save.", 0) == 0 && file.extension() == ".dump";
}

} // namespace

SState readDump(const std::filesystem::path& file)
{
    std::ifstream stream(file);
    SState state;
    state.step = numberBehind(stream, "TIMESTEP");
    const unsigned long count = numberBehind(stream, "NUMBER OF ATOMS");
    std::string line;
    for (int skipped = 0; skipped < 5; ++skipped) {
        std::getline(stream, line);
    }
    for (unsigned long index = 0; index < count && stream; ++index) {
        SSphere sphere;
        if (!std::getline(stream, line) || !readSphere(line, sphere)) {
            refuse(file);
        }
        state.spheres.push_back(sphere);
    }
    if (!stream) {
        refuse(file);
    }
    std::sort(state.spheres.begin(), state.spheres.end(),
              [](const SSphere& left, const SSphere& right) { return left.id < right.id; });
    return state;
}

std::vector<SState> readSaves(const std::filesystem::path& folder)
{
    std::vector<SState> states;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        if (isSave(entry.path())) {
            states.push_back(readDump(entry.path()));
        }
    }
    std::sort(states.begin(), states.end(),
              [](const SState& left, const SState& right) { return left.step < right.step; });
    return states;
}

std::vector<std::pair<double, double>> readSamples(const std::filesystem::path& file)
{
    std::ifstream stream(file);
    std::vector<std::pair<double, double>> samples;
    std::string line;
    while (std::getline(stream, line)) {
        std::istringstream words(line);
        std::pair<double, double> sample;
        if (words >> sample.first >> sample.second) {
            samples.push_back(sample);
        }
    }
    return samples;
}

} // namespace liggghts
