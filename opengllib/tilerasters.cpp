// What the rasters of a tile hold, read without OpenGL and so on any thread.
#include "tilerasters.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <limits>
#include <numeric>
#include <span>
#include <utility>

#include "cnumericlocale.h"
#include "loadclsfile.h"
#include "loadradfile.h"
#include "loadtopofile.h"

namespace sorvane {
namespace {
std::size_t postsOf(const TilePlacement& tile) {
    return static_cast<std::size_t>(tile.columns) * static_cast<std::size_t>(tile.rows);
}

void printRange(std::span<const float> radiances) {
    const CNumericLocale decimalPoint;
    float least = radiances[0];
    float greatest = radiances[0];
    // Several sums side by side: a single one would wait for each addition.
    std::array<double, 8> sums{};
    for (std::size_t i = 0; i < radiances.size(); ++i) {
        least = std::min(least, radiances[i]);
        greatest = std::max(greatest, radiances[i]);
        sums[i % sums.size()] += double{radiances[i]};
    }
    const double sum = std::accumulate(sums.begin(), sums.end(), 0.0);
    printMessage(
        "SubTerran::loadTextures: min: %f max: %f avg: %f", double{least}, double{greatest},
        sum / static_cast<double>(radiances.size()));
}

// Filtering would spread what is not finite to the texels around it and to all coarser levels.
void makeFilterable(std::span<float> radiances) {
    constexpr float kLargest = 1e30F;
    for (float& radiance : radiances) {
        const float limited = radiance < kLargest ? radiance : kLargest;
        radiance = std::isnan(radiance) || radiance < -kLargest ? 0.0F : limited;
    }
}

// Takes a step, but keeps what it says.
template <class Step> StepAhead ahead(const Step& step) {
    const MessageCollection unsaid;
    MessageRecord record;
    StepAhead done;
    done.hasSucceeded = step();
    done.lines = record.take();
    return done;
}
} // namespace

bool hasTileSize(const std::string& path, const std::optional<RasterSize>& size, const TilePlacement& tile) {
    if (!size || *size == RasterSize{tile.columns, tile.rows})
        return true;
    printMessage(
        "SubTerrain::load: %s has %d x %d samples, the tile has %d x %d", path.c_str(), size->columns, size->rows,
        tile.columns, tile.rows);
    return false;
}

bool readHeights(const TileRequest& request, TileRasters& rasters) {
    const TilePlacement& tile = request.placement;
    // Counts of posts are 32-bit.
    if (tile.columns < 1 || tile.rows < 1 || std::int64_t{tile.columns} * tile.rows > INT32_MAX / 2)
        return false;
    if (!hasTileSize(request.topography, readTopographySize(request.topography), tile))
        return false;
    rasters.heights.reset(loadTopoFile(request.topography));
    if (rasters.heights == nullptr)
        return false;
    rasters.size = {tile.columns, tile.rows};
    if (tile.scale[2] != 1.0F)
        for (float& height : std::span(rasters.heights.get(), postsOf(tile)))
            height *= tile.scale[2];
    return true;
}

bool readNormals(const TileRequest& request, TileRasters& rasters) {
    rasters.normals.reset();
    if (!request.hasNormals)
        return true;
    if (!hasTileSize(request.normals, readRasterSize(request.normals), request.placement))
        return false;
    rasters.normals.reset(loadNormFile(request.normals));
    return rasters.normals != nullptr;
}

bool readClasses(const TileRequest& request, TileRasters& rasters) {
    rasters.classes.reset();
    if (!request.hasClasses)
        return true;
    if (!hasTileSize(request.classes, readRasterSize(request.classes), request.placement))
        return false;
    rasters.classes.reset(loadCLSFile(request.classes));
    return rasters.classes != nullptr;
}

std::vector<RadianceLevel> readRadiances(const TileRequest& request) {
    const auto& [topography, normals, classes, path, tile, hasNormals, hasClasses, largest] = request;
    if (tile.columns > largest || tile.rows > largest) {
        printMessage(
            "SubTerrain::loadTextures: %s has %d x %d samples, a texture has at most %d x %d here", path.c_str(),
            tile.columns, tile.rows, largest, largest);
        return {};
    }
    if (postsOf(tile) == 0 || !hasTileSize(path, readRasterSize(path), tile))
        return {};
    RadianceLevel finest{tile.columns, tile.rows, std::unique_ptr<float[]>(loadRadFile(path))};
    if (finest.radiances == nullptr) {
        printMessage("SubTerrain::loadTextures: error reading rad file");
        return {};
    }
    const std::span<float> radiances(finest.radiances.get(), finest.count());
    printRange(radiances);
    makeFilterable(radiances);
    return radianceLevels(std::move(finest));
}

bool StepAhead::tell() const {
    for (const PrintedLine& line : lines)
        printLine(line);
    return hasSucceeded;
}

TileReading readTile(const TileRequest& request, const std::atomic<bool>& isUnwanted) {
    TileReading reading;
    TileRasters& rasters = *reading.rasters;
    reading.arrays =
        ahead([&] { return readHeights(request, rasters) && !isUnwanted && readNormals(request, rasters); });
    if (reading.arrays.hasSucceeded && !isUnwanted)
        reading.classes = ahead([&] { return readClasses(request, rasters); });
    if (reading.classes.hasSucceeded && !isUnwanted)
        reading.texture = ahead([&] {
            reading.radiances = readRadiances(request);
            return !reading.radiances.empty();
        });
    return reading;
}
} // namespace sorvane
