// Whether two samples, or maps of samples, are the same bit for bit: unlike ==, this tells -0 from 0.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>

#include <QMap>

#include "keyframe.h"

inline bool identical(float a, float b) {
    return std::bit_cast<std::uint32_t>(a) == std::bit_cast<std::uint32_t>(b);
}

inline bool identical(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b);
}

inline bool identical(const float (&a)[3], const float (&b)[3]) {
    return identical(a[0], b[0]) && identical(a[1], b[1]) && identical(a[2], b[2]);
}

inline bool identical(const flareKeyframe& a, const flareKeyframe& b) {
    return a == b && identical(a.pos, b.pos) && identical(a.values, b.values) && identical(a.intensity, b.intensity) &&
           identical(a.scalar, b.scalar);
}

inline bool identical(const keyframe& a, const keyframe& b) {
    return a == b && identical(a.time, b.time) && identical(a.targetPos, b.targetPos) &&
           identical(a.targetAtt, b.targetAtt) && identical(a.threatPos, b.threatPos) &&
           identical(a.threatAtt, b.threatAtt) && identical(a.gyro, b.gyro) &&
           std::ranges::equal(a.flares, b.flares, [](const auto& x, const auto& y) { return identical(x, y); });
}

inline bool identical(const QMap<double, keyframe>& a, const QMap<double, keyframe>& b) {
    return std::ranges::equal(a.keys(), b.keys(), [](double x, double y) { return identical(x, y); }) &&
           std::ranges::equal(a, b, [](const auto& x, const auto& y) { return identical(x, y); });
}
