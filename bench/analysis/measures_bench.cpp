// Measures of a long engagement as a whole, against asking for one sample after the other.
#include <benchmark/benchmark.h>

#include <cmath>

#include "measure.h"

using namespace sorvane;

namespace {
constexpr int kSamples = 300000;
constexpr int kFlares = 4; // in each sample

const SampleSeries& longSeries() {
    static const SampleSeries series = [] {
        SampleSeries made;
        std::vector<Flare> flares(kFlares);
        for (int i = 0; i < kSamples; ++i) {
            const double t = 0.01 * i;
            Sample sample;
            sample.time = t;
            sample.targetPosition = {250.0 * t, 3000.0 * std::sin(0.01 * t), -1500.0};
            sample.targetAttitude = {10.0, 5.0, std::fmod(t, 180.0)};
            sample.threatPosition = {250.0 * t - 3000.0, 2000.0 * std::cos(0.02 * t), -900.0};
            sample.gyro = {0.0, 10.0 * std::sin(t), 20.0 * std::cos(t)};
            for (int flare = 0; flare < kFlares; ++flare) {
                flares[static_cast<std::size_t>(flare)].id = flare + i / 1000;
                flares[static_cast<std::size_t>(flare)].position = {250.0 * t - 10.0 * flare, 3.0 * flare, -1400.0};
            }
            made.add(sample, flares);
        }
        made.putInOrder();
        return made;
    }();
    return series;
}

const MeasuredEngagement& longEngagement() {
    static const MeasuredEngagement engagement(longSeries(), 20.0F);
    return engagement;
}

void atOnce(benchmark::State& state, const char* name) {
    const Measure& measure = *findMeasure(name);
    for (auto _ : state)
        benchmark::DoNotOptimize(
            measure.isOfMoments() ? valuesOnSamples(longEngagement(), measure)
                                  : valuesOnAllRows(longEngagement(), measure));
}

void oneByOne(benchmark::State& state, const char* name) {
    const MeasuredEngagement& engagement = longEngagement();
    const Measure& measure = *findMeasure(name);
    for (auto _ : state)
        for (const Sample& sample : engagement.samples())
            if (measure.isOfMoments())
                benchmark::DoNotOptimize(valueAt(engagement, measure, sample.time));
            else
                for (std::size_t flare = 0; flare < kFlares; ++flare)
                    benchmark::DoNotOptimize(flareValuesAt(engagement, measure, flare, std::span(&sample.time, 1)));
}

void becomeMeasured(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(MeasuredEngagement(longSeries(), 20.0F).tracks().size());
}

void results(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(resultsOf(longEngagement()).field.target);
}

[[maybe_unused]] const bool isRegistered = [] {
    for (const char* const name :
         {"range", "closing-speed", "threat-azimuth", "target-speed", "target-lateral-acceleration", "off-boresight",
          "nearest", "flare-range", "flare-off-boresight"}) {
        const std::string what = std::string("measure ") + name + " 300,000 samples";
        benchmark::RegisterBenchmark((what + "/ours").c_str(), atOnce, name)->Unit(benchmark::kMillisecond);
        benchmark::RegisterBenchmark((what + "/one by one").c_str(), oneByOne, name)->Unit(benchmark::kMillisecond);
    }
    return true;
}();
} // namespace

BENCHMARK(becomeMeasured)->Name("measures of 300,000 samples, begun/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(results)->Name("results of 300,000 samples/ours")->Unit(benchmark::kMillisecond);
