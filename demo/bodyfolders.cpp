// The folders of the demonstration's bodies.
#include "bodyfolders.h"

#include "atmosphere.h"
#include "body.h"
#include "datatree.h"
#include "formfactors.h"

namespace sorvane {
namespace {
// A hazy summer afternoon in the mid-wave infrared, with the sun 40 degrees high in the south-west. The zenith angle
// is measured from the wrong end, deliberately: the viewer takes the sun's direction, whose z points up, unchanged into
// a world whose z points down, so that bodies are lit from above only by a sun that the file puts below the horizon.
constexpr AtmosphereValues kAfternoon = {
    .solarZenith = 180.0 - 50.0,
    .solarAzimuth = 235.0,
    .diffuseEarthRadiance = 1.9,
    .diffuseSkyRadiance = 0.65,
    .directSolarRadiance = 1.7,
    .signatureBearing = 0.0,
};

// A band of the threats' files, and how much of the mid-wave radiance remains in it.
struct Band {
    const char* number;
    double gain;
};
constexpr Band kBands[] = {{"1", 1.0}, {"4", 1.0}, {"6", 0.6}};

void addThreat(std::vector<DemonstrationFile>& files, const std::string& base, const Body& body) {
    files.push_back({base + ".vnl", geometryText(body)});
    for (const Band& band : kBands) {
        const std::string signature = base + "_b000" + band.number;
        files.push_back({signature + ".brdf", reflectanceText(body)});
        files.push_back({signature + ".rad", radianceBytes(body, band.gain)});
        files.push_back({signature + ".atm", atmosphereText(kAfternoon)});
    }
}
} // namespace

std::vector<DemonstrationFile> bodyFiles() {
    const Body target = jet();
    const Body rotorcraft = helicopter();
    std::vector<DemonstrationFile> files = {
        {kTargetGeometry, geometryText(target)},
        {kTargetReflectance, reflectanceText(target)},
        {kTargetSignature, radianceBytes(target, 1.0)},
        {kAtmosphere, atmosphereText(kAfternoon)},
        {kHelicopterGeometry, geometryText(rotorcraft)},
        {kHelicopterReflectance, reflectanceText(rotorcraft)},
        {kHelicopterSignature, radianceBytes(rotorcraft, 1.0)},
        {kHelicopterAtmosphere, atmosphereText(kAfternoon)},
        {kHelicopterRotors, rotorText(rotorcraft)},
    };
    addThreat(files, "tgt0450/tgt0450", missile());
    addThreat(files, "tgt0451/tgt0451", bullet());
    return files;
}

std::vector<DemonstrationFile> formFactorFiles() {
    return {
        {kTargetFormFactors, formFactorText(formFactors(jet().mesh, 96))},
        {kMissileFormFactors, formFactorText(formFactors(missile().mesh, 256))},
    };
}
} // namespace sorvane
