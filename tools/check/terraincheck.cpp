// Checks a terrain.
#include "terraincheck.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <set>
#include <string_view>
#include <variant>

#include "aster.h"
#include "bandfile.h"
#include "cls2asterfile.h"
#include "descriptionscan.h"
#include "filechecks.h"
#include "inputfile.h"
#include "loadclsfile.h"
#include "loadclstomatfile.h"
#include "loadercheck.h"
#include "loaderguard.h"
#include "loadmaterialtables.h"
#include "rasterfamily.h"
#include "rastersize.h"
#include "shortestnumber.h"
#include "terrain.h"
#include "terraincompanions.h"
#include "terrainreflectance.h"
#include "terrainxmlparser.h"

namespace sorvane {
namespace {
constexpr const char* kTiles = "faults of tiles";
constexpr const char* kMissing = "missing files";
constexpr std::size_t kMaximumTextBytes = std::size_t{4} << 20;
constexpr const char* kMaterials = "classes without a material";

// Lines that tell what goes well.
void takeMessages(const std::vector<Message>& messages, FindingList& findings) {
    for (const Message& message : messages)
        if (!isTerrainNews(message.text))
            findings.addOnce(
                message.isError ? Severity::Error : Severity::Warning, {}, "faults of loading", message.text);
}

class TileCheck {
public:
    TileCheck(const SubTerrain& tile, FindingPlace place, std::string name, FindingList& findings)
        : tile_(tile), place_(place), name_(std::move(name)), findings_(findings) {}

    void check() {
        if (tile_.getWidth() < 1 || tile_.getHeight() < 1)
            error(kTiles, std::string("has ") + sizeText({tile_.getWidth(), tile_.getHeight()}) + " posts");
        if (!(tile_.getXsize() > 0.0F))
            error(kTiles, "has columns that don't run east: it is not drawn");
        checkRequired("topography", tile_.getTopoFilePath(), readTopographySize(tile_.getTopoFilePath()));
        checkRequired("radiance", tile_.getRadFilePath(), readRasterSize(tile_.getRadFilePath()));
        checkLight();
    }

    std::vector<std::string> takeFiles() { return std::exchange(files_, {}); }

private:
    static std::string sizeText(RasterSize size) {
        return std::to_string(size.columns) + " x " + std::to_string(size.rows);
    }

    void error(const char* kind, const std::string& text) { findings_.error(place_, kind, name_ + " " + text); }

    bool hasTilesSize(const std::string& path, const std::optional<RasterSize>& size) {
        const RasterSize tileSize{tile_.getWidth(), tile_.getHeight()};
        files_.push_back(path);
        if (!size || *size == tileSize)
            return true;
        error(kTiles, std::string("has ") + sizeText(tileSize) + " posts, but \"" + path + "\" has " + sizeText(*size));
        return false;
    }

    void checkRequired(const char* what, const std::string& path, const std::optional<RasterSize>& size) {
        if (FileExists(path))
            hasTilesSize(path, size);
        else
            error(kMissing, std::string("has no ") + what + ", \"" + path + "\" does not exist: it is not drawn");
    }

    // Classes and normals are both needed for light, and a tile with neither is meant to have none.
    void checkLight() {
        const std::string& classes = tile_.getClassFilePath();
        const std::string& normals = tile_.getNormFilePath();
        const bool hasClasses = FileExists(classes);
        const bool hasNormals = FileExists(normals);
        if (hasClasses != hasNormals)
            findings_.warning(
                place_, kMissing,
                name_ + " is drawn without sun and materials: \"" + (hasClasses ? normals : classes) +
                    "\" does not exist");
        const bool isClassesSize = hasClasses && hasTilesSize(classes, readRasterSize(classes));
        if (hasNormals)
            hasTilesSize(normals, readRasterSize(normals));
        if (isClassesSize)
            checkMaterials(classes);
    }

    void checkMaterials(const std::string& classes) {
        const std::optional<std::set<int>> known = knownClasses();
        if (!known)
            return;
        std::unique_ptr<unsigned char[]> samples;
        runLoader([&] { samples.reset(loadCLSFile(classes)); });
        const std::optional<RasterSize> size = readRasterSize(classes);
        if (samples == nullptr || !size)
            return;
        std::array<bool, 256> isUsed{};
        const std::int64_t count = std::int64_t{size->columns} * size->rows;
        for (std::int64_t i = 0; i < count; ++i)
            isUsed[samples[static_cast<std::size_t>(i)]] = true;
        for (std::size_t cls = 0; cls < isUsed.size(); ++cls)
            if (isUsed[cls] && !known->contains(static_cast<int>(cls)))
                findings_.warning(
                    place_, kMaterials,
                    name_ + " has class " + std::to_string(cls) + " in \"" + classes + "\", which no table knows");
    }

