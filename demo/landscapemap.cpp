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

LandscapeMap mapOf(const MapGrid& grid, double launchHeight, const AtmosphereValues& sun) {
    const auto& [columns, rows, cellMetres, west, south, finer] = grid;
    const Landscape landscape(launchHeight - kHeadroomMetres);
    const Vec3d sunward = towardsSun(sun);
    // One more post on every side, for the slopes.
    const int stride = columns + 2;
    std::vector<double> elevations;
    elevations.reserve(static_cast<std::size_t>(stride) * static_cast<std::size_t>(rows + 2));
    for (int row = -1; row <= rows; ++row)
        for (int column = -1; column <= columns; ++column)
            elevations.push_back(landscape.elevation(west + column * cellMetres, south + row * cellMetres));

    // The samples of a post's radiance, and how far the first lies from it.
    const double step = cellMetres / finer;
    const double before = (step - cellMetres) / 2.0;

    LandscapeMap map{grid, {}, {}, {}, {}};
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column) {
            const double* const here = elevations.data() + std::ptrdiff_t{row + 1} * stride + column + 1;
            const Vec3d normal = unit(Vec3d{here[-1] - here[1], here[-stride] - here[stride], 2.0 * cellMetres});
            const double x = west + column * cellMetres;
            const double y = south + row * cellMetres;
            map.heights.push_back(static_cast<float>(*here - launchHeight));
            map.normals.push_back(
                {static_cast<float>(normal.x), static_cast<float>(normal.y), static_cast<float>(normal.z)});
            map.classes.push_back(landscape.groundClass(x, y, normal, step));
            double radiance = 0.0;
            for (int i = 0; i < finer; ++i)
                for (int j = 0; j < finer; ++j) {
                    const double east = x + before + j * step;
                    const double north = y + before + i * step;
                    const GroundClass ground = landscape.groundClass(east, north, normal, step);
                    radiance += landscape.radiance(east, north, ground, normal, sunward);
                }
            map.radiances.push_back(static_cast<float>(radiance / (finer * finer)));
        }
    return map;
}

LandscapeMap partOf(const LandscapeMap& map, int firstColumn, int firstRow, int columns, int rows) {
    const auto cut = [&](const auto& values) {
        return cutOut(values, map.grid.columns, firstColumn, firstRow, columns, rows);
    };
    const double cell = map.grid.cellMetres;
    const MapGrid grid{columns, rows, cell, map.grid.west + firstColumn * cell, map.grid.south + firstRow * cell};
    return {grid, cut(map.heights), cut(map.normals), cut(map.classes), cut(map.radiances)};
}
} // namespace sorvane
