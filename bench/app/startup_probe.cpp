// Starts as the viewer does, or as an empty window with an empty GL widget, and exits at the first painted frame.
// usage: startup_probe viewer [FILES…] | startup_probe empty
#include <clocale>
#include <cstdlib>
#include <cstring>

#include <GL/freeglut.h>

#include <QApplication>
#include <QFile>
#include <QMainWindow>
#include <QOpenGLWidget>
#include <QSurfaceFormat>

#include "new_sorvane.h"
#include "surfaceformat.h"

using namespace sorvane;

namespace {
void exitAtFirstFrameOf(QOpenGLWidget* widget) {
    QObject::connect(widget, &QOpenGLWidget::frameSwapped, [] { std::_Exit(EXIT_SUCCESS); });
}

int runEmptyWindow() {
    QMainWindow window;
    auto* const widget = new QOpenGLWidget;
    window.setCentralWidget(widget);
    window.resize(846, 586);
    exitAtFirstFrameOf(widget);
    window.show();
    return QApplication::exec();
}
} // namespace

int main(int argc, char** argv) {
    QSurfaceFormat::setDefaultFormat(viewSurfaceFormat());
    qputenv("SORVANE_NO_SETTINGS", "1");
    QApplication application(argc, argv);
    if (argc < 2 || std::strcmp(argv[1], "viewer") != 0)
        return runEmptyWindow();
    std::setlocale(LC_NUMERIC, "C");
    new_sorvane window;
    exitAtFirstFrameOf(window.findChild<QOpenGLWidget*>("glWidget"));
    window.show();
    glutInit(&argc, argv);
    for (int i = 2; i < argc; ++i)
        window.loadEtxyzFile(QFile::decodeName(argv[i]));
    return QApplication::exec();
}
