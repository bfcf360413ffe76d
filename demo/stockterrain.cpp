// The demonstration's landscape under the names of the stock terrain.
#include "stockterrain.h"

#include <cmath>
#include <cstdint>

#include "describedset.h"
#include "landscapemap.h"
#include "numbertext.h"
#include "rasterfile.h"

namespace sorvane {
namespace {
constexpr int kPosts = 128; // each way
constexpr double kCellMetres = 51.2;
constexpr double kLaunchHeight = 300.0;
// Samples have no sign: they count centimetres downwards from the launch.
constexpr float kMetresPerSample = -0.01F;

std::string topography(const LandscapeMap& map) {
    GHead header = rasterHeader(map.grid.columns, map.grid.rows, map.grid.cellMetres, "TOPO", map.heights);
    header.packtype = 1;
    header.zscale = kMetresPerSample;
    std::vector<std::uint16_t> samples;
    for (const float height : map.heights)
        samples.push_back(static_cast<std::uint16_t>(std::lround(height / kMetresPerSample)));
    return torvaleFile(header, std::as_bytes(std::span(samples)), Rows::Records);
}

std::string radiance(const LandscapeMap& map) {
    const GHead header = rasterHeader(map.grid.columns, map.grid.rows, map.grid.cellMetres, "RADIANCE", map.radiances);
    return torvaleFile(header, std::as_bytes(std::span(map.radiances)), Rows::Records);
}

std::string normals(const LandscapeMap& map) {
    const GHead header = rasterHeader(map.grid.columns, map.grid.rows, map.grid.cellMetres, "NORM");
    return torvaleFile(header, std::as_bytes(std::span(map.normals)), Rows::Contiguous);
}

std::string classes(const LandscapeMap& map) {
    GHead header = rasterHeader(map.grid.columns, map.grid.rows, map.grid.cellMetres, "CLASS");
    header.packtype = 0;
    return torvaleFile(header, std::as_bytes(std::span(map.classes)), Rows::Records);
}

// Materials are numbered from 1 by their lines in the second table; 0 reflects nothing.
struct MaterialTables {
    std::string classToMaterial;
    std::string temperatures;
};
MaterialTables materialTables() {
    MaterialTables tables;
    int materials = 0;
    for (const GroundCover& cover : kGroundCovers) {
        const bool reflects = cover.percentReflectance > 0.0;
        tables.classToMaterial += std::to_string(static_cast<int>(cover.ground)) + ' ';
        tables.classToMaterial += std::to_string(reflects ? ++materials : 0) + '\n';
        if (!reflects)
            continue;
        appendFixed(tables.temperatures, cover.temperature, 1);
        tables.temperatures += ' ';
        appendFixed(tables.temperatures, 1.0 - cover.percentReflectance / 100.0);
        tables.temperatures += '\n';
    }
    return tables;
}
} // namespace

std::vector<DemonstrationFile> stockTerrainFiles(const AtmosphereValues& atmosphere) {
    const LandscapeMap map = mapOf({kPosts, kPosts, kCellMetres}, kLaunchHeight, atmosphere);
    const MaterialTables tables = materialTables();
    std::vector<DemonstrationFile> files = describedSetFiles(
        {.name = "ter0010", .posts = kPosts, .cellMetres = kCellMetres, .launchHeight = kLaunchHeight, .spectra = {}},
        atmosphere);
    const std::string stem = "ter0010/ter0010";
    files.push_back({stem + ".top", topography(map)});
    files.push_back({stem + "_w0001_t1500_b0001.rad", radiance(map)});
    files.push_back({stem + ".norm", normals(map)});
    files.push_back({stem + ".cls", classes(map)});
    files.push_back({stem + ".cls2mat", tables.classToMaterial});
    files.push_back({stem + ".temp", tables.temperatures});
    files.push_back({stem + ".atm", atmosphereText(atmosphere)});
    return files;
}
} // namespace sorvane
