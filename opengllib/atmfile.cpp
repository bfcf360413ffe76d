// The atmosphere file (".atm"): where the sun is, and the direct solar, diffuse sky and diffuse earth radiances.
#include "atmfile.h"

#include <cmath>
#include <cstdio>
#include <iostream>
#include <vector>

#include "cnumericlocale.h"
#include "fail.h"
#include "inputfile.h"
#include "texthead.h"
#include "textlines.h"

using namespace sorvane;

struct AtmFile::atmData {
    std::string fileName;
    float solarZenith;
    float solarAzimuth;
    float diffuseEarthRadiance;
    float diffuseSkyRadiance;
    float directSolarRadiance;
    float signatureBearing;
};

namespace {
std::vector<AtmFile::atmData> cache;
constexpr std::size_t kMaximumCached = 256;

constexpr std::size_t kLineLength = 256;
// Three lines, each of which a line reader of kLineLength cuts: nothing behind them is looked at.
constexpr std::size_t kMaximumBytes = 3 * kLineLength;

constexpr float kRadiansPerDegree = 0.017453292F; // bit pattern 0x3C8EFA35; the body transforms use another constant
constexpr float kSquareMetresPerSquareCentimetre = 0.0001F;
} // namespace

bool AtmFile::looksLike(const sorvane::TextHead& head) {
    return head.numbers(0) == 3 && head.numbers(1) == 10 && head.numbers(2) == 4;
}

bool AtmFile::Load(const std::string& name) {
    setName(name);
    fileName_ = name;
    if (InCache())
        return true;
    const auto text = readInputFile(name, kMaximumBytes);
    if (!text)
        return fail("Load", "Unable to open file \"%s\" for reading.", name.c_str());
    if (!parse(*text))
        return false;
    if (cache.size() > kMaximumCached)
        cache.clear();
    cache.push_back(
        {fileName_, solarZenith_, solarAzimuth_, diffuseEarthRadiance_, diffuseSkyRadiance_, directSolarRadiance_,
         signatureBearing_});
    return true;
}

void AtmFile::forget(const std::string& name) {
    std::erase_if(cache, [&](const atmData& entry) { return isSamePath(entry.fileName, name); });
}

bool AtmFile::parse(std::string_view text) {
    const CNumericLocale decimalPoint;
    TextLines lines(text);
    char line[kLineLength];

    if (!lines.getLine(line, sizeof line))
        return fail("Load", "Unexpected EOF found when reading line 1.");
    float unused[7];
    if (std::sscanf(line, "%f %f %f", &unused[0], &unused[1], &unused[2]) < 3)
        return fail("Load", "Unexpected file format, line 1. Expected 3 floats, but received \"%s\".", line);

    if (!lines.getLine(line, sizeof line))
        return fail("Load", "Unexpected EOF found when reading line 2.");
    int unusedInts[4];
    float zenith = 0.0F;
    float azimuth = 0.0F;
    if (std::sscanf(
            line, "%d %d %f %d %d %f %f %f %f %f", &unusedInts[0], &unusedInts[1], &unused[0], &unusedInts[2],
            &unusedInts[3], &unused[1], &unused[2], &unused[3], &zenith, &azimuth) < 10)
        return fail("Load", "Unexpected file format, line 2. Received \"%s\".", line);

    if (!lines.getLine(line, sizeof line))
        return fail("Load", "Unexpected EOF found when reading line 3.");
    float earth = 0.0F;
    float sky = 0.0F;
    float direct = 0.0F;
    float bearing = 0.0F;
    if (std::sscanf(line, "%f %f %f %f", &earth, &sky, &direct, &bearing) < 4)
        return fail("Load", "Unexpected file format, line 3. Expected 4 floats, but received \"%s\".", line);

    solarZenith_ = 180.0F - zenith;
    solarAzimuth_ = azimuth;
    diffuseEarthRadiance_ = earth * kSquareMetresPerSquareCentimetre;
    diffuseSkyRadiance_ = sky * kSquareMetresPerSquareCentimetre;
    directSolarRadiance_ = direct * kSquareMetresPerSquareCentimetre;
    signatureBearing_ = bearing;
    return true;
}

bool AtmFile::InCache() {
    for (const atmData& entry : cache)
        if (entry.fileName == fileName_) {
            solarZenith_ = entry.solarZenith;
            solarAzimuth_ = entry.solarAzimuth;
            diffuseEarthRadiance_ = entry.diffuseEarthRadiance;
            diffuseSkyRadiance_ = entry.diffuseSkyRadiance;
            directSolarRadiance_ = entry.directSolarRadiance;
            signatureBearing_ = entry.signatureBearing;
            return true;
        }
    return false;
}

Vector<float> AtmFile::SolarDirWorld() const {
    const float azimuth = (90.0F - solarAzimuth_) * kRadiansPerDegree;
    const float elevation = (90.0F - solarZenith_) * kRadiansPerDegree;
    const Vector<float> direction(
        std::cos(azimuth) * std::cos(elevation), std::sin(azimuth) * std::cos(elevation), std::sin(elevation), 0.0F);
    return direction / Length(direction);
}

void AtmFile::PrintData() const {
    const Vector<float> sun = SolarDirWorld();
    std::cout << "Signature bearing (N to E in deg) = " << signatureBearing_ << std::endl
              << "Direct solar radiance (W/cm2/str) = " << directSolarRadiance_ << std::endl
              << "Diffuse sky radiance (W/cm2/str) = " << diffuseSkyRadiance_ << std::endl
              << "Diffuse earth radiance (W/cm2/str) = " << diffuseEarthRadiance_ << std::endl
              << "Solar azimuth (N to E in deg) = " << solarAzimuth_ << std::endl
              << "Solar zenith (0 is up in deg) = " << solarZenith_ << std::endl
              << "Solar direction (world coords) = (" << sun.ElementAt(0) << ", " << sun.ElementAt(1) << ", "
              << sun.ElementAt(2) << ")" << std::endl;
}
