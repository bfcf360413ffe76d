// Describes a raster of either family from its header, and tells whether its samples are all there.
#include "rasterinfo.h"

#include <cstring>
#include <filesystem>

#include "bkgheader.h"
#include "filechecks.h"
#include "ghead.h"
#include "loadclsfile.h"
#include "loadnormfile.h"
#include "loadradfile.h"
#include "loadtopofile.h"
#include "messages.h"
#include "rasterlayout.h"
#include "shortestnumber.h"

namespace {
enum class RasterContent { Topography, Radiance, Normals, Classes, Unknown };

RasterContent contentOf(const std::string& path) {
    if (checkExtension(path, TOPO_EXT) || checkExtension(path, FTOP_EXT))
        return RasterContent::Topography;
    if (checkExtension(path, RAD_EXT))
        return RasterContent::Radiance;
    if (checkExtension(path, NORM_EXT))
        return RasterContent::Normals;
    return checkExtension(path, CLS_EXT) ? RasterContent::Classes : RasterContent::Unknown;
}

const char* nameOf(RasterContent content) {
    switch (content) {
    case RasterContent::Topography:
        return "topography";
    case RasterContent::Radiance:
        return "radiance";
    case RasterContent::Normals:
        return "normals";
    case RasterContent::Classes:
        return "classes";
    case RasterContent::Unknown:
        break;
    }
    return "unknown";
}

// Of the family that the loaders take the file for.
bool isBkg(const std::string& path) {
    if (checkExtension(path, FTOP_EXT))
        return true;
    return !checkExtension(path, TOPO_EXT) && CheckMORLAN(path);
}

// The members are named after the header's fields.
InfoRecord headerRecord(const GHead& h) {
    return {
        {"headkey", fixedText(h.headkey)},
        {"nrows", h.nrows},
        {"ncols", h.ncols},
        {"nbands", h.nbands},
        {"packtype", h.packtype},
        {"cellUnits", h.cellUnits},
        {"xCellSize", shortestDouble(h.xCellSize)},
        {"yCellSize", shortestDouble(h.yCellSize)},
        {"zscale", shortestDouble(h.zscale)},
        {"fileType", fixedText(h.fileType)},
        {"MinVals", numberList(h.MinVals)},
        {"MaxVals", numberList(h.MaxVals)},
        {"iassocf1", fixedText(h.iassocf1)},
        {"iassocf2", fixedText(h.iassocf2)},
        {"airrad", shortestDouble(h.airrad)},
        {"lambda1", shortestDouble(h.lambda1)},
        {"lambda2", shortestDouble(h.lambda2)},
        {"xStart", h.xStart},
        {"yStart", h.yStart},
        {"xorg", h.xorg},
        {"yorg", h.yorg},
        {"nsources", h.nsources},
        {"source", numberList(h.source)},
        {"intens", numberList(h.intens)},
        {"wldUnits", h.wldUnits},
        {"world", numberList(h.world)},
        {"mean", numberList(h.mean)},
        {"stddev", numberList(h.stddev)},
        {"idescript", fixedText(h.idescript)},
        {"trailer", h.trailer},
        {"ambienttemp", shortestDouble(h.ambienttemp)},
    };
}

InfoRecord headerRecord(const BKG_header& h) {
    constexpr std::size_t kAssociatedName = 60;
    const std::span<const char> associated(h.associatedBlock);
    return {
        {"headerSignature", fixedText(h.headerSignature)},
        {"geodeticProjection", fixedText(h.geodeticProjection)},
        {"geodeticSpheroid", fixedText(h.geodeticSpheroid)},
        {"geodeticDatum", fixedText(h.geodeticDatum)},
        {"hemisphere", fixedText(h.hemisphere)},
        {"geodeticZone", h.geodeticZone},
        {"transform", h.transform},
        {"dimensions", fixedText(h.dimensions)},
        {"originatingAgency", fixedText(h.originatingAgency)},
        {"fileCreationDate", fixedText(h.fileCreationDate)},
        {"validBand", h.validBand},
        {"weatherSetDate", fixedText(h.weatherSetDate)},
        {"weatherSetTime", fixedText(h.weatherSetTime)},
        {"relativeHumidity", shortestDouble(h.relativeHumidity)},
        {"windSpeed", shortestDouble(h.windSpeed)},
        {"windDirection", shortestDouble(h.windDirection)},
        {"ambientAirTemperature", shortestDouble(h.ambientAirTemperature)},
        {"barometricPressure", shortestDouble(h.barometricPressure)},
        {"visibility", shortestDouble(h.visibility)},
        {"pyranometer", shortestDouble(h.pyranometer)},
        {"sizeX", h.sizeX},
        {"sizeY", h.sizeY},
        {"xStepSize", shortestDouble(h.xStepSize)},
        {"yStepSize", shortestDouble(h.yStepSize)},
        {"baseX", h.baseX},
        {"baseY", h.baseY},
        {"databaseReference", shortestDouble(h.databaseReference)},
        {"databaseMean", shortestDouble(h.databaseMean)},
        {"databaseStdDev", shortestDouble(h.databaseStdDev)},
        {"databaseMinimum", shortestDouble(h.databaseMinimum)},
        {"databaseMaximum", shortestDouble(h.databaseMaximum)},
        {"associated1", fixedText(associated.first(kAssociatedName))},
        {"associated2", fixedText(associated.subspan(kAssociatedName, kAssociatedName))},
    };
}

void describeSize(
    std::int32_t columns, std::int32_t rows, float cellX, float cellY, float minimum, float maximum, LengthUnit unit,
    InfoRecord& record) {
    record["columns"] = columns;
    record["rows"] = rows;
    record[lengthName("cell_x", unit)] = shortestDouble(cellX);
    record[lengthName("cell_y", unit)] = shortestDouble(cellY);
    record["minimum"] = shortestDouble(minimum);
    record["maximum"] = shortestDouble(maximum);
}

// Without the line that the test prints.
bool hasRecordRows(const std::string& radiancePath) {
    const MessageCollection silence;
    return isOldRadMap(radiancePath);
}

// As its loader reads the file; nothing where nobody would.
std::optional<RowLayout> layoutOf(const std::string& path, RasterContent content, const GHead& header) {
    const int sampleSize = sampleSizeOf(header);
    const std::int64_t padding = recordPadding(sampleSize, header.ncols);
    switch (content) {
    case RasterContent::Topography:
        return RowLayout{header.nrows, header.ncols, sizeof(std::uint16_t), padding};
    case RasterContent::Radiance:
        return RowLayout{header.nrows, header.ncols, sizeof(float), hasRecordRows(path) ? padding : 0};
    case RasterContent::Normals:
        return RowLayout{header.nrows, header.ncols, sizeof(Vertex3), 0};
    case RasterContent::Classes:
        return RowLayout{header.nrows, header.ncols, sampleSize, padding};
    case RasterContent::Unknown:
        break;
    }
    return std::nullopt;
}

std::optional<RowLayout> layoutOf(RasterContent content, const BKG_header& header) {
    switch (content) {
    case RasterContent::Topography:
    case RasterContent::Radiance:
        return RowLayout{header.sizeY, header.sizeX, sizeof(float), 0};
    case RasterContent::Normals:
        return RowLayout{header.sizeY, header.sizeX, sizeof(Vertex3), 0};
    case RasterContent::Classes:
        return RowLayout{header.sizeY, header.sizeX, 1, 0};
    case RasterContent::Unknown:
        break;
    }
    return std::nullopt;
}

InfoFault faultOf(std::FILE* stream, const std::optional<RowLayout>& layout) {
    if (!layout)
        return std::nullopt;
    if (layout->rows <= 0 || layout->columns <= 0)
        return "has no samples by its header";
    if (const std::optional<ShortRow> row = findShortRow(stream, *layout))
        return "ends in row " + std::to_string(row->number) + " of " + std::to_string(layout->rows);
    return std::nullopt;
}

InfoFault describeTorvale(const std::string& path, RasterContent content, LengthUnit unit, InfoRecord& record) {
    GHead header{};
    const FileHandle stream = ReadHeader(path, header);
    if (stream == nullptr)
        return "is shorter than its header";
    describeSize(
        header.ncols, header.nrows, header.xCellSize, header.yCellSize, header.MinVals[0], header.MaxVals[0], unit,
        record);
    record["header"] = headerRecord(header);
    // Normals are read whatever a small packtype says.
    constexpr int kPacktypesOfNormals = 4;
    const bool isPackable =
        content == RasterContent::Normals ? header.packtype < kPacktypesOfNormals : sampleSizeOf(header) != 0;
    if (!isPackable)
        return "has a packtype that is refused, " + std::to_string(header.packtype);
    return faultOf(stream.get(), layoutOf(path, content, header));
}

InfoFault describeBkg(const std::string& path, RasterContent content, LengthUnit unit, InfoRecord& record) {
    constexpr std::uintmax_t kHeaderBytes = 512;
    BKG_header header{};
    const FileHandle stream = ReadHeader(path, header);
    if (stream == nullptr || std::filesystem::file_size(path) < kHeaderBytes)
        return "is shorter than its header";
    describeSize(
        header.sizeX, header.sizeY, header.xStepSize, header.yStepSize, header.databaseMinimum, header.databaseMaximum,
        unit, record);
    record["header"] = headerRecord(header);
    if (content == RasterContent::Normals && std::memcmp(header.headerSignature, "NORM", sizeof "NORM") != 0)
        return "is not a raster of normals: its header signature is not \"NORM\"";
    return faultOf(stream.get(), layoutOf(content, header));
}
} // namespace

InfoFault describeRaster(const std::string& path, LengthUnit unit, InfoRecord& record) {
    const RasterContent content = contentOf(path);
    const bool isOfBkgFamily = isBkg(path);
    record["family"] = isOfBkgFamily ? "BKG" : "TORVALE";
    record["content"] = nameOf(content);
    return isOfBkgFamily ? describeBkg(path, content, unit, record) : describeTorvale(path, content, unit, record);
}
