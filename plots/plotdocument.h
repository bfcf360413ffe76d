// What a plot shows, before it is drawn: strips of curves over one time axis.
#pragma once

#include <cstddef>
#include <limits>
#include <span>
#include <vector>

#include <QString>

#include "engagementfacts.h"

namespace sorvane {
struct Measure;

struct TimeRange {
    double begin = 0.0; // seconds
    double end = 0.0;

    bool operator==(const TimeRange&) const = default;
};

// A point of a curve; a value that isn't finite is a gap.
struct PlotPoint {
    double time = 0.0; // seconds
    double value = 0.0;
};

// One or several lines that share a name and a look, each in order of time.
struct PlotCurve {
    QString name{};                  // in the legend
    std::vector<PlotPoint> points{}; // of all lines, one after the other
    std::vector<std::size_t> ends{}; // of the lines among the points
    int colour = 0;                  // a number that the theme has a colour for; that of frames below 0
    bool isDashed = false;

    std::size_t lineCount() const { return ends.size(); }
    std::span<const PlotPoint> line(std::size_t number) const {
        const std::size_t begin = number == 0 ? 0 : ends[number - 1];
        return std::span(points).subspan(begin, ends[number] - begin);
    }
};

// The curves over one axis of values.
struct PlotStrip {
    const Measure* measure = nullptr; // which chose the strip
    QString title;                    // "off-boresight"
    QString unit;                     // "°"; empty without one
    std::vector<PlotCurve> curves;
    double greatest = std::numeric_limits<double>::infinity(); // value that the axis goes up to
};

struct PlotDocument {
    QString title;
    QString timeTitle; // "time (s)"
    std::vector<PlotStrip> strips;
    std::vector<EngagementEvent> marks; // at times of the axis
    TimeRange times;                    // of all there is to see
    double zero = 0.0;                  // the first engagement's time at the axis' 0
};
} // namespace sorvane
