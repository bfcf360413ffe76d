// Target and threat as shaded bodies.
#include "bodies.h"

#include <algorithm>
#include <bit>

#include "dynamicdata.h"
#include "glapi.h"
#include "glstate.h"

namespace sorvane {
namespace {
constexpr double kSmallestSeen = 0.5; // pixels across
constexpr double kSmallestDrawn = 1.0;

void drawAsPoint(const Hardbody& body, const float (&position)[3], const LookAt& lookAt) {
    const PushedAttributes attributes(GL_CURRENT_BIT | GL_ENABLE_BIT | GL_POINT_BIT);
    glDisable(GL_LIGHTING);
    glPointSize(1.0F);
    const float grey = body.grey();
    glColor3f(grey, grey, grey);
    lookAt.load(position);
    glBegin(GL_POINTS);
    glVertex3f(0.0F, 0.0F, 0.0F);
    glEnd();
}
} // namespace

double radiusOf(const Hardbody& body) {
    float radius = 0.0F;
    for (Vector<float> corner : body.BBox()) {
        corner.ElementAt(3) = 0.0F;
        radius = std::max(radius, Length(corner));
    }
    return radius;
}

DepthInterval depthsOf(const Hardbody& body, const BodyPose& pose, const LookAt& lookAt) {
    // What turns about an axis through the body stays within three times its radius.
    const double reach = 3.0 * radiusOf(body);
    const double depth = lookAt.depthOf(pose.position);
    return {depth - reach, depth + reach};
}

void drawBody(
    Hardbody& body, const BodyPose& pose, const LookAt& lookAt, const Vector<float>& sunInEye, double time,
    const std::optional<BodyLight>& light) {
    body.SetWorldPosAndOrientation(
        pose.position[0], pose.position[1], pose.position[2], pose.attitude[0] + 180.0F, pose.attitude[1],
        pose.attitude[2]);
    body.UpdateMultiFacet(lookAt.eye());
    lookAt.load(pose.position);
    Dynamic_Data data{sunInEye, static_cast<float>(time), std::to_array(pose.position), light};
    body.Render(&data);
}

void SliceOfBodies::draw(Hardbody& body, const BodyPose& pose, const Vector<float>& sunInEye) {
    if (!body.isUsable() || !slice_.reaches(depthsOf(body, pose, lookAt_)) ||
        !sight_.reaches(pose.position, double{body.reach()}))
        return;
    const double across = sight_.pixelsAcross(pose.position, double{body.reach()});
    if (across < kSmallestSeen)
        return;
    if (across < kSmallestDrawn)
        return drawAsPoint(body, pose.position, lookAt_);
    Look look{body.model(), {}};
    for (std::size_t i = 0; i < 3; ++i) {
        look.second[i] = std::bit_cast<std::uint32_t>(pose.position[i]);
        look.second[3 + i] = std::bit_cast<std::uint32_t>(pose.attitude[i]);
        look.second[6 + i] = std::bit_cast<std::uint32_t>(sunInEye.ElementAt(static_cast<int>(i)));
    }
    if (drawn_.insert(look).second)
        drawBody(body, pose, lookAt_, sunInEye, time_);
}
} // namespace sorvane
