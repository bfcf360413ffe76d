// One time sample of an engagement, and one flare within it.
#pragma once

#include <QList>

// Field meanings follow the trajectory file; units are the simulation's (metres and degrees in our own data).
struct flareKeyframe {
    float pos[3] = {};       // x, y, z
    float values[3] = {};    // three angles in degrees for the drawing code
    float intensity[3] = {}; // bands 1, 2, 3
    float scalar = 0.0F;     // brightness
    int bandCount = 0;
    int id = 0; // identifies the same flare across keyframes
    int kind = 0;

    bool operator==(const flareKeyframe&) const = default;
};

struct keyframe {
    double time = 0.0;  // seconds
    int flareCount = 0; // as the file announces it; flares may hold fewer
    float targetPos[3] = {};
    float targetAtt[3] = {};
    float threatPos[3] = {};
    float threatAtt[3] = {};
    float gyro[3] = {};
    QList<flareKeyframe> flares; // in file order

    bool operator==(const keyframe&) const = default;
};
