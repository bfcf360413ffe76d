// A unit sphere.
#include "sphere.h"

#include <memory>

#include "glapi.h"
#include "glstate.h"

#include <GL/freeglut.h>

namespace sorvane {
void drawUnitSphere(int slices) {
    if (glutGet(GLUT_INIT_STATE) != 0) {
        glutSolidSphere(1.0, slices, slices);
        return;
    }
    static const std::unique_ptr<GLUquadric, void (*)(GLUquadric*)> quadric(gluNewQuadric(), gluDeleteQuadric);
    // GLU begins its slices at the y axis, GLUT at the x axis.
    const PushedMatrix matrix;
    glRotatef(90.0F, 0.0F, 0.0F, 1.0F);
    gluSphere(quadric.get(), 1.0, slices, slices);
}
} // namespace sorvane
