// Loads topography.
#include "loadtopofile.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <memory>

#include "endprocess.h"
#include "fail.h"
#include "messages.h"
#include "rasterfamily.h"
#include "rasterlayout.h"
#include "torvaleraster.h"

using namespace sorvane;

namespace {
constexpr std::int64_t kStagedSamples = 32768;

struct Range {
    float minimum = 100000000.0F;
    float maximum = -100000000.0F;

    void include(float value) {
        if (value < minimum)
            minimum = value;
        if (value > maximum)
            maximum = value;
    }
};

void reportShortRow(const ShortRow& row, const RowLayout& layout) {
    fail(
        "loadTopoFile", "When reading row %d, expected %d items of size %d bytes, but only received %d.", row.number,
        static_cast<int>(layout.columns), static_cast<int>(layout.itemBytes), row.received);
}

// Scaling keeps or reverses the order of the samples, so that the extremes are those of the stored values, scaled.
void scaleRows(const std::uint16_t* samples, std::size_t count, float scale, float* out, Range& range) {
    std::uint16_t least = 65535;
    std::uint16_t greatest = 0;
    for (std::size_t i = 0; i < count; ++i) {
        least = std::min(least, samples[i]);
        greatest = std::max(greatest, samples[i]);
        out[i] = static_cast<float>(samples[i]) * scale;
    }
    range.include(static_cast<float>(least) * scale);
    range.include(static_cast<float>(greatest) * scale);
}
} // namespace

float* loadTopoFile(const std::string& path, GHead& header) {
    const FileHandle stream = ReadHeader(path, header);
    if (stream == nullptr || sampleSizeOf(header) == 0)
        return nullptr;
    const RowLayout layout = sorvane::rowLayout(header, sorvane::RasterContent::Topography).value();
    auto pData = allocateSamples<float>(layout.rows, layout.columns);
    if (pData == nullptr) {
        fail(
            "loadTopoFile", "Unable to allocate %d * %d = %d floats (%d bytes) for array pData.", header.nrows,
            header.ncols, shownProduct(layout.rows, layout.columns),
            shownProduct(layout.rows, layout.columns, sizeof(float)));
        return nullptr;
    }
    // Some rows at a time, so that they stay in the processor's cache until they are scaled.
    const std::int64_t rowsAtATime =
        std::clamp<std::int64_t>(kStagedSamples / std::max<std::int64_t>(layout.columns, 1), 1, layout.rows + 1);
    // Without a row nothing vouches for the size of one.
    const auto staged = allocateSamples<std::uint16_t>(std::min(rowsAtATime, layout.rows), layout.columns);
    if (staged == nullptr) {
        fail(
            "loadTopoFile", "Unable to allocate %d unsigned shorts (%d bytes).", header.ncols,
            shownProduct(1, layout.columns, 2));
        return nullptr;
    }
    if (const auto row = findShortRow(stream.get(), layout)) {
        reportShortRow(*row, layout);
        return nullptr;
    }
    Range range;
    const auto columns = static_cast<std::size_t>(layout.columns);
    for (std::int64_t first = 0; first < layout.rows && columns > 0; first += rowsAtATime) {
        const std::int64_t count = std::min(rowsAtATime, layout.rows - first);
        if (const auto row = readRows(stream.get(), layout, first, count, staged.get())) {
            reportShortRow(*row, layout);
            return nullptr;
        }
        scaleRows(
            staged.get(), static_cast<std::size_t>(count) * columns, header.zscale,
            pData.get() + static_cast<std::size_t>(first) * columns, range);
    }
    header.MinVals[0] = range.minimum;
    header.MaxVals[0] = range.maximum;
    return pData.release();
}

float* loadFTopFile(const std::string& path, BKG_header& header) {
    const FileHandle stream = ReadHeader(path, header);
    if (stream == nullptr) {
        fail("loadFTopFile", "Unable to open and read header of \"%s\".", path.c_str());
        return nullptr;
    }
    const auto count = sampleCount(header.sizeY, header.sizeX, sizeof(float));
    const std::int64_t available = dataBytes(stream.get()) / std::int64_t{sizeof(float)};
    const bool isShort = count && available < static_cast<std::int64_t>(*count);
    auto out = isShort ? nullptr : allocateSamples<float>(header.sizeY, header.sizeX);
    if (!isShort && out == nullptr) {
        fail(
            "loadFTopFile", "Could not allocate %d * %d = %d floats (%d bytes) for array out.", header.sizeX,
            header.sizeY, shownProduct(header.sizeX, header.sizeY),
            shownProduct(header.sizeX, header.sizeY, sizeof(float)));
        endProcess();
    }
    const std::size_t received = isShort ? static_cast<std::size_t>(available)
                                         : readData(stream.get(), out.get(), *count * sizeof(float)) / sizeof(float);
    if (received < *count) {
        fail(
            "loadFTopFile", "Unexpected EOF found when loading TOP file. Expected %d floats but only read %d.",
            static_cast<int>(*count), static_cast<int>(received));
        endProcess();
    }
    return out.release();
}

float* loadTopoFile(const std::string& path, BKG_header& header) {
    if (const sorvane::RasterFamily* const family = sorvane::topographyFamilyOf(path))
        return family->loadTopography(path, header);
    printMessage("LoadTopoFile::loadTopoFile( string, bkgheader): unrecognized file extension");
    return nullptr;
}

float* loadTopoFile(const std::string& path) {
    BKG_header discarded{};
    return loadTopoFile(path, discarded);
}

float* loadTopoFile(const std::string& path, int& cols, int& rows, float& min, float& max, float& xCell, float& yCell) {
    GHead header{};
    float* const samples = loadTopoFile(path, header);
    if (samples != nullptr) {
        cols = header.ncols;
        rows = header.nrows;
        min = header.MinVals[0];
        max = header.MaxVals[0];
        xCell = header.xCellSize;
        yCell = header.yCellSize;
    }
    return samples;
}

float* loadFTopFile(const std::string& path, int& cols, int& rows, float& min, float& max, float& xStep, float& yStep) {
    BKG_header header{};
    float* const samples = loadFTopFile(path, header);
    if (samples != nullptr) {
        cols = header.sizeX;
        rows = header.sizeY;
        min = header.databaseMinimum;
        max = header.databaseMaximum;
        xStep = header.xStepSize;
        yStep = header.yStepSize;
    }
    return samples;
}
