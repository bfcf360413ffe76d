// The kind of OpenGL that the view needs.
#pragma once

class QSurfaceFormat;

namespace sorvane {
// OpenGL 2.1, compatibility profile, 24 bits of depth: to be made the default format before the QApplication.
QSurfaceFormat viewSurfaceFormat();

// Has all views of the process share bodies and terrain; to be called before the QApplication.
void shareOpenGlObjects();
} // namespace sorvane
