// One run of `sorvane check`: every file once, with those that it names.
#include "checkrun.h"

#include <algorithm>
#include <new>

#include <QFile>

#include "bodycheck.h"
#include "compression.h"
#include "engagementfiles.h"
#include "filecaches.h"
#include "filechecks.h"
#include "filetracker.h"
#include "rastercheck.h"
#include "subfacetfile.h"
#include "tablecheck.h"
#include "terraincheck.h"
#include "terrainxmlparser.h"
#include "trajectorycheck.h"
#include "trajectoryfile.h"
#include "vnlfile.h"

namespace sorvane {
namespace {
constexpr const char* kFacets = "counts of facets";

std::string pathBytes(const QString& path) {
    return QFile::encodeName(path).toStdString();
}

// However a file is named, it is one.
std::filesystem::path identityOf(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::weakly_canonical(path, ignored);
}

bool isThere(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored);
}

// The geometry in the same folder whose name the file's name begins with, the one of the longest such name.
std::string geometryBeside(const std::string& path) {
    const std::filesystem::path file(path);
    std::string stem = file.filename().string();
    while (!stem.empty()) {
        stem.resize(std::min(stem.find_last_of("._"), stem.size()));
        const std::filesystem::path geometry = file.parent_path() / (stem + "." + VnlFile::kExtension);
        if (isThere(geometry.string()))
            return geometry.string();
        if (stem.find_last_of("._") == std::string::npos)
            break;
    }
    return {};
}
} // namespace

void CheckRun::deliver(FindingList& findings) {
    if (!findings.isEmpty())
        deliver_(findings.take());
}

void CheckRun::checkFile(const std::string& path, FileKind kind) {
    if (!checked_.insert(identityOf(path)).second)
        return;
    FindingList findings(path, keepsAll_);
    try {
        checkContents(path, kind, findings);
    } catch (const std::bad_alloc&) {
        findings.error({}, "faults of loading", "there is not enough memory to check the file");
    }
    forgetFile(path);
    ::cache.clear(); // of the texts that were read, which no file is checked by again
    deliver(findings);
    for (const auto& follow : std::exchange(pending_, {}))
        follow();
}

void CheckRun::checkStandardInput() {
    ++standardInputs_;
    FindingList findings("<stdin>", keepsAll_);
    checkTrajectoryAnd("-", findings);
    deliver(findings);
    for (const auto& follow : std::exchange(pending_, {}))
        follow();
}

void CheckRun::checkContents(const std::string& path, FileKind kind, FindingList& findings) {
    switch (kind) {
    case FileKind::Trajectory:
        checkTrajectoryAnd(path, findings);
        break;
    case FileKind::Geometry:
    case FileKind::Reflectance:
    case FileKind::BodyRadiance:
    case FileKind::FormFactors:
        if (const std::optional<int> facets = checkFacets(path, kind, findings))
            facets_[identityOf(path)] = *facets;
        compareWithGeometryBeside(path, findings);
        break;
    case FileKind::Atmosphere:
        checkAtmosphere(path, findings);
        break;
    case FileKind::Rotor:
        checkRotors(path, findings);
        break;
    case FileKind::Raster:
        checkRaster(path, findings);
        break;
    case FileKind::TerrainDescription:
        for (const std::string& file : checkTerrainSet(path, findings))
            pending_.emplace_back([this, file] { checkFile(file); });
        break;
    case FileKind::ClassToAster:
        checkClassToAster(path, findings);
        break;
    case FileKind::ClassToMaterial:
        checkClassToMaterial(path, findings);
        break;
    case FileKind::Temperature:
        checkTemperatures(path, findings);
        break;
    case FileKind::Band:
        checkBand(path, findings);
        break;
    case FileKind::SpectralSample:
        checkSpectralSample(path, findings);
        break;
    case FileKind::Unknown:
        if (const auto problem = problemOfCompression(path))
            findings.warning({}, "unknown files", "the file " + problem->text + ": not checked");
        else
            findings.warning({}, "unknown files", "this is no file that the viewer reads: not checked");
        break;
    }
}

