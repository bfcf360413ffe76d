// The picture that the view shows.
#pragma once

#include <QImage>

class QOpenGLWidget;

namespace sorvane {
// The widget's picture as it would be drawn now, in Format_RGB32 at the widget's logical size, without alpha and
// without anything that lies over the widget. Terrain that is shown is loaded first.
QImage grabFrame(QOpenGLWidget& widget);

// Makes what has been read of a framebuffer a picture in Format_RGB32. Blending leaves alpha below 1 there; the colours
// are already what the screen shows, so the alpha is dropped and not divided out.
void dropAlpha(QImage& picture);
} // namespace sorvane
