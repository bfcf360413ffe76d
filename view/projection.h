// The perspective of the view.
#pragma once

namespace sorvane {
constexpr double kDefaultFieldOfViewDegrees = 30.0;

// Sets projection and viewport for a view of width × height pixels (each at least 1), each of which the framebuffer has
// `pixelRatio` of to a side, with the full vertical field of view in degrees, and leaves the model-view matrix selected
// and the identity.
void applyProjection(double fieldOfViewDegrees, int width, int height, double pixelRatio = 1.0);
} // namespace sorvane
