// The life of the viewer's process, from command line to exit code.
#include "viewerprocess.h"

#include <clocale>

#include <GL/freeglut.h>

#include <QApplication>
#include <QFile>
#include <QSurfaceFormat>

#include "new_sorvane.h"

namespace {
void requestOpenGl() {
    QSurfaceFormat format;
    format.setRenderableType(QSurfaceFormat::OpenGL);
    format.setVersion(2, 1);
    format.setProfile(QSurfaceFormat::CompatibilityProfile);
    format.setDepthBufferSize(24);
    QSurfaceFormat::setDefaultFormat(format);
}
} // namespace

int runViewer(int argc, char** argv) {
    requestOpenGl();
    QApplication application(argc, argv);
    // The application has taken the user's locale; numbers in files keep their decimal point.
    std::setlocale(LC_NUMERIC, "C");
    new_sorvane window;
    window.show();
    // For its drawing helpers only; GLUT never owns a window.
    glutInit(&argc, argv);
    for (int i = 1; i < argc; ++i)
        window.loadEtxyzFile(QFile::decodeName(argv[i]));
    return QApplication::exec();
}