std::optional<int> CheckRun::checkFacets(const std::string& path, FileKind kind, FindingList& findings) {
    switch (kind) {
    case FileKind::Geometry:
        return checkGeometry(path, findings);
    case FileKind::Reflectance:
        return checkReflectance(path, findings);
    case FileKind::BodyRadiance:
        return checkBodyRadiance(path, findings);
    default:
        return checkFormFactors(path, findings);
    }
}

void CheckRun::checkTrajectoryAnd(const std::string& path, FindingList& findings) {
    const std::optional<TrajectoryFileHeader> header = checkTrajectory(openTrajectoryAt(path), path, findings);
    if (!header)
        return;
    const EngagementFiles files = chooseFiles(*header);
    const std::string atmosphere = pathBytes(files.atmospherePath());
    if (isThere(atmosphere))
        pending_.emplace_back([this, atmosphere] { checkFile(atmosphere, FileKind::Atmosphere); });
    pending_.emplace_back([this, files] {
        checkBody(
            pathBytes(files.targetBrdfPath), pathBytes(files.targetGeometryPath()),
            pathBytes(files.targetRadiancePath()));
        checkBody(
            pathBytes(files.threatBrdfPath()), pathBytes(files.threatGeometryPath()),
            pathBytes(files.threatRadiancePath()));
    });
    const std::string topography = pathBytes(files.terrainTopoPath);
    const std::string radiance = pathBytes(files.terrainRadPath);
    if (!isThere(topography) || !isThere(radiance) || !terrains_.emplace(topography, radiance).second)
        return;
    pending_.emplace_back([this, topography, radiance] {
        if (checkExtension(topography, sorvane::kDescriptionExtension)) {
            checkFile(topography, FileKind::TerrainDescription);
            return;
        }
        FindingList ofTile(topography, keepsAll_);
        const std::vector<std::string> companions = checkTerrainOf(topography, radiance, ofTile);
        deliver(ofTile);
        for (const std::string& file : companions)
            checkFile(file);
    });
}

void CheckRun::checkBody(const std::string& brdf, const std::string& geometry, const std::string& radiance) {
    const std::string formFactors = SubfacetFile::pathBeside(geometry);
    const std::pair<const std::string&, FileKind> files[] = {
        {geometry, FileKind::Geometry},
        {brdf, FileKind::Reflectance},
        {radiance, FileKind::BodyRadiance},
        {formFactors, FileKind::FormFactors},
    };
    for (const auto& [path, kind] : files)
        if (isThere(path))
            checkFile(path, kind);
    for (const std::string& path : {brdf, radiance, formFactors}) {
        FindingList findings(path, keepsAll_);
        compareFacets(path, geometry, findings);
        deliver(findings);
    }
}

void CheckRun::compareWithGeometryBeside(const std::string& path, FindingList& findings) {
    const std::string geometry = geometryBeside(path);
    if (geometry.empty() || geometry == path)
        return;
    if (const std::optional<int> facets = facetsOfGeometry(geometry))
        facets_.try_emplace(identityOf(geometry), *facets);
    compareFacets(path, geometry, findings);
}

void CheckRun::compareFacets(const std::string& path, const std::string& geometry, FindingList& findings) {
    const auto ours = facets_.find(identityOf(path));
    const auto theirs = facets_.find(identityOf(geometry));
    if (ours == facets_.end() || theirs == facets_.end() || ours->second == theirs->second ||
        !compared_.emplace(ours->first, theirs->first).second)
        return;
    findings.error(
        {}, kFacets,
        std::string("the file is of ") + std::to_string(ours->second) + " facets, but the geometry \"" + geometry +
            "\" is of " + std::to_string(theirs->second));
}
} // namespace sorvane
