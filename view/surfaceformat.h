// The kind of OpenGL that the view needs.
#pragma once

class QSurfaceFormat;

namespace sorvane {
// OpenGL 2.1, compatibility profile, 24 bits of depth: to be made the default format before the QApplication.
QSurfaceFormat viewSurfaceFormat();
} // namespace sorvane
