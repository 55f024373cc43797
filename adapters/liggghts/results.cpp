#include "adapters/liggghts/results.h"

#include "adapters/liggghts/adapter_error.h"
#include "adapters/liggghts/experiment_file.h"
#include "adapters/liggghts/numbers.h"

#include <H5Cpp.h>

#include <algorithm>
#include <fstream>

namespace liggghts {
namespace {

constexpr int PackingLevel = 6;

[[noreturn]] void refuse(const std::filesystem::path& file)
{
    throw CAdapterError(CAdapterError::CannotWrite,
                        "The file \"" + file.string() + "\" can't be written.");
}

bool isAskedFor(const SExperiment& experiment, const SMeasure& measure)
{
    const std::vector<std::string>& words = experiment.measures;
    return words.empty() || std::find(words.begin(), words.end(), measure.word) != words.end();
}

/// Of each measure asked for, the runs' values at that saved state.
SResultRow rowAt(const SExperiment& experiment, const std::vector<SRunRecord>& runs,
                 std::size_t index)
{
    const std::vector<SMeasure> known = measuresOf(experiment.kind);
    std::vector<std::vector<double>> values(known.size());
    SResultRow row;
    for (const SRunRecord& run : runs) {
        const std::size_t at = std::min(index, run.states.size() - 1);
        const std::vector<double> measured = measure(experiment, run, at);
        for (std::size_t one = 0; one < known.size(); ++one) {
            values[one].push_back(measured[one]);
        }
        row.kineticEnergy +=
            meanKineticEnergy(experiment, run.states[at]) / static_cast<double>(runs.size());
        if (index < run.states.size()) {
            row.time = run.timeOf(index);
        }
    }
    for (std::size_t one = 0; one < known.size(); ++one) {
        if (isAskedFor(experiment, known[one])) {
            row.values.push_back(spreadOf(values[one]));
        }
    }
    return row;
}

H5::DSetCreatPropList creationList(const std::vector<hsize_t>& shape, bool compress)
{
    H5::DSetCreatPropList list;
    if (compress) {
        list.setChunk(static_cast<int>(shape.size()), shape.data());
        list.setDeflate(PackingLevel);
    }
    return list;
}

void writeDoubles(const H5::Group& group, const char* name, const std::vector<double>& values,
                  const std::vector<hsize_t>& shape, bool compress)
{
    const H5::DataSpace space(static_cast<int>(shape.size()), shape.data());
    group.createDataSet(name, H5::PredType::NATIVE_DOUBLE, space, creationList(shape, compress))
        .write(values.data(), H5::PredType::NATIVE_DOUBLE);
}

void writeSpheres(const H5::Group& group, const std::vector<SSphere>& spheres, bool compress)
{
    std::vector<double> radii;
    std::vector<double> places;
    std::vector<double> speeds;
    for (const SSphere& sphere : spheres) {
        radii.push_back(sphere.radius);
        places.insert(places.end(), sphere.place.begin(), sphere.place.end());
        speeds.insert(speeds.end(), sphere.speed.begin(), sphere.speed.end());
    }
    const hsize_t count = spheres.size();
    writeDoubles(group, "radius", radii, {count}, compress);
    writeDoubles(group, "position", places, {count, 3}, compress);
    writeDoubles(group, "velocity", speeds, {count, 3}, compress);
}

} // namespace

SResultTable resultsOf(const SExperiment& experiment, const std::vector<SRunRecord>& runs)
{
    SResultTable table;
    for (const SMeasure& measure : measuresOf(experiment.kind)) {
        if (isAskedFor(experiment, measure)) {
            table.measures.push_back(measure);
        }
    }
    std::size_t longest = 0;
    for (const SRunRecord& run : runs) {
        longest = std::max(longest, run.states.size());
    }
    for (std::size_t index = 0; index < longest; ++index) {
        table.rows.push_back(rowAt(experiment, runs, index));
    }
    return table;
}

void writeExport(const std::filesystem::path& file, const std::string& deckName,
                 const SExperiment& experiment, const SResultTable& table)
{
    std::ofstream stream(file);
    stream << "LIGGGHTS through orva-liggghts: exported results\n"
           << "EXTRACTED DATA\n"
           << "Name," << deckName << '\n'
           << "Experiment," << nameOf(experiment.kind) << '\n'
           << "Runs," << (experiment.isHeap() ? experiment.seeds.size() : 1) << '\n'
           << "TIME:,0\n"
           << "TIME";
    for (const SMeasure& measure : table.measures) {
        stream << ',' << measure.title << ",Spread of " << measure.title;
    }
    stream << ",Mean kinetic energy (J)\n";
    for (const SResultRow& row : table.rows) {
        stream << numberText(row.time);
        for (const SSpread& value : row.values) {
            stream << ',' << numberText(value.mean) << ',' << numberText(value.deviation);
        }
        stream << ',' << numberText(row.kineticEnergy) << '\n';
    }
    stream.close();
    if (!stream) {
        refuse(file);
    }
}

void writeTimeStep(const std::filesystem::path& file, double time, const SState& state,
                   bool compress)
{
    try {
        const H5::H5File output(file.string(), H5F_ACC_TRUNC);
        output.createAttribute("time", H5::PredType::NATIVE_DOUBLE, H5::DataSpace(H5S_SCALAR))
            .write(H5::PredType::NATIVE_DOUBLE, &time);
        writeSpheres(output.createGroup("Particles"), state.spheres, compress);
    } catch (const H5::Exception&) {
        refuse(file);
    }
}

} // namespace liggghts
