// Target and threat as shaded bodies.
#pragma once

#include "hardbody.h"
#include "lookat.h"

namespace sorvane {
// Where a body is in a frame.
struct BodyPose {
    const float (&position)[3]; // world
    const float (&attitude)[3]; // degrees, as the trajectory has them
};

// How far the body reaches from the point about which it is posed, in world units.
double radiusOf(const Hardbody& body);

// Where along the line of sight some of the body may be, however its rotors turn.
DepthInterval depthsOf(const Hardbody& body, const BodyPose& pose, const LookAt& lookAt);

// Poses the body (180° is added to the first angle: models have z up, the world has it down), works out what its facets
// reflect of each other towards the eye, and draws it, lit from `sunInEye`, a unit direction in eye coordinates. `time`
// in seconds. Needs a current GL context; leaves another model-view matrix.
void drawBody(Hardbody& body, const BodyPose& pose, const LookAt& lookAt, const Vector<float>& sunInEye, double time);
} // namespace sorvane
