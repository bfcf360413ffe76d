// Uses the real window at random for a while and watches its memory. usage: soak_viewer SECONDS SEED
#include <algorithm>
#include <clocale>
#include <cstdio>
#include <cstdlib>

#include <unistd.h>

#include <GL/freeglut.h>

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QSurfaceFormat>
#include <QTemporaryDir>
#include <QTest>

#include "makedemonstration.h"
#include "new_sorvane.h"
#include "randomuser.h"
#include "sanitized.h"
#include "surfaceformat.h"

using namespace sorvane;

namespace {
constexpr double kMegabyte = 1.0e6;
constexpr qint64 kWarmUp = 60000; // milliseconds until caches and pools have their size
constexpr double kAllowedGrowth = 1.1;

double residentMegabytes() {
    long long pages = 0;
    if (std::FILE* const file = std::fopen("/proc/self/statm", "r")) {
        if (std::fscanf(file, "%*d %lld", &pages) != 1)
            pages = 0;
        std::fclose(file);
    }
    return static_cast<double>(pages) * static_cast<double>(::sysconf(_SC_PAGESIZE)) / kMegabyte;
}

// Whether the memory stayed flat, once warm.
bool soak(RandomUser& user, qint64 milliseconds) {
    QElapsedTimer clock;
    clock.start();
    long actions = 0;
    double warm = 0.0;
    double peak = 0.0;
    for (qint64 nextReport = 10000; clock.elapsed() < milliseconds;) {
        user.act();
        ++actions;
        if (clock.elapsed() < nextReport)
            continue;
        const double resident = residentMegabytes();
        std::fprintf(stderr, "%4lld s: %6ld actions, %6.1f MB\n", clock.elapsed() / 1000, actions, resident);
        nextReport += 10000;
        if (clock.elapsed() < kWarmUp)
            warm = std::max(warm, resident);
        else
            peak = std::max(peak, resident);
    }
    const bool isMemoryKept = SORVANE_IS_SANITIZED; // for a while after it is freed
    if (!isMemoryKept && peak > kAllowedGrowth * warm) {
        std::fprintf(stderr, "memory grew from %.1f MB to %.1f MB\n", warm, peak);
        return false;
    }
    return true;
}
} // namespace

int main(int argc, char** argv) {
    QSurfaceFormat::setDefaultFormat(viewSurfaceFormat());
    qputenv("SORVANE_NO_SETTINGS", "1");
    QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    if (argc != 3) {
        std::fprintf(stderr, "usage: soak_viewer SECONDS SEED\n");
        return 2;
    }
    glutInit(&argc, argv);
    const QTemporaryDir folder;
    if (const auto failure = sorvane::makeDemonstration(folder.path().toStdString())) {
        std::fprintf(stderr, "%s\n", failure->c_str());
        return 2;
    }
    qputenv("PELSAR_DATA", (folder.path() + "/data/").toUtf8());
    new_sorvane window;
    window.show();
    QStringList trajectories;
    for (const QString& name : QDir(folder.path()).entryList({"ETXYZ.OUT.*"}, QDir::Files)) {
        trajectories << folder.filePath(name);
        window.loadEtxyzFile(trajectories.back());
    }
    RandomUser user(window, trajectories, folder.path(), static_cast<unsigned>(std::atoi(argv[2])));
    return soak(user, std::atoll(argv[1]) * 1000) ? 0 : 1;
}
