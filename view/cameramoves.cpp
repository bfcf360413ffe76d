// How mouse, wheel and keys move a camera.
#include "cameramoves.h"

#include <QMouseEvent>
#include <QWheelEvent>

#include "camera.h"

namespace sorvane {
namespace {
ViewPoint viewPoint(const QPointF& position) {
    return {position.x(), position.y()};
}

// Runs what moves a camera, unless its view is the seeker's.
template <class Move> bool moved(const Camera& camera, const Move& move) {
    if (camera.mode() == ViewGyro)
        return false;
    move();
    return true;
}
} // namespace

void pressCamera(Camera& camera, const QMouseEvent& event) {
    camera.press(viewPoint(event.position()));
}

bool dragCamera(Camera& camera, const QMouseEvent& event) {
    if (event.buttons().testFlag(Qt::RightButton))
        return moved(camera, [&] { camera.dragPan(viewPoint(event.position())); });
    if (event.buttons().testFlag(Qt::LeftButton))
        return moved(camera, [&] { camera.dragRotate(viewPoint(event.position())); });
    return false;
}

bool zoomCamera(Camera& camera, const QWheelEvent& event) {
    return moved(camera, [&] { camera.zoom(event.angleDelta().y()); });
}

bool turnCamera(Camera& camera, double right, double down) {
    return moved(camera, [&] {
        camera.press({});
        camera.dragRotate({right, down});
    });
}

bool slideCamera(Camera& camera, double right, double down) {
    return moved(camera, [&] {
        camera.press({});
        camera.dragPan({right, down});
    });
}

bool zoomCamera(Camera& camera, double notches) {
    constexpr double kDeltaOfNotch = 120.0;
    return moved(camera, [&] { camera.zoom(notches * kDeltaOfNotch); });
}
} // namespace sorvane
