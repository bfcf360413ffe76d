// Describes the description of a terrain set, and the tables that stand beside its tiles.
#include "terraininfo.h"

#include <algorithm>
#include <array>
#include <limits>
#include <memory>
#include <vector>

#include "bandfile.h"
#include "cls2asterfile.h"
#include "inputfile.h"
#include "loadclstomatfile.h"
#include "loadmaterialtables.h"
#include "shortestnumber.h"
#include "spectruminfo.h"
#include "terraincompanions.h"
#include "terrainfileexists.h"
#include "terrainxmlparser.h"

namespace sorvane {
namespace {
const Problem kCannotBeRead{"can't be read"};
constexpr std::size_t kWholeFile = std::numeric_limits<std::size_t>::max();

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

InfoRecord companionsRecord(const TerrainCompanions& companions) {
    InfoRecord record = InfoRecord::array();
    for (const auto companion : TerrainCompanions::kAll)
        record.push_back({{"path", companions.*companion}, {"exists", FileExists(companions.*companion)}});
    return record;
}

const char* nameOf(ReflectanceRoute route) {
    switch (route) {
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

std::optional<Problem> describeTerrain(const std::string& path, LengthUnit unit, InfoRecord& record) {
    const TerrainSet set = sorvane::readTerrainSet(path, sorvane::folderOfDescription(path));
    if (set.tiles.empty())
        return "describes no tiles";
    const TerrainCompanions companions = sorvane::companionsOf(set.companionStem);
    record["base"] = set.description.base;
    record["radiance_base"] = set.description.radbase;
    record["described_folder"] = set.description.datadir;
    record["spectra_folder"] = set.description.asterdb;
    record["reflectance_by"] = nameOf(reflectanceRoute(companions.reflectanceFiles(set.description.asterdb)));
    record["classes"] = classReflectances(companions.reflectanceFiles(set.description.asterdb));
    record["companions"] = companionsRecord(companions);
    record["extent"] = extentRecord(set.tiles, unit);
    InfoRecord& tiles = record["tiles"] = InfoRecord::array();
    for (const auto& tile : set.tiles)
        tiles.push_back(tileRecord(*tile, unit));
    return std::nullopt;
}

std::optional<Problem> describeClassToAster(const std::string& path, InfoRecord& record) {
    const std::optional<std::string> text = readInputFile(path, kWholeFile);
    if (!text)
        return kCannotBeRead;
    InfoRecord& classes = record["classes"] = InfoRecord::array();
    for (const Cls2AsterFile::Line& line : Cls2AsterFile::parse(*text))
        classes.push_back({{"class", line.cls}, {"sample", line.sample}});
    return std::nullopt;
}

std::optional<Problem> describeClassToMaterial(const std::string& path, InfoRecord& record) {
    std::array<unsigned char, std::size_t{2} * kMaximumClassPairs> pairs{};
    unsigned count = 0;
    const bool isRead = loadCLStoMatFile(path, pairs.data(), count);
    InfoRecord& classes = record["classes"] = InfoRecord::array();
    for (std::size_t i = 0; i < count; ++i)
        classes.push_back({{"class", pairs[2 * i]}, {"material", pairs[2 * i + 1]}});
    return isRead ? std::nullopt : std::optional(kCannotBeRead);
}

std::optional<Problem> describeTemperatures(const std::string& path, InfoRecord& record) {
    const std::optional<std::string> text = readInputFile(path, kWholeFile);
    if (!text)
        return kCannotBeRead;
    InfoRecord& materials = record["materials"] = InfoRecord::array();
    for (const sorvane::MaterialValues& values : sorvane::readTemperatures(*text))
        materials.push_back(
            {{"material", materials.size() + 1},
             {"temperature", shortestDouble(values.temperature)},
             {"emissivity", shortestDouble(values.emissivity)}});
    return materials.empty() ? std::optional<Problem>("begins with no pair of numbers") : std::nullopt;
}

std::optional<Problem> describeBand(const std::string& path, InfoRecord& record) {
    const std::optional<std::string> text = readInputFile(path, kWholeFile);
    if (!text)
        return kCannotBeRead;
    float lower = 0.0F;
    float upper = 0.0F;
    BandFile::parse(*text, lower, upper);
    record["lower_edge"] = shortestDouble(lower);
    record["upper_edge"] = shortestDouble(upper);
    return lower > 0.0F && upper > 0.0F ? std::nullopt : std::optional<Problem>("has no band edges above 0");
}
} // namespace sorvane
