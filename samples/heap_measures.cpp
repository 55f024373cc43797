#include "samples/heap_measures.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr double BinWidth = 0.01;
constexpr double RunOutShare = 0.95;

double totalMass(const std::vector<SBody>& bodies)
{
    double mass = 0.0;
    for (const SBody& body : bodies)
        mass += body.mass;
    return mass;
}

double runOutOf(const std::vector<SBody>& bodies)
{
    std::vector<std::pair<double, double>> massByEdge;
    massByEdge.reserve(bodies.size());
    for (const SBody& body : bodies)
        massByEdge.emplace_back(body.x + body.radius, body.mass);
    std::sort(massByEdge.begin(), massByEdge.end());
    const double wanted = RunOutShare * totalMass(bodies);
    double mass = 0.0;
    for (const auto& [edge, part] : massByEdge) {
        mass += part;
        if (mass >= wanted)
            return edge;
    }
    return 0.0;
}

// Tops of the heap in upright strips of one diameter, from the left wall to the run-out.
std::vector<double> surfaceOf(const std::vector<SBody>& bodies, double runOut)
{
    const auto count = static_cast<std::size_t>(std::max(1.0, std::ceil(runOut / BinWidth)));
    std::vector<double> tops(count, 0.0);
    for (const SBody& body : bodies) {
        const double position = std::max(0.0, body.x / BinWidth);
        if (position >= static_cast<double>(count))
            continue;
        double& top = tops[static_cast<std::size_t>(position)];
        top = std::max(top, body.y + body.radius);
    }
    return tops;
}

double heightOf(const std::vector<double>& surface)
{
    const std::size_t strips = std::min<std::size_t>(3, surface.size());
    double sum = 0.0;
    for (std::size_t i = 0; i < strips; ++i)
        sum += surface[i];
    return sum / static_cast<double>(strips);
}

double angleOf(const std::vector<double>& surface)
{
    const auto count = static_cast<double>(surface.size());
    double sumX = 0.0;
    double sumY = 0.0;
    double sumXX = 0.0;
    double sumXY = 0.0;
    for (std::size_t i = 0; i < surface.size(); ++i) {
        const double x = BinWidth * (static_cast<double>(i) + 0.5);
        sumX += x;
        sumY += surface[i];
        sumXX += x * x;
        sumXY += x * surface[i];
    }
    const double spread = count * sumXX - sumX * sumX;
    if (spread <= 0.0)
        return 90.0;
    return std::atan(-(count * sumXY - sumX * sumY) / spread) * 180.0 / Pi;
}

double kineticEnergyOf(const SBody& body)
{
    const double speed = body.speedX * body.speedX + body.speedY * body.speedY;
    return 0.5 * (body.mass * speed + body.inertia() * body.spin * body.spin);
}

} // namespace

SHeapMeasures measureHeap(const std::vector<SBody>& bodies)
{
    SHeapMeasures result;
    if (bodies.empty())
        return result;
    const double mass = totalMass(bodies);
    for (const SBody& body : bodies) {
        result.centreHeight += body.mass * body.y / mass;
        result.kineticEnergy += kineticEnergyOf(body) / static_cast<double>(bodies.size());
    }
    result.runOut = runOutOf(bodies);
    const std::vector<double> surface = surfaceOf(bodies, result.runOut);
    result.height = heightOf(surface);
    result.reposeAngle = angleOf(surface);
    return result;
}

SHeapMeasures meanOf(const std::vector<SHeapMeasures>& measures)
{
    SHeapMeasures mean;
    const auto count = static_cast<double>(measures.size());
    for (const SHeapMeasures& one : measures) {
        mean.runOut += one.runOut / count;
        mean.height += one.height / count;
        mean.centreHeight += one.centreHeight / count;
        mean.reposeAngle += one.reposeAngle / count;
        mean.kineticEnergy += one.kineticEnergy / count;
    }
    return mean;
}
