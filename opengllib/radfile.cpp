// The radiance file (".rad"): radiance and blackbody emittance of every facet of a body.
#include "radfile.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iostream>
#include <new>

#include "cnumericlocale.h"
#include "fail.h"
#include "inputfile.h"
#include "messages.h"

using namespace sorvane;

namespace {
constexpr std::size_t kWord = 4;
constexpr std::size_t kHeaderBytes = 19 * kWord;
constexpr std::size_t kCountOffset = 10 * kWord; // the only header word that is used
constexpr std::size_t kPaddingBytes = 2 * kWord;
static_assert(RadFile::lengthFor(0) == kHeaderBytes + kPaddingBytes && RadFile::kHeadBytes == kCountOffset + kWord);
constexpr float kStoredUnit = 1e-6F; // bit pattern 0x358637BD, W/cm²/sr

// Room for `count` floats, not initialised; null when there is none.
std::unique_ptr<float[]> allocate(int count) {
    if (count < 0)
        return nullptr;
    return std::unique_ptr<float[]>(new (std::nothrow) float[static_cast<std::size_t>(count)]);
}

int bytesOf(int count) {
    return static_cast<int>(std::int64_t{count} * std::int64_t{kWord}); // wraps as the message's "%d" does
}

// A cursor over the bytes that takes whole words, as many as there are.
class Words {
public:
    explicit Words(std::string_view bytes) : rest_(bytes) {}
    std::size_t available(std::size_t wanted) const { return std::min(wanted, rest_.size() / kWord); }
    void copy(float* to, std::size_t count) {
        if (count > 0)
            std::memcpy(to, rest_.data(), count * kWord);
        rest_.remove_prefix(count * kWord);
    }
    bool skip(std::size_t bytes) {
        if (rest_.size() < bytes)
            return false;
        rest_.remove_prefix(bytes);
        return true;
    }

private:
    std::string_view rest_;
};
} // namespace

void RadFile::Limits::include(float value, int facet) {
    if (value < minimum) {
        minimum = value;
        minimumFacet = facet;
    } else if (value > maximum) {
        maximum = value;
        maximumFacet = facet;
    }
}

void RadFile::InitializeLimits() {
    emittance_ = Limits();
    radiance_ = Limits();
}

void RadFile::Cleanup() {
    rad_.reset();
    bbe_.reset();
    facets_ = 0;
}

std::optional<std::int32_t> RadFile::announcedFacets(std::string_view firstBytes) {
    std::int32_t facets = 0;
    if (firstBytes.size() < kHeadBytes)
        return std::nullopt;
    std::memcpy(&facets, firstBytes.data() + kCountOffset, sizeof facets);
    return facets;
}

std::optional<std::int32_t> RadFile::readAnnouncedFacets(const std::string& name) {
    return announcedFacets(readInputFile(name, kHeadBytes).value_or(""));
}

bool RadFile::isWhole(std::string_view firstBytes, std::int64_t fileLength) {
    const std::optional<std::int32_t> facets = announcedFacets(firstBytes);
    return facets && *facets >= 0 && fileLength == lengthFor(*facets);
}

bool RadFile::makeDark(int facets) {
    Cleanup();
    rad_ = allocate(facets);
    bbe_ = allocate(facets);
    if (rad_ == nullptr || bbe_ == nullptr)
        return false;
    std::fill_n(rad_.get(), facets, 0.0F);
    std::fill_n(bbe_.get(), facets, 0.0F);
    facets_ = facets;
    return scale(facets);
}

bool RadFile::Load(const std::string& name, int expectedFacets) {
    Cleanup();
    setName(name);
    try {
        // What follows the emittances is ignored.
        const auto bytes = readInputFile(name, static_cast<std::size_t>(lengthFor(std::max(expectedFacets, 0))));
        if (bytes)
            return parse(*bytes, expectedFacets);
    } catch (const std::bad_alloc&) {
        Cleanup();
    }
    return fail("Load", "Unable to open \"%s\" for reading.", name.c_str());
}

