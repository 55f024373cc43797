#include "adapters/liggghts/heap_shape.h"

#include <algorithm>
#include <cmath>
#include <map>

namespace liggghts {
namespace {

constexpr double Pi = 3.14159265358979323846;
constexpr double RoundShare = 0.9;
constexpr double RunOutShare = 0.95;
constexpr int Sectors = 8;

double meanDiameter(const std::vector<SSphere>& spheres)
{
    double sum = 0.0;
    for (const SSphere& sphere : spheres) {
        sum += 2.0 * sphere.radius;
    }
    return sum / static_cast<double>(spheres.size());
}

double topOf(const SSphere& sphere)
{
    return sphere.place[2] + sphere.radius;
}

double heightOf(const std::vector<SSphere>& spheres)
{
    double height = 0.0;
    for (const SSphere& sphere : spheres) {
        height = std::max(height, topOf(sphere));
    }
    return height;
}

/// The smallest number that this share of the numbers doesn't exceed.
double shareOf(std::vector<double> numbers, double share)
{
    std::sort(numbers.begin(), numbers.end());
    const auto wanted =
        static_cast<std::size_t>(std::ceil(share * static_cast<double>(numbers.size())));
    return numbers[std::max<std::size_t>(wanted, 1) - 1];
}

/// Degrees by which the line through the points falls.
double fallOf(const std::vector<std::pair<double, double>>& points)
{
    return std::atan(-lineThrough(points).slope) * 180.0 / Pi;
}

/// Tops of the surface by distance, one point per strip and, of a round heap, per sector of it.
class CSurface
{
public:
    explicit CSurface(double strip)
        : m_strip(strip)
    {
    }

    void add(double distance, int sector, double top)
    {
        const auto strip = static_cast<int>(std::floor(distance / m_strip));
        double& highest = m_tops[{strip, sector}];
        highest = std::max(highest, top);
    }

    std::vector<std::pair<double, double>> points() const
    {
        std::vector<std::pair<double, double>> points;
        for (const auto& [place, top] : m_tops) {
            points.emplace_back((place.first + 0.5) * m_strip, top);
        }
        return points;
    }

private:
    double m_strip;
    std::map<std::pair<int, int>, double> m_tops;
};

int sectorOf(double x, double y)
{
    const double turn = (std::atan2(y, x) + Pi) / (2.0 * Pi);
    return std::min(Sectors - 1, static_cast<int>(turn * Sectors));
}

} // namespace

SLine lineThrough(const std::vector<std::pair<double, double>>& points)
{
    const auto count = static_cast<double>(points.size());
    double meanX = 0.0;
    double meanY = 0.0;
    for (const auto& [x, y] : points) {
        meanX += x / count;
        meanY += y / count;
    }
    double covariance = 0.0;
    double variance = 0.0;
    for (const auto& [x, y] : points) {
        covariance += (x - meanX) * (y - meanY);
        variance += (x - meanX) * (x - meanX);
    }
    const double slope = variance > 0.0 ? covariance / variance : 0.0;
    return {slope, meanY - slope * meanX};
}

SRoundHeap roundHeapOf(const std::vector<SSphere>& spheres)
{
    SRoundHeap heap;
    if (spheres.empty()) {
        return heap;
    }
    double middleX = 0.0;
    double middleY = 0.0;
    for (const SSphere& sphere : spheres) {
        middleX += sphere.place[0] / static_cast<double>(spheres.size());
        middleY += sphere.place[1] / static_cast<double>(spheres.size());
    }
    std::vector<double> distances;
    distances.reserve(spheres.size());
    for (const SSphere& sphere : spheres) {
        distances.push_back(std::hypot(sphere.place[0] - middleX, sphere.place[1] - middleY));
    }
    heap.radius90 = shareOf(distances, RoundShare);
    heap.height = heightOf(spheres);
    CSurface surface(meanDiameter(spheres));
    for (std::size_t index = 0; index < spheres.size(); ++index) {
        const SSphere& sphere = spheres[index];
        if (distances[index] <= heap.radius90) {
            const int sector = sectorOf(sphere.place[0] - middleX, sphere.place[1] - middleY);
            surface.add(distances[index], sector, topOf(sphere));
        }
    }
    heap.angle = fallOf(surface.points());
    return heap;
}

SLeaningHeap leaningHeapOf(const std::vector<SSphere>& spheres)
{
    SLeaningHeap heap;
    if (spheres.empty()) {
        return heap;
    }
    std::vector<double> edges;
    edges.reserve(spheres.size());
    for (const SSphere& sphere : spheres) {
        edges.push_back(sphere.place[0] + sphere.radius);
    }
    heap.runOut = shareOf(edges, RunOutShare);
    heap.height = heightOf(spheres);
    CSurface surface(meanDiameter(spheres));
    for (const SSphere& sphere : spheres) {
        if (sphere.place[0] + sphere.radius <= heap.runOut) {
            surface.add(sphere.place[0], 0, topOf(sphere));
        }
    }
    heap.angle = fallOf(surface.points());
    return heap;
}

} // namespace liggghts
