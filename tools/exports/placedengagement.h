// An engagement put on the Earth and into a day: what the map formats are written from.
#pragma once

#include <array>
#include <string>

#include <QMap>

#include "geodetic.h"
#include "keyframe.h"
#include "worldtime.h"

namespace sorvane {
struct PlacedEngagement {
    std::string name;
    const QMap<double, keyframe>& samples; // at least one
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
    float (keyframe::*position)[3] = nullptr;
    MapColour colour; // as the viewer draws its path
};

inline constexpr std::array<MapBody, 2> kMapBodies = {
    MapBody{"target", "Target", &keyframe::targetPos, {0, 255, 0}},
    MapBody{"threat", "Threat", &keyframe::threatPos, {255, 255, 0}},
};
} // namespace sorvane
