// Checks a raster file of any family.
#include "rastercheck.h"

#include <cmath>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>

#include "inputfile.h"
#include "loadclsfile.h"
#include "loadercheck.h"
#include "loadnormfile.h"
#include "loadradfile.h"
#include "loadtopofile.h"
#include "rasterfamily.h"
#include "valuecheck.h"

namespace sorvane {
namespace {
constexpr const char* kHeader = "faults of the header";
constexpr const char* kSamples = "faults of the samples";
constexpr int kNormalValues = 3;

std::string sizeText(RasterSize size) {
    return std::to_string(size.columns) + " x " + std::to_string(size.rows);
}

// Whether the samples can be looked at.
bool checkHeader(const RasterDescription& description, FindingList& findings) {
    const RasterSize size = description.header.size;
    bool isUsable = size.columns > 0 && size.rows > 0;
    if (!isUsable)
        findings.error({}, kHeader, std::string("the header says ") + sizeText(size) + " samples");
    for (const sorvane::RasterHeaderFault& fault : description.faults) {
        findings.add(fault.isError ? Severity::Error : Severity::Warning, {}, kHeader, fault.text);
        isUsable = isUsable && !fault.isError;
    }
    return isUsable;
}

void checkLength(std::int64_t available, const RasterDescription& description, FindingList& findings) {
    const std::optional<NeededBytes> needed = neededBytes(*description.layout);
    if (!needed)
        return;
    const std::string what = std::string("the ") + sizeText(description.header.size) + " samples need " +
                             std::to_string(needed->least) + " bytes, ";
    if (available < needed->least)
        findings.error({}, kSamples, what + "and there are " + std::to_string(available) + ": the others read as 0");
    else if (available > needed->most)
        findings.warning({}, kSamples, what + "and there are " + std::to_string(available));
}

void checkFinite(const float* values, RasterSize size, int valuesPerSample, FindingList& findings) {
    const std::int64_t count = std::int64_t{size.rows} * size.columns * valuesPerSample;
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
                std::to_string(first / size.columns + 1) + ", column " + std::to_string(first % size.columns + 1));
}

// Loads the samples as the viewer does and looks at their values. Answers whether there was nothing to find.
bool checkSamples(const std::string& path, RasterSize size, RasterContent content, FindingList& findings) {
    std::unique_ptr<float[]> values;
    std::unique_ptr<Vertex3[]> normals;
    std::unique_ptr<unsigned char[]> classes;
    const auto load = [&] {
        if (content == RasterContent::Topography)
            values.reset(loadTopoFile(path));
        else if (content == RasterContent::Radiance)
            values.reset(loadRadFile(path));
        else if (content == RasterContent::Normals)
            normals.reset(loadNormFile(path));
        else
            classes.reset(loadCLSFile(path));
        return values != nullptr || normals != nullptr || classes != nullptr;
    };
    const bool isLoaded = checkLoader(load, findings, "the samples can't be loaded");
    if (values != nullptr)
        checkFinite(values.get(), size, 1, findings);
    if (values != nullptr && content == RasterContent::Radiance)
        checkNotNegative(
            std::span(values.get(), static_cast<std::size_t>(std::int64_t{size.rows} * size.columns)), "sample",
            "radiance", findings);
    if (normals != nullptr)
        checkFinite(&normals[0].x, size, kNormalValues, findings);
    return isLoaded;
}
} // namespace

void checkRaster(const std::string& path, FindingList& findings) {
    const FileHandle stream = openInputFile(path);
    if (stream == nullptr || !hasWholeHeader(stream.get())) {
        findings.error({}, kHeader, "the file is shorter than the 512 bytes of a header");
        return;
    }
    const RasterContent content = sorvane::rasterContentOf(path);
    const RasterDescription description = sorvane::rasterFamilyOf(path).describe(path, content);
    if (!checkHeader(description, findings) || content == RasterContent::Unknown)
        return;
    if (checkSamples(path, description.header.size, content, findings))
        checkLength(dataBytes(stream.get()), description, findings);
}
} // namespace sorvane
