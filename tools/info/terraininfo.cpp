// Describes the description of a terrain set, and the tables that stand beside its tiles.
#include "terraininfo.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <filesystem>
#include <limits>
#include <memory>
#include <vector>

#include "bandfile.h"
#include "cls2asterfile.h"
#include "cnumericlocale.h"
#include "inputfile.h"
#include "loadclstomatfile.h"
#include "shortestnumber.h"
#include "subterrain.h"
#include "terrainfileexists.h"
#include "terrainreflectance.h"
#include "terrainxmlparser.h"
#include "textlines.h"

namespace {
constexpr const char* kCannotBeRead = "can't be read";
constexpr std::size_t kWholeFile = std::numeric_limits<std::size_t>::max();

struct TerrainSet {
    TerrainDescription description;
    std::vector<std::unique_ptr<SubTerrain>> tiles;
    std::string companionStem; // of the files that all tiles share
};

TerrainSet readSet(const std::string& path) {
    // The viewer takes the files beside the description, whatever folder that names.
    const std::string parent = std::filesystem::path(path).parent_path().string();
    const std::string directory = parent.empty() ? "." : parent;
    TerrainSet set;
    int count = 0;
    SubTerrain** const list = readTerrainXML(path, directory, count, set.description);
    for (int i = 0; i < count; ++i)
        set.tiles.emplace_back(std::exchange(list[i], nullptr));
    cleanUpSubTerrainList(list, count);
    set.companionStem = directory + "/" + set.description.base;
    return set;
}

InfoRecord tileRecord(SubTerrain& tile, LengthUnit unit) {
    const SubTerrain::Bounds& bounds = tile.bounds();
    return {
        {"topography", tile.getTopoFilePath()},
        {"topography_exists", FileExists(tile.getTopoFilePath())},
        {"radiance_exists", FileExists(tile.getRadFilePath())},
        {"normals_exist", FileExists(tile.getNormFilePath())},
        {"classes_exist", FileExists(tile.getClassFilePath())},
        {"columns", tile.getWidth()},
        {"rows", tile.getHeight()},
        {lengthName("minimum", unit), numberList(bounds.minimum)},
        {lengthName("maximum", unit), numberList(bounds.maximum)},
    };
}

InfoRecord extentRecord(const std::vector<std::unique_ptr<SubTerrain>>& tiles, LengthUnit unit) {
    SubTerrain::Bounds box = tiles.front()->bounds();
    for (const auto& tile : tiles)
        for (std::size_t axis = 0; axis < box.minimum.size(); ++axis) {
            box.minimum[axis] = std::min(box.minimum[axis], tile->bounds().minimum[axis]);
            box.maximum[axis] = std::max(box.maximum[axis], tile->bounds().maximum[axis]);
        }
    return {
        {lengthName("minimum", unit), numberList(box.minimum)}, {lengthName("maximum", unit), numberList(box.maximum)}};
}

InfoRecord companionsRecord(const std::string& stem) {
    InfoRecord companions = InfoRecord::array();
    for (const char* extension : {"atm", "band", "cls2aster", "cls2mat", "temp"}) {
        const std::string path = stem + "." + extension;
        companions.push_back({{"path", path}, {"exists", FileExists(path)}});
    }
    return companions;
}

const char* routeOf(const TerrainSet& set) {
    const std::string& stem = set.companionStem;
    switch (reflectanceRoute(
        {"", stem + ".cls2aster", set.description.asterdb, stem + ".band", stem + ".cls2mat", stem + ".temp"})) {
    case ReflectanceRoute::Aster:
        return "spectra";
    case ReflectanceRoute::Material:
        return "materials";
    case ReflectanceRoute::None:
        break;
    }
    return "none";
}
} // namespace

InfoFault describeTerrain(const std::string& path, LengthUnit unit, InfoRecord& record) {
    const TerrainSet set = readSet(path);
    if (set.tiles.empty())
        return "describes no tiles";
    record["base"] = set.description.base;
    record["radiance_base"] = set.description.radbase;
    record["described_folder"] = set.description.datadir;
    record["spectra_folder"] = set.description.asterdb;
    record["reflectance_by"] = routeOf(set);
    record["companions"] = companionsRecord(set.companionStem);
    record["extent"] = extentRecord(set.tiles, unit);
    InfoRecord& tiles = record["tiles"] = InfoRecord::array();
    for (const auto& tile : set.tiles)
        tiles.push_back(tileRecord(*tile, unit));
    return std::nullopt;
}

InfoFault describeClassToAster(const std::string& path, InfoRecord& record) {
    const std::optional<std::string> text = readInputFile(path, kWholeFile);
    if (!text)
        return kCannotBeRead;
    InfoRecord& classes = record["classes"] = InfoRecord::array();
    for (const Cls2AsterFile::Line& line : Cls2AsterFile::parse(*text))
        classes.push_back({{"class", line.cls}, {"sample", line.sample}});
    return std::nullopt;
}

InfoFault describeClassToMaterial(const std::string& path, InfoRecord& record) {
    std::array<unsigned char, std::size_t{2} * kMaximumClassPairs> pairs{};
    unsigned count = 0;
    const bool isRead = loadCLStoMatFile(path, pairs.data(), count);
    InfoRecord& classes = record["classes"] = InfoRecord::array();
    for (std::size_t i = 0; i < count; ++i)
        classes.push_back({{"class", pairs[2 * i]}, {"material", pairs[2 * i + 1]}});
    return isRead ? std::nullopt : InfoFault(kCannotBeRead);
}

InfoFault describeTemperatures(const std::string& path, InfoRecord& record) {
    const std::optional<std::string> text = readInputFile(path, kWholeFile);
    if (!text)
        return kCannotBeRead;
    constexpr std::size_t kLineLength = 256;
    const CNumericLocale decimalPoint;
    TextLines lines(*text);
    char line[kLineLength];
    float temperature = 0.0F;
    float emissivity = 0.0F;
    InfoRecord& materials = record["materials"] = InfoRecord::array();
    while (lines.getLine(line, sizeof line) && std::sscanf(line, "%f %f", &temperature, &emissivity) == 2)
        materials.push_back(
            {{"material", materials.size() + 1},
             {"temperature", shortestDouble(temperature)},
             {"emissivity", shortestDouble(emissivity)}});
    return materials.empty() ? InfoFault("begins with no pair of numbers") : std::nullopt;
}

InfoFault describeBand(const std::string& path, InfoRecord& record) {
    const std::optional<std::string> text = readInputFile(path, kWholeFile);
    if (!text)
        return kCannotBeRead;
    float lower = 0.0F;
    float upper = 0.0F;
    BandFile::parse(*text, lower, upper);
    record["lower_edge"] = shortestDouble(lower);
    record["upper_edge"] = shortestDouble(upper);
    return lower > 0.0F && upper > 0.0F ? std::nullopt : InfoFault("has no band edges above 0");
}
