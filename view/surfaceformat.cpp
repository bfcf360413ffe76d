// The kind of OpenGL that the view needs.
#include "surfaceformat.h"

#include <QSurfaceFormat>

namespace sorvane {
QSurfaceFormat viewSurfaceFormat() {
    QSurfaceFormat format;
    format.setRenderableType(QSurfaceFormat::OpenGL);
    format.setVersion(2, 1);
    format.setProfile(QSurfaceFormat::CompatibilityProfile);
    format.setDepthBufferSize(24);
    return format;
}
} // namespace sorvane
