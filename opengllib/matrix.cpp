// Matrix<T>: a 4×4 matrix as OpenGL stores it, the model transform of a body, and four routines on raw matrices.
#include "matrix.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "endprocess.h"
#include "printerror.h"

using namespace sorvane;

// The file name and the lines in the messages are part of the messages.
template <class T> void Matrix<T>::reportBadRow(int row) {
    printError("opengllib/matrix", "EltAt", 454, "row should be 0, 1, 2, or 3, but is %d.", 1, row);
    endProcess();
}

template <class T> void Matrix<T>::reportBadColumn(int col) {
    printError("opengllib/matrix", "EltAt", 460, "col should be 0, 1, 2, or 3, but is %d.", 1, col);
    endProcess();
}

template class Matrix<float>;

namespace {
// Bit pattern 0x3C8EFA36, one unit in the last place above the float nearest to π/180. Deliberate: transforms are
// compared bit for bit. (The atmosphere's constant is another one.)
constexpr float kRadiansPerDegree = 0.017453294F;

struct Turn {
    float sine;
    float cosine;
    explicit Turn(float degrees)
        : sine(std::sin(degrees * kRadiansPerDegree)), cosine(std::cos(degrees * kRadiansPerDegree)) {}
};

void multiplyFromLeft(const Matrix<float>& left, float* matrix) {
    const Matrix<float> product = left * Matrix<float>::fromColumns(matrix);
    std::copy_n(product.data(), 16, matrix);
}
} // namespace

Matrix<float> operator*(const Matrix<float>& a, const Matrix<float>& b) {
    Matrix<float> product;
    for (int col = 0; col < 4; ++col)
        for (int row = 0; row < 4; ++row) {
            float sum = 0.0F;
            for (int k = 0; k < 4; ++k)
                sum += a(row, k) * b(k, col);
            product(row, col) = sum;
        }
    return product;
}

Vector<float> operator*(const Matrix<float>& m, const Vector<float>& v) {
    Vector<float> product;
    for (int row = 0; row < 4; ++row) {
        float sum = 0.0F;
        for (int k = 0; k < 4; ++k)
            sum += m(row, k) * v.ElementAt(k);
        product.ElementAt(row) = sum;
    }
    return product;
}

Matrix<float> BuildTransform(float sx, float sy, float sz, float rx, float ry, float rz, float tx, float ty, float tz) {
    Matrix<float> scale = Matrix<float>::identity();
    scale(0, 0) = sx;
    scale(1, 1) = sy;
    scale(2, 2) = sz;

    const Turn x(rx);
    Matrix<float> aboutX = Matrix<float>::identity();
    aboutX(1, 1) = x.cosine;
    aboutX(1, 2) = -x.sine;
    aboutX(2, 1) = x.sine;
    aboutX(2, 2) = x.cosine;

    const Turn y(ry);
    Matrix<float> aboutY = Matrix<float>::identity();
    aboutY(0, 0) = y.cosine;
    aboutY(0, 2) = y.sine;
    aboutY(2, 0) = -y.sine;
    aboutY(2, 2) = y.cosine;

    const Turn z(rz);
    Matrix<float> aboutZ = Matrix<float>::identity();
    aboutZ(0, 0) = z.cosine;
    aboutZ(0, 1) = -z.sine;
    aboutZ(1, 0) = z.sine;
    aboutZ(1, 1) = z.cosine;

    Matrix<float> translation = Matrix<float>::identity();
    translation(0, 3) = tx;
    translation(1, 3) = ty;
    translation(2, 3) = tz;

    return translation * aboutZ * aboutY * aboutX * scale;
}

void mat_identity_(float* matrix) {
    std::copy_n(Matrix<float>::identity().data(), 16, matrix);
}

void mat_translate_(float* matrix, const float* dx, const float* dy, const float* dz) {
    Matrix<float> translation = Matrix<float>::identity();
    translation(0, 3) = *dx;
    translation(1, 3) = *dy;
    translation(2, 3) = *dz;
    multiplyFromLeft(translation, matrix);
}

// Rotation about an arbitrary axis (Rodrigues' formula), worked out in double and stored as float.
void mat_rotate_d_(float* matrix, const float* axis, const float* angle) {
    const double length = std::hypot(double{axis[0]}, double{axis[1]}, double{axis[2]});
    if (!(length > 0.0))
        return;
    const std::array<double, 3> u = {axis[0] / length, axis[1] / length, axis[2] / length};
    const double radians = double{*angle} * std::numbers::pi / 180.0;
    const double c = std::cos(radians);
    const double s = std::sin(radians);
    const std::array<std::array<double, 3>, 3> cross = {{{0, -u[2], u[1]}, {u[2], 0, -u[0]}, {-u[1], u[0], 0}}};

    Matrix<float> rotation = Matrix<float>::identity();
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t col = 0; col < 3; ++col) {
            const double unit = row == col ? 1.0 : 0.0;
            rotation(static_cast<int>(row), static_cast<int>(col)) =
                static_cast<float>(c * unit + s * cross[row][col] + (1.0 - c) * u[row] * u[col]);
        }
    multiplyFromLeft(rotation, matrix);
}

void mat_vtransform_(const float* matrix, const float* point, float* result) {
    const Vector<float> transformed =
        Matrix<float>::fromColumns(matrix) * Vector<float>(point[0], point[1], point[2], 1.0F);
    for (int i = 0; i < 3; ++i)
        result[i] = transformed.ElementAt(i);
}
