// Movie writing: its speed beside that of the ffmpeg program on the same frames, and the memory that a long recording
// takes.
#include <benchmark/benchmark.h>

#include <QFile>
#include <QTemporaryDir>
#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <sys/wait.h>
#include <unistd.h>

#include "qvideoencoder.h"

extern "C" {
#include <libavutil/log.h>
}

using namespace sorvane;

namespace {
constexpr int kWidth = 640;
constexpr int kHeight = 480;
constexpr int kFrames = 300;
constexpr unsigned kBitrate = 10000000;
constexpr unsigned kGop = 20;
constexpr unsigned kFps = 30;

// Waves that wander over a grid of fine lines.
QImage movingPicture(int index, int width, int height) {
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        QRgb* row = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < width; ++x) {
            const int wave = static_cast<int>(100.0F * std::sin(0.02F * static_cast<float>(x + 3 * index)));
            const int line = (x + index) % 32 == 0 || (y + index) % 32 == 0 ? 90 : 0;
            row[x] = qRgb(110 + wave, 60 + line + y % 64, 130 - wave);
        }
    }
    return image;
}

// One for all benchmarks, since each object prints the libraries' lines.
QVideoEncoder& encoder() {
    static const auto instance = [] {
        av_log_set_level(AV_LOG_QUIET);
        return std::make_unique<QVideoEncoder>();
    }();
    return *instance;
}

const QTemporaryDir& folder() {
    static const QTemporaryDir instance;
    return instance;
}

// The frames one behind the other, as blue, green, red, unused.
const QString& rawFile() {
    static const QString name = [] {
        QFile file(folder().filePath("frames.raw"));
        if (!file.open(QIODevice::WriteOnly))
            std::abort();
        for (int i = 0; i < kFrames; ++i) {
            const QImage image = movingPicture(i, kWidth, kHeight);
            file.write(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes());
        }
        return file.fileName();
    }();
    return name;
}

void encodeOurs(benchmark::State& state) {
    QImage image(kWidth, kHeight, QImage::Format_RGB32);
    QFile raw(rawFile());
    for (auto iteration : state) {
        raw.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
        encoder().createFile(folder().filePath("ours.avi"), kWidth, kHeight, kBitrate, kGop, kFps);
        while (raw.read(reinterpret_cast<char*>(image.bits()), image.sizeInBytes()) == image.sizeInBytes())
            encoder().encodeImage(image);
        if (encoder().frameCount() != kFrames)
            state.SkipWithError("not every frame was encoded");
        encoder().close();
        raw.close();
    }
    state.counters["frames/s"] = benchmark::Counter(kFrames, benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(encodeOurs)->Name("Encode300Frames/ours")->Unit(benchmark::kMillisecond)->UseRealTime();

// The program's own measure of the time that it took, without its start; 0 when it did not run.
double ffmpegSeconds() {
    char command[1024];
    std::snprintf(
        command, sizeof command,
        "ffmpeg -v info -nostdin -benchmark -y -f rawvideo -pix_fmt bgra -s %dx%d -r %u -i '%s' "
        "-c:v mpeg4 -b:v %u -g %u -threads 10 '%s' 2>&1",
        kWidth, kHeight, kFps, qPrintable(rawFile()), kBitrate, kGop, qPrintable(folder().filePath("theirs.avi")));
    std::FILE* pipe = popen(command, "r");
    if (pipe == nullptr)
        return 0.0;
    double seconds = 0.0;
    char line[1024];
    while (std::fgets(line, sizeof line, pipe) != nullptr)
        if (const char* found = std::strstr(line, "rtime="))
            seconds = std::strtod(found + std::strlen("rtime="), nullptr);
    return pclose(pipe) == 0 ? seconds : 0.0;
}

void encodeFfmpeg(benchmark::State& state) {
    rawFile();
    for (auto iteration : state) {
        const double seconds = ffmpegSeconds();
        if (seconds == 0.0) {
            state.SkipWithError("needs the ffmpeg program (package ffmpeg)");
            return;
        }
        state.SetIterationTime(seconds);
    }
    state.counters["frames/s"] = benchmark::Counter(kFrames, benchmark::Counter::kIsIterationInvariantRate);
}
BENCHMARK(encodeFfmpeg)->Name("Encode300Frames/ffmpeg_program")->Unit(benchmark::kMillisecond)->UseManualTime();

// What a tick of a recording adds to grabbing the view.
void encodeTick(benchmark::State& state) {
    const auto width = static_cast<int>(state.range(0));
    const auto height = static_cast<int>(state.range(1));
    std::array<QImage, 8> images;
    for (std::size_t i = 0; i < images.size(); ++i)
        images[i] = movingPicture(static_cast<int>(i), width, height);
    encoder().createFile(
        folder().filePath("tick.avi"), static_cast<unsigned>(width), static_cast<unsigned>(height), kBitrate, kGop,
        kFps);
    std::size_t next = 0;
    for (auto iteration : state)
        benchmark::DoNotOptimize(encoder().encodeImage(images[next++ % images.size()]));
    encoder().close();
}
BENCHMARK(encodeTick)->Name("EncodeTick")->Args({640, 480})->Args({824, 480})->Unit(benchmark::kMillisecond);

double residentMegabytes() {
    long total = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return static_cast<double>(resident) * static_cast<double>(sysconf(_SC_PAGESIZE)) / 1e6;
}

struct Memory {
    double after50 = 0.0;
    double largestAfterwards = 0.0;
};

Memory recordAndWatch(int frames) {
    std::array<QImage, 60> images; // a second or two of motion, over and over
    for (std::size_t i = 0; i < images.size(); ++i)
        images[i] = movingPicture(static_cast<int>(i), kWidth, kHeight);
    encoder().createFile(folder().filePath("long.avi"), kWidth, kHeight, kBitrate, kGop, kFps);
    Memory memory;
    for (int i = 1; i <= frames; ++i) {
        encoder().encodeImage(images[static_cast<std::size_t>(i) % images.size()]);
        if (i == 50)
            memory.after50 = residentMegabytes();
        else if (i > 50 && i % 50 == 0)
            memory.largestAfterwards = std::max(memory.largestAfterwards, residentMegabytes());
    }
    encoder().close();
    return memory;
}

// In a process of its own, so that what ran before does not count.
void memoryOfALongRecording(benchmark::State& state) {
    encoder();
    folder();
    for (auto iteration : state) {
        int ends[2];
        if (pipe(ends) != 0)
            std::abort();
        std::fflush(nullptr);
        const pid_t child = fork();
        if (child == 0) {
            const Memory memory = recordAndWatch(3000);
            _exit(write(ends[1], &memory, sizeof memory) == sizeof memory ? 0 : 1);
        }
        Memory memory;
        if (read(ends[0], &memory, sizeof memory) != sizeof memory)
            state.SkipWithError("the recording failed");
        close(ends[0]);
        close(ends[1]);
        waitpid(child, nullptr, 0);
        state.counters["MB_after_50"] = memory.after50;
        state.counters["MB_growth_to_3000"] = memory.largestAfterwards - memory.after50;
    }
}
BENCHMARK(memoryOfALongRecording)
    ->Name("MemoryOf3000Frames")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime()
    ->Iterations(1)
    ->Repetitions(1);
} // namespace
