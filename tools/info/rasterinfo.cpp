// Describes a raster of any family from its header, and tells whether its samples are all there.
#include "rasterinfo.h"

#include "inputfile.h"
#include "rasterfamily.h"
#include "shortestnumber.h"

namespace sorvane {
namespace {
struct ToRecord {
    InfoRecord operator()(const std::string& text) const { return text; }
    InfoRecord operator()(std::int32_t number) const { return number; }
    InfoRecord operator()(float number) const { return shortestDouble(number); }
    InfoRecord operator()(const std::vector<float>& numbers) const { return numberList(numbers); }
    InfoRecord operator()(const std::vector<double>& numbers) const { return numbers; }
};

InfoRecord headerRecord(const std::vector<RasterField>& fields) {
    InfoRecord record;
    for (const RasterField& field : fields)
        record[field.name] = std::visit(ToRecord(), field.value);
    return record;
}

void describeSize(const RasterHeader& header, LengthUnit unit, InfoRecord& record) {
    record["columns"] = header.size.columns;
    record["rows"] = header.size.rows;
    record[lengthName("cell_x", unit)] = shortestDouble(header.cellX);
    record[lengthName("cell_y", unit)] = shortestDouble(header.cellY);
    record["minimum"] = shortestDouble(header.minimum);
    record["maximum"] = shortestDouble(header.maximum);
}

std::optional<Problem> problemOf(std::FILE* stream, const std::optional<RowLayout>& layout) {
    if (!layout)
        return std::nullopt;
    if (layout->rows <= 0 || layout->columns <= 0)
        return "has no samples by its header";
    if (const std::optional<ShortRow> row = findShortRow(stream, *layout))
        return "ends in row " + std::to_string(row->number) + " of " + std::to_string(layout->rows);
    return std::nullopt;
}
} // namespace

std::optional<Problem> describeRaster(const std::string& path, LengthUnit unit, InfoRecord& record) {
    const RasterContent content = sorvane::rasterContentOf(path);
    const RasterFamily& family = sorvane::rasterFamilyOf(path);
    record["family"] = family.name;
    record["content"] = nameOf(content);
    const FileHandle stream = openInputFile(path);
    if (stream == nullptr || !hasWholeHeader(stream.get()))
        return "is shorter than its header";
    const RasterDescription description = family.describe(path, content);
    describeSize(description.header, unit, record);
    record["header"] = headerRecord(description.fields);
    return description.refusal ? description.refusal : problemOf(stream.get(), description.readLayout);
}
} // namespace sorvane
