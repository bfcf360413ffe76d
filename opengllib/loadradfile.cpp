// Loads radiance maps.
#include "loadradfile.h"

#include <cstdint>
#include <cstdio>
#include <limits>
#include <span>

#include "fail.h"
#include "messages.h"
#include "rasterfamily.h"
#include "rasterlayout.h"
#include "torvaleraster.h"

using namespace sorvane;

namespace {
// Names of OpenGL, whose headers this file can do without.
constexpr int kLuminance32F = 34840;
constexpr unsigned kRed = 6403;
constexpr unsigned kFloat = 5126;

void reportShortRow(const ShortRow& row, int columns) {
    fail(
        "loadRADFile", "When reading row %d of samples, expected %d floats but only received %d.", row.number, columns,
        row.received);
}

// An all-negative raster keeps the smallest positive number as its maximum: deliberate, as is that number.
void mapToUnitRange(std::span<float> values) {
    float min = std::numeric_limits<float>::max();
    float max = std::numeric_limits<float>::min();
    for (const float value : values) {
        if (value < min)
            min = value;
        if (value > max)
            max = value;
    }
    const float scale = 1.0F / (max - min);
    const float offset = -min / (max - min);
    for (float& value : values)
        value = value * scale + offset;
}
} // namespace

bool isOldRadMap(const std::string& path) {
    GHead header{};
    const FileHandle stream = ReadHeader(path, header);
    if (stream == nullptr || !sorvane::hasPaddedRadiances(header, dataBytes(stream.get())))
        return false;
    printMessage("LoadRadMap::isOldRadMap: using old fortran style");
    return true;
}

float* loadRADFile(
    const std::string& path, int& internalFormat, int& width, int& height, int& border, unsigned& format,
    unsigned& type, int& bytesPerSample, bool normalise) {
    internalFormat = kLuminance32F;
    border = 0;
    format = kRed;
    type = kFloat;
    const FileHandle stream = openInputFile(path);
    if (stream == nullptr) {
        fail("loadRADFile", "Unable to open \"%s\" for reading.", path.c_str());
        return nullptr;
    }
    GHead header{};
    if (std::fread(&header, sizeof header, 1, stream.get()) != 1) {
        fail("loadRADFile", "Unable to read header from rad file.");
        return nullptr;
    }
    width = header.ncols;
    height = header.nrows;
    bytesPerSample = sampleSizeOf(header);
    if (bytesPerSample == 0)
        return nullptr;
    const RowLayout layout = sorvane::rowLayout(header, sorvane::RasterContent::Radiance).value();
    auto pSamples = allocateSamples<float>(layout.rows, layout.columns);
    if (pSamples == nullptr) {
        fail(
            "loadRADFile", "Could not allocate %d * %d = %d floats (%d bytes) for array pSamples.", header.ncols,
            header.nrows, shownProduct(layout.rows, layout.columns),
            shownProduct(layout.rows, layout.columns, sizeof(float)));
        return nullptr;
    }
    if (const auto row = findShortRow(stream.get(), layout)) {
        reportShortRow(*row, header.ncols);
        return nullptr;
    }
    if (const auto row = readRows(stream.get(), layout, 0, layout.rows, pSamples.get())) {
        reportShortRow(*row, header.ncols);
        return nullptr;
    }
    const auto count = static_cast<std::size_t>(layout.rows * layout.columns);
    if (normalise && count > 0)
        mapToUnitRange({pSamples.get(), count});
    return pSamples.release();
}

float* loadRadFile(const std::string& path, GHead& header) {
    const FileHandle stream = ReadHeader(path, header);
    if (stream == nullptr)
        return nullptr;
    auto samples = readContiguous<float>(stream.get(), header.nrows, header.ncols);
    if (!samples.isComplete)
        printMessage("LoadRadFile::loadRadFile didn't find enough elements.  Crying :'(");
    return samples.values.release();
}

float* loadRadFileMORLAN(const std::string& path, BKG_header& header) {
    const FileHandle stream = ReadHeader(path, header);
    if (stream == nullptr)
        return nullptr;
    return readContiguous<float>(stream.get(), header.sizeY, header.sizeX).values.release();
}

float* loadRadFile(const std::string& path) {
    return sorvane::familyByFirstBytes(path).loadRadiance(path);
}
