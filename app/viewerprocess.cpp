// The life of the viewer's process, from command line to exit code.
#include "viewerprocess.h"

#include <clocale>
#include <cstdio>
#include <cstring>
#include <optional>

#include <GL/freeglut.h>

#include <QApplication>
#include <QFile>
#include <QSurfaceFormat>

#include "displaycheck.h"
#include "endsignals.h"
#include "fileloading.h"
#include "new_sorvane.h"
#include "surfaceformat.h"
#include "windowicon.h"

namespace sorvane {
namespace {
constexpr const char* kHelp =
    "Usage: new_sorvane [FILE ...]\n"
    "Shows missile engagements from trajectory files.\n"
    "\n"
    "  --help      print this and end\n"
    "  --version   print the version and end\n"
    "\n"
    "In the window, F1 lists the keys. sorvane(1) describes and checks trajectories and draws them without a window.\n";
constexpr const char* kVersion = "new_sorvane " SORVANE_VERSION "\n";

// What an argument asks to be printed instead of showing a window; null without one.
const char* answerOf(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--help") == 0)
            return kHelp;
        if (std::strcmp(argv[i], "--version") == 0)
            return kVersion;
    }
    return nullptr;
}
} // namespace

int runViewer(int argc, char** argv) {
    if (const char* const text = answerOf(argc, argv)) {
        std::fputs(text, stdout);
        return 0;
    }
    QSurfaceFormat::setDefaultFormat(viewSurfaceFormat());
    std::optional<DisplayCheck> check(std::in_place);
    QApplication application(argc, argv);
    check.reset();
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
        QStringList paths;
        for (int i = 1; i < argc; ++i)
            paths << QFile::decodeName(argv[i]);
        loadFiles(window, paths);
        if (window.isVisible() && !EndSignals::hasCome())
            status = QApplication::exec();
    }
    EndSignals::endBySignal(); // only now: the window has finished what it was recording
    return status;
}
} // namespace sorvane
