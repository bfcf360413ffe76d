// How bright the flares of a trajectory look, told without a picture.
#include "flaregrey.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace sorvane {
namespace {
double largestHalfAxis(const Flare& flare) {
    double largest = 0.0;
    for (const double halfAxis : flare.halfAxes)
        largest = std::max(largest, std::abs(halfAxis));
    return largest;
}

// Of the view's pixels, so that the flare's brightness over it is a grey.
double greyArea(const Flare& flare) {
    const double radius = largestHalfAxis(flare) * kStartViewPixelsPerRadian; // pixels times the distance
    const double squaredDistance = kStartViewDistance * kStartViewDistance;
    const bool isPoint = !(std::numbers::pi * radius * radius > squaredDistance);
    return isPoint ? squaredDistance / (4.0 * std::numbers::pi) : radius * radius / 4.0;
}
} // namespace

double startViewGrey(const Flare& flare) {
    return std::clamp(flare.brightness / greyArea(flare), 0.0, 1.0);
}

double brightnessOfWhite(const Flare& flare) {
    return greyArea(flare);
}

void BrightestFlares::include(std::span<const Flare> flares) {
    for (std::size_t place = 0; place < flares.size(); ++place) {
        const Flare& flare = flares[place];
        if (place >= previous_.size())
            previous_.push_back(nullptr);
        Brightest*& known = previous_[place];
        if (known == nullptr || known->at.id != flare.id)
            known = &byId_.try_emplace(flare.id, Brightest{flare, startViewGrey(flare)}).first->second;
        if (const double grey = startViewGrey(flare); grey > known->grey)
            *known = {flare, grey};
    }
}

std::optional<BrightestFlares::Brightest> BrightestFlares::brightest() const {
    const auto found = std::ranges::max_element(byId_, {}, [](const auto& entry) { return entry.second.grey; });
    return found == byId_.end() ? std::nullopt : std::optional(found->second);
}
} // namespace sorvane