    // The classes of the table that the tile goes by; nothing without one.
    std::optional<std::set<int>> knownClasses() {
        std::set<int> known;
        const ReflectanceRoute route = reflectanceRoute(tile_.reflectanceFiles());
        if (route == ReflectanceRoute::None)
            return std::nullopt;
        if (route == ReflectanceRoute::Aster) {
            const std::optional<std::string> text = readInputFile(tile_.getCls2AsterFilePath(), kMaximumTextBytes);
            for (const Cls2AsterFile::Line& line : Cls2AsterFile::parse(text.value_or("")))
                known.insert(line.cls);
            return known;
        }
        std::array<unsigned char, std::size_t{2} * kMaximumClassPairs> table{};
        unsigned count = 0;
        runLoader([&] { loadCLStoMatFile(tile_.getCls2MatFilePath(), table.data(), count); });
        for (std::size_t pair = 0; pair < count; ++pair)
            known.insert(table[2 * pair]);
        return known;
    }

    const SubTerrain& tile_;
    FindingPlace place_;
    std::string name_;
    FindingList& findings_;
    std::vector<std::string> files_;
};

// The files that all tiles share, of which each tile knows.
class SharedCheck {
public:
    SharedCheck(const SubTerrain& tile, FindingList& findings) : tile_(tile), findings_(findings) {}

    std::vector<std::string> check() {
        for (const std::string& path :
             {tile_.getAtmFile(), tile_.getBandFilePath(), tile_.getCls2AsterFilePath(), tile_.getCls2MatFilePath(),
              tile_.getTempFilePath()})
            if (FileExists(path))
                files_.push_back(path);
        checkSamples();
        checkMaterialCount();
        return std::move(files_);
    }

private:
    void checkSamples() {
        const std::optional<std::string> text = readInputFile(tile_.getCls2AsterFilePath(), kMaximumTextBytes);
        std::set<std::string> seen;
        for (const Cls2AsterFile::Line& line : Cls2AsterFile::parse(text.value_or(""))) {
            if (line.sample.empty() || line.sample == Aster().name() || !seen.insert(line.sample).second)
                continue;
            const std::filesystem::path path =
                std::filesystem::path(tile_.getAsterDbFilePath()) / (line.sample + "." + ASTER_EXT);
            if (FileExists(path.string())) {
                files_.push_back(path.string());
                checkBandOf(path.string(), line.cls);
            } else {
                findings_.error(
                    {}, kMissing,
                    std::string("the spectral sample \"") + path.string() + "\" of class " + std::to_string(line.cls) +
                        " does not exist: no tile with classes is drawn");
            }
        }
    }

    // A sample's mean over a band in which it has no point is not a number.
    void checkBandOf(const std::string& path, int cls) {
        const std::string& bandPath = tile_.getBandFilePath();
        const std::optional<std::string> band = readInputFile(bandPath, kMaximumTextBytes);
        const std::optional<std::string> sample = readInputFile(path, kMaximumTextBytes);
        if (!band || !sample)
            return;
        float lower = 0.0F;
        float upper = 0.0F;
        BandFile::parse(*band, lower, upper);
        if (std::isnan(Aster::bandMean(*sample, lower, upper)))
            findings_.error(
                {}, kMaterials,
                "the spectral sample \"" + path + "\" of class " + std::to_string(cls) +
                    " has no two points in the band from " + shortestText(lower) + " to " + shortestText(upper) +
                    " of \"" + bandPath + "\": the class reflects nothing");
    }

    void checkMaterialCount() {
        if (!FileExists(tile_.getCls2MatFilePath()) || !FileExists(tile_.getTempFilePath()))
            return;
        std::array<unsigned char, std::size_t{2} * kMaximumClassPairs> table{};
        unsigned count = 0;
        runLoader([&] { loadCLStoMatFile(tile_.getCls2MatFilePath(), table.data(), count); });
        const unsigned char materials = numMats(table.data(), count);
        std::vector<float> pairs(std::size_t{2} * materials);
        bool isLoaded = false;
        runLoader([&] { isLoaded = loadTempFile(tile_.getTempFilePath(), materials, pairs.data()); });
        if (!isLoaded)
            findings_.error(
                {}, kMaterials,
                "\"" + tile_.getTempFilePath() + "\" does not hold the " + std::to_string(materials) +
                    " materials of \"" + tile_.getCls2MatFilePath() + "\"");
    }

