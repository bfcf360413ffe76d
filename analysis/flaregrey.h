// How bright the flares of a trajectory look, told without a picture.
#pragma once

#include <map>
#include <optional>
#include <span>
#include <vector>

#include "sample.h"

namespace sorvane {
// The view as it starts: 100 units away, 30 degrees over a height of 480 pixels. What is larger than a pixel has the
// same grey at any distance.
inline constexpr double kStartViewDistance = 100.0;
inline constexpr double kStartViewPixelsPerRadian = 895.6921938165307; // 240 / tan 15°

// The grey of a flare in that view, from 0 (black) to 1 (white): 4 I / (R f)², I its brightness, R its largest half
// axis and f the pixels that a radian takes; below the size of a pixel 4 π I / distance².
double startViewGrey(const Flare& flare);

// The brightness from which on such a flare is white in that view.
double brightnessOfWhite(const Flare& flare);

// Flares by their identifiers, each as it is when it is at its brightest.
class BrightestFlares {
public:
    BrightestFlares() = default;
    BrightestFlares(const BrightestFlares&) = delete;
    BrightestFlares& operator=(const BrightestFlares&) = delete;

    // Those of one sample.
    void include(std::span<const Flare> flares);

    struct Brightest {
        Flare at;
        double grey = 0.0;
    };
    const std::map<int, Brightest>& byId() const { return byId_; }
    // The brightest of all; nothing without flares.
    std::optional<Brightest> brightest() const;

private:
    std::map<int, Brightest> byId_;
    std::vector<Brightest*> previous_; // those of the sample before, where most are again
};
} // namespace sorvane
