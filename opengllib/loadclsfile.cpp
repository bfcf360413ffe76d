// Loads material classes.
#include "loadclsfile.h"

#include <cstdint>
#include <cstdio>
#include <memory>

#include "fail.h"
#include "rasterfamily.h"
#include "rasterlayout.h"
#include "torvaleraster.h"

using namespace sorvane;

namespace {
void reportShortRow(const ShortRow& row, const RowLayout& layout) {
    fail(
        "loadCLSFileTORVALE",
        "Error when reading samples. When trying to read row %d of samples, expected to receive %d samples each of "
        "size %d bytes but only receieved %d.",
        row.number, static_cast<int>(layout.columns), static_cast<int>(layout.itemBytes), row.received);
}

// Reads samples of several bytes row by row and keeps the low byte of each.
std::optional<ShortRow> readLowBytes(std::FILE* stream, const RowLayout& layout, unsigned char* samples) {
    if (layout.rows <= 0)
        return std::nullopt; // nothing vouches for the size of a row
    const auto row = allocateSamples<unsigned char>(layout.columns, layout.itemBytes);
    if (row == nullptr)
        return ShortRow{1, 0};
    for (std::int64_t r = 0; r < layout.rows && layout.columns > 0; ++r) {
        const std::int64_t received = readRow(stream, layout, r, row.get());
        if (received < layout.columns)
            return ShortRow{static_cast<int>(r + 1), static_cast<int>(received)};
        for (std::int64_t column = 0; column < layout.columns; ++column)
            samples[r * layout.columns + column] = row[static_cast<std::size_t>(column * layout.itemBytes)];
    }
    return std::nullopt;
}
} // namespace

unsigned char* loadCLSFileTORVALE(const std::string& path, GHead& header) {
    const FileHandle stream = openInputFile(path);
    if (stream == nullptr) {
        fail("loadCLSFileTORVALE", "Unable to open file \"%s\" for reading.", path.c_str());
        return nullptr;
    }
    if (std::fread(&header, sizeof header, 1, stream.get()) != 1) {
        fail("loadCLSFileTORVALE", "Unable to read header from CLS file.");
        return nullptr;
    }
    const int sampleSize = sampleSizeOf(header);
    if (sampleSize == 0)
        return nullptr;
    const RowLayout layout = sorvane::rowLayout(header, sorvane::RasterContent::Classes).value();
    auto pSamples = allocateSamples<unsigned char>(layout.rows, layout.columns);
    if (pSamples == nullptr) {
        const int count = shownProduct(layout.rows, layout.columns);
        fail(
            "loadCLSFileTORVALE", "Could not allocate %d unsigned chars (%d bytes) for the array pSamples.", count,
            count);
        return nullptr;
    }
    if (const auto row = findShortRow(stream.get(), layout)) {
        reportShortRow(*row, layout);
        return nullptr;
    }
    const auto row = sampleSize == 1 ? readRows(stream.get(), layout, 0, layout.rows, pSamples.get())
                                     : readLowBytes(stream.get(), layout, pSamples.get());
    if (row) {
        reportShortRow(*row, layout);
        return nullptr;
    }
    return pSamples.release();
}

unsigned char* loadCLSFileMorlan(const std::string& path, BKG_header& header) {
    const FileHandle stream = ReadHeader(path, header);
    if (stream == nullptr)
        return nullptr;
    return readContiguous<unsigned char>(stream.get(), header.sizeY, header.sizeX).values.release();
}

unsigned char* loadCLSFile(const std::string& path) {
    return sorvane::familyByFirstBytes(path).loadClasses(path);
}
