// What the drawing of a body depends on from frame to frame.
#pragma once

#include <array>
#include <optional>

#include "bodylight.h"
#include "vector.h"

struct Dynamic_Data {
    Vector<float> solarDirEyeCoords; // unit direction to the sun in eye coordinates, w = 0
    float time = 0.0F;               // playback time in seconds, which turns the rotors
    // The world position from which the coordinates of the current model-view matrix count.
    std::array<float, 3> origin{};
    // In place of the light for which the body was made.
    std::optional<sorvane::BodyLight> light{};
};
