// Where a converted trajectory lies: origin, unit of length, axes.
#include "placement.h"

#include <algorithm>
#include <cmath>
#include <limits>

#include "withoutnoise.h"

namespace sorvane {
namespace {
class Placer {
public:
    explicit Placer(const Placement& placement) : placement_(placement) {}

    void place(ExactSample& sample, const ExactSample* before) const {
        placePosition(sample.targetPosition);
        placePosition(sample.threatPosition);
        placeAttitude(sample.targetAttitude, before == nullptr ? Triple() : before->targetAttitude);
        placeAttitude(sample.threatAttitude, before == nullptr ? Triple() : before->threatAttitude);
        placeAttitude(sample.gyro, before == nullptr ? Triple() : before->gyro);
        for (Flare& flare : sample.flares)
            placeFlare(flare, before == nullptr ? nullptr : findFlare(*before, flare.id));
    }

private:
    double scaled(double number, double factor) const { return factor == 1.0 ? number : writtenValue(number * factor); }

    void placePosition(Triple& position) const {
        for (std::size_t i = 0; i < position.size(); ++i) {
            const double origin = placement_.origin[i];
            const double greatest = std::max(std::abs(position[i]), std::abs(origin));
            if (origin != 0.0 || placement_.scale != 1.0)
                position[i] = withoutNoise((position[i] - origin) * placement_.scale, greatest * placement_.scale);
        }
        if (placement_.axes)
            position = placement_.axes->turned(position);
    }

    void placeAttitude(Triple& angles, const Triple& before) const {
        if (placement_.headingOfX)
            angles[2] = yawOf(angles[2]);
        else if (placement_.axes)
            angles = placement_.axes->turnedAttitude(angles, before);
    }

    void placeFlare(Flare& flare, const Flare* before) const {
        placePosition(flare.position);
        if (placement_.headingOfX)
            flare.angles[2] = yawOf(flare.angles[2]);
        else if (placement_.axes)
            flare.angles =
                placement_.axes->turnedEllipsoid(flare.angles, before == nullptr ? Triple() : before->angles);
        for (double& halfAxis : flare.halfAxes)
            halfAxis = scaled(halfAxis, placement_.scale);
        flare.brightness = scaled(flare.brightness, placement_.scale * placement_.scale);
    }

    double yawOf(double heading) const {
        const double bearing = *placement_.headingOfX;
        return withoutNoise(heading - bearing, std::max(std::abs(heading), std::abs(bearing)));
    }

    const Placement& placement_;
};

bool fits(const Triple& numbers) {
    return std::ranges::all_of(
        numbers, [](double number) { return std::abs(number) <= double{std::numeric_limits<float>::max()}; });
}
} // namespace

void place(std::vector<ExactSample>& samples, const Placement& placement) {
    const Placer placer(placement);
    const ExactSample* before = nullptr;
    for (ExactSample& sample : samples) {
        placer.place(sample, before);
        before = &sample;
    }
}

bool fitsSinglePrecision(const std::vector<ExactSample>& samples) {
    return std::ranges::all_of(samples, [](const ExactSample& sample) {
        return fits(sample.targetPosition) && fits(sample.threatPosition) &&
               std::ranges::all_of(sample.flares, [](const Flare& flare) {
                   return fits(flare.position) && fits(flare.halfAxes) && fits({flare.brightness});
               });
    });
}
} // namespace sorvane
