// Prints how long the window is held, and how much memory the process takes, from Show Terrain to the first picture of
// a terrain of POSTS to a side with all its companions, and what a frame of it costs then.
//     terrainshow [POSTS] [blocking]
#include <algorithm>
#include <chrono>
#include <clocale>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include <GL/freeglut.h>

#include <QAction>
#include <QApplication>
#include <QLabel>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include "aircraftwidget.h"
#include "bkgheader.h"
#include "framegrab.h"
#include "loadnormfile.h"
#include "makedemonstration.h"
#include "new_sorvane.h"
#include "surfaceformat.h"

using namespace sorvane;

namespace {
using Clock = std::chrono::steady_clock;

double millisecondsSince(Clock::time_point start) {
    return std::chrono::duration<double, std::milli>(Clock::now() - start).count();
}

double peakMegabytes() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmHWM:"))
            return std::strtod(line.c_str() + 6, nullptr) / 1024.0;
    return 0.0;
}

template <class Value>
void writeRaster(const std::string& path, int posts, const char* signature, const std::vector<Value>& values) {
    BKG_header header{};
    std::memcpy(header.headerSignature, signature, std::strlen(signature));
    header.sizeX = header.sizeY = posts;
    const FileHandle stream = BeginBKGFile(path, header);
    std::fwrite(values.data(), sizeof(Value), values.size(), stream.get());
}

// Hilly ground of 20 km around the engagement, in place of the demonstration's, whose tables it keeps.
void writeGround(const std::string& folder, int posts) {
    const auto count = static_cast<std::size_t>(posts) * static_cast<std::size_t>(posts);
    std::vector<float> values(count);
    std::vector<Vertex3> normals(count, Vertex3{0.0F, 0.0F, 1.0F});
    std::vector<unsigned char> classes(count);
    for (std::size_t i = 0; i < count; ++i) {
        values[i] = static_cast<float>((i * 37) % 97);
        classes[i] = static_cast<unsigned char>(1 + i % 3);
    }
    writeRaster(folder + "ter0010_n0001.le-ftop", posts, "T", values);
    writeRaster(folder + "ter0010_n0001.norm", posts, "NORM", normals);
    writeRaster(folder + "ter0010_n0001.cls", posts, "CLS", classes);
    for (float& value : values)
        value *= 1e-6F;
    writeRaster(folder + "ter0010_w0001_t1500_b0001_n0001.rad", posts, "RAD", values);
    const std::string cell = std::to_string(20000.0 / posts);
    const std::string size = std::to_string(posts);
    std::ofstream(folder + "ter0010.xml")
        << "<terrain><base>ter0010</base><radbase>ter0010_w0001_t1500_b0001</radbase><subs><subterrain n='1'>"
           "<origin_x>-10000</origin_x><origin_y>-10000</origin_y><width>"
        << size << "</width><height>" << size << "</height><vec dir='x'><i>" << cell
        << "</i><j>0</j></vec><vec dir='y'><i>0</i><j>" << cell << "</j></vec></subterrain></subs></terrain>";
}

// The longest time between two ticks of a timer of 5 ms in the window's own thread.
class HeldWatch : public QTimer {
public:
    HeldWatch() {
        setTimerType(Qt::PreciseTimer);
        connect(this, &QTimer::timeout, this, [this] {
            longest = std::max(longest, millisecondsSince(last_));
            last_ = Clock::now();
        });
        start(5);
    }
    void restart() {
        longest = 0.0;
        last_ = Clock::now();
    }
    double longest = 0.0;

private:
    Clock::time_point last_ = Clock::now();
};
} // namespace

int main(int argc, char** argv) {
    const int posts = argc > 1 ? std::atoi(argv[1]) : 3601;
    const bool isBlocking = argc > 2;
    QSurfaceFormat::setDefaultFormat(viewSurfaceFormat());
    qputenv("SORVANE_NO_SETTINGS", "1");
    QApplication application(argc, argv);
    std::setlocale(LC_NUMERIC, "C");
    glutInit(&argc, argv);
    const QTemporaryDir folder;
    const std::string demonstration = folder.filePath("demo").toStdString();
    if (makeDemonstration(demonstration))
        return 1;
    ::setenv("PELSAR_DATA", (demonstration + "/data/").c_str(), 1);
    writeGround(demonstration + "/data/ter0010/", posts);
    new_sorvane window;
    window.show();
    auto& view = *window.findChild<AircraftWidget*>("glWidget");
    auto& notice = *window.findChild<QLabel*>("terrainNotice");
    view.setTerrainComesLater(!isBlocking);
    window.loadEtxyzFile(QString::fromStdString(demonstration + "/ETXYZ.OUT.turn"));
    QTest::qWait(500);
    std::ofstream("/proc/self/clear_refs") << "5"; // the peak starts anew
    std::printf("%.0f MB before\n", peakMegabytes());
    HeldWatch held;
    const auto start = Clock::now();
    window.findChild<QAction*>("actionShow_Terrain")->setChecked(true);
    double untilLoaded = 0.0;
    double heldLoading = 0.0;
    if (!isBlocking) {
        if (!QTest::qWaitFor([&] { return notice.isVisible(); }, 20000) ||
            !QTest::qWaitFor([&] { return !notice.isVisible(); }, 120000)) {
            std::fprintf(stderr, "the terrain was not loaded in two minutes\n");
            return 1;
        }
        untilLoaded = millisecondsSince(start);
        heldLoading = held.longest;
    }
    held.restart();
    QTest::qWait(20);
    QTest::qWait(20);
    std::printf(
        "loaded after %.0f ms, the window held for %.0f ms at most; %.0f ms for the first picture; %.0f MB\n",
        untilLoaded, heldLoading, held.longest, peakMegabytes());
    for (int frame = 0; frame < 3; ++frame) {
        const auto drawn = Clock::now();
        grabFrame(view);
        std::printf("a frame: %.0f ms\n", millisecondsSince(drawn));
    }
    return 0;
}
