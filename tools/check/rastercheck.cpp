// Checks a raster file of either family.
#include "rastercheck.h"

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include "bkgheader.h"
#include "filechecks.h"
#include "ghead.h"
#include "loadclsfile.h"
#include "loadercheck.h"
#include "loadnormfile.h"
#include "loadradfile.h"
#include "loadtopofile.h"
#include "rasterlayout.h"

namespace {
constexpr const char* kHeader = "faults of the header";
constexpr const char* kSamples = "faults of the samples";
constexpr std::int64_t kHeaderBytes = 512;
constexpr int kNormalValues = 3;

enum class Content { Unknown, Topography, FloatTopography, Radiance, Normals, Classes };

Content contentOf(const std::string& path) {
    const std::pair<const std::string&, Content> extensions[] = {
        {TOPO_EXT, Content::Topography}, {FTOP_EXT, Content::FloatTopography}, {RAD_EXT, Content::Radiance},
        {NORM_EXT, Content::Normals},    {CLS_EXT, Content::Classes},
    };
    for (const auto& [extension, content] : extensions)
        if (checkExtension(path, extension))
            return content;
    return Content::Unknown;
}

// What the two families' headers have in common.
struct Layout {
    bool isMorlan = false;
    int columns = 0;
    int rows = 0;
    int sampleSize = 0; // 0: a packing that is none
    int packing = 0;
    float scale = 1.0F;
    std::string dimensions{}; // as the header has them once more in letters
};

Layout layoutOf(const std::string& path, Content content) {
    Layout layout;
    layout.isMorlan = content == Content::FloatTopography || (content != Content::Topography && CheckMORLAN(path));
    if (layout.isMorlan) {
        BKG_header header{};
        ReadHeaderOnly(path, header);
        layout.columns = header.sizeX;
        layout.rows = header.sizeY;
        layout.sampleSize = 1;
        const std::string_view letters(header.dimensions, sizeof header.dimensions);
        layout.dimensions = letters.substr(0, letters.find('\0'));
    } else {
        GHead header{};
        ReadHeaderOnly(path, header);
        layout.columns = header.ncols;
        layout.rows = header.nrows;
        layout.sampleSize = sampleSizeOf(header);
        layout.packing = header.packtype;
        layout.scale = header.zscale;
    }
    return layout;
}

// Behind the header: the bytes that the samples need, and with the last row filled up to a record.
struct NeededBytes {
    std::int64_t least = 0;
    std::int64_t most = 0;
};

std::optional<NeededBytes> neededBytes(const Layout& layout, Content content) {
    std::int64_t sampleBytes = 0;
    bool isPadded = !layout.isMorlan;
    switch (content) {
    case Content::Topography:
        sampleBytes = 2; // whatever the packing says
        break;
    case Content::FloatTopography:
    case Content::Radiance:
        sampleBytes = sizeof(float);
        break;
    case Content::Normals:
        sampleBytes = kNormalValues * std::int64_t{sizeof(float)};
        isPadded = false;
        break;
    case Content::Classes:
        sampleBytes = layout.sampleSize;
        break;
    case Content::Unknown:
        return std::nullopt;
    }
    const std::int64_t rowBytes = sampleBytes * layout.columns;
    const std::int64_t padding = isPadded ? recordPadding(layout.sampleSize, layout.columns) : 0;
    const auto count = sampleCount(layout.rows, layout.columns, static_cast<std::size_t>(sampleBytes) + 512);
    if (!count)
        return std::nullopt;
    return NeededBytes{(layout.rows - 1) * (rowBytes + padding) + rowBytes, layout.rows * (rowBytes + padding)};
}

std::string sizeText(const Layout& layout) {
    return std::to_string(layout.columns) + " x " + std::to_string(layout.rows);
}

bool checkHeader(const Layout& layout, Content content, FindingList& findings) {
    const bool hasSize = layout.columns > 0 && layout.rows > 0;
    if (!hasSize)
        findings.error({}, kHeader, std::string("the header says ") + sizeText(layout) + " samples");
    const bool needsPacking = content != Content::Normals;
    if (layout.sampleSize == 0 && needsPacking)
        findings.error(
            {}, kHeader,
            std::string("the packing ") + std::to_string(layout.packing) + " is none of 0, 1 and 2: no sample is read");
    if (content == Content::Topography && (layout.scale == 0.0F || !std::isfinite(layout.scale)))
        findings.warning({}, kHeader, std::string("the samples are scaled by ") + std::to_string(layout.scale));
    const std::string dimensions = std::to_string(layout.columns) + "x" + std::to_string(layout.rows);
    if (layout.dimensions.find('x') != std::string::npos && layout.dimensions != dimensions)
        findings.warning(
            {}, kHeader,
            std::string("the header says ") + sizeText(layout) + " samples, and in letters \"" + layout.dimensions +
                "\"");
    return hasSize && (layout.sampleSize > 0 || !needsPacking);
}

void checkLength(std::int64_t available, const Layout& layout, Content content, FindingList& findings) {
    const std::optional<NeededBytes> needed = neededBytes(layout, content);
    if (!needed)
        return;
    const std::string what =
        std::string("the ") + sizeText(layout) + " samples need " + std::to_string(needed->least) + " bytes, ";
    if (available < needed->least)
        findings.error({}, kSamples, what + "and there are " + std::to_string(available) + ": the others read as 0");
    else if (available > needed->most)
        findings.warning({}, kSamples, what + "and there are " + std::to_string(available));
}

void checkFinite(const float* values, const Layout& layout, int valuesPerSample, FindingList& findings) {
    const std::int64_t count = std::int64_t{layout.rows} * layout.columns * valuesPerSample;
    std::int64_t unusable = 0;
    std::int64_t first = 0;
    for (std::int64_t i = count - 1; i >= 0; --i)
        if (!std::isfinite(values[i])) {
            ++unusable;
            first = i / valuesPerSample;
        }
    if (unusable > 0)
        findings.error(
            {}, kSamples,
            std::to_string(unusable) + " values are not finite, the first in row " +
                std::to_string(first / layout.columns + 1) + ", column " + std::to_string(first % layout.columns + 1));
}

// Loads the samples as the viewer does and looks at their values. Answers whether there was nothing to find.
bool checkSamples(const std::string& path, const Layout& layout, Content content, FindingList& findings) {
    std::unique_ptr<float[]> values;
    std::unique_ptr<Vertex3[]> normals;
    std::unique_ptr<unsigned char[]> classes;
    const auto load = [&] {
        if (content == Content::Topography || content == Content::FloatTopography)
            values.reset(loadTopoFile(path));
        else if (content == Content::Radiance)
            values.reset(loadRadFile(path));
        else if (content == Content::Normals)
            normals.reset(loadNormFile(path));
        else
            classes.reset(loadCLSFile(path));
        return values != nullptr || normals != nullptr || classes != nullptr;
    };
    const bool isLoaded = checkLoader(load, findings, "the samples can't be loaded");
    if (values != nullptr)
        checkFinite(values.get(), layout, 1, findings);
    if (normals != nullptr)
        checkFinite(&normals[0].x, layout, kNormalValues, findings);
    return isLoaded;
}
} // namespace

void checkRaster(const std::string& path, FindingList& findings) {
    std::error_code unreadable;
    const auto size = static_cast<std::int64_t>(std::filesystem::file_size(path, unreadable));
    if (unreadable || size < kHeaderBytes) {
        findings.error({}, kHeader, "the file is shorter than the 512 bytes of a header");
        return;
    }
    const Content content = contentOf(path);
    const Layout layout = layoutOf(path, content);
    if (!checkHeader(layout, content, findings) || content == Content::Unknown)
        return;
    if (checkSamples(path, layout, content, findings))
        checkLength(size - kHeaderBytes, layout, content, findings);
}
