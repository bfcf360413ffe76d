// Drawings of how the numbers of a set are distributed.
#include "distributioncharts.h"

#include <algorithm>
#include <array>
#include <cmath>

#include "shortestnumber.h"
#include "summarytext.h"

namespace sorvane {
namespace {
constexpr int kWidth = 560;
constexpr int kHeight = 330;
constexpr double kLeft = 52.0;
constexpr double kRight = 548.0;
constexpr double kTop = 14.0;
constexpr double kBottom = 276.0;

std::string tickText(double value) {
    constexpr double kNoise = 1e9; // of multiples of a tenth
    return shortestText(std::round(value * kNoise) / kNoise);
}

// "miss distance (m)"
std::string axisTitle(const std::string& column) {
    const std::string text = columnValueText(column, 0.0);
    const std::size_t blank = text.find(' ');
    return columnTitle(column) + (blank == std::string::npos ? "" : " (" + text.substr(blank + 1) + ")");
}

void drawAxes(SvgDrawing& drawing, const Scale& x, const Scale& y, const std::string& title, bool isPercent) {
    constexpr int kParts = 6;
    constexpr double kPercent = 100.0;
    for (const double tick : y.ticks(kParts - 1)) {
        drawing.line("grid", {kLeft, y.at(tick)}, {kRight, y.at(tick)});
        const std::string text = isPercent ? tickText(tick * kPercent) + " %" : tickText(tick);
        drawing.text("", {kLeft - 6.0, y.at(tick) + 4.0}, "end", text);
    }
    for (const double tick : x.ticks(kParts)) {
        drawing.line("axis", {x.at(tick), kBottom}, {x.at(tick), kBottom + 5.0});
        drawing.text("", {x.at(tick), kBottom + 19.0}, "middle", tickText(tick));
    }
    drawing.line("axis", {kLeft, kBottom}, {kRight, kBottom});
    drawing.text("strong", {(kLeft + kRight) / 2.0, kBottom + 42.0}, "middle", title);
}

Scale horizontal(const ShownRange& range) {
    return {range.from, range.to, kLeft, kRight};
}
} // namespace

ShownRange shownRangeOf(const std::vector<double>& ascending) {
    constexpr double kMostOf = 0.98;
    constexpr double kFar = 2.0; // times as far as most
    const double least = ascending.front();
    const double most = quantileOf(ascending, kMostOf);
    const double start = least >= 0.0 ? 0.0 : least;
    const double greatest = ascending.back() - start > kFar * (most - start) && most > start ? most : ascending.back();
    const double length = greatest > start ? greatest - start : 1.0;
    // Freedman and Diaconis, "On the Histogram as a Density Estimator" (1981): twice the middle half's width by the
    // cube root of the number.
    const double half = quantileOf(ascending, 0.75) - quantileOf(ascending, 0.25);
    const double width = 2.0 * half / std::cbrt(static_cast<double>(ascending.size()));
    ShownRange range;
    constexpr double kFewestParts = 5.0;
    constexpr double kMostParts = 60.0;
    range.step =
        roundBelow(std::clamp(width > 0.0 ? width : length / 10.0, length / kMostParts, length / kFewestParts));
    range.from = std::floor(start / range.step) * range.step;
    range.to = std::max(std::ceil(greatest / range.step), range.from / range.step + 1.0) * range.step;
    range.beyond = ascending.end() - std::ranges::upper_bound(ascending, range.to);
    return range;
}

std::string decoyedKey(const std::vector<ReportRun>& runs) {
    std::string key;
    for (const auto& [style, name] : std::to_array<std::pair<std::string, const char*>>(
             {{"first", "not decoyed"}, {"second", "decoyed"}, {"third", "unknown whether decoyed"}}))
        if (std::ranges::any_of(
                runs, [&wanted = style](const ReportRun& run) { return wanted == styleOf(run.decoyed); }))
            key += " <span class=\"named\"><span class=\"key " + style + "\"></span>" + name + "</span>";
    return key;
}

std::string histogramOf(const ReportSet& set, const ShownRange& range) {
    const auto count = static_cast<std::size_t>(std::lround((range.to - range.from) / range.step));
    constexpr const char* kStyles[] = {"first", "second", "third"};
    std::vector<std::array<std::int64_t, std::size(kStyles)>> bars(count);
    for (const ReportRun& run : set.runs) {
        if (run.value > range.to)
            continue;
        const auto bar = static_cast<std::size_t>(std::max((run.value - range.from) / range.step, 0.0));
        const auto style = std::ranges::find(kStyles, std::string_view(styleOf(run.decoyed))) - std::begin(kStyles);
        ++bars[std::min(bar, count - 1)][static_cast<std::size_t>(style)]; // the end belongs to the last one
    }
    std::int64_t highest = 1;
    for (const auto& bar : bars)
        highest = std::max(highest, bar[0] + bar[1] + bar[2]);
    const std::string& column = set.summary.column;
    SvgDrawing drawing(kWidth, kHeight, "Histogram: number of runs by " + columnTitle(column));
    const Scale x = horizontal(range);
    const Scale y{0.0, static_cast<double>(highest) * 1.05, kBottom, kTop};
    drawAxes(drawing, x, y, axisTitle(column), false);
    for (std::size_t i = 0; i < count; ++i) {
        const double from = range.from + static_cast<double>(i) * range.step;
        const double to = from + range.step;
        std::int64_t below = 0;
        for (std::size_t style = 0; style < std::size(kStyles); ++style) {
            const std::int64_t runs = bars[i][style];
            if (runs == 0)
                continue;
            const double top = y.at(static_cast<double>(below + runs));
            std::string filter = column;
            filter.append(">=").append(tickText(from)).append(" ").append(column);
            filter.append(i + 1 == count ? "<=" : "<").append(tickText(to));
            drawing.rectangle(
                (std::string("bar ") + kStyles[style]).c_str(), {x.at(from) + 0.5, top}, x.at(to) - x.at(from) - 1.0,
                y.at(static_cast<double>(below)) - top, " data-filter=\"" + escaped(filter) + '"',
                std::to_string(runs) + ": " + tickText(from) + " to " + roundValueText(column, to));
            below += runs;
        }
    }
    return drawing.finish();
}

std::string cumulativeCurveOf(const ReportSet& set, const ShownRange& range) {
    const std::vector<double>& values = set.summary.all.values;
    const double band = cumulativeBand(values.size());
    const std::string& column = set.summary.column;
    SvgDrawing drawing(kWidth, kHeight, "Cumulative curve: share of runs up to a " + columnTitle(column));
    const Scale x = horizontal(range);
    const Scale y{0.0, 1.0, kBottom, kTop};
    drawAxes(drawing, x, y, axisTitle(column), true);
    std::vector<SvgPoint> curve;
    std::vector<SvgPoint> above;
    std::vector<SvgPoint> below;
    constexpr int kColumns = 496; // a point for each pixel
    for (int i = 0; i <= kColumns; ++i) {
        const double value = range.from + (range.to - range.from) * i / kColumns;
        const double share = static_cast<double>(std::ranges::upper_bound(values, value) - values.begin()) /
                             static_cast<double>(values.size());
        const double place = x.at(value);
        const auto add = [&](std::vector<SvgPoint>& points, double height) {
            const double level = y.at(std::clamp(height, 0.0, 1.0));
            if (!points.empty() && points.back().y != level)
                points.push_back({place, points.back().y}); // a step
            if (points.empty() || points.back().y != level || i == kColumns)
                points.push_back({place, level});
        };
        add(curve, share);
        add(above, share + band);
        add(below, share - band);
    }
    above.insert(above.end(), below.rbegin(), below.rend());
    drawing.curve("band", above, true);
    for (const double distance : set.question.distances)
        if (distance > range.from && distance < range.to)
            drawing.line("mark", {x.at(distance), kTop}, {x.at(distance), kBottom});
    drawing.curve("curve", curve);
    return drawing.finish();
}

std::string sharesChart(const std::vector<NamedShare>& shares) {
    constexpr double kRow = 34.0;
    constexpr double kFirst = 26.0;
    constexpr double kNames = 118.0;
    constexpr double kEnd = 384.0;
    const double bottom = kFirst + kRow * static_cast<double>(shares.size()) - 10.0;
    SvgDrawing drawing(kWidth, static_cast<int>(bottom) + 28, "Shares of runs with their 95 % intervals");
    const Scale x{0.0, 1.0, kNames, kEnd};
    for (const double tick : {0.0, 0.25, 0.5, 0.75, 1.0}) {
        drawing.line("grid", {x.at(tick), 8.0}, {x.at(tick), bottom});
        drawing.text("", {x.at(tick), bottom + 18.0}, "middle", tickText(tick * 100.0) + " %");
    }
    double y = kFirst;
    for (const NamedShare& named : shares) {
        drawing.text("strong", {kNames - 12.0, y + 4.0}, "end", named.name);
        if (named.share.of > 0) {
            const Interval interval = wilsonInterval(named.share);
            drawing.line("interval", {x.at(interval.low), y}, {x.at(interval.high), y});
            drawing.circle("first", {x.at(named.share.value()), y}, 5.0);
        }
        drawing.text("strong", {kEnd + 14.0, y + 4.0}, "start", percentText(named.share.value()));
        drawing.text(
            "", {kEnd + 72.0, y + 4.0}, "start",
            named.share.of > 0 ? percentIntervalText(wilsonInterval(named.share)) : "unknown");
        y += kRow;
    }
    return drawing.finish();
}

std::string shareMark(const Share& share) {
    if (share.of == 0)
        return {};
    SvgDrawing drawing(92, 14, percentIntervalText(wilsonInterval(share)));
    const Scale x{0.0, 1.0, 6.0, 86.0};
    const double middle = 7.0;
    const Interval interval = wilsonInterval(share);
    drawing.line("grid", {x.at(0.0), middle}, {x.at(1.0), middle});
    drawing.line("interval", {x.at(interval.low), middle}, {x.at(interval.high), middle});
    drawing.circle("first", {x.at(share.value()), middle}, 3.5);
    return drawing.finish();
}
} // namespace sorvane
