// A body as the command line gives it, with the light in which it stands.
#pragma once

#include <array>
#include <optional>
#include <string>

#include "facetshading.h"
#include "namedbody.h"

namespace sorvane {
// What the command line says of bodies and light.
struct LightChoice {
    std::string atmosphere{};                               // empty: that of the trajectory, none for a body alone
    std::optional<std::array<double, 3>> attitudeDegrees{}; // roll, pitch, yaw of a body alone; else all 0
    std::optional<double> time{};                           // seconds; else that of the first sample, or 0
    bool isThreat = false;                                  // of a trajectory
};

struct LitBody {
    std::string name;
    SignatureBody body;
    SignatureLight light;
    double time = 0.0; // seconds
};

// The body of a geometry file. Without an atmosphere it stands in the dark.
Outcome<LitBody> bodyAlone(const std::string& geometry, const BodyChoice& files, const LightChoice& choice);

// The target or the threat of a trajectory, at its attitude at the time.
Outcome<LitBody> bodyOfTrajectory(const std::string& path, const BodyChoice& files, const LightChoice& choice);
} // namespace sorvane
