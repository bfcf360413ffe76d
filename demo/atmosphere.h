// The atmosphere file.
#pragma once

#include <string>

namespace sorvane {
// Angles in degrees, radiances in W/m²/sr.
struct AtmosphereValues {
    double solarZenith = 0.0;  // 0 is up
    double solarAzimuth = 0.0; // north towards east
    double diffuseEarthRadiance = 0.0;
    double diffuseSkyRadiance = 0.0;
    double directSolarRadiance = 0.0; // irradiance / π
    double signatureBearing = 0.0;    // north towards east
};

// Its three lines.
std::string atmosphereText(const AtmosphereValues& values);
} // namespace sorvane
