// The perspective of the view.
#include "projection.h"

#include "glapi.h"

namespace sorvane {
void applyProjection(double fieldOfViewDegrees, int width, int height, double pixelRatio) {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(fieldOfViewDegrees, static_cast<double>(width) / height, kNearDepth, kFarDepth);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glViewport(0, 0, static_cast<int>(width * pixelRatio), static_cast<int>(height * pixelRatio));
}

WindowTransform::WindowTransform() {
    glGetDoublev(GL_PROJECTION_MATRIX, projection);
    glGetIntegerv(GL_VIEWPORT, viewport);
}
} // namespace sorvane
