// Leaves out the points of a line that can't be told apart on the screen.
#include "thinning.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace sorvane {
namespace {
constexpr std::size_t kPointsPerColumn = 4;

// What is kept of the points of a column.
class Column {
public:
    explicit Column(std::vector<PlotPoint>& kept) : kept_(kept) {}

    void add(const PlotPoint& point) {
        if (first_ == nullptr)
            first_ = least_ = greatest_ = &point;
        if (point.value < least_->value)
            least_ = &point;
        if (point.value > greatest_->value)
            greatest_ = &point;
        last_ = &point;
    }
    void close() {
        if (first_ == nullptr)
            return;
        // Points of one array, so that their addresses are in order of time.
        std::array<const PlotPoint*, kPointsPerColumn> points = {first_, least_, greatest_, last_};
        std::ranges::sort(points);
        const PlotPoint* before = nullptr;
        for (const PlotPoint* const point : points)
            if (point != before)
                kept_.push_back(*(before = point));
        first_ = nullptr;
    }

private:
    std::vector<PlotPoint>& kept_;
    const PlotPoint* first_ = nullptr;
    const PlotPoint* least_ = nullptr;
    const PlotPoint* greatest_ = nullptr;
    const PlotPoint* last_ = nullptr;
};

// Where a line from one point to another is at a time between.
PlotPoint between(const PlotPoint& from, const PlotPoint& to, double time) {
    const double part = (time - from.time) / (to.time - from.time);
    return {time, from.value + part * (to.value - from.value)};
}

void appendColumns(
    std::span<const PlotPoint> line, const TimeRange& range, int columns, std::vector<PlotPoint>& thinned) {
    const double columnsPerSecond = columns / (range.end - range.begin);
    Column column(thinned);
    double number = -1.0; // of the column, counted from the range's begin
    for (const PlotPoint& point : line) {
        if (!std::isfinite(point.value)) {
            column.close();
            if (thinned.empty() || std::isfinite(thinned.back().value))
                thinned.push_back(point);
            continue;
        }
        const double itsNumber = std::floor((point.time - range.begin) * columnsPerSecond);
        if (itsNumber != number) {
            column.close();
            number = itsNumber;
        }
        column.add(point);
    }
    column.close();
}
} // namespace

void appendThinned(
    std::span<const PlotPoint> line, const TimeRange& range, int columns, std::vector<PlotPoint>& thinned) {
    const auto begin = std::ranges::lower_bound(line, range.begin, {}, &PlotPoint::time);
    const auto end = std::ranges::upper_bound(begin, line.end(), range.end, {}, &PlotPoint::time);
    if (begin != line.begin() && begin != line.end())
        thinned.push_back(between(*(begin - 1), *begin, range.begin));
    const std::span<const PlotPoint> inside(begin, end);
    if (inside.size() <= kPointsPerColumn * static_cast<std::size_t>(columns))
        thinned.insert(thinned.end(), inside.begin(), inside.end());
    else
        appendColumns(inside, range, columns, thinned);
    if (end != line.begin() && end != line.end())
        thinned.push_back(between(*(end - 1), *end, range.end));
}
} // namespace sorvane
