// The runs of a set by the direction that the threat came from.
#include "polarchart.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "summarytext.h"

namespace sorvane {
namespace {
constexpr double kSectorDegrees = 15.0;
constexpr double kHalf = 180.0;
constexpr double kRadius = 232.0;

bool isWholeCircle(const ReportSet& set) {
    return std::ranges::any_of(
        set.runs, [](const ReportRun& run) { return run.aspectDegrees < 0.0 || run.aspectDegrees > kHalf; });
}

// From 0 up to 360.
double aroundTo360(double degrees) {
    const double turned = std::fmod(degrees, 2.0 * kHalf);
    return turned < 0.0 ? turned + 2.0 * kHalf : turned;
}

class PolarPlace {
public:
    PolarPlace(SvgPoint middle, const ShownRange& range)
        : middle_(middle), radius_{range.from, range.to, 0.0, kRadius} {}

    const Scale& radius() const { return radius_; }
    SvgPoint at(double degrees, double value) const {
        const double angle = degrees * std::numbers::pi / kHalf;
        const double far = radius_.at(value);
        return {middle_.x + far * std::sin(angle), middle_.y - far * std::cos(angle)};
    }
    std::vector<SvgPoint> bow(double fromDegrees, double toDegrees, double value) const {
        constexpr double kStep = 3.0;
        std::vector<SvgPoint> points;
        for (double degrees = fromDegrees; degrees < toDegrees + kStep / 2.0; degrees += kStep)
            points.push_back(at(degrees, value));
        return points;
    }

private:
    SvgPoint middle_;
    Scale radius_;
};

void drawRings(
    SvgDrawing& drawing, const PolarPlace& place, const ShownRange& range, double end, const std::string& column) {
    for (const double tick : place.radius().ticks(4)) {
        if (tick <= range.from)
            continue;
        drawing.curve("grid", place.bow(0.0, end, tick));
        const SvgPoint label = place.at(0.0, tick);
        drawing.text("", {label.x - 5.0, label.y + 4.0}, "end", roundValueText(column, tick));
    }
    for (double degrees = 0.0; degrees <= end && degrees < 2.0 * kHalf; degrees += 2.0 * kSectorDegrees) {
        const SvgPoint rim = place.at(degrees, range.to);
        drawing.line("grid", place.at(0.0, range.from), rim);
        const SvgPoint label = place.at(degrees, range.to + (range.to - range.from) * 0.07);
        drawing.text("", {label.x, label.y + 4.0}, "middle", std::to_string(std::lround(degrees)) + "°");
    }
    drawing.curve("axis", place.bow(0.0, end, range.to));
}

// Nose up.
void drawTarget(SvgDrawing& drawing, SvgPoint middle) {
    const SvgPoint outline[] = {
        {middle.x, middle.y - 15.0},      {middle.x + 3.0, middle.y - 3.0},  {middle.x + 13.0, middle.y + 5.0},
        {middle.x + 3.0, middle.y + 4.0}, {middle.x + 5.0, middle.y + 12.0}, {middle.x - 5.0, middle.y + 12.0},
        {middle.x - 3.0, middle.y + 4.0}, {middle.x - 13.0, middle.y + 5.0}, {middle.x - 3.0, middle.y - 3.0}};
    drawing.curve("third", outline, true);
}
} // namespace

std::vector<AspectSector> aspectSectorsOf(const ReportSet& set) {
    const double end = isWholeCircle(set) ? 2.0 * kHalf : kHalf;
    std::vector<AspectSector> sectors;
    for (double from = 0.0; from < end; from += kSectorDegrees)
        sectors.push_back({from, from + kSectorDegrees, {}, {}});
    bool isAny = false;
    for (const ReportRun& run : set.runs) {
        if (std::isnan(run.aspectDegrees))
            continue;
        isAny = true;
        const double degrees = end > kHalf ? aroundTo360(run.aspectDegrees) : run.aspectDegrees;
        const auto number = static_cast<std::size_t>(degrees / kSectorDegrees);
        AspectSector& sector = sectors[std::min(number, sectors.size() - 1)];
        sector.values.push_back(run.value);
        if (!std::isnan(run.decoyed)) {
            ++sector.decoyed.of;
            sector.decoyed.count += run.decoyed != 0.0 ? 1 : 0;
        }
    }
    for (AspectSector& sector : sectors)
        std::ranges::sort(sector.values);
    return isAny ? sectors : std::vector<AspectSector>();
}

ShownRange polarRangeOf(const std::vector<double>& ascending) {
    constexpr double kMost = 0.9;
    constexpr int kRings = 4;
    ShownRange range;
    range.from = std::min(ascending.front(), 0.0);
    const double length = quantileOf(ascending, kMost) - range.from;
    range.step = roundStep(length > 0.0 ? length : 1.0, kRings);
    range.to = range.from + std::max(std::ceil(length / range.step), 1.0) * range.step;
    range.beyond = ascending.end() - std::ranges::upper_bound(ascending, range.to);
    return range;
}

std::string polarChart(const ReportSet& set, const ShownRange& range, const std::vector<AspectSector>& sectors) {
    constexpr double kEdge = 34.0;
    constexpr double kLabels = 66.0; // beside half a circle
    const double end = sectors.back().toDegrees;
    const bool isWhole = end > kHalf;
    const SvgPoint middle{isWhole ? kRadius + kEdge : kLabels, kRadius + kEdge};
    const int width = static_cast<int>(middle.x + kRadius + kEdge);
    SvgDrawing drawing(
        width, static_cast<int>(2.0 * (kRadius + kEdge)),
        columnTitle(set.summary.column) + " by " + columnTitle(set.aspectColumn) + ", 0° ahead of the target");
    const PolarPlace place(middle, range);
    drawRings(drawing, place, range, end, set.summary.column);
    const std::size_t stride = (set.runs.size() + kMostPolarRuns - 1) / kMostPolarRuns;
    drawing.beginGroup("dots");
    for (std::size_t i = 0; i < set.runs.size(); i += stride) {
        const ReportRun& run = set.runs[i];
        if (!std::isnan(run.aspectDegrees))
            drawing.circle(styleOf(run.decoyed), place.at(run.aspectDegrees, std::min(run.value, range.to)), 2.6);
    }
    drawing.endGroup();
    constexpr std::size_t kFewest = 3; // below which a median tells little
    for (const AspectSector& sector : sectors)
        if (const double median = medianOf(sector.values); sector.values.size() >= kFewest && median <= range.to)
            drawing.curve("median", place.bow(sector.fromDegrees, sector.toDegrees, median));
    drawTarget(drawing, middle);
    return drawing.finish();
}
} // namespace sorvane
