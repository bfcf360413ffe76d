// The seeker's reticle in gyro view.
#pragma once

#include <array>

#include "vector.h"

namespace sorvane {
// Circle and cross, in the coordinates of the eye and the centre that they are made from.
struct Reticle {
    static constexpr int kSegments = 100;
    std::array<Vector<float>, kSegments> circle;
    Vector<float> middle;
    std::array<Vector<float>, 4> crossEnds; // on the circle: right, left, up, down
};

// A reticle facing the eye at one tenth of the distance from eye to centre, with radius
// 10 · tan(fieldOfViewDegrees / 2): it touches the edges of the seeker's field of view when the centre is 100 units
// away.
Reticle reticleFor(const Vector<float>& eye, const Vector<float>& centre, float fieldOfViewDegrees);

// With the model-view matrix of the coordinates that the reticle was made in. Needs a current GL context.
void drawReticle(const Reticle& reticle);
} // namespace sorvane
