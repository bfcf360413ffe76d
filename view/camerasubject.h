// What a camera that follows an engagement is attached to.
#pragma once

#include "camera.h"

class etxyz;

namespace sorvane {
// The state of the engagement, which has samples, at `time` (seconds).
CameraSubject subjectAt(const etxyz& engagement, double time);
} // namespace sorvane
