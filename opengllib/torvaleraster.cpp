// The TORVALE family of rasters: how its samples lie behind the header, and its row of the table of families.
#include "torvaleraster.h"

#include <cmath>
#include <cstring>

#include "bkgheader.h"
#include "headerconversion.h"
#include "loadclsfile.h"
#include "loadradfile.h"
#include "loadtopofile.h"
#include "rasterfamily.h"

namespace sorvane {
namespace {
// Whether these can be the sizes of a raster: a body's radiance file has other things there.
bool looksLikeTorvale(std::string_view firstBytes) {
    GHead header{};
    if (firstBytes.size() < sizeof header)
        return false;
    std::memcpy(&header, firstBytes.data(), sizeof header);
    return header.nrows > 0 && header.ncols > 0 && sampleSizeOf(header) > 0;
}

RasterHeader summaryOf(const GHead& header, bool isUsable) {
    return {{header.ncols, header.nrows},
            header.xCellSize,
            header.yCellSize,
            header.MinVals[0],
            header.MaxVals[0],
            isUsable};
}

RasterHeader readTorvaleHeader(const std::string& path) {
    GHead header{};
    const bool isWhole = ReadHeader(path, header) != nullptr;
    return summaryOf(header, isWhole);
}

bool isPackable(const GHead& header, RasterContent content) {
    return content == RasterContent::Normals ? header.packtype < kPacktypesOfNormals : sampleSizeOf(header) != 0;
}

std::vector<RasterHeaderFault> faultsOf(const GHead& header, RasterContent content) {
    std::vector<RasterHeaderFault> faults;
    if (sampleSizeOf(header) == 0 && content != RasterContent::Normals)
        faults.push_back(
            {true, "the packing " + std::to_string(header.packtype) + " is none of 0, 1 and 2: no sample is read"});
    if (content == RasterContent::Topography && (header.zscale == 0.0F || !std::isfinite(header.zscale)))
        faults.push_back({false, "the samples are scaled by " + std::to_string(header.zscale)});
    return faults;
}

RasterDescription describeTorvale(const std::string& path, RasterContent content) {
    GHead header{};
    const FileHandle stream = ReadHeader(path, header);
    RasterDescription description{summaryOf(header, stream != nullptr), {}, {}, {}, {}, faultsOf(header, content)};
    visitFields(header, [&](const char* name, const auto& field) {
        if (name != nullptr)
            description.fields.push_back({name, fieldValue(field)});
    });
    description.layout = description.readLayout = rowLayout(header, content);
    if (content == RasterContent::Radiance && stream != nullptr && !hasPaddedRadiances(header, dataBytes(stream.get())))
        description.readLayout->skippedBytes = 0;
    if (!isPackable(header, content))
        description.refusal = "has a packtype that is refused, " + std::to_string(header.packtype);
    return description;
}

float* loadTorvaleTopography(const std::string& path, BKG_header& header) {
    GHead torvale{};
    float* const samples = loadTopoFile(path, torvale);
    if (samples != nullptr)
        ghead2bkg_header(torvale, header);
    return samples;
}

float* loadTorvaleRadiance(const std::string& path) {
    if (isOldRadMap(path)) {
        int discarded[5];
        unsigned alsoDiscarded[2];
        return loadRADFile(
            path, discarded[0], discarded[1], discarded[2], discarded[3], alsoDiscarded[0], alsoDiscarded[1],
            discarded[4], false);
    }
    GHead discarded{};
    return loadRadFile(path, discarded);
}

unsigned char* loadTorvaleClasses(const std::string& path) {
    GHead discarded{};
    return loadCLSFileTORVALE(path, discarded);
}
} // namespace

const RasterFamily kTorvaleFamily = {
    "TORVALE",
    TOPO_EXT,
    nullptr,
    looksLikeTorvale,
    readTorvaleHeader,
    describeTorvale,
    loadTorvaleTopography,
    loadTorvaleRadiance,
    loadNormFileTORVAL,
    loadTorvaleClasses,
};

std::optional<RowLayout> rowLayout(const GHead& header, RasterContent content) {
    const int sampleSize = sampleSizeOf(header);
    const std::int64_t padding = recordPadding(sampleSize, header.ncols);
    switch (content) {
    case RasterContent::Topography:
        return RowLayout{header.nrows, header.ncols, sizeof(std::uint16_t), padding};
    case RasterContent::Radiance:
        return RowLayout{header.nrows, header.ncols, sizeof(float), padding};
    case RasterContent::Normals:
        return RowLayout{header.nrows, header.ncols, sizeof(Vertex3), 0};
    case RasterContent::Classes:
        return RowLayout{header.nrows, header.ncols, sampleSize, padding};
    case RasterContent::Unknown:
        break;
    }
    return std::nullopt;
}

bool hasPaddedRadiances(const GHead& header, std::int64_t dataBytes) {
    return dataBytes > std::int64_t{header.nrows} * header.ncols;
}
} // namespace sorvane
