// Target and threat as shaded bodies.
#include "bodies.h"

#include "dynamicdata.h"

void drawBody(
    Hardbody& body, const BodyPose& pose, const Vector<float>& eye, const Vector<float>& sunInEye, double time) {
    body.SetWorldPosAndOrientation(
        pose.position[0], pose.position[1], pose.position[2], pose.attitude[0] + 180.0F, pose.attitude[1],
        pose.attitude[2]);
    body.UpdateMultiFacet(eye);
    Dynamic_Data data{sunInEye, static_cast<float>(time)};
    body.Render(&data);
}
