// The camera: where the eye is, what it looks at, and how playback, mouse and wheel move it.
#include "camera.h"

#include <cmath>

#include "matrix.h"

namespace sorvane {
namespace {
constexpr float kThreatDistance = 10.0F;
constexpr float kTargetDistance = 50.0F;
constexpr float kGyroLookDistance = 100.0F;
constexpr double kDegreesPerPixel = 0.1;
// Single precision widened to double, deliberately: 0.0010000000474974513.
constexpr double kPanPerPixel = double{0.001F};

Vector<float> position(const float (&xyz)[3]) {
    return {xyz[0], xyz[1], xyz[2], 1.0F};
}

Vector<float> alongX(float distance) {
    return {distance, 0.0F, 0.0F, 0.0F};
}

// Component-wise a + factor · b, worked out in double.
Vector<float> plusScaled(const Vector<float>& a, double factor, const Vector<float>& b) {
    Vector<float> sum;
    for (int i = 0; i < 4; ++i)
        sum.ElementAt(i) = static_cast<float>(a.ElementAt(i) + factor * b.ElementAt(i));
    return sum;
}
} // namespace

void Camera::place(const Vector<float>& eye, const Vector<float>& centre) {
    eye_ = eye;
    centre_ = centre;
    look_ = centre - eye;
}

void Camera::resetToOrigin() {
    const ViewMode mode = mode_;
    *this = Camera{};
    mode_ = mode;
}

void Camera::reset(const CameraSubject& subject) {
    if (mode_ == ViewThreat) {
        const Vector<float> threat = position(subject.threatPosition);
        place(threat + alongX(kThreatDistance), threat);
    } else if (mode_ == ViewTarget) {
        const Vector<float> target = position(subject.targetPosition);
        place(target + alongX(kTargetDistance), target);
    }
    eyeAtPress_ = centreAtPress_ = Vector<float>(0.0F, 0.0F, 0.0F, 1.0F);
}

void Camera::follow(const CameraSubject& before, const CameraSubject& now) {
    switch (mode_) {
    case ViewGyro: {
        const Vector<float> threat = position(now.threatPosition);
        const Matrix<float> gyro = BuildTransform(
            1.0F, 1.0F, 1.0F, now.gyroAngles[0], now.gyroAngles[1], now.gyroAngles[2], threat.ElementAt(0),
            threat.ElementAt(1), threat.ElementAt(2));
        place(threat, gyro * Vector<float>(kGyroLookDistance, 0.0F, 0.0F, 1.0F));
        look_ = gyro * alongX(kGyroLookDistance);
        break;
    }
    case ViewThreat:
    case ViewTarget: {
        const bool onThreat = mode_ == ViewThreat;
        const Vector<float> moved = position(onThreat ? now.threatPosition : now.targetPosition) -
                                    position(onThreat ? before.threatPosition : before.targetPosition);
        place(eye_ + moved, centre_ + moved);
        break;
    }
    case ViewFree:
        break;
    }
}

void Camera::press(const ViewPoint& position) {
    eyeAtPress_ = eye_;
    centreAtPress_ = centre_;
    press_ = position;
}

void Camera::pan(const ViewPoint& from, const ViewPoint& to) {
    const Vector<float> look = centre_ - eye_;
    const float distance = Length(look);
    const Vector<float> forward = look / distance;
    // The up vector has w = 1 and is normalised over all four components: deliberate, Cross ignores the w.
    Vector<float> up(0.0F, 0.0F, -1.0F, 1.0F);
    up = up / Length(up);
    Vector<float> right = Cross(up, forward);
    right = right / Length(right);
    Vector<float> screenUp = Cross(forward, right);
    screenUp = screenUp / Length(screenUp);

    const double alongRight = (to.x - from.x) * kPanPerPixel * distance;
    const double alongUp = (to.y - from.y) * kPanPerPixel * distance;
    const Vector<float> offset = plusScaled(plusScaled({}, alongRight, right), alongUp, screenUp);
    place(eyeAtPress_ + offset, centreAtPress_ + offset);
}

void Camera::rotate(const ViewPoint& from, const ViewPoint& to) {
    const Vector<float> arm = eyeAtPress_ - centreAtPress_;
    const Matrix<float> turn = BuildTransform(
        1.0F, 1.0F, 1.0F, 0.0F, static_cast<float>(kDegreesPerPixel * (to.y - from.y)),
        static_cast<float>(kDegreesPerPixel * (to.x - from.x)), 0.0F, 0.0F, 0.0F);
    place(turn * arm + centreAtPress_, centre_);
}

void Camera::zoom(double delta) {
    place(plusScaled(centre_, std::exp(-0.001 * delta), eye_ - centre_), centre_);
}
} // namespace sorvane
