// Vec3<T>: three numbers to reckon with, where nothing promises equality with another implementation bit for bit.
#pragma once

#include <cmath>

namespace sorvane {
template <class T> struct Vec3 {
    T x{};
    T y{};
    T z{};

    bool operator==(const Vec3&) const = default;

    friend Vec3 operator+(const Vec3& a, const Vec3& b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
    friend Vec3 operator-(const Vec3& a, const Vec3& b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
    friend Vec3 operator*(T factor, const Vec3& a) { return {factor * a.x, factor * a.y, factor * a.z}; }
};

using Vec3d = Vec3<double>;

template <class T> T dot(const Vec3<T>& a, const Vec3<T>& b) {
    return a.x * b.x + a.y * b.y + a.z * b.z;
}

template <class T> Vec3<T> cross(const Vec3<T>& a, const Vec3<T>& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

template <class T> T length(const Vec3<T>& a) {
    return std::sqrt(dot(a, a));
}

// `a` must not be zero.
template <class T> Vec3<T> unit(const Vec3<T>& a) {
    return T{1} / length(a) * a;
}
} // namespace sorvane
