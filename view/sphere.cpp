// A coarse unit sphere.
#include "sphere.h"

#include <memory>

#include "glapi.h"

#include <GL/freeglut.h>

void drawUnitSphere() {
    constexpr int kSlices = 6;
    constexpr int kStacks = 6;
    if (glutGet(GLUT_INIT_STATE) != 0) {
        glutSolidSphere(1.0, kSlices, kStacks);
        return;
    }
    static const std::unique_ptr<GLUquadric, void (*)(GLUquadric*)> quadric(gluNewQuadric(), gluDeleteQuadric);
    gluSphere(quadric.get(), 1.0, kSlices, kStacks);
}
