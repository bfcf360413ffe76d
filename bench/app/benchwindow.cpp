// The real window on a demonstration engagement, for benchmarks.
#include "benchwindow.h"

#include <clocale>
#include <memory>

#include <QApplication>
#include <QFile>
#include <QSurfaceFormat>
#include <QTemporaryDir>
#include <QTest>

#include "aircraftwidget.h"
#include "makedemonstration.h"
#include "new_sorvane.h"
#include "surfaceformat.h"

using namespace sorvane;

namespace {
struct Window {
    int argc = 1;
    char name[6] = "bench";
    char* argv[2] = {name, nullptr};
    std::unique_ptr<QApplication> application;
    std::unique_ptr<new_sorvane> window;
    AircraftWidget* view = nullptr;
    QTemporaryDir folder;

    Window() {
        qputenv("SORVANE_NO_SETTINGS", "1");
        qputenv("PELSAR_DATA", QFile::encodeName(folder.filePath("data/")));
        QSurfaceFormat::setDefaultFormat(viewSurfaceFormat());
        application = std::make_unique<QApplication>(argc, argv);
        std::setlocale(LC_NUMERIC, "C");
        window = std::make_unique<new_sorvane>();
        view = window->findChild<AircraftWidget*>("glWidget");
        window->show();
        if (!makeDemonstration(folder.path().toStdString()))
            window->loadEtxyzFile(folder.filePath("ETXYZ.OUT.turn"));
        QTest::qWait(200);
        window->resize(window->width() + 824 - view->width(), window->height() + 480 - view->height());
        QTest::qWait(200);
    }
};
} // namespace

AircraftWidget& benchView() {
    static auto* const window = new Window; // its application outlives everything
    return *window->view;
}
