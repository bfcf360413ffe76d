// The keys that move a camera as the mouse does, in the main view and in further ones.
#pragma once

#include "keytable.h"

namespace sorvane {
// Whether the command is one of them; it has moved the view's camera then.
template <class View> bool moveByKey(View& view, KeyCommand command) {
    constexpr double kDrag = 50.0; // pixels
    switch (command) {
    case KeyCommand::TurnLeft:
        view.turn(-kDrag, 0.0);
        return true;
    case KeyCommand::TurnRight:
        view.turn(kDrag, 0.0);
        return true;
    case KeyCommand::TurnUp:
        view.turn(0.0, -kDrag);
        return true;
    case KeyCommand::TurnDown:
        view.turn(0.0, kDrag);
        return true;
    case KeyCommand::SlideLeft:
        view.slide(-kDrag, 0.0);
        return true;
    case KeyCommand::SlideRight:
        view.slide(kDrag, 0.0);
        return true;
    case KeyCommand::SlideUp:
        view.slide(0.0, -kDrag);
        return true;
    case KeyCommand::SlideDown:
        view.slide(0.0, kDrag);
        return true;
    case KeyCommand::ZoomIn:
        view.zoom(1.0);
        return true;
    case KeyCommand::ZoomOut:
        view.zoom(-1.0);
        return true;
    default:
        return false;
    }
}
} // namespace sorvane
