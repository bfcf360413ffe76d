// The life of the viewer's process, from command line to exit code.
#include "viewerprocess.h"

#include <clocale>

#include <GL/freeglut.h>

#include <QApplication>
#include <QFile>
#include <QSurfaceFormat>

#include "endsignals.h"
#include "new_sorvane.h"
#include "surfaceformat.h"
#include "windowicon.h"

namespace sorvane {
int runViewer(int argc, char** argv) {
    QSurfaceFormat::setDefaultFormat(viewSurfaceFormat());
    QApplication application(argc, argv);
    // The application has taken the user's locale; numbers in files keep their decimal point.
    std::setlocale(LC_NUMERIC, "C");
    QGuiApplication::setDesktopFileName(QStringLiteral("localhost.sorvane.viewer"));
    QApplication::setWindowIcon(windowIcon());
    int status = 0;
    {
        const EndSignals orderly;
        new_sorvane window;
        window.show();
        // For its drawing helpers only; GLUT never owns a window.
        glutInit(&argc, argv);
        for (int i = 1; i < argc; ++i)
            window.loadEtxyzFile(QFile::decodeName(argv[i]));
        status = QApplication::exec();
    }
    EndSignals::endBySignal(); // only now: the window has finished what it was recording
    return status;
}
} // namespace sorvane
