// Vector<T>: four homogeneous components, for positions (w = 1) and directions (w = 0).
#pragma once

#include <array>

// Components in the order x, y, z, w. Nothing enforces a w; every operator acts on all four components alike.
template <class T> class Vector {
public:
    Vector() = default;
    Vector(T x, T y, T z, T w) : components_{x, y, z, w} {}

    // Component i, 0 to 3. Any other index is a programming error: it is reported and ends the process with status 1.
    T& ElementAt(int i) { return components_[checkedIndex(i)]; }
    const T& ElementAt(int i) const { return components_[checkedIndex(i)]; }

    bool operator==(const Vector&) const = default;

private:
    static std::size_t checkedIndex(int i) {
        if (i < 0 || i > 3)
            reportBadIndex(i);
        return static_cast<std::size_t>(i);
    }
    [[noreturn]] static void reportBadIndex(int i);

    std::array<T, 4> components_{};
};

extern template class Vector<float>;
extern template class Vector<double>;

Vector<float> operator+(const Vector<float>& a, const Vector<float>& b);
Vector<float> operator-(const Vector<float>& a, const Vector<float>& b);

// Division by a scalar, as a multiplication by its reciprocal. A divisor of exactly zero is no error: each component
// becomes the largest finite value of the type with the component's sign (0 stays 0), so that results stay finite and
// the direction is kept.
Vector<float> operator/(const Vector<float>& v, float divisor);
Vector<double> operator/(const Vector<double>& v, double divisor);

// The three-dimensional cross product; its w is always 0.
Vector<float> Cross(const Vector<float>& a, const Vector<float>& b);

namespace sorvane {
// Square root of the sum of the squares of all four components, w included.
float Length(const Vector<float>& v);
} // namespace sorvane