    const SubTerrain& tile_;
    FindingList& findings_;
    std::vector<std::string> files_;
};

// The terrain's height 0 is drawn where the threat is at time 0.
void checkHeights(Terrain& terrain, FindingList& findings) {
    float highest = 0.0F;
    for (std::size_t i = 0; i < terrain.tileCount(); ++i)
        highest = std::max(highest, terrain.tile(i).bounds().maximum[2]);
    if (highest > 0.0F)
        findings.warning(
            {}, "heights",
            "its heights reach up to " + shortestText(highest) +
                ", above the threat's start: height 0 is drawn where the threat is at time 0");
}

// A tile without a description lies where its size says.
void checkUnusedTransform(const std::string& topography, FindingList& findings) {
    const RasterDescription raster = rasterFamilyOf(topography).describe(topography, RasterContent::Topography);
    for (const RasterField& field : raster.fields) {
        const auto* const transform = std::get_if<std::vector<double>>(&field.value);
        if (transform == nullptr || std::string_view(field.name) != "transform" || transform->size() < 5)
            continue;
        const std::vector<double>& t = *transform;
        if (t[0] != 0.0 || t[3] != 0.0 || t[2] != 0.0 || t[4] != 0.0)
            findings.warning(
                {}, kTiles,
                "the transform of its header is not used: a single tile begins at the origin; a description can place "
                "it");
    }
}

// A set with classes and normals is meant to have a sun.
void checkSun(const std::string& description, FindingList& findings) {
    TerrainSet set;
    runLoader([&] { set = readTerrainSet(description, folderOfDescription(description)); });
    const std::string atmosphere = companionsOf(set.companionStem).atmosphere;
    const auto isLit = [](const auto& tile) {
        return FileExists(tile->getClassFilePath()) && FileExists(tile->getNormFilePath());
    };
    if (std::ranges::any_of(set.tiles, isLit) && !FileExists(atmosphere))
        findings.warning({}, kMissing, "\"" + atmosphere + "\" does not exist: the terrain is drawn without sun");
}

// `load` makes the tiles. Those of a single raster have no lines.
std::vector<std::string>
checkTiles(const std::function<bool(Terrain&)>& load, const std::vector<std::int64_t>& lines, FindingList& findings) {
    Terrain terrain;
    bool isLoaded = false;
    const LoaderOutcome outcome = runLoader([&] { isLoaded = load(terrain); });
    takeMessages(outcome.messages, findings);
    if (terrain.tileCount() == 0) {
        findings.error({}, kTiles, "there are no tiles: no terrain is drawn");
        return {};
    }
    checkHeights(terrain, findings);
    std::vector<std::string> files = SharedCheck(terrain.tile(0), findings).check();
    for (std::size_t i = 0; i < terrain.tileCount(); ++i) {
        const FindingPlace place{i < lines.size() ? lines[i] : 1};
        TileCheck tile(terrain.tile(i), place, std::string("tile ") + std::to_string(i + 1), findings);
        tile.check();
        std::ranges::copy(tile.takeFiles(), std::back_inserter(files));
    }
    return files;
}
} // namespace

std::vector<std::string> checkTerrainSet(const std::string& description, FindingList& findings) {
    const DescriptionScan scan = scanDescription(description, findings);
    if (!scan.isWellFormed)
        return {};
    checkSun(description, findings);
    return checkTiles(
        [&](Terrain& terrain) { return terrain.load(description, sorvane::folderOfDescription(description), 1.0F); },
        scan.tileLines, findings);
}

std::vector<std::string>
checkTerrainOf(const std::string& topography, const std::string& radiance, FindingList& findings) {
    const std::string description = sorvane::descriptionFor(topography);
    if (FileExists(description))
        return {description};
    checkUnusedTransform(topography, findings);
    return checkTiles(
        [&](Terrain& terrain) {
            float lowest = 0.0F;
            return terrain.Init(topography, radiance, "", lowest, 1.0F, 1.0F, 1.0F, 1.0F, 0.0F, 0.0F, 0.0F);
        },
        {}, findings);
}
} // namespace sorvane
