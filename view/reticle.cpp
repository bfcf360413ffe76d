// The seeker's reticle in gyro view.
#include "reticle.h"

#include <cmath>
#include <numbers>

#include "glapi.h"
#include "glstate.h"
#include "material.h"

namespace sorvane {
namespace {
Vector<float> scaled(const Vector<float>& v, float factor) {
    return {v.ElementAt(0) * factor, v.ElementAt(1) * factor, v.ElementAt(2) * factor, v.ElementAt(3) * factor};
}

void vertex(const Vector<float>& v) {
    glVertex3f(v.ElementAt(0), v.ElementAt(1), v.ElementAt(2));
}
} // namespace

Reticle reticleFor(const Vector<float>& eye, const Vector<float>& centre, float fieldOfViewDegrees) {
    const Vector<float> look = centre - eye;
    const float distance = Length(look);
    const Vector<float> forward = look / distance;
    Vector<float> right = Cross(forward, Vector<float>(0.0F, 0.0F, -1.0F, 0.0F));
    right = right / Length(right);
    const Vector<float> up = Cross(right, forward);

    const float radius =
        10.0F * static_cast<float>(std::tan(double{fieldOfViewDegrees} / 2.0 * std::numbers::pi / 180.0));
    Reticle reticle;
    reticle.middle = eye + scaled(forward, distance / 10.0F);
    for (int i = 0; i < Reticle::kSegments; ++i) {
        const double angle = 2.0 * std::numbers::pi * i / Reticle::kSegments;
        reticle.circle[static_cast<std::size_t>(i)] = reticle.middle +
                                                      scaled(right, radius * static_cast<float>(std::cos(angle))) +
                                                      scaled(up, radius * static_cast<float>(std::sin(angle)));
    }
    reticle.crossEnds = {
        reticle.middle + scaled(right, radius), reticle.middle - scaled(right, radius),
        reticle.middle + scaled(up, radius), reticle.middle - scaled(up, radius)};
    return reticle;
}

void drawReticle(const Reticle& reticle) {
    const PushedAttributes attributes(GL_CURRENT_BIT | GL_LINE_BIT);
    ret_front_mat.apply();
    glBegin(GL_LINE_LOOP);
    for (const Vector<float>& point : reticle.circle)
        vertex(point);
    glEnd();
    glBegin(GL_LINES);
    for (const Vector<float>& end : reticle.crossEnds) {
        vertex(reticle.middle);
        vertex(end);
    }
    glEnd();
}
} // namespace sorvane
