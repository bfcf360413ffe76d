// The atmosphere file (".atm"): where the sun is, and the direct solar, diffuse sky and diffuse earth radiances.
#pragma once

#include <string>
#include <string_view>

#include "file.h"
#include "vector.h"

namespace sorvane {
class TextHead;
} // namespace sorvane

// Text of three lines:
//     three numbers, ignored
//     ten numbers, the 1st, 2nd, 4th and 5th of them integers; the last two are used: 180 minus the sun's zenith angle,
//     and its azimuth from north towards east, degrees
//     diffuse earth, diffuse sky and direct solar radiance, W/m²/sr; bearing of the signature, degrees
class AtmFile : public File {
public:
    static constexpr const char* kExtension = "atm";

    // Whether a text of any name begins like an atmosphere file.
    static bool looksLike(const sorvane::TextHead& head);

    // One entry of the process-wide cache: the file name and the six values.
    struct atmData;

    // Reads the file `name`, or takes it from the cache. On failure prints one message and returns false.
    bool Load(const std::string& name);

    // Reads the text of an atmosphere file; messages and result as Load's. Touches neither disk nor cache.
    bool parse(std::string_view text);

    // Looks fileName() up in the cache; on a hit copies the six values and returns true.
    bool InCache();
    // Takes the file `name` out of the cache.
    static void forget(const std::string& name);

    // Unit vector towards the sun in world axes x east, y north, z up; w = 0.
    Vector<float> SolarDirWorld() const;

    // Writes the values to standard output, a line each.
    void PrintData() const;

    // The cache key.
    const std::string& fileName() const { return fileName_; }
    // Degrees, 0 is up.
    const float& solarZenith() const { return solarZenith_; }
    // Degrees, north towards east.
    const float& solarAzimuth() const { return solarAzimuth_; }
    // W/cm²/sr.
    const float& diffuseEarthRadiance() const { return diffuseEarthRadiance_; }
    // W/cm²/sr.
    const float& diffuseSkyRadiance() const { return diffuseSkyRadiance_; }
    // W/cm²/sr.
    const float& directSolarRadiance() const { return directSolarRadiance_; }
    // Degrees, north towards east.
    const float& signatureBearing() const { return signatureBearing_; }

private:
    std::string fileName_;
    float solarZenith_ = 0.0F;
    float solarAzimuth_ = 0.0F;
    float diffuseEarthRadiance_ = 0.0F;
    float diffuseSkyRadiance_ = 0.0F;
    float directSolarRadiance_ = 0.0F;
    float signatureBearing_ = 0.0F;
};
