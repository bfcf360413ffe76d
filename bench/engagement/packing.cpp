// What packing the samples of an engagement takes, and unpacking them, against copying them.
#include <benchmark/benchmark.h>

#include <cmath>
#include <vector>

#include "packedseries.h"

using namespace sorvane;

namespace {
constexpr int kSamples = 1500;
constexpr int kFlares = 2; // of each sample

// In thousandths, as programs write them.
double written(double value) {
    return std::round(value * 1000.0) / 1000.0;
}

const SampleSeries& flight() {
    static const SampleSeries series = [] {
        SampleSeries made;
        for (int i = 0; i < kSamples; ++i) {
            const double time = 0.01 * i;
            const auto turning = [time](double radius, double start) -> Triple {
                return {
                    written(radius * std::cos(start + time)), written(radius * std::sin(start + time)),
                    written(-700.0 - 30.0 * time)};
            };
            std::vector<Flare> flares;
            for (int id = 1; id <= kFlares; ++id)
                flares.push_back(
                    {.id = id,
                     .position = turning(500.0, id),
                     .brightness = written(10.0 * std::exp(-time)),
                     .halfAxes = turning(3.0, id)});
            made.add(
                {.time = written(time),
                 .flareCount = kFlares,
                 .targetPosition = turning(3000.0, 0.0),
                 .targetAttitude = turning(180.0, 0.5),
                 .threatPosition = turning(2000.0, 1.0),
                 .threatAttitude = turning(90.0, 1.5),
                 .gyro = turning(45.0, 2.0)},
                flares);
        }
        made.putInOrder();
        return made;
    }();
    return series;
}

void pack(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(PackedSeries(flight()).bytes());
    state.counters["bytes"] = static_cast<double>(PackedSeries(flight()).bytes());
}
void unpack(benchmark::State& state) {
    const PackedSeries packed(flight());
    for ([[maybe_unused]] auto _ : state)
        benchmark::DoNotOptimize(packed.unpacked().samples().data());
}
void copy(benchmark::State& state) {
    for ([[maybe_unused]] auto _ : state) {
        const SampleSeries copied = flight(); // NOLINT(performance-unnecessary-copy-initialization): is measured
        benchmark::DoNotOptimize(copied.samples().data());
    }
}
BENCHMARK(pack)->Name("keep 1,500 samples/packed")->Unit(benchmark::kMicrosecond);
BENCHMARK(unpack)->Name("keep 1,500 samples/unpacked")->Unit(benchmark::kMicrosecond);
BENCHMARK(copy)->Name("keep 1,500 samples/copied")->Unit(benchmark::kMicrosecond);
} // namespace
