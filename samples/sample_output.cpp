#include "samples/sample_output.h"

#include "samples/sample_error.h"

#include <H5Cpp.h>

#include <algorithm>
#include <array>
#include <fstream>

namespace {

constexpr double SettledShare = 0.01;

struct SColumn
{
    const char* title;
    const char* word;
    double SHeapMeasures::*value;
};

const std::array<SColumn, 5>& columns()
{
    static const std::array<SColumn, 5> table{
        {{"Run-out (m)", "run_out", &SHeapMeasures::runOut},
         {"Heap height (m)", "heap_height", &SHeapMeasures::height},
         {"Centre of mass height (m)", "centre_height", &SHeapMeasures::centreHeight},
         {"Angle of repose (deg)", "repose_angle", &SHeapMeasures::reposeAngle},
         {"Mean kinetic energy (J)", "kinetic_energy", &SHeapMeasures::kineticEnergy}}};
    return table;
}

[[noreturn]] void refuse(const std::filesystem::path& file)
{
    throw CSampleError(CSampleError::CannotWrite,
                       "The file \"" + file.string() + "\" can't be written.");
}

std::ofstream openText(const std::filesystem::path& file)
{
    std::ofstream stream(file);
    if (!stream)
        refuse(file);
    return stream;
}

void closeText(std::ofstream& stream, const std::filesystem::path& file)
{
    stream.close();
    if (!stream)
        refuse(file);
}

void writeTable(std::ostream& stream, const std::vector<SHeapRow>& rows, char separator)
{
    for (const SHeapRow& row : rows) {
        stream << row.time;
        for (const SColumn& column : columns())
            stream << separator << row.measures.*column.value;
        stream << '\n';
    }
}

H5::DSetCreatPropList creationList(const std::vector<hsize_t>& shape, bool compress)
{
    H5::DSetCreatPropList list;
    if (!compress)
        return list;
    list.setChunk(static_cast<int>(shape.size()), shape.data());
    list.setDeflate(6);
    return list;
}

void writeDoubles(H5::Group& group, const char* name, const std::vector<double>& values,
                  const std::vector<hsize_t>& shape, bool compress)
{
    const H5::DataSpace space(static_cast<int>(shape.size()), shape.data());
    group.createDataSet(name, H5::PredType::NATIVE_DOUBLE, space, creationList(shape, compress))
        .write(values.data(), H5::PredType::NATIVE_DOUBLE);
}

void writeBodies(H5::Group& group, const std::vector<SBody>& bodies, bool compress)
{
    std::vector<double> radii;
    std::vector<double> positions;
    std::vector<double> velocities;
    for (const SBody& body : bodies) {
        radii.push_back(body.radius);
        positions.insert(positions.end(), {body.x, body.y, 0.0});
        velocities.insert(velocities.end(), {body.speedX, body.speedY, 0.0});
    }
    const hsize_t count = bodies.size();
    writeDoubles(group, "radius", radii, {count}, compress);
    writeDoubles(group, "position", positions, {count, 3}, compress);
    writeDoubles(group, "velocity", velocities, {count, 3}, compress);
}

} // namespace

double settlingTime(const std::vector<SHeapRow>& rows)
{
    double highest = 0.0;
    for (const SHeapRow& row : rows)
        highest = std::max(highest, row.measures.kineticEnergy);
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        if (row->measures.kineticEnergy > SettledShare * highest)
            return row->time;
    }
    return 0.0;
}

void SampleOutput::writeExport(const std::filesystem::path& file, const std::string& deckName,
                               const std::vector<SHeapRow>& rows)
{
    std::ofstream stream = openText(file);
    stream << "ORVA sample: exported results\n"
           << "EXTRACTED DATA\n"
           << "Name," << deckName << '\n'
           << "Settling time (s)," << settlingTime(rows) << '\n'
           << "TIME:," << (rows.empty() ? 0.0 : rows.front().time) << '\n'
           << "TIME";
    for (const SColumn& column : columns())
        stream << ',' << column.title;
    stream << '\n';
    writeTable(stream, rows, ',');
    closeText(stream, file);
}

void SampleOutput::writeSummary(const std::filesystem::path& file, const std::string& deckName,
                                const std::vector<SHeapRow>& rows)
{
    std::ofstream stream = openText(file);
    stream << "# ORVA sample: summary of " << deckName << "\n# time";
    for (const SColumn& column : columns())
        stream << ' ' << column.word;
    stream << '\n';
    writeTable(stream, rows, ' ');
    closeText(stream, file);
}

void SampleOutput::writeTimeStep(const std::filesystem::path& file, double time,
                                 const std::vector<SBody>& bodies, bool compress)
{
    try {
        H5::H5File output(file.string(), H5F_ACC_TRUNC);
        output.createAttribute("time", H5::PredType::NATIVE_DOUBLE, H5::DataSpace(H5S_SCALAR))
            .write(H5::PredType::NATIVE_DOUBLE, &time);
        H5::Group group = output.createGroup("Particles");
        writeBodies(group, bodies, compress);
    } catch (const H5::Exception&) {
        refuse(file);
    }
}
