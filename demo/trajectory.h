// The trajectory file: what it holds, and its text.
#pragma once

#include <string>
#include <vector>

#include "vec3.h"

namespace sorvane {
// One flare at one time.
struct FlareSample {
    int id = 0;
    int kind = 0;
    Vec3d position;
    double brightness = 0.0;
    Vec3d angles;      // degrees
    Vec3d scale;       // metres; the drawn sphere's half axes
    int bandCount = 1; // 1: the first half axis serves for all three; 3: each has its own
};

// One time. Positions are in metres with z down; attitudes and the gyro are roll, pitch (nose up is positive) and yaw
// (from x towards y) in degrees, to be applied in this order.
struct TrajectorySample {
    double time = 0.0; // seconds
    Vec3d targetPosition;
    Vec3d targetAttitude;
    Vec3d threatPosition;
    Vec3d threatAttitude;
    double range = 0.0;        // metres between the two
    double closingSpeed = 0.0; // metres per second
    Vec3d gyro;
    std::vector<FlareSample> flares;
};

// The twelve header lines. The paths carry their extensions.
struct TrajectoryHeader {
    std::string terrainTopography;
    std::string terrainRadiance;
    std::string targetSignature;
    Vec3d terrainPosts;
    Vec3d terrainOrigin;
    std::string targetGeometry;
    std::string targetReflectance;
    std::string remark;
    std::string colourName;
    int runNumber = 0;
    std::string threatId;
    std::string fieldOfView; // full cone angle, degrees
};

enum class Comments { None, Explanatory };

// The text of a trajectory file. Explanatory comments name every header line and number every sample.
std::string
trajectoryText(const TrajectoryHeader& header, const std::vector<TrajectorySample>& samples, Comments comments);
} // namespace sorvane
