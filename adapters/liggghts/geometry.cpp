#include "adapters/liggghts/geometry.h"

#include "adapters/liggghts/adapter_error.h"
#include "adapters/liggghts/numbers.h"

#include <array>
#include <cmath>
#include <fstream>

namespace liggghts {
namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr double InsertedShare = 0.2; ///< of the volume; the engine finds no room for many more
constexpr double PackedShare = 0.5;   ///< of the volume, in a loose heap
constexpr int Corners = 48;

using Point = std::array<double, 3>;

/// A ring of points at a height.
struct SRing
{
    double radius;
    double height;

    Point corner(int index) const
    {
        const double angle = 2.0 * Pi * index / Corners;
        return {radius * std::cos(angle), radius * std::sin(angle), height};
    }
};

void writeTriangle(std::ostream& stream, const Point& a, const Point& b, const Point& c)
{
    stream << "facet normal 0 0 0\n outer loop\n";
    for (const Point& point : {a, b, c}) {
        stream << "  vertex " << numberText(point[0]) << ' ' << numberText(point[1]) << ' '
               << numberText(point[2]) << '\n';
    }
    stream << " endloop\nendfacet\n";
}

void writeBelt(std::ostream& stream, const SRing& low, const SRing& high)
{
    for (int index = 0; index < Corners; ++index) {
        writeTriangle(stream, low.corner(index), low.corner(index + 1), high.corner(index + 1));
        writeTriangle(stream, low.corner(index), high.corner(index + 1), high.corner(index));
    }
}

/// Height over its ground that all spheres take at that share of the volume.
double heightAt(const SExperiment& experiment, double ground, double share)
{
    return static_cast<double>(experiment.count) * experiment.meanVolume() / (share * ground);
}

double groundOf(const SExperiment& experiment, double margin)
{
    if (experiment.kind == EExperiment::Collapse) {
        return (experiment.columnWidth - 2.0 * margin) * (experiment.columnDepth - 2.0 * margin);
    }
    return Pi * std::pow(experiment.vesselRadius - margin, 2);
}

double coneHeightOf(const SExperiment& experiment)
{
    return (experiment.vesselRadius - experiment.orificeRadius) *
           std::tan(experiment.coneAngle * Pi / 180.0);
}

} // namespace

bool needsMesh(const SExperiment& experiment)
{
    return experiment.kind == EExperiment::DrawDown ||
           (experiment.kind == EExperiment::AngleOfRepose && experiment.lifted);
}

SGeometry geometryOf(const SExperiment& experiment, const SSchedule& schedule)
{
    const double radius = experiment.largestRadius();
    const double packed = heightAt(experiment, groundOf(experiment, 0.0), PackedShare);
    SGeometry geometry;
    geometry.fillFrom = 1.5 * radius;
    if (experiment.kind == EExperiment::DrawDown) {
        geometry.coneHeight = coneHeightOf(experiment);
        geometry.binRadius = 4.0 * experiment.vesselRadius;
        geometry.fillFrom += experiment.dropHeight + geometry.coneHeight;
    }
    geometry.fillTo = geometry.fillFrom + 2.0 * radius +
                      heightAt(experiment, groundOf(experiment, radius), InsertedShare);
    geometry.vesselTop = geometry.fillTo + 2.0 * radius;
    geometry.domainTop = geometry.vesselTop + 2.0 * radius;
    // Single spheres may roll far on a smooth floor.
    if (experiment.kind == EExperiment::Collapse) {
        geometry.reach = experiment.columnWidth + 10.0 * packed;
    } else if (geometry.binRadius > 0.0) {
        geometry.reach = geometry.binRadius + 2.0 * radius;
    } else {
        geometry.reach = 8.0 * experiment.vesselRadius + packed;
    }
    if (needsMesh(experiment) && experiment.kind == EExperiment::AngleOfRepose) {
        const double perTurn =
            experiment.liftSpeed * static_cast<double>(schedule.saveSteps) * schedule.timeStep;
        geometry.liftTurns =
            static_cast<unsigned long>(std::ceil((packed + 4.0 * radius) / perTurn));
        geometry.domainTop += static_cast<double>(geometry.liftTurns) * perTurn;
    }
    return geometry;
}

void writeVesselMesh(const SExperiment& experiment, const SGeometry& geometry,
                     const std::filesystem::path& file)
{
    std::ofstream stream(file);
    stream << "solid vessel\n";
    double bottom = 0.0;
    if (experiment.kind == EExperiment::DrawDown) {
        bottom = experiment.dropHeight + geometry.coneHeight;
        writeBelt(stream, {experiment.orificeRadius, experiment.dropHeight},
                  {experiment.vesselRadius, bottom});
    }
    writeBelt(stream, {experiment.vesselRadius, bottom},
              {experiment.vesselRadius, geometry.vesselTop});
    stream << "endsolid vessel\n";
    stream.close();
    if (!stream) {
        throw CAdapterError(CAdapterError::CannotWrite,
                            "The file \"" + file.string() + "\" can't be written.");
    }
}

} // namespace liggghts
