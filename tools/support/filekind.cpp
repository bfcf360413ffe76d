// Tells what a file is, from its name and its first bytes.
#include "filekind.h"

#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>

#include <sys/stat.h>

#include "aster.h"
#include "atmfile.h"
#include "bandfile.h"
#include "brdffile.h"
#include "cls2asterfile.h"
#include "filechecks.h"
#include "inputfile.h"
#include "loadclstomatfile.h"
#include "loadmaterialtables.h"
#include "radfile.h"
#include "rasterfamily.h"
#include "rotor.h"
#include "subfacetfile.h"
#include "terrainxmlparser.h"
#include "texthead.h"
#include "trajectoryidentity.h"
#include "vnlfile.h"

namespace sorvane {
namespace {
constexpr std::size_t kHeadBytes = std::size_t{1} << 16; // long enough for comments before a trajectory's header

struct Format {
    FileKind kind;
    const char* name;
    const char* extension;              // decides by itself; null where contents have to
    bool (*looksLike)(const TextHead&); // of texts of any other name; null where the name has to decide
};

// Texts are taken for the first that they look like.
const Format kFormats[] = {
    {FileKind::Trajectory, "trajectory", nullptr, sorvane::looksLikeTrajectory},
    {FileKind::SpectralSample, "spectral sample", nullptr, nullptr},
    {FileKind::Reflectance, "reflectance", BrdfFile::kExtension, BrdfFile::looksLike},
    {FileKind::Geometry, "geometry", VnlFile::kExtension, VnlFile::looksLike},
    {FileKind::Atmosphere, "atmosphere", AtmFile::kExtension, AtmFile::looksLike},
    {FileKind::Rotor, "rotors", nullptr, Rotor::looksLike},
    {FileKind::TerrainDescription, "terrain description", sorvane::kDescriptionExtension,
     [](const TextHead& head) {
         return sorvane::looksLikeDescription(head.bytes());
     }},
    {FileKind::BodyRadiance, "body radiance", nullptr, nullptr},
    {FileKind::FormFactors, "form factors", SubfacetFile::kExtension, nullptr},
    {FileKind::Raster, "raster", nullptr, nullptr},
    {FileKind::ClassToAster, "class to spectrum", CLS2ASTER_EXT, nullptr},
    {FileKind::ClassToMaterial, "class to material", sorvane::kClassToMaterialExtension, nullptr},
    {FileKind::Temperature, "temperatures", sorvane::kTemperatureExtension, nullptr},
    {FileKind::Band, "band", BandFile::kExtension, nullptr},
};

struct FileHead {
    std::string bytes; // the first ones
    std::int64_t size = 0;
};

std::optional<FileHead> readHead(const std::string& path) {
    const FileHandle stream = openInputFile(path);
    struct stat status {};
    if (stream == nullptr || ::fstat(::fileno(stream.get()), &status) != 0)
        return std::nullopt;
    FileHead head{std::string(kHeadBytes, '\0'), status.st_size};
    head.bytes.resize(std::fread(head.bytes.data(), 1, head.bytes.size(), stream.get()));
    return head;
}

// The radiances of a body and those of a raster have the same extension.
FileKind radianceKindOf(const FileHead& head) {
    if (sorvane::hasRasterSignature(head.bytes))
        return FileKind::Raster;
    const auto looksLikeRaster = [&](const RasterFamily* family) {
        return family->looksLike(head.bytes);
    };
    const bool isRaster =
        !RadFile::isWhole(head.bytes, head.size) && std::ranges::any_of(sorvane::rasterFamilies(), looksLikeRaster);
    return isRaster ? FileKind::Raster : FileKind::BodyRadiance;
}

bool isSpectralSample(const FileHead& head, const std::string& name) {
    return checkExtension(name, ASTER_EXT) && Aster::looksLike(TextHead(head.bytes, TextHead::Comments::None));
}

FileKind textKindOf(const FileHead& head, const std::string& name) {
    const TextHead text(head.bytes);
    for (const Format& format : kFormats) {
        const bool isOfFormat = format.kind == FileKind::SpectralSample
                                    ? isSpectralSample(head, name)
                                    : format.looksLike != nullptr && format.looksLike(text);
        if (isOfFormat)
            return format.kind;
    }
    return FileKind::Unknown;
}
} // namespace

FileKind fileKindOf(const std::string& path) {
    if (openInputFile(path) == nullptr)
        return FileKind::Unknown;
    const std::string name = std::filesystem::path(path).filename().string();
    for (const Format& format : kFormats)
        if (format.extension != nullptr && name.ends_with(std::string(".") + format.extension))
            return format.kind;
    const RasterContent raster = sorvane::rasterContentOf(path);
    if (raster != RasterContent::Unknown && raster != RasterContent::Radiance)
        return FileKind::Raster;
    if (raster == RasterContent::Unknown && sorvane::isNamedLikeTrajectory(name))
        return FileKind::Trajectory;
    // Only now: of most files of a set the name tells.
    const std::optional<FileHead> head = readHead(path);
    if (!head)
        return FileKind::Unknown;
    if (raster == RasterContent::Radiance)
        return radianceKindOf(*head);
    if (sorvane::hasRasterSignature(head->bytes))
        return FileKind::Raster;
    if (head->bytes.find('\0') != std::string::npos)
        return FileKind::Unknown;
    return textKindOf(*head, name);
}

const char* nameOf(FileKind kind) {
    const auto* const found = std::ranges::find(kFormats, kind, &Format::kind);
    return found == std::end(kFormats) ? "unknown" : found->name;
}
} // namespace sorvane
