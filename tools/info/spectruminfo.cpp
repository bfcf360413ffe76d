// Describes a sample of a spectral library, and what the classes of a terrain set reflect.
#include "spectruminfo.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <functional>
#include <limits>
#include <set>
#include <sstream>
#include <vector>

#include "aster.h"
#include "bandfile.h"
#include "cls2asterfile.h"
#include "cnumericlocale.h"
#include "inputfile.h"
#include "loadclstomatfile.h"
#include "loadmaterialtables.h"
#include "shortestnumber.h"
#include "withoutnoise.h"

namespace sorvane {
namespace {
constexpr std::size_t kWholeFile = std::numeric_limits<std::size_t>::max();

std::vector<float> wavelengthsOf(const std::string& text) {
    const CNumericLocale decimalPoint;
    std::vector<float> wavelengths;
    std::istringstream lines(text);
    std::string line;
    for (int number = 0; std::getline(lines, line); ++number) {
        float wavelength = 0.0F;
        float percent = 0.0F;
        if (number >= Aster::kHeaderLines && std::sscanf(line.c_str(), "%f %f", &wavelength, &percent) == 2)
            wavelengths.push_back(wavelength);
    }
    return wavelengths;
}

const char* orderOf(const std::vector<float>& wavelengths) {
    if (std::ranges::is_sorted(wavelengths))
        return "rising";
    return std::ranges::is_sorted(wavelengths, std::greater()) ? "falling" : "neither rising nor falling";
}

// The mean of no point is none. The last of a sum's digits in single precision is noise.
InfoRecord meanRecord(const std::string& text, const WavelengthBand& band) {
    constexpr double kGreatest = 1e8; // leaves six decimals
    const float mean = Aster::bandMean(text, band.lower, band.upper);
    return std::isfinite(mean) ? InfoRecord(withoutNoise(double{mean}, kGreatest)) : InfoRecord();
}

InfoRecord spectralReflectances(const ReflectanceFiles& files) {
    WavelengthBand band;
    BandFile::parse(readInputFile(files.band, kWholeFile).value_or(""), band.lower, band.upper);
    InfoRecord rows = InfoRecord::array();
    std::set<int> known; // of the lines of one class the first one counts
    for (const Cls2AsterFile::Line& line :
         Cls2AsterFile::parse(readInputFile(files.classToAster, kWholeFile).value_or(""))) {
        if (!known.insert(line.cls).second)
            continue;
        const std::filesystem::path sample =
            std::filesystem::path(files.asterDirectory) / (line.sample + "." + ASTER_EXT);
        const std::optional<std::string> text = readInputFile(sample.string(), kWholeFile);
        rows.push_back(
            {{"class", line.cls},
             {"sample", line.sample},
             {"reflectance", text ? meanRecord(*text, band) : InfoRecord()}});
    }
    return rows;
}

InfoRecord materialReflectances(const ReflectanceFiles& files) {
    std::array<unsigned char, std::size_t{2} * kMaximumClassPairs> pairs{};
    unsigned count = 0;
    loadCLStoMatFile(files.classToMaterial, pairs.data(), count);
    const auto materials = readTemperatures(readInputFile(files.temperature, kWholeFile).value_or(""));
    InfoRecord rows = InfoRecord::array();
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t material = pairs[2 * i + 1];
        InfoRecord reflectance = material == 0 ? InfoRecord(0.0) : InfoRecord();
        if (material > 0 && material <= materials.size())
            reflectance = shortestDouble(1.0F - materials[material - 1].emissivity);
        rows.push_back({{"class", pairs[2 * i]}, {"material", material}, {"reflectance", std::move(reflectance)}});
    }
    return rows;
}
} // namespace

std::optional<WavelengthBand> parseBand(std::string_view text) {
    WavelengthBand band;
    const char* const end = text.data() + text.size();
    const auto lower = std::from_chars(text.data(), end, band.lower);
    if (lower.ec != std::errc() || lower.ptr == end || *lower.ptr != '-')
        return std::nullopt;
    const auto upper = std::from_chars(lower.ptr + 1, end, band.upper);
    const bool isBand = upper.ec == std::errc() && upper.ptr == end && band.lower > 0.0F && band.upper > band.lower &&
                        std::isfinite(band.upper);
    return isBand ? std::optional(band) : std::nullopt;
}

std::optional<Problem>
describeSpectrum(const std::string& path, const std::optional<WavelengthBand>& band, InfoRecord& record) {
    const std::optional<std::string> text = readInputFile(path, kWholeFile);
    if (!text)
        return "can't be read";
    const std::vector<float> wavelengths = wavelengthsOf(*text);
    record["points"] = wavelengths.size();
    if (wavelengths.empty())
        return "holds no points";
    const auto [least, greatest] = std::ranges::minmax(wavelengths);
    record["shortest_wavelength"] = shortestDouble(least);
    record["longest_wavelength"] = shortestDouble(greatest);
    record["order"] = orderOf(wavelengths);
    if (band) {
        record["band"] = {shortestDouble(band->lower), shortestDouble(band->upper)};
        record["mean_reflectance"] = meanRecord(*text, *band);
    }
    return std::nullopt;
}

InfoRecord classReflectances(const ReflectanceFiles& files) {
    switch (reflectanceRoute(files)) {
    case ReflectanceRoute::Aster:
        return spectralReflectances(files);
    case ReflectanceRoute::Material:
        return materialReflectances(files);
    case ReflectanceRoute::None:
        break;
    }
    return InfoRecord::array();
}
} // namespace sorvane
