// The camera: where the eye is, what it looks at, and how playback, mouse and wheel move it.
#pragma once

#include "vector.h"
#include "viewmode.h"

namespace sorvane {
// What a camera can be attached to, at one instant, in world units and degrees.
struct CameraSubject {
    float threatPosition[3] = {};
    float targetPosition[3] = {};
    float gyroAngles[3] = {}; // roll, pitch, yaw of the threat's seeker
};

// A position in the view, in pixels from its top left corner.
struct ViewPoint {
    double x = 0.0;
    double y = 0.0;
};

// World z points down: the camera's up direction is always (0, 0, −1).
class Camera {
public:
    const Vector<float>& eye() const { return eye_; }
    const Vector<float>& centre() const { return centre_; }
    // From eye to centre; more precise than their difference where they were rounded far from the origin.
    const Vector<float>& look() const { return look_; }
    ViewMode mode() const { return mode_; }
    void setMode(ViewMode mode) { mode_ = mode; }
    // Puts the camera somewhere directly.
    void place(const Vector<float>& eye, const Vector<float>& centre);

    // Back to the start: eye (100, 0, 0), everything else at the origin.
    void resetToOrigin();

    // Places the eye for the mode: 10 units along +x from the threat, 50 units along +x from the target; elsewhere eye
    // and centre stay.
    void reset(const CameraSubject& subject);

    // Playback moved from one state to another: rides along with the body it is attached to, keeping what the user has
    // turned or zoomed; in gyro view sits on the threat and looks 100 units along the gyro's x axis.
    void follow(const CameraSubject& before, const CameraSubject& now);

    // A drag begins at `position`. `drag…` then move the camera from where it was at that moment.
    void press(const ViewPoint& position);
    void dragPan(const ViewPoint& position) { pan(press_, position); }
    void dragRotate(const ViewPoint& position) { rotate(press_, position); }

    // Slides eye and centre across the screen, 0.001 of their distance per pixel.
    void pan(const ViewPoint& from, const ViewPoint& to);

    // Turns the eye about the centre as both were at the press, 0.1 degree per pixel: horizontal motion about world z,
    // vertical motion about world y (not about the camera's horizontal axis: deliberate).
    void rotate(const ViewPoint& from, const ViewPoint& to);

    // Scales the distance from centre to eye by exp(−0.001 · delta), delta being 120 per wheel notch.
    void zoom(double delta);

private:
    Vector<float> eye_{100.0F, 0.0F, 0.0F, 1.0F};
    Vector<float> eyeAtPress_{0.0F, 0.0F, 0.0F, 1.0F};
    Vector<float> centre_{0.0F, 0.0F, 0.0F, 1.0F};
    Vector<float> centreAtPress_{0.0F, 0.0F, 0.0F, 1.0F};
    Vector<float> look_{-100.0F, 0.0F, 0.0F, 0.0F};
    ViewPoint press_;
    ViewMode mode_ = ViewThreat;
};
} // namespace sorvane
