// What the target of an engagement radiates towards the threat, over time.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <span>

#include "facetvisibility.h"
#include "sample.h"
#include "targetmodel.h"
#include "targetradiometry.h"

namespace sorvane {
struct RadiometryWork {
    static constexpr double kUsualStep = 0.1;

    double step = kUsualStep;           // seconds between the times that are worked out
    std::optional<double> background{}; // W/cm²/sr; that of the sky without it
    double flareScale = 1.0;            // W/sr of a flare of brightness 1
    int pixels = FacetVisibility::kUsualPixels;
    // Called with the share that is done; false ends the work.
    std::function<bool(double)> progress{};
};

// At the samples' first time, each step after it, and their last time: the sum over the model's facets of radiance
// times projected area that the threat sees, as from far away, at the target's attitude, in its sun and with its rotors
// as they stand then. Undefined where the two bodies are at one place. Steps widen where there would be more than
// 100,000 of them. Samples ascend in time. Touches nothing but its arguments: may run beside anything. Null when the
// work was ended, and without samples.
std::shared_ptr<const TargetRadiometry>
radiometryOf(std::span<const Sample> samples, const TargetModel& model, const RadiometryWork& work);
} // namespace sorvane
