// The BKG family of rasters: how its samples lie behind the header, and its row of the table of families.
#include "bkgraster.h"

#include <cstring>

#include "loadclsfile.h"
#include "loadradfile.h"
#include "loadtopofile.h"
#include "rasterfamily.h"

namespace sorvane {
namespace {
bool hasBkgSignature(std::string_view firstBytes) {
    return firstBytes.starts_with(BKG_HEADER_SIGNATURE);
}

RasterHeader summaryOf(const BKG_header& header, bool isUsable) {
    return {{header.sizeX, header.sizeY}, header.xStepSize,       header.yStepSize,
            header.databaseMinimum,       header.databaseMaximum, isUsable};
}

RasterHeader readBkgHeader(const std::string& path) {
    BKG_header header{};
    const bool isOpen = ReadHeader(path, header) != nullptr;
    return summaryOf(header, isOpen);
}

std::vector<RasterField> fieldsOf(const BKG_header& header) {
    constexpr std::size_t kAssociatedName = 60;
    std::vector<RasterField> fields;
    visitFields(header, [&](const char* name, const auto& field) {
        if (name != nullptr)
            fields.push_back({name, fieldValue(field)});
    });
    const std::span<const char> associated(header.associatedBlock);
    fields.push_back({"associated1", fieldValue(associated.first(kAssociatedName))});
    fields.push_back({"associated2", fieldValue(associated.subspan(kAssociatedName, kAssociatedName))});
    return fields;
}

std::vector<RasterHeaderFault> faultsOf(const BKG_header& header) {
    const std::string_view field(header.dimensions, sizeof header.dimensions);
    const std::string letters(field.substr(0, field.find('\0')));
    const std::string columns = std::to_string(header.sizeX);
    const std::string rows = std::to_string(header.sizeY);
    if (letters.find('x') == std::string::npos || letters == columns + "x" + rows)
        return {};
    return {{false, "the header says " + columns + " x " + rows + " samples, and in letters \"" + letters + "\""}};
}

RasterDescription describeBkg(const std::string& path, RasterContent content) {
    BKG_header header{};
    const bool isOpen = ReadHeader(path, header) != nullptr;
    const std::optional<RowLayout> layout = rowLayout(header, content);
    RasterDescription description{summaryOf(header, isOpen), fieldsOf(header), layout, layout, {}, faultsOf(header)};
    if (content == RasterContent::Normals && !isOfNormals(header))
        description.refusal = "is not a raster of normals: its header signature is not \"NORM\"";
    return description;
}

float* loadBkgRadiance(const std::string& path) {
    BKG_header discarded{};
    return loadRadFileMORLAN(path, discarded);
}

unsigned char* loadBkgClasses(const std::string& path) {
    BKG_header discarded{};
    return loadCLSFileMorlan(path, discarded);
}
} // namespace

const RasterFamily kBkgFamily = {
    "BKG",       FTOP_EXT,     hasBkgSignature, hasBkgSignature,    readBkgHeader,
    describeBkg, loadFTopFile, loadBkgRadiance, loadNormFileMORLAN, loadBkgClasses,
};

std::optional<RowLayout> rowLayout(const BKG_header& header, RasterContent content) {
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

bool isOfNormals(const BKG_header& header) {
    constexpr char kSignature[] = "NORM"; // its closing zero included
    return std::memcmp(header.headerSignature, kSignature, sizeof kSignature) == 0;
}
} // namespace sorvane
