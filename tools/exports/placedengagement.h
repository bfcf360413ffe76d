// An engagement put on the Earth and into a day: what the map formats are written from.
#pragma once

#include <array>
#include <span>
#include <string>

#include "geodetic.h"
#include "sample.h"
#include "worldtime.h"

namespace sorvane {
struct PlacedEngagement {
    std::string name;
    std::span<const Sample> samples; // at least one
    LocalFrame frame;
    WorldTime epoch = 0; // of the trajectory's time 0; all samples lie in the years 1 to 9999
};

struct MapColour {
    int red = 0;
    int green = 0;
    int blue = 0;
};

// One of the two bodies, and how the maps show it.
struct MapBody {
    const char* id = "";
    const char* name = "";
    Triple Sample::*position = nullptr;
    MapColour colour; // as the viewer draws its path
};

inline constexpr std::array<MapBody, 2> kMapBodies = {
    MapBody{"target", "Target", &Sample::targetPosition, {0, 255, 0}},
    MapBody{"threat", "Threat", &Sample::threatPosition, {255, 255, 0}},
};
} // namespace sorvane
