// Checks the text tables of a terrain set.
#include "tablecheck.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <optional>
#include <set>
#include <string_view>
#include <vector>

#include "aster.h"
#include "bandfile.h"
#include "cnumericlocale.h"
#include "inputfile.h"
#include "loadclstomatfile.h"
#include "loadercheck.h"
#include "loadmaterialtables.h"
#include "shortestnumber.h"

namespace sorvane {
namespace {
constexpr const char* kLines = "malformed lines";
constexpr const char* kFailure = "the file can't be loaded";
constexpr std::size_t kMaximumBytes = std::size_t{64} << 20;
constexpr int kLargestByte = 255;

// Nothing after a finding when it can't be read.
std::optional<std::string> readTable(const std::string& path, FindingList& findings) {
    std::optional<std::string> text = readInputFile(path, kMaximumBytes);
    if (!text)
        findings.error({}, kLines, kFailure);
    return text;
}

std::vector<std::string> linesOf(const std::string& text) {
    std::vector<std::string> lines;
    for (std::string_view rest = text; !rest.empty();) {
        const std::string_view line = rest.substr(0, rest.find('\n'));
        rest.remove_prefix(std::min(rest.size(), line.size() + 1));
        lines.emplace_back(line);
    }
    return lines;
}

template <class Use> void forEachLine(const std::string& text, Use use) {
    const std::vector<std::string> lines = linesOf(text);
    for (std::size_t i = 0; i < lines.size(); ++i)
        use(lines[i], FindingPlace{static_cast<std::int64_t>(i) + 1});
}
} // namespace

void checkClassToMaterial(const std::string& path, FindingList& findings) {
    const std::optional<std::string> text = readTable(path, findings);
    if (!text)
        return;
    std::array<unsigned char, std::size_t{2} * kMaximumClassPairs> table{};
    unsigned count = 0;
    checkLoader([&] { return parseCLStoMat(*text, table.data(), count); }, findings, kFailure);
    forEachLine(*text, [&](const std::string& line, FindingPlace place) {
        int cls = 0;
        int material = 0;
        if (std::sscanf(line.c_str(), "%d %d", &cls, &material) < 2)
            findings.error(place, kLines, "the line holds no two numbers: it repeats those of the line before");
        else if (std::min(cls, material) < 0 || std::max(cls, material) > kLargestByte)
            findings.error(place, kLines, "a class and a material are numbers from 0 to 255");
    });
}

void checkTemperatures(const std::string& path, FindingList& findings) {
    const std::optional<std::string> text = readTable(path, findings);
    if (!text)
        return;
    const auto count = static_cast<unsigned char>(std::min<std::size_t>(linesOf(*text).size(), kLargestByte));
    std::vector<float> pairs(std::size_t{2} * count);
    checkLoader([&] { return parseTemp(*text, count, pairs.data()); }, findings, kFailure);
    const auto found = std::ranges::find_if_not(pairs, [](float value) { return std::isfinite(value); });
    if (found != pairs.end())
        findings.error({(found - pairs.begin()) / 2 + 1}, kLines, "a number is not finite");
    for (std::size_t i = 1; i < pairs.size(); i += 2)
        if (pairs[i] < 0.0F || pairs[i] > 1.0F)
            findings.warning(
                {static_cast<std::int64_t>(i) / 2 + 1}, "impossible reflectances",
                "the emissivity is " + shortestText(pairs[i]) + ": it belongs between 0 and 1");
}

void checkBand(const std::string& path, FindingList& findings) {
    const std::optional<std::string> text = readTable(path, findings);
    if (!text)
        return;
    float lower = 0.0F;
    float upper = 0.0F;
    BandFile::parse(*text, lower, upper);
    if (!(lower > 0.0F && upper > lower && std::isfinite(upper)))
        findings.error(
            {2}, kLines,
            std::string("the edges of the band are ") + std::to_string(lower) + " and " + std::to_string(upper) +
                ": they have to be above 0 and ascend");
}

void checkClassToAster(const std::string& path, FindingList& findings) {
    const std::optional<std::string> text = readTable(path, findings);
    if (!text)
        return;
    std::set<int> classes;
    forEachLine(*text, [&](const std::string& line, FindingPlace place) {
        if (line.empty() || line.front() == '#' || line.front() == '\r')
            return;
        int cls = 0;
        char sample[2] = "";
        if (std::sscanf(line.c_str(), "%d %1s", &cls, sample) < 2)
            findings.error(place, kLines, "the line holds no class number and name of a sample");
        else if (!classes.insert(cls).second)
            findings.warning(
                place, kLines,
                std::string("class ") + std::to_string(cls) + " has a line already, and the first one counts");
    });
}

void checkSpectralSample(const std::string& path, FindingList& findings) {
    const std::optional<std::string> text = readTable(path, findings);
    if (!text)
        return;
    const CNumericLocale decimalPoint;
    constexpr float kWhole = 100.0F; // per cent
    int points = 0;
    forEachLine(*text, [&](const std::string& line, FindingPlace place) {
        float wavelength = 0.0F;
        float percent = 0.0F;
        if (place.line <= Aster::kHeaderLines)
            return;
        if (std::sscanf(line.c_str(), "%f %f", &wavelength, &percent) != 2 || !std::isfinite(wavelength + percent)) {
            findings.warning(place, kLines, "the line holds no wavelength and reflectance");
            return;
        }
        ++points;
        if (percent > kWhole)
            findings.warning(
                place, "impossible reflectances",
                "the reflectance is " + shortestText(percent) + " %, more than 100 %");
    });
    if (points < 2)
        findings.error(
            {}, kLines,
            std::string("the sample has ") + std::to_string(points) + " points behind its " +
                std::to_string(Aster::kHeaderLines) + " header lines");
}
} // namespace sorvane
