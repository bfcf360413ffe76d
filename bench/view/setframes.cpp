// Prints what a set of engagements takes: memory, and the time of a frame in each view, with drawing and without it.
//     setframes COUNT SPREAD [GROUND]
// COUNT copies of the demonstration's turning engagement, each moved by up to SPREAD metres; over terrain when GROUND
// is given, its own or, for another number than 0, one of so many posts to a side.
#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <memory>
#include <random>
#include <string>
#include <vector>

#include <QTemporaryDir>

#include "bkgheader.h"
#include "camerasubject.h"
#include "makedemonstration.h"
#include "offscreencontext.h"
#include "overview.h"
#include "projection.h"
#include "scene.h"
#include "skippedgl.h"

using namespace sorvane;

namespace {
constexpr int kWidth = 824;
constexpr int kHeight = 480;
constexpr int kFrames = 5; // each at another time

double residentMegabytes() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);)
        if (line.starts_with("VmRSS:"))
            return std::strtod(line.c_str() + 6, nullptr) / 1024.0;
    return 0.0;
}

double processorMilliseconds() {
    timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return 1e3 * static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_nsec);
}

double wallMilliseconds() {
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    return std::chrono::duration<double, std::milli>(now).count();
}

void move(etxyz& engagement, const std::array<float, 3>& by) {
    const auto shift = [&by](float(&position)[3]) {
        for (std::size_t axis = 0; axis < 3; ++axis)
            position[axis] += by[axis];
    };
    for (keyframe& sample : engagement.keyframes) {
        shift(sample.targetPos);
        shift(sample.threatPos);
        for (flareKeyframe& flare : sample.flares)
            shift(flare.pos);
    }
}

void writeRaster(const std::string& path, int posts, const std::vector<float>& values) {
    BKG_header header{};
    header.headerSignature[0] = 'T';
    header.sizeX = header.sizeY = posts;
    const FileHandle stream = BeginBKGFile(path, header);
    std::fwrite(values.data(), sizeof(float), values.size(), stream.get());
}

// Hilly ground around the engagement, in place of the demonstration's.
void writeGround(const std::string& folder, int posts) {
    constexpr double kSide = 20000.0; // metres
    std::vector<float> values(static_cast<std::size_t>(posts) * static_cast<std::size_t>(posts));
    for (std::size_t i = 0; i < values.size(); ++i)
        values[i] = static_cast<float>((i * 37) % 97);
    writeRaster(folder + "ter0010_n0001.le-ftop", posts, values);
    for (float& value : values)
        value *= 1e-6F;
    writeRaster(folder + "ter0010_w0001_t1500_b0001_n0001.rad", posts, values);
    const std::string cell = std::to_string(kSide / posts);
    const std::string corner = std::to_string(-kSide / 2.0);
    const std::string count = std::to_string(posts);
    std::ofstream(folder + "ter0010.xml")
        << "<terrain><base>ter0010</base><radbase>ter0010_w0001_t1500_b0001</radbase><subs><subterrain n='1'><origin_x>"
        << corner << "</origin_x><origin_y>" << corner << "</origin_y><width>" << count << "</width><height>" << count
        << "</height><vec dir='x'><i>" << cell << "</i><j>0</j></vec><vec dir='y'><i>0</i><j>" << cell
        << "</j></vec></subterrain></subs></terrain>";
    std::filesystem::remove(folder + "ter0010_n0001.cls");
}

struct Set {
    QTemporaryDir folder;
    OffscreenContext context{kWidth, kHeight};
    std::vector<std::unique_ptr<etxyz>> engagements;
    std::vector<SceneEngagement> shown;
    Scene scene;

    Set(int count, double spread, bool withGround, int posts) {
        const std::string demonstration = folder.filePath("demo").toStdString();
        if (context.problem() || makeDemonstration(demonstration))
            std::abort();
        ::setenv("PELSAR_DATA", (demonstration + "/data/").c_str(), 1);
        if (posts > 0)
            writeGround(demonstration + "/data/ter0010/", posts);
        std::mt19937 random(1);
        std::uniform_real_distribution<double> offset(-spread, spread);
        setUpScene();
        for (int i = 0; i < count; ++i) {
            engagements.push_back(std::make_unique<etxyz>());
            etxyz& engagement = *engagements.back();
            engagement.LoadETXYZ(QString::fromStdString(demonstration + "/ETXYZ.OUT.turn"));
            if (spread > 0.0)
                move(
                    engagement, {static_cast<float>(offset(random)), static_cast<float>(offset(random)),
                                 static_cast<float>(offset(random))});
            shown.push_back({newEngagementId(), &engagement});
        }
        std::printf("%.0f MB with the samples", residentMegabytes());
        for (const auto& engagement : engagements) {
            engagement->initTarget();
            engagement->initThreat();
            if (withGround)
                engagement->initTerrain();
            engagement->hardbodiesInitialized = true;
        }
        std::printf(", %.0f MB with the bodies\n", residentMegabytes());
    }

    void draw(ViewMode mode, double time, bool withGround) {
        const SceneOptions options{.showTerrain = withGround, .time = time};
        Camera camera;
        camera.setMode(mode);
        const CameraSubject subject = subjectAt(*engagements.front(), time);
        if (mode == ViewFree) {
            const Viewpoint over = overviewOf(*engagements.front(), kDefaultFieldOfViewDegrees, kWidth, kHeight);
            camera.place(over.eye, over.centre);
        }
        camera.reset(subject);
        camera.follow(subject, subject);
        applyProjection(
            mode == ViewGyro ? double{engagements.front()->fieldOfView} : kDefaultFieldOfViewDegrees, kWidth, kHeight);
        scene.draw(shown, camera, options);
    }

    void measure(ViewMode mode, bool withGround) {
        const auto drawAll = [&](bool isShown) {
            for (int frame = 0; frame < kFrames; ++frame) {
                draw(mode, 14.0 * (frame + 0.5) / kFrames, withGround);
                if (isShown)
                    benchmark::DoNotOptimize(context.picture());
            }
        };
        drawAll(true); // builds what stays
        const double wall = wallMilliseconds();
        const double processor = processorMilliseconds();
        drawAll(true);
        const double wallOfFrame = (wallMilliseconds() - wall) / kFrames;
        const double processorOfFrame = (processorMilliseconds() - processor) / kFrames;
        skipGl(true);
        const double own = processorMilliseconds();
        drawAll(false);
        const double ownOfFrame = (processorMilliseconds() - own) / kFrames;
        const std::uint64_t calls = skipGl(false) / kFrames;
        std::printf(
            "%-7s %8.1f ms a frame, %8.1f ms of processor time, %7.2f ms of them our own, %llu calls, %.0f MB\n",
            nameOf(mode).shown, wallOfFrame, processorOfFrame, ownOfFrame, static_cast<unsigned long long>(calls),
            residentMegabytes());
    }
};
} // namespace

int main(int argc, char** argv) {
    const int count = argc > 1 ? std::atoi(argv[1]) : 100;
    const double spread = argc > 2 ? std::atof(argv[2]) : 0.0;
    const bool withGround = argc > 3;
    Set set(count, spread, withGround, withGround ? std::atoi(argv[3]) : 0);
    for (const ViewModeName& view : kViewModes)
        set.measure(view.mode, withGround);
    return 0;
}
