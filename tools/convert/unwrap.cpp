// Lets angles run on beyond a half turn.
#include "unwrap.h"

#include <algorithm>
#include <cmath>

#include "withoutnoise.h"

namespace sorvane {
namespace {
void unwrap(Triple& angles, const Triple& before) {
    constexpr double kFullTurn = 360.0;
    for (std::size_t i = 0; i < angles.size(); ++i) {
        const double jump = angles[i] - before[i];
        if (std::abs(jump) <= kFullTurn / 2.0)
            continue;
        const double turned = angles[i] - kFullTurn * std::round(jump / kFullTurn);
        angles[i] = withoutNoise(turned, std::max({std::abs(angles[i]), std::abs(turned), kFullTurn}));
    }
}
} // namespace

void unwrapAngles(std::vector<ExactSample>& samples) {
    const ExactSample* before = nullptr;
    for (ExactSample& sample : samples) {
        if (before != nullptr) {
            unwrap(sample.targetAttitude, before->targetAttitude);
            unwrap(sample.threatAttitude, before->threatAttitude);
            unwrap(sample.gyro, before->gyro);
            for (Flare& flare : sample.flares)
                if (const Flare* const same = findFlare(*before, flare.id))
                    unwrap(flare.angles, same->angles);
        }
        before = &sample;
    }
}
} // namespace sorvane
