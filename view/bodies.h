// Target and threat as shaded bodies.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <set>
#include <utility>

#include "hardbody.h"
#include "lookat.h"
#include "sight.h"

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
// in seconds, and `light` takes the place of the body's own. Needs a current GL context; leaves another model-view
// matrix.
void drawBody(
    Hardbody& body, const BodyPose& pose, const LookAt& lookAt, const Vector<float>& sunInEye, double time,
    const std::optional<BodyLight>& light = {});

// The bodies of a slice of a frame. What can't be seen of them costs next to nothing.
class SliceOfBodies {
public:
    SliceOfBodies(const LookAt& lookAt, const Sight& sight, const DepthSlice& slice, double time)
        : lookAt_(lookAt), sight_(sight), slice_(slice), time_(time) {}

    // Draws a body as drawBody does if some of it can be in the picture and it is at least a pixel across; from half a
    // pixel to a pixel a point of its radiance. One that is just like another, at the same place, is drawn once.
    void draw(Hardbody& body, const BodyPose& pose, const Vector<float>& sunInEye);

private:
    // What a body looks like: its model, and the bits of pose and light.
    using Look = std::pair<const BodyModel*, std::array<std::uint32_t, 9>>;

    const LookAt& lookAt_;
    const Sight& sight_;
    const DepthSlice& slice_;
    double time_;
    std::set<Look> drawn_;
};
} // namespace sorvane
