// Target and threat as shaded bodies.
#include "bodies.h"

#include "dynamicdata.h"

namespace sorvane {
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
