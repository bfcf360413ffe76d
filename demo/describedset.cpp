// The demonstration's landscape as a described set of tiles.
#include "describedset.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "landscapemap.h"
#include "numbertext.h"
#include "rasterfile.h"

namespace sorvane {
namespace {
constexpr const char* kRadianceSuffix = "_w0001_t1500_b0001";

// The cells of the wide tile: so many across the square, and so many more to each side.
constexpr int kWideCellsAcross = 32;
constexpr int kWideCellsAround = 44;
constexpr int kWideSamples = 4;      // of the radiance in a cell, each way
constexpr double kSunkMetres = 50.0; // below the valley floor

void appendElement(std::string& text, const char* name, double value) {
    text.append("      <").append(name).append(">");
    appendFixed(text, value);
    text.append("</").append(name).append(">\n");
}

// Text that XML takes for markup is written as references.
std::string escaped(const std::string& text) {
    std::string result;
    for (const char character : text)
        if (character == '&')
            result += "&amp;";
        else if (character == '<')
            result += "&lt;";
        else
            result += character;
    return result;
}

std::string tileElement(std::size_t number, const LandscapeMap& map) {
    const auto [least, greatest] = std::ranges::minmax(map.heights);
    std::string text = "    <subterrain n=\"" + std::to_string(number) + "\">\n";
    appendElement(text, "origin_x", map.grid.west);
    appendElement(text, "origin_y", map.grid.south);
    text += "      <width>" + std::to_string(map.grid.columns) + "</width>\n";
    text += "      <height>" + std::to_string(map.grid.rows) + "</height>\n";
    appendElement(text, "minZ", double{least});
    appendElement(text, "maxZ", double{greatest});
    for (const bool isX : {true, false}) {
        text += isX ? "      <vec dir=\"x\"><i>" : "      <vec dir=\"y\"><i>";
        appendFixed(text, isX ? map.grid.cellMetres : 0.0);
        text += "</i><j>";
        appendFixed(text, isX ? 0.0 : map.grid.cellMetres);
        text += "</j></vec>\n";
    }
    return text + "    </subterrain>\n";
}

std::vector<DemonstrationFile> tileFiles(const std::string& stem, std::size_t number, const LandscapeMap& map) {
    std::array<char, 16> suffix{};
    std::snprintf(suffix.data(), suffix.size(), "_n%04zu", number);
    const auto file = [&map](const char* fileType, std::span<const float> values, auto samples) {
        const auto& [columns, rows, cellMetres, west, south, finer] = map.grid;
        return bkgFile(rasterHeader(columns, rows, cellMetres, fileType, values), std::as_bytes(samples));
    };
    const std::string ofTile = stem + suffix.data();
    return {
        {ofTile + ".le-ftop", file("TOPO", map.heights, std::span(map.heights))},
        {stem + kRadianceSuffix + suffix.data() + ".rad", file("RADIANCE", map.radiances, std::span(map.radiances))},
        {ofTile + ".norm", file("NORM", {}, std::span(map.normals))},
        {ofTile + ".cls", file("CLASS", {}, std::span(map.classes))},
    };
}

// Row by row from the south-west.
std::vector<LandscapeMap> squareTiles(const DescribedSet& set, const AtmosphereValues& sun) {
    const int step = set.posts - 1;
    const int allPosts = set.tilesEachWay * step + 1;
    const LandscapeMap whole = mapOf({allPosts, allPosts, set.cellMetres}, set.launchHeight, sun);
    std::vector<LandscapeMap> tiles;
    for (int row = 0; row < set.tilesEachWay; ++row)
        for (int column = 0; column < set.tilesEachWay; ++column)
            tiles.push_back(partOf(whole, column * step, row * step, set.posts, set.posts));
    return tiles;
}

// Within the square it is sunk, so that the finer tiles hide it. From the square's edge it falls there, which leaves
// no gap between coarse and fine.
LandscapeMap wideTile(const DescribedSet& set, const AtmosphereValues& sun) {
    constexpr int kPosts = kWideCellsAcross + 2 * kWideCellsAround + 1;
    constexpr int kSquareEnd = kWideCellsAround + kWideCellsAcross;
    const double cell = set.tilesEachWay * (set.posts - 1) * set.cellMetres / kWideCellsAcross;
    const double start = -kWideCellsAround * cell;
    LandscapeMap map = mapOf({kPosts, kPosts, cell, start, start, kWideSamples}, set.launchHeight, sun);
    for (int row = kWideCellsAround + 1; row < kSquareEnd; ++row)
        std::fill_n(
            map.heights.begin() + std::ptrdiff_t{row} * kPosts + kWideCellsAround + 1, kWideCellsAcross - 1,
            static_cast<float>(-set.launchHeight - kSunkMetres));
    return map;
}
} // namespace

std::vector<DemonstrationFile> describedSetFiles(const DescribedSet& set, const AtmosphereValues& sun) {
    const std::string name = set.name;
    const std::string stem = name + "/" + name;
    std::string description = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<terrain>\n  <base>" + name + "</base>\n";
    description += "  <radbase>" + name + kRadianceSuffix + "</radbase>\n";
    if (!set.spectra.empty())
        description += "  <asterdb>" + escaped(set.spectra) + "</asterdb>\n";
    description += "  <subs>\n";

    // The first tile at a place tells its height.
    std::vector<LandscapeMap> tiles = squareTiles(set, sun);
    tiles.push_back(wideTile(set, sun));
    std::vector<DemonstrationFile> files;
    for (std::size_t i = 0; i < tiles.size(); ++i) {
        description += tileElement(i + 1, tiles[i]);
        for (DemonstrationFile& file : tileFiles(stem, i + 1, tiles[i]))
            files.push_back(std::move(file));
    }
    files.push_back({stem + ".xml", description + "  </subs>\n</terrain>\n"});
    return files;
}
} // namespace sorvane
