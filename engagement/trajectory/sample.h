// One time sample of a trajectory with the numbers as its text gives them, in double precision: what measures are
// worked out from. Drawing goes by their single-precision counterparts.
#pragma once

#include <array>
#include <vector>

#include "keyframe.h"

namespace sorvane {
using Triple = std::array<double, 3>;

struct Flare {
    int id = 0; // identifies the same flare across samples
    int kind = 0;
    Triple position{};
    double brightness = 0.0;
    Triple angles{};   // degrees
    Triple halfAxes{}; // all three are the first one below three bands
    int bandCount = 0;

    bool operator==(const Flare&) const = default;
};

struct Sample {
    double time = 0.0;  // seconds
    int flareCount = 0; // as the file announces it; there may be fewer
    Triple targetPosition{};
    Triple targetAttitude{}; // degrees, as all angles
    Triple threatPosition{};
    Triple threatAttitude{};
    Triple gyro{};

    bool operator==(const Sample&) const = default;
};

struct FlaredSample : Sample {
    std::vector<Flare> flares; // in file order

    bool operator==(const FlaredSample&) const = default;
};

// The same, rounded; of a sample without its flares.
keyframe singlePrecision(const Sample& sample);
flareKeyframe singlePrecision(const Flare& flare);
} // namespace sorvane
