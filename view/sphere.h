// A coarse unit sphere.
#pragma once

namespace sorvane {
// Draws a unit sphere of 6 slices and 6 stacks about the origin: GLUT's where GLUT has been initialised, else GLU's (a
// program without a window has no GLUT, whose drawing functions end the process then).
void drawUnitSphere();
} // namespace sorvane
