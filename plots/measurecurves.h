// Makes curves of the measures of engagements.
#pragma once

#include <memory>
#include <span>
#include <vector>

#include "measure.h"
#include "plotdocument.h"

namespace sorvane {
// What becomes time 0 of each engagement; one without it stays where it is.
enum class PlotAlignment { Start, FirstFlare, ClosestApproach };

struct PlottedEngagement {
    QString name;
    const MeasuredEngagement* measured = nullptr;
    std::vector<EngagementEvent> events;
    std::shared_ptr<const MeasuredEngagement> holder{}; // of what `measured` points to, unless others hold it
};

// What is plotted unless something else is asked for: range, closing speed, off-boresight angles, intensity of flares.
std::vector<const Measure*> usualPlotMeasures();

// Whether a measure has values over time, so that it can be plotted.
bool isPlottable(const Measure& measure);

// As they are worked out, or as tables write them, which takes longer.
enum class CurveDigits { All, Written };

// A strip for each measure. With the off-boresight angle of the target go those of the flares and half of the field.
// The first engagement's events are the marks; the lines of the others are dashed.
PlotDocument plotOf(
    std::span<const PlottedEngagement> engagements, std::span<const Measure* const> measures,
    PlotAlignment alignment = PlotAlignment::Start, CurveDigits digits = CurveDigits::All);
} // namespace sorvane
