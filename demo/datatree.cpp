// The data tree that the engagements use.
#include "datatree.h"

#include "atmosphere.h"

namespace {
// A clear summer afternoon in the mid-wave infrared, with the sun in the south-west.
constexpr AtmosphereValues kAfternoon = {
    .solarZenith = 50.0,
    .solarAzimuth = 235.0,
    .diffuseEarthRadiance = 1.9,
    .diffuseSkyRadiance = 0.65,
    .directSolarRadiance = 5.4,
    .signatureBearing = 0.0,
};
} // namespace

std::vector<DemonstrationFile> dataTreeFiles() {
    const std::string root = "data/";
    return {
        {root + kAtmosphere, atmosphereText(kAfternoon)},
    };
}
