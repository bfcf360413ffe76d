// The engagements of the demonstration.
#include "engagements.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <numbers>

#include "datatree.h"
#include "kinematics.h"
#include "lzw.h"
#include "terrainset.h"
#include "trajectory.h"

namespace sorvane {
namespace {
// Rises smoothly from 0 at `start` to 1 `duration` seconds later.
double eased(double time, double start, double duration) {
    const double fraction = std::clamp((time - start) / duration, 0.0, 1.0);
    return fraction * fraction * (3.0 - 2.0 * fraction);
}

// A rocket motor: from `launch` to `burnout` metres per second in `boost` seconds, then 8 m/s slower each second.
OverTime boosted(double launch, double burnout, double boost) {
    return [=](double time) {
        const double coasting = std::max(0.0, time - boost);
        return launch + (burnout - launch) * std::min(1.0, time / boost) - 8.0 * coasting;
    };
}

TrajectoryHeader headerFor(const std::string& dataRoot) {
    const std::string root = dataRoot + '/';
    TrajectoryHeader header;
    header.terrainTopography = root + kTerrainTopography;
    header.terrainRadiance = root + kTerrainRadiance;
    header.targetSignature = root + kTargetSignature;
    header.terrainPosts = {6.6, 6.6, 1.0};
    header.terrainOrigin = {-10000.0, -10000.0, -2.0};
    header.targetGeometry = root + kTargetGeometry;
    header.targetReflectance = root + kTargetReflectance;
    header.threatId = "Missile";
    return header;
}

// A climbing right turn with eight flares, chased from behind.
std::string turn(const std::string& dataRoot) {
    EngagementPlan plan;
    plan.targetStart = {2900.0, -2300.0, -700.0};
    plan.targetHeading = -80.0;
    plan.targetSpeed = 250.0;
    plan.targetBank = [](double time) {
        return 70.0 * eased(time, 2.0, 3.0);
    };
    plan.targetClimb = [](double time) {
        return 15.0 * eased(time, 2.5, 4.0);
    };
    for (int i = 0; i < 8; ++i)
        plan.flares.push_back({3.5 + 1.4 * i, 1 + i % 2, i % 2 == 0 ? 3 : 1});
    plan.threatStart = {600.0, -600.0, -300.0};
    plan.launchOffset = -12.0;
    plan.launchLoft = 14.0;
    plan.threatSpeed = boosted(40.0, 620.0, 8.5);

    TrajectoryHeader header = headerFor(dataRoot);
    header.remark = "Climbing turn with flares";
    header.colourName = "yellow";
    header.runNumber = 1;
    header.fieldOfView = "4.0";
    return trajectoryText(header, fly(plan), Comments::None);
}

// A weaving target that crosses in front of a faster threat.
std::string weave(const std::string& dataRoot) {
    EngagementPlan plan;
    plan.targetStart = {5800.0, -1300.0, -1900.0};
    plan.targetHeading = 175.0;
    plan.targetSpeed = 240.0;
    plan.targetBank = [](double time) {
        return 55.0 * std::sin(2.0 * std::numbers::pi * time / 7.0);
    };
    plan.targetClimb = [](double time) {
        return -4.0 * eased(time, 0.0, 3.0);
    };
    plan.flares = {{2.0, 1, 1}, {3.5, 1, 1}, {5.0, 2, 3}, {6.5, 2, 3}};
    plan.threatStart = {3900.0, -4300.0, -350.0};
    plan.launchOffset = 10.0;
    plan.launchLoft = 8.0;
    plan.threatSpeed = boosted(120.0, 600.0, 3.5);

    TrajectoryHeader header = headerFor(dataRoot);
    header.terrainTopography = dataRoot + '/' + kTerrainSetDescription;
    header.terrainRadiance = dataRoot + '/' + kTerrainSetRadiance;
    header.remark = "Weaving target";
    header.colourName = "cyan";
    header.runNumber = 2;
    header.threatId = "Bullet";
    header.fieldOfView = "2.5";
    return lzwCompressed(trajectoryText(header, fly(plan), Comments::None));
}

// A target that turns away, and flares that take the seeker with them: the missile passes far behind it.
std::string veer(const std::string& dataRoot) {
    constexpr double kFieldOfView = 4.0;
    EngagementPlan plan;
    plan.targetStart = {6300.0, -6900.0, -1000.0};
    plan.targetHeading = 180.0;
    plan.targetSpeed = 240.0;
    plan.targetBank = [](double time) {
        return -65.0 * eased(time, 2.8, 1.5);
    };
    plan.targetClimb = [](double time) {
        return -5.0 * eased(time, 3.0, 2.0);
    };
    for (const double time : {3.5, 3.9, 4.3, 4.7})
        plan.flares.push_back({time, 1, 1});
    plan.flareBrightness = 1.5e9; // white in the seeker's narrow view, too
    plan.threatStart = {3900.0, -4300.0, -300.0};
    plan.launchOffset = -8.0;
    plan.launchLoft = 8.0;
    plan.threatSpeed = boosted(60.0, 620.0, 4.5);
    plan.seekerFieldOfView = kFieldOfView;
    plan.lastTime = 10.0;

    TrajectoryHeader header = headerFor(dataRoot);
    header.remark = "Decoyed by flares";
    header.colourName = "yellow";
    header.runNumber = 4;
    header.fieldOfView = "4.0";
    return trajectoryText(header, fly(plan), Comments::None);
}

// Few samples under a header that names nothing that exists and no field of view: what a viewer must cope with.
std::string vague(const std::string& dataRoot) {
    EngagementPlan plan;
    plan.targetStart = {1900.0, -5700.0, -500.0};
    plan.targetHeading = 5.0;
    plan.targetSpeed = 250.0;
    plan.targetBank = [](double time) {
        return 40.0 * eased(time, 2.0, 3.0) - 75.0 * eased(time, 7.0, 3.0);
    };
    plan.targetClimb = [](double time) {
        return 16.0 * eased(time, 1.0, 4.0);
    };
    plan.flares = {{3.0, 1, 1}, {4.0, 1, 3}, {5.0, 1, 1}, {6.0, 1, 3}};
    plan.threatStart = {520.0, -3600.0, -300.0};
    plan.launchLoft = 10.0;
    plan.threatSpeed = boosted(80.0, 610.0, 5.5);
    plan.sampleMilliseconds = 500;

    TrajectoryHeader header = headerFor(dataRoot);
    const std::string missing = std::filesystem::path(dataRoot).parent_path() / "missing/";
    header.terrainTopography = missing + "ter0010.top";
    header.targetSignature = missing + "target_b0003.rad";
    header.targetGeometry = missing + "target.vnl";
    header.targetReflectance = missing + "target.brdf";
    header.terrainPosts = {1.0, 2.0, 3.0};
    header.terrainOrigin = {4.0, 5.0, 6.0};
    header.remark = "Sparse samples, fallbacks";
    header.colourName = "yellow";
    header.runNumber = 3;
    header.fieldOfView = "unknown";
    return trajectoryText(header, fly(plan), Comments::Explanatory);
}
} // namespace

std::vector<DemonstrationFile> engagementFiles(const std::string& dataRoot) {
    return {
        {"ETXYZ.OUT.turn", turn(dataRoot)},
        {"ETXYZ.OUT.vague", vague(dataRoot)},
        {"ETXYZ.OUT.veer", veer(dataRoot)},
        {"ETXYZ.OUT.weave.Z", weave(dataRoot)},
    };
}
} // namespace sorvane
