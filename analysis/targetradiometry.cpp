// What a target radiates towards the threat over time.
#include "targetradiometry.h"

#include <algorithm>
#include <cmath>

namespace sorvane {
double TargetRadiometry::emissionAt(double time, char bandDigit) const {
    const auto band = std::ranges::find(series_.bands, bandDigit, &Band::digit);
    return band == series_.bands.end() ? std::nan("") : valueAt(band->emissions, time);
}

double TargetRadiometry::valueAt(const std::vector<double>& values, double time) const {
    const std::vector<double>& times = series_.times;
    const auto after = static_cast<std::size_t>(std::ranges::lower_bound(times, time) - times.begin());
    if (after == times.size())
        return std::nan("");
    if (times[after] == time)
        return values[after];
    if (after == 0)
        return std::nan("");
    const double a = values[after - 1];
    const double b = values[after];
    const double part = (time - times[after - 1]) / (times[after] - times[after - 1]);
    return a > 0.0 && b > 0.0 ? a * std::pow(b / a, part) : a + (b - a) * part;
}
} // namespace sorvane
