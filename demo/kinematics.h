// A small kinematic model of an engagement: an aircraft flies its manoeuvre and drops flares, a pursuer closes on it.
#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "trajectory.h"

namespace sorvane {
// A quantity over time (seconds).
using OverTime = std::function<double(double)>;

struct FlareRelease {
    double time = 0.0; // seconds
    int kind = 1;
    int bandCount = 1;
};

// Positions in metres with z down; headings in degrees from x towards y; speeds in metres per second.
struct EngagementPlan {
    Vec3d targetStart;
    double targetHeading = 0.0;
    double targetSpeed = 250.0;
    OverTime targetBank;  // degrees, right wing down is positive; the aircraft turns as a coordinated turn does
    OverTime targetClimb; // degrees
    std::vector<FlareRelease> flares; // in the order of their times
    double flareBrightness = 2.5e7;   // makes a sphere of five metres white in a view of 30 degrees

    Vec3d threatStart;
    double launchOffset = 0.0; // degrees by which the threat leaves to the right of the line to the target
    double launchLoft = 0.0;   // and above it
    OverTime threatSpeed;
    // Degrees, of the whole cone: of a seeker that follows what is brightest in it. One without never lets go of the
    // target.
    std::optional<double> seekerFieldOfView;

    double lastTime = 29.5; // seconds
    int sampleMilliseconds = 10;
};

// Flies the plan from time 0.0 and samples it at its interval, and once more at the end: when the threat is within
// reach of its fuze or has passed close to the target, or at the last time. Angles run on without wrapping.
std::vector<TrajectorySample> fly(const EngagementPlan& plan);
} // namespace sorvane
