// What a camera that follows an engagement is attached to.
#include "camerasubject.h"

#include <algorithm>

#include "etxyz.h"

namespace sorvane {
CameraSubject subjectAt(const etxyz& engagement, double time) {
    const keyframe frame = engagement.InterpolatedFrame(time);
    CameraSubject subject;
    std::copy_n(frame.threatPos, 3, subject.threatPosition);
    std::copy_n(frame.targetPos, 3, subject.targetPosition);
    std::copy_n(frame.gyro, 3, subject.gyroAngles);
    return subject;
}
} // namespace sorvane
