// What lights a body, and what its radiances are multiplied by.
#pragma once

namespace sorvane {
// Radiances in W/cm²/sr.
struct BodyLight {
    float earthRadiance = 0.0F;
    float skyRadiance = 0.0F;
    float solarBeam = 0.0F;  // what a white diffuse surface reflects that faces the sun
    float brightness = 1.0F; // grey per W/cm²/sr; 1 draws radiances

    bool operator==(const BodyLight&) const = default;
};
} // namespace sorvane
