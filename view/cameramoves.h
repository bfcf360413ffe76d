// How mouse, wheel and keys move a camera.
#pragma once

class QMouseEvent;
class QWheelEvent;

namespace sorvane {
class Camera;

// A drag with the left button turns, one with the right button slides, a wheel zooms. Each answers whether it has moved
// the camera, which it never does in gyro view.
void pressCamera(Camera& camera, const QMouseEvent& event);
bool dragCamera(Camera& camera, const QMouseEvent& event);
bool zoomCamera(Camera& camera, const QWheelEvent& event);

// As a drag by so many pixels and the wheel by so many notches do.
bool turnCamera(Camera& camera, double right, double down);
bool slideCamera(Camera& camera, double right, double down);
bool zoomCamera(Camera& camera, double notches);
} // namespace sorvane
