// Target and threat as shaded bodies.
#include "bodies.h"

#include <algorithm>

#include "dynamicdata.h"

namespace sorvane {
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

void drawBody(Hardbody& body, const BodyPose& pose, const LookAt& lookAt, const Vector<float>& sunInEye, double time) {
    body.SetWorldPosAndOrientation(
        pose.position[0], pose.position[1], pose.position[2], pose.attitude[0] + 180.0F, pose.attitude[1],
        pose.attitude[2]);
    body.UpdateMultiFacet(lookAt.eye());
    lookAt.load(pose.position);
    Dynamic_Data data{sunInEye, static_cast<float>(time), std::to_array(pose.position)};
    body.Render(&data);
}
} // namespace sorvane
