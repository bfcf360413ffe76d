// The picture that the view shows.
#include "framegrab.h"

#include <QOpenGLWidget>

#include "aircraftwidget.h"

namespace sorvane {
QImage grabFrame(QOpenGLWidget& widget) {
    if (auto* const view = qobject_cast<AircraftWidget*>(&widget))
        view->loadAllTerrain();
    QImage picture = widget.grabFramebuffer();
    if (picture.isNull())
        return picture;
    picture.setDevicePixelRatio(1.0);
    dropAlpha(picture);
    if (picture.size() != widget.size())
        picture = picture.scaled(widget.size(), Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    return picture.convertToFormat(QImage::Format_RGB32);
}

void dropAlpha(QImage& picture) {
    if (!picture.reinterpretAsFormat(QImage::Format_RGB32))
        return picture.convertTo(QImage::Format_RGB32);
    for (int y = 0; y < picture.height(); ++y) {
        auto* const row = reinterpret_cast<QRgb*>(picture.scanLine(y));
        for (int x = 0; x < picture.width(); ++x)
            row[x] |= 0xFF000000U;
    }
}
} // namespace sorvane