bool RadFile::parse(std::string_view bytes, int expectedFacets) {
    Cleanup();
    Words words(bytes);
    if (!words.skip(kHeaderBytes))
        return fail("Load", "Unexpected EOF while trying to read header.");
    std::int32_t facets = 0;
    std::memcpy(&facets, bytes.data() + kCountOffset, sizeof facets);
    if (facets != expectedFacets)
        return fail("Load", "File contains %d facets, but only expected %d.", facets, expectedFacets);

    // A short file is found out before the arrays are allocated, so that nothing larger than the file is. In both
    // messages the count read comes first and the expected one second; their words say the reverse.
    const auto wanted = static_cast<std::size_t>(std::max(facets, 0));
    const std::size_t radiances = words.available(wanted);
    if (radiances < wanted)
        return fail(
            "Load", "Unexpected EOF when trying to read radiance values (expected %d, but only found %d).",
            static_cast<int>(radiances), facets);
    rad_ = allocate(facets);
    if (rad_ == nullptr)
        return fail("Load", "Could not allocate %d floats (%d bytes) for array rad_.", facets, bytesOf(facets));
    bbe_ = allocate(facets);
    if (bbe_ == nullptr) {
        Cleanup();
        return fail("Load", "Could not allocate %d floats (%d bytes) for array bbe_.", facets, bytesOf(facets));
    }
    words.copy(rad_.get(), wanted);
    if (!words.skip(kPaddingBytes)) {
        Cleanup();
        return fail("Load", "Unexpected EOF when trying to read padding.");
    }
    const std::size_t emittances = words.available(wanted);
    if (emittances < wanted) {
        Cleanup();
        return fail(
            "Load", "Unexpected EOF when trying to read blackbody emittances (expected %d, but only found %d).",
            static_cast<int>(emittances), facets);
    }
    words.copy(bbe_.get(), wanted);
    facets_ = facets;
    return scale(facets);
}

bool RadFile::scale(int facets) {
    InitializeLimits();
    for (int i = 0; i < facets; ++i) {
        const auto facet = static_cast<std::size_t>(i);
        if (std::isnan(rad_[facet]) || std::isnan(bbe_[facet])) {
            printMessage("RadFile::Load: NaN radiance values detected! ");
            Cleanup();
            return false;
        }
        rad_[facet] *= kStoredUnit;
        bbe_[facet] *= kStoredUnit;
        radiance_.include(rad_[facet], i);
        emittance_.include(bbe_[facet], i);
    }
    return true;
}

void RadFile::DumpArrays(int count, const std::string& outputName) const {
    const FileHandle stream(std::fopen(outputName.c_str(), "w"));
    if (stream == nullptr)
        return;
    const CNumericLocale decimalPoint;
    std::FILE* const out = stream.get();
    const auto printLimit = [out](const char* what, const char* quantity, int facet, float value) {
        std::fprintf(out, "%s: facet %d, %s (W/cm2/sr): %f\n", what, facet, quantity, static_cast<double>(value));
    };
    printLimit("Minimum Radiance", "radiance", radiance_.minimumFacet, radiance_.minimum);
    printLimit("Maximum Radiance", "radiance", radiance_.maximumFacet, radiance_.maximum);
    printLimit("Minimum Emittance", "emittance", emittance_.minimumFacet, emittance_.minimum);
    printLimit("Maximum Emittance", "emittance", emittance_.maximumFacet, emittance_.maximum);
    for (int i = 0; i < std::min(count, facets_); ++i) {
        const float radiance = rad_[static_cast<std::size_t>(i)];
        const float emittance = bbe_[static_cast<std::size_t>(i)];
        std::fprintf(
            out, "Facet %d:\tEmittance: %.7f\tRadiance: %.7f\t(E/R): %f\n", i, static_cast<double>(emittance),
            static_cast<double>(radiance), static_cast<double>(emittance / radiance));
    }
}
