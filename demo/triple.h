// Three numbers: a position, a velocity, or three angles.
#pragma once

#include <cmath>

struct Triple {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;

    friend Triple operator+(const Triple& a, const Triple& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
    friend Triple operator-(const Triple& a, const Triple& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
    friend Triple operator*(double factor, const Triple& a) { return {factor * a.x, factor * a.y, factor * a.z}; }
};

inline double dot(const Triple& a, const Triple& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

inline Triple cross(const Triple& a, const Triple& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

inline double length(const Triple& a) {
    return std::sqrt(dot(a, a));
}

// `a` must not be zero.
inline Triple unit(const Triple& a) {
    return 1.0 / length(a) * a;
}
