// Vector<T>: four homogeneous components.
#include "vector.h"

#include <cmath>
#include <limits>

#include "endprocess.h"
#include "printerror.h"

using namespace sorvane;

// The file name and the line in the message are part of the message.
template <class T> void Vector<T>::reportBadIndex(int i) {
    printError("opengllib/vector", "ElementAt", 375, "Array index i should be 0, 1, 2, or 3, but i = %d.", 1, i);
    endProcess();
}

template class Vector<float>;
template class Vector<double>;

namespace {
template <class T> T saturated(T component) {
    if (component > 0)
        return std::numeric_limits<T>::max();
    if (component < 0)
        return -std::numeric_limits<T>::max();
    return 0;
}

template <class T> Vector<T> divided(const Vector<T>& v, T divisor) {
    Vector<T> result;
    const T reciprocal = divisor == 0 ? T{0} : T{1} / divisor;
    for (int i = 0; i < 4; ++i)
        result.ElementAt(i) = divisor == 0 ? saturated(v.ElementAt(i)) : v.ElementAt(i) * reciprocal;
    return result;
}
} // namespace

Vector<float> operator+(const Vector<float>& a, const Vector<float>& b) {
    return {
        a.ElementAt(0) + b.ElementAt(0), a.ElementAt(1) + b.ElementAt(1), a.ElementAt(2) + b.ElementAt(2),
        a.ElementAt(3) + b.ElementAt(3)};
}

Vector<float> operator-(const Vector<float>& a, const Vector<float>& b) {
    return {
        a.ElementAt(0) - b.ElementAt(0), a.ElementAt(1) - b.ElementAt(1), a.ElementAt(2) - b.ElementAt(2),
        a.ElementAt(3) - b.ElementAt(3)};
}

Vector<float> operator/(const Vector<float>& v, float divisor) {
    return divided(v, divisor);
}

Vector<double> operator/(const Vector<double>& v, double divisor) {
    return divided(v, divisor);
}

Vector<float> Cross(const Vector<float>& a, const Vector<float>& b) {
    return {
        a.ElementAt(1) * b.ElementAt(2) - a.ElementAt(2) * b.ElementAt(1),
        a.ElementAt(2) * b.ElementAt(0) - a.ElementAt(0) * b.ElementAt(2),
        a.ElementAt(0) * b.ElementAt(1) - a.ElementAt(1) * b.ElementAt(0), 0.0F};
}

namespace sorvane {
float Length(const Vector<float>& v) {
    float sum = 0.0F;
    for (int i = 0; i < 4; ++i)
        sum += v.ElementAt(i) * v.ElementAt(i);
    return std::sqrt(sum);
}
} // namespace sorvane
