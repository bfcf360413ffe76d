// A sample of a trajectory with the numbers as the file gives them, in double precision, for writing it again.
#include "exactsample.h"

#include <algorithm>
#include <cmath>

namespace sorvane {
namespace {
double blendedNumber(double earlier, double later, double part) {
    if (earlier == later)
        return earlier;
    return withoutNoise(earlier * (1.0 - part) + later * part, std::max(std::abs(earlier), std::abs(later)));
}

void blend(ExactTriple& earlier, const ExactTriple& later, double part) {
    for (std::size_t i = 0; i < earlier.size(); ++i)
        earlier[i] = blendedNumber(earlier[i], later[i], part);
}
} // namespace

double withoutNoise(double result, double greatest) {
    constexpr int kDigits = 15;
    constexpr int kExactPower = 22; // the last power of ten that a double holds exactly
    if (!(greatest > 0.0) || !std::isfinite(greatest))
        return result;
    const int decimals = kDigits - 1 - static_cast<int>(std::floor(std::log10(greatest)));
    if (decimals < 0 || decimals > kExactPower)
        return result;
    const double power = std::pow(10.0, decimals);
    return std::round(result * power) / power + 0.0; // no -0
}

ExactSample blended(const ExactSample& earlier, const ExactSample& later, double t) {
    const double part = (t - earlier.time) / (later.time - earlier.time);
    ExactSample sample = earlier;
    sample.comments.clear();
    sample.time = t;
    blend(sample.targetPosition, later.targetPosition, part);
    blend(sample.targetAttitude, later.targetAttitude, part);
    blend(sample.threatPosition, later.threatPosition, part);
    blend(sample.threatAttitude, later.threatAttitude, part);
    blend(sample.gyro, later.gyro, part);
    for (ExactFlare& flare : sample.flares)
        if (const ExactFlare* const same = findFlare(later, flare.id)) {
            blend(flare.position, same->position, part);
            blend(flare.angles, same->angles, part);
            blend(flare.halfAxes, same->halfAxes, part);
        }
    return sample;
}

const ExactFlare* findFlare(const ExactSample& sample, int id) {
    const auto found = std::find_if(
        sample.flares.rbegin(), sample.flares.rend(), [id](const ExactFlare& flare) { return flare.id == id; });
    return found == sample.flares.rend() ? nullptr : &*found;
}
} // namespace sorvane
