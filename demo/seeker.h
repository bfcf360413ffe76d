// The seeker of a threat: a gyro that turns towards the brightest source in its field of view.
#pragma once

#include <optional>
#include <span>

#include "vec3.h"

namespace sorvane {
// Something hot. The brightness is of any unit, the same for all.
struct HeatSource {
    Vec3d position;
    Vec3d velocity;
    double brightness = 0.0;
};

class Seeker {
public:
    // `fieldOfViewDegrees`: of the whole cone. `axis`: where it looks at first, of any length but 0.
    Seeker(double fieldOfViewDegrees, const Vec3d& axis);

    // The source that is brightest at `place`, of those in the field of view, after turning towards it for `seconds`
    // as fast as the gyro can. With none in sight the gyro stays as it is.
    std::optional<HeatSource> follow(const Vec3d& place, std::span<const HeatSource> sources, double seconds);

    // Unit vector.
    const Vec3d& axis() const { return axis_; }

private:
    void turnTowards(const Vec3d& direction, double seconds);

    double leastCosine_; // of the angle between the axis and what is seen
    Vec3d axis_;
};
} // namespace sorvane
