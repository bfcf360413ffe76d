// The perspective of the view.
#include "projection.h"

#include "glapi.h"

namespace sorvane {
void applyProjection(double fieldOfViewDegrees, int width, int height, double pixelRatio) {
    constexpr double kNear = 0.1;
    constexpr double kFar = 100000.0;
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    gluPerspective(fieldOfViewDegrees, static_cast<double>(width) / height, kNear, kFar);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glViewport(0, 0, static_cast<int>(width * pixelRatio), static_cast<int>(height * pixelRatio));
}
} // namespace sorvane
