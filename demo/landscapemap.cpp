// The demonstration's landscape sampled at the posts of a grid.
#include "landscapemap.h"

#include <cmath>
#include <numbers>

namespace sorvane {
namespace {
// The tops stay a little below the launch.
constexpr double kHeadroomMetres = 3.0;

// x east, y north, z up.
Vec3d towardsSun(const AtmosphereValues& sun) {
    const double zenith = sun.solarZenith * std::numbers::pi / 180.0;
    const double azimuth = sun.solarAzimuth * std::numbers::pi / 180.0;
    return {std::sin(zenith) * std::sin(azimuth), std::sin(zenith) * std::cos(azimuth), std::cos(zenith)};
}

template <class T>
std::vector<T> cutOut(const std::vector<T>& values, int stride, int firstColumn, int firstRow, int columns, int rows) {
    std::vector<T> part;
    part.reserve(static_cast<std::size_t>(columns) * static_cast<std::size_t>(rows));
    for (int row = firstRow; row < firstRow + rows; ++row) {
        const auto first = values.begin() + std::ptrdiff_t{row} * stride + firstColumn;
        part.insert(part.end(), first, first + columns);
    }
    return part;
}
} // namespace

LandscapeMap mapOf(int columns, int rows, double cellMetres, double launchHeight, const AtmosphereValues& sun) {
    const Landscape landscape(launchHeight - kHeadroomMetres);
    const Vec3d sunward = towardsSun(sun);
    // One more post on every side, for the slopes.
    const int stride = columns + 2;
    std::vector<double> elevations;
    elevations.reserve(static_cast<std::size_t>(stride) * static_cast<std::size_t>(rows + 2));
    for (int row = -1; row <= rows; ++row)
        for (int column = -1; column <= columns; ++column)
            elevations.push_back(landscape.elevation(column * cellMetres, row * cellMetres));

    LandscapeMap map{columns, rows, cellMetres, {}, {}, {}, {}};
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column) {
            const double* const here = elevations.data() + std::ptrdiff_t{row + 1} * stride + column + 1;
            const Vec3d normal = unit(Vec3d{here[-1] - here[1], here[-stride] - here[stride], 2.0 * cellMetres});
            const double x = column * cellMetres;
            const double y = row * cellMetres;
            const GroundClass ground = landscape.groundClass(x, y, normal, cellMetres);
            map.heights.push_back(static_cast<float>(*here - launchHeight));
            map.normals.push_back(
                {static_cast<float>(normal.x), static_cast<float>(normal.y), static_cast<float>(normal.z)});
            map.classes.push_back(ground);
            map.radiances.push_back(static_cast<float>(landscape.radiance(x, y, ground, normal, sunward)));
        }
    return map;
}

LandscapeMap partOf(const LandscapeMap& map, int firstColumn, int firstRow, int columns, int rows) {
    const auto cut = [&](const auto& values) {
        return cutOut(values, map.columns, firstColumn, firstRow, columns, rows);
    };
    return {columns, rows, map.cellMetres, cut(map.heights), cut(map.normals), cut(map.classes), cut(map.radiances)};
}
} // namespace sorvane
