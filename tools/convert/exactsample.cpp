// A sample of a trajectory with what it takes to write it again.
#include "exactsample.h"

#include <algorithm>
#include <cmath>

#include "withoutnoise.h"

namespace sorvane {
namespace {
double blendedNumber(double earlier, double later, double part) {
    if (earlier == later)
        return earlier;
    return withoutNoise(earlier * (1.0 - part) + later * part, std::max(std::abs(earlier), std::abs(later)));
}

void blend(Triple& earlier, const Triple& later, double part) {
    for (std::size_t i = 0; i < earlier.size(); ++i)
        earlier[i] = blendedNumber(earlier[i], later[i], part);
}
} // namespace

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
    for (Flare& flare : sample.flares)
        if (const Flare* const same = findFlare(later, flare.id)) {
            blend(flare.position, same->position, part);
            blend(flare.angles, same->angles, part);
            blend(flare.halfAxes, same->halfAxes, part);
        }
    return sample;
}

const Flare* findFlare(const ExactSample& sample, int id) {
    const auto found =
        std::find_if(sample.flares.rbegin(), sample.flares.rend(), [id](const Flare& flare) { return flare.id == id; });
    return found == sample.flares.rend() ? nullptr : &*found;
}
} // namespace sorvane
