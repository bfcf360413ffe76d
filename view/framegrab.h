// The picture that the view shows.
#pragma once

#include <QImage>

class QOpenGLWidget;

namespace sorvane {
// The widget's picture as it would be drawn now, in Format_RGB32 at the widget's logical size, without alpha and
// without anything that lies over the widget. Terrain that is shown is loaded first.
QImage grabFrame(QOpenGLWidget& widget);
} // namespace sorvane
