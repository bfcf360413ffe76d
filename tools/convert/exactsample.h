// A sample of a trajectory with the numbers as the file gives them, in double precision, for writing it again.
#pragma once

#include <array>
#include <string>
#include <vector>

namespace sorvane {
using ExactTriple = std::array<double, 3>;

struct ExactFlare {
    int id = 0;
    int kind = 0;
    ExactTriple position{};
    double brightness = 0.0;
    ExactTriple angles{};   // degrees
    ExactTriple halfAxes{}; // all three are the first one below three bands
    int bandCount = 0;
};

struct ExactSample {
    double time = 0.0; // seconds
    ExactTriple targetPosition{};
    ExactTriple targetAttitude{}; // degrees, as all angles
    ExactTriple threatPosition{};
    ExactTriple threatAttitude{};
    std::string ignoredWords = "0 0"; // the two before the gyro, which no reader looks at
    ExactTriple gyro{};
    std::vector<ExactFlare> flares;
    std::string comments; // the lines before and within the record, with their ends
};

// What arithmetic has left of a number: its 15th and later digits, counted from the first one of the greatest number
// that went in, are noise and go. 12.344999999739, the difference of 4321012.345 and 4321000, becomes 12.345.
double withoutNoise(double result, double greatest);

// The sample at time t between two, blended as the viewer blends: linearly, angles too, flares by their ids; what is
// not blended is the earlier one's.
ExactSample blended(const ExactSample& earlier, const ExactSample& later, double t);

// The flare with this id, the last of several; null when there is none.
const ExactFlare* findFlare(const ExactSample& sample, int id);
} // namespace sorvane
