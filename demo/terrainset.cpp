// The demonstration's landscape as a described set of tiles.
#include "terrainset.h"

#include <algorithm>
#include <array>
#include <cstdio>

#include "landscapemap.h"
#include "numbertext.h"
#include "rasterfile.h"
#include "spectrum.h"

namespace sorvane {
namespace {
constexpr int kTilesEachWay = 3;
constexpr int kPosts = 97; // of a tile, each way; neighbours share the posts of their common edge
constexpr double kCellMetres = 22.5;
constexpr double kLaunchHeight = 350.0;
constexpr const char* kStem = "ter0020/ter0020";
constexpr const char* kRadianceSuffix = "_w0001_t1500_b0001";

void appendElement(std::string& text, const char* name, double value) {
    text.append("      <").append(name).append(">");
    appendFixed(text, value);
    text.append("</").append(name).append(">\n");
}

std::string tileElement(int number, int firstColumn, int firstRow, const LandscapeMap& map) {
    const auto [least, greatest] = std::ranges::minmax(map.heights);
    std::string text = "    <subterrain n=\"" + std::to_string(number) + "\">\n";
    appendElement(text, "origin_x", firstColumn * map.cellMetres);
    appendElement(text, "origin_y", firstRow * map.cellMetres);
    text += "      <width>" + std::to_string(map.columns) + "</width>\n";
    text += "      <height>" + std::to_string(map.rows) + "</height>\n";
    appendElement(text, "minZ", double{least});
    appendElement(text, "maxZ", double{greatest});
    for (const bool isX : {true, false}) {
        text += isX ? "      <vec dir=\"x\"><i>" : "      <vec dir=\"y\"><i>";
        appendFixed(text, isX ? map.cellMetres : 0.0);
        text += "</i><j>";
        appendFixed(text, isX ? 0.0 : map.cellMetres);
        text += "</j></vec>\n";
    }
    return text + "    </subterrain>\n";
}

std::vector<DemonstrationFile> tileFiles(int number, const LandscapeMap& map) {
    std::array<char, 16> suffix{};
    std::snprintf(suffix.data(), suffix.size(), "_n%04d", number);
    const std::string stem = std::string(kStem) + suffix.data();
    const auto file = [&map](const char* fileType, std::span<const float> values, auto samples) {
        return bkgFile(rasterHeader(map.columns, map.rows, map.cellMetres, fileType, values), std::as_bytes(samples));
    };
    return {
        {stem + ".le-ftop", file("TOPO", map.heights, std::span(map.heights))},
        {std::string(kStem) + kRadianceSuffix + suffix.data() + ".rad",
         file("RADIANCE", map.radiances, std::span(map.radiances))},
        {stem + ".norm", file("NORM", {}, std::span(map.normals))},
        {stem + ".cls", file("CLASS", {}, std::span(map.classes))},
    };
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

std::string classToAster() {
    std::string text = "# class, sample of the spectral library\n";
    for (const GroundCover& cover : kGroundCovers) {
        text += std::to_string(static_cast<int>(cover.ground)) + ' ';
        text += cover.percentReflectance > 0.0 ? cover.name : "aster::alpha";
        text += '\n';
    }
    return text;
}
} // namespace

std::vector<DemonstrationFile> terrainSetFiles(const std::string& root, const AtmosphereValues& atmosphere) {
    constexpr int kStep = kPosts - 1;
    constexpr int kAllPosts = kTilesEachWay * kStep + 1;
    const LandscapeMap whole = mapOf(kAllPosts, kAllPosts, kCellMetres, kLaunchHeight, atmosphere);
    std::vector<DemonstrationFile> files;
    std::string description = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<terrain>\n  <base>ter0020</base>\n";
    description += std::string("  <radbase>ter0020") + kRadianceSuffix + "</radbase>\n";
    description += "  <asterdb>" + escaped(root) + "/ter0020/spectra</asterdb>\n  <subs>\n";
    int number = 0;
    for (int row = 0; row < kTilesEachWay; ++row)
        for (int column = 0; column < kTilesEachWay; ++column) {
            const LandscapeMap part = partOf(whole, column * kStep, row * kStep, kPosts, kPosts);
            description += tileElement(++number, column * kStep, row * kStep, part);
            for (DemonstrationFile& file : tileFiles(number, part))
                files.push_back(std::move(file));
        }
    description += "  </subs>\n</terrain>\n";
    files.push_back({kTerrainSetDescription, description});
    files.push_back({std::string(kStem) + ".cls2aster", classToAster()});
    files.push_back({std::string(kStem) + ".band", "Mid-wave infrared, micrometres\n3.0 5.0\n"});
    files.push_back({std::string(kStem) + ".atm", atmosphereText(atmosphere)});
    for (const GroundCover& cover : kGroundCovers)
        if (cover.percentReflectance > 0.0)
            files.push_back({std::string("ter0020/spectra/") + cover.name + ".txt", spectrumText(cover)});
    return files;
}
} // namespace sorvane
