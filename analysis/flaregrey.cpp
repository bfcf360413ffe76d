// How bright the flares of a trajectory look, told without a picture.
#include "flaregrey.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sorvane {
namespace {
double largestHalfAxis(const flareKeyframe& flare) {
    double largest = 0.0;
    for (const float halfAxis : flare.intensity)
        largest = std::max(largest, std::abs(double{halfAxis}));
    return largest;
}

// Of the view's pixels, so that the flare's brightness over it is a grey.
double greyArea(const flareKeyframe& flare) {
    const double radius = largestHalfAxis(flare) * kStartViewPixelsPerRadian; // pixels times the distance
    const double squaredDistance = kStartViewDistance * kStartViewDistance;
    const bool isPoint = !(std::numbers::pi * radius * radius > squaredDistance);
    return isPoint ? squaredDistance / (4.0 * std::numbers::pi) : radius * radius / 4.0;
}
} // namespace

double startViewGrey(const flareKeyframe& flare) {
    return std::clamp(double{flare.scalar} / greyArea(flare), 0.0, 1.0);
}

double brightnessOfWhite(const flareKeyframe& flare) {
    return greyArea(flare);
}

void BrightestFlares::include(std::span<const flareKeyframe> flares) {
    for (std::size_t place = 0; place < flares.size(); ++place) {
        const flareKeyframe& flare = flares[place];
        if (place >= previous_.size())
            previous_.push_back(nullptr);
        Flare*& known = previous_[place];
        if (known == nullptr || known->at.id != flare.id)
            known = &byId_.try_emplace(flare.id, Flare{flare, startViewGrey(flare)}).first->second;
        if (const double grey = startViewGrey(flare); grey > known->grey)
            *known = {flare, grey};
    }
}

std::optional<BrightestFlares::Flare> BrightestFlares::brightest() const {
    const auto found = std::ranges::max_element(byId_, {}, [](const auto& entry) { return entry.second.grey; });
    return found == byId_.end() ? std::nullopt : std::optional(found->second);
}
} // namespace sorvane
