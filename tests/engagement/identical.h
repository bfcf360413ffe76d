// Whether two samples, or maps or series of samples, are the same bit for bit: unlike ==, this tells -0 from 0.
#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>

#include <QMap>

#include "keyframe.h"
#include "sampleseries.h"

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

inline bool identical(const sorvane::Triple& a, const sorvane::Triple& b) {
    return std::ranges::equal(a, b, [](double x, double y) { return identical(x, y); });
}

inline bool identical(const sorvane::SampleSeries& a, const sorvane::SampleSeries& b) {
    using sorvane::Sample;
    const auto areSame = [](const auto& x, const auto& y) {
        return identical(x, y);
    };
    const auto sameSample = [](const Sample& x, const Sample& y) {
        return x.flareCount == y.flareCount && identical(x.time, y.time) &&
               identical(x.targetPosition, y.targetPosition) && identical(x.targetAttitude, y.targetAttitude) &&
               identical(x.threatPosition, y.threatPosition) && identical(x.threatAttitude, y.threatAttitude) &&
               identical(x.gyro, y.gyro);
    };
    if (!std::ranges::equal(a.samples(), b.samples(), sameSample))
        return false;
    for (std::size_t i = 0; i < a.samples().size(); ++i)
        if (a.flareRows(i) != b.flareRows(i))
            return false;
    return a.flares().ids == b.flares().ids &&
           std::ranges::equal(a.flares().positions, b.flares().positions, areSame) &&
           std::ranges::equal(a.flares().brightnesses, b.flares().brightnesses, areSame) &&
           std::ranges::equal(a.flares().bands, b.flares().bands, areSame);
}
