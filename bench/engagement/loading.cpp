// Loading a long trajectory: time against the obvious way, a bare scan and the decompressor alone; peak memory.
#include <benchmark/benchmark.h>

#include <fcntl.h>
#include <memory>
#include <unistd.h>

#include <QFile>
#include <QFileInfo>
#include <QProcess>

#include <fast_float/fast_float.h>

#include "etxyz.h"
#include "loadbench.h"
#include "longtrajectory.h"

using namespace sorvane;

namespace {
constexpr int kHeaderLines = 12;

void loadPlain(benchmark::State& state) {
    benchmarkLoad(state, longTrajectory());
}

class ObviousReader {
public:
    explicit ObviousReader(const QString& path) : file_(path) {
        if (!file_.open(QIODevice::ReadOnly | QIODevice::Text))
            return;
        for (int i = 0; i < kHeaderLines; ++i)
            file_.readLine();
        while (!file_.atEnd())
            readSample();
    }

    QMap<double, keyframe> samples;

private:
    QStringList words() { return QString::fromUtf8(file_.readLine()).simplified().split(QLatin1Char(' ')); }

    static void take(const QStringList& words, int from, float (&floats)[3]) {
        for (int i = 0; i < 3; ++i)
            floats[i] = static_cast<float>(words.value(from + i).toDouble());
    }

    void readSample() {
        keyframe sample;
        QStringList line = words();
        sample.time = line.value(0).toDouble();
        sample.flareCount = line.value(1).toInt();
        take(line, 2, sample.targetPos);
        take(line, 5, sample.targetAtt);
        line = words();
        take(line, 0, sample.threatPos);
        take(line, 3, sample.threatAtt);
        line = words();
        take(line, 2, sample.gyro);
        for (int i = 0; i < sample.flareCount; ++i) {
            line = words();
            flareKeyframe flare;
            flare.id = line.value(0).toInt();
            flare.kind = line.value(1).toInt();
            take(line, 2, flare.pos);
            flare.scalar = static_cast<float>(line.value(5).toDouble());
            take(line, 6, flare.values);
            take(line, 9, flare.intensity);
            flare.bandCount = line.value(12).toInt();
            sample.flares.append(flare);
        }
        samples[sample.time] = sample;
    }

    QFile file_;
};

void loadObviously(benchmark::State& state) {
    const QString path = longTrajectory();
    for (auto _ : state) {
        auto reader = std::make_unique<ObviousReader>(path);
        state.PauseTiming();
        if (reader->samples.size() != kSampleCount)
            state.SkipWithError("not all samples were read");
        reader.reset();
        giveMemoryBack();
        state.ResumeTiming();
    }
    state.SetBytesProcessed(state.iterations() * QFileInfo(path).size());
}

// Every number of the file through fast_float, from pieces that are read into one buffer; keeps nothing.
void bareScan(benchmark::State& state) {
    const QByteArray path = longTrajectory().toUtf8();
    constexpr std::size_t kPiece = std::size_t{1} << 20;
    const auto buffer = std::make_unique_for_overwrite<char[]>(2 * kPiece);
    for (auto _ : state) {
        const int file = ::open(path.constData(), O_RDONLY | O_CLOEXEC);
        std::size_t kept = 0;
        std::int64_t numbers = 0;
        double sum = 0.0;
        while (true) {
            const ssize_t length = ::read(file, buffer.get() + kept, kPiece);
            if (length <= 0)
                break;
            const char* const end = buffer.get() + kept + length;
            const char* whole = end; // up to the last line end
            while (whole != buffer.get() && whole[-1] != '\n')
                --whole;
            for (const char* at = buffer.get(); at != whole;) {
                double value = 0.0;
                const auto parsed = fast_float::from_chars(at, whole, value);
                if (parsed.ec == std::errc()) {
                    sum += value;
                    ++numbers;
                    at = parsed.ptr;
                } else {
                    ++at; // a blank, a line end, a letter of the header
                }
                while (at != whole && (*at == ' ' || *at == '\n'))
                    ++at;
            }
            kept = static_cast<std::size_t>(end - whole);
            std::copy(whole, end, buffer.get());
        }
        ::close(file);
        benchmark::DoNotOptimize(sum);
        if (numbers < std::int64_t{71} * kSampleCount)
            state.SkipWithError("not all numbers were read");
    }
    state.SetBytesProcessed(state.iterations() * QFileInfo(longTrajectory()).size());
}

void loadCompressed(benchmark::State& state) {
    benchmarkLoad(state, compressedTrajectory());
}

void uncompressAlone(benchmark::State& state) {
    const QString path = compressedTrajectory();
    for (auto _ : state) {
        QProcess process;
        process.setStandardOutputFile(QProcess::nullDevice());
        process.start(QStringLiteral("uncompress"), {QStringLiteral("-c"), path});
        if (!process.waitForFinished(-1) || process.exitCode() != 0)
            state.SkipWithError("uncompress failed");
    }
}

qint64 peakBytesOf(const QStringList& arguments) {
    QProcess process;
    process.start(QStringLiteral(SORVANE_LOADONCE), arguments);
    if (!process.waitForFinished(-1) || process.exitCode() != 0)
        return -1;
    return process.readAllStandardOutput().trimmed().toLongLong();
}

// Peak memory of a process that loads the file above that of one that loads nothing, as a multiple of the file's size.
void peakMemory(benchmark::State& state) {
    const QString path = longTrajectory();
    for (auto _ : state) {
        const qint64 empty = peakBytesOf({});
        const qint64 loaded = peakBytesOf({path});
        if (empty < 0 || loaded < 0)
            state.SkipWithError("the loading process failed");
        state.counters["file_MB"] = static_cast<double>(QFileInfo(path).size()) * 1.0e-6;
        state.counters["peak_MB"] = static_cast<double>(loaded - empty) * 1.0e-6;
        state.counters["peak/file"] = static_cast<double>(loaded - empty) / static_cast<double>(QFileInfo(path).size());
    }
}
} // namespace

BENCHMARK(loadPlain)->Name("load 150 MB/ours")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(bareScan)->Name("load 150 MB/bare scan")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(loadObviously)->Name("load 150 MB/obvious way")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(loadCompressed)->Name("load .Z/ours")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(uncompressAlone)->Name("load .Z/uncompress alone")->Unit(benchmark::kMillisecond)->UseRealTime();
BENCHMARK(peakMemory)->Name("peak memory of the load")->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);
