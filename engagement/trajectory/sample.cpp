// One time sample of a trajectory with the numbers as its text gives them, in double precision.
#include "sample.h"

#include <cstddef>

namespace sorvane {
namespace {
void round(const Triple& exact, float (&rounded)[3]) {
    for (std::size_t i = 0; i < exact.size(); ++i)
        rounded[i] = static_cast<float>(exact[i]);
}
} // namespace

keyframe singlePrecision(const Sample& sample) {
    keyframe rounded;
    rounded.time = sample.time;
    rounded.flareCount = sample.flareCount;
    round(sample.targetPosition, rounded.targetPos);
    round(sample.targetAttitude, rounded.targetAtt);
    round(sample.threatPosition, rounded.threatPos);
    round(sample.threatAttitude, rounded.threatAtt);
    round(sample.gyro, rounded.gyro);
    return rounded;
}

flareKeyframe singlePrecision(const Flare& flare) {
    flareKeyframe rounded;
    round(flare.position, rounded.pos);
    round(flare.angles, rounded.values);
    round(flare.halfAxes, rounded.intensity);
    rounded.scalar = static_cast<float>(flare.brightness);
    rounded.bandCount = flare.bandCount;
    rounded.id = flare.id;
    rounded.kind = flare.kind;
    return rounded;
}
} // namespace sorvane
