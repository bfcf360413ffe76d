// What covers the ground of the demonstration's landscape.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace sorvane {
enum class GroundClass : std::uint8_t { Water = 1, Meadow, Forest, Wheat, Soil, Rock, Asphalt, Roof };

// Values in the band of 3 to 5 micrometres on a summer afternoon.
struct GroundCover {
    GroundClass ground;
    const char* name;
    double radiance;           // on level ground, W/cm²/sr
    double temperature;        // kelvin
    double percentReflectance; // mean of the band
};

inline constexpr std::array<GroundCover, 8> kGroundCovers = {{
    {GroundClass::Water, "water", 3.2e-5, 291.0, 2.0},
    {GroundClass::Meadow, "meadow", 8.6e-5, 300.0, 5.0},
    {GroundClass::Forest, "forest", 6.2e-5, 296.0, 3.0},
    {GroundClass::Wheat, "wheat", 1.12e-4, 303.0, 8.0},
    {GroundClass::Soil, "soil", 1.36e-4, 308.0, 12.0},
    {GroundClass::Rock, "rock", 1.25e-4, 306.0, 14.0},
    {GroundClass::Asphalt, "asphalt", 1.9e-4, 315.0, 6.0},
    {GroundClass::Roof, "roof", 2.1e-4, 317.0, 0.0},
}};

constexpr const GroundCover& coverOf(GroundClass ground) {
    return kGroundCovers[static_cast<std::size_t>(ground) - 1];
}
} // namespace sorvane
