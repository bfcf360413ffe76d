// A unit sphere.
#pragma once

namespace sorvane {
constexpr int kCoarseSlices = 6;

// Draws a unit sphere of so many slices and stacks about the origin: GLUT's where GLUT has been initialised, else GLU's
// (a program without a window has no GLUT, whose drawing functions end the process then).
void drawUnitSphere(int slices);
} // namespace sorvane
