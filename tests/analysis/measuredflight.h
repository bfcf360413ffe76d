// Engagements for tests of measures, from what is given of their samples.
#pragma once

#include <cmath>
#include <string>
#include <vector>

#include "measure.h"

namespace sorvane {
// A series that is measured, at hand for as long as its measures.
class MeasuredFlight {
public:
    explicit MeasuredFlight(
        const std::vector<FlaredSample>& samples, float fieldOfViewDegrees = 20.0F,
        LengthUnit unit = LengthUnit::Unstated)
        : series_(seriesOf(samples)), engagement(series_, fieldOfViewDegrees, unit) {}
    MeasuredFlight(const MeasuredFlight&) = delete;
    MeasuredFlight& operator=(const MeasuredFlight&) = delete;

    double at(const char* measure, double time) const { return valueAt(engagement, *findMeasure(measure), time); }
    double on(const char* measure, std::size_t sample) const {
        return valuesOnSamples(engagement, *findMeasure(measure)).at(sample);
    }
    double ofFlare(const char* measure, std::size_t track, double time) const {
        return flareValuesAt(engagement, *findMeasure(measure), track, std::span(&time, 1)).front();
    }
    double result(const char* measure) const { return valueOf(resultsOf(engagement), *findMeasure(measure)); }

private:
    static SampleSeries seriesOf(const std::vector<FlaredSample>& samples) {
        SampleSeries series;
        for (const FlaredSample& sample : samples)
            series.add(sample, sample.flares);
        series.putInOrder();
        return series;
    }

    SampleSeries series_;

public:
    MeasuredEngagement engagement;
};

inline FlaredSample sampleAt(double time, const Triple& target, const Triple& threat) {
    FlaredSample sample;
    sample.time = time;
    sample.targetPosition = target;
    sample.threatPosition = threat;
    return sample;
}

inline Flare flareAt(int id, const Triple& position) {
    Flare flare;
    flare.id = id;
    flare.position = position;
    return flare;
}
} // namespace sorvane
