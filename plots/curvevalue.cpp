// Reads a curve between its points.
#include "curvevalue.h"

#include <algorithm>
#include <cmath>

namespace sorvane {
std::optional<double> valueOf(const PlotCurve& curve, double time) {
    for (std::size_t number = 0; number < curve.lineCount(); ++number) {
        const std::span<const PlotPoint> line = curve.line(number);
        const auto after = std::ranges::lower_bound(line, time, {}, &PlotPoint::time);
        if (after == line.end() || (after == line.begin() && after->time != time))
            continue;
        double value = after->value;
        if (after->time != time) {
            const PlotPoint& before = *(after - 1);
            value = before.value + (time - before.time) / (after->time - before.time) * (after->value - before.value);
        }
        if (std::isfinite(value))
            return value;
    }
    return std::nullopt;
}
} // namespace sorvane
