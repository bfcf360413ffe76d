// An engagement for tests of plots.
#pragma once

#include <algorithm>
#include <utility>
#include <vector>

#include "measurecurves.h"

namespace sorvane {
// The threat passes a target that stands 40 units beside its path at 5 s, with 300 units a second, for 10 s with 10
// samples a second; the gyro looks along x, in a field of 4°. Flares burn beside the path in the samples that are named
// for each identifier.
class PlottedPass {
public:
    using Flares = std::vector<std::pair<int, std::vector<std::size_t>>>;

    explicit PlottedPass(const Flares& flares = {}) : series(samplesWith(flares)), measured(series, 4.0F) {}

    PlottedEngagement plotted(const char* name = "pass") const {
        return {QString::fromLatin1(name), &measured, {{2.0, QStringLiteral("Flare 7")}}};
    }

    const SampleSeries series;
    const MeasuredEngagement measured;

private:
    static SampleSeries samplesWith(const Flares& flares) {
        SampleSeries series;
        for (std::size_t i = 0; i <= 100; ++i) {
            Sample sample;
            sample.time = static_cast<double>(i) / 10.0;
            sample.targetPosition = {0.0, 40.0, -1000.0};
            sample.threatPosition = {300.0 * (sample.time - 5.0), 0.0, -1000.0};
            std::vector<Flare> burning;
            for (const auto& [id, samples] : flares)
                if (std::ranges::find(samples, i) != samples.end()) {
                    const double band = id + static_cast<double>(i);
                    burning.push_back(
                        {.id = id, .position = {100.0, 0.0, -1000.0}, .halfAxes = {band, band, band}, .bandCount = 1});
                }
            series.add(sample, burning);
        }
        series.putInOrder();
        return series;
    }
};

// Numbers of samples from the first to before the last.
inline std::vector<std::size_t> samplesFrom(std::size_t first, std::size_t last) {
    std::vector<std::size_t> numbers;
    for (std::size_t i = first; i < last; ++i)
        numbers.push_back(i);
    return numbers;
}
} // namespace sorvane
