// The perspective of the view.
#pragma once

namespace sorvane {
constexpr double kDefaultFieldOfViewDegrees = 30.0;

// What is nearer or farther than this along the line of sight is not drawn.
constexpr double kNearDepth = 0.1;
constexpr double kFarDepth = 100000.0;

// Sets projection and viewport for a view of width × height pixels (each at least 1), each of which the framebuffer has
// `pixelRatio` of to a side, with the full vertical field of view in degrees, and leaves the model-view matrix selected
// and the identity.
void applyProjection(double fieldOfViewDegrees, int width, int height, double pixelRatio = 1.0);

// Projection and viewport as they are current: where points of the eye's coordinates appear.
struct WindowTransform {
    WindowTransform();

    double projection[16] = {}; // column by column
    int viewport[4] = {};
};
} // namespace sorvane
