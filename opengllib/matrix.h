// Matrix<T>: a 4×4 matrix as OpenGL stores it, the model transform of a body, and four routines on raw matrices.
#pragma once

#include <array>

#include "vector.h"

// Sixteen components stored column by column: element (row, column) is component row + 4 · column.
template <class T> class Matrix {
public:
    // The zero matrix.
    Matrix() = default;
    static Matrix identity() {
        Matrix m;
        for (int i = 0; i < 4; ++i)
            m(i, i) = T{1};
        return m;
    }
    // From 16 components in storage order.
    static Matrix fromColumns(const T* components) {
        Matrix m;
        for (std::size_t i = 0; i < 16; ++i)
            m.components_[i] = components[i];
        return m;
    }

    // Element (row, column), each 0 to 3. Any other index is a programming error: it is reported, the row before the
    // column, and ends the process with status 1.
    T& operator()(int row, int col) { return components_[checkedIndex(row, col)]; }
    const T& operator()(int row, int col) const { return components_[checkedIndex(row, col)]; }

    // The 16 components in storage order, for glLoadMatrix and glMultMatrix.
    const T* data() const { return components_.data(); }
    T* data() { return components_.data(); }

    bool operator==(const Matrix&) const = default;

private:
    static std::size_t checkedIndex(int row, int col) {
        if (row < 0 || row > 3)
            reportBadRow(row);
        if (col < 0 || col > 3)
            reportBadColumn(col);
        return static_cast<std::size_t>(row) + 4 * static_cast<std::size_t>(col);
    }
    [[noreturn]] static void reportBadRow(int row);
    [[noreturn]] static void reportBadColumn(int col);

    std::array<T, 16> components_{};
};

extern template class Matrix<float>;

Matrix<float> operator*(const Matrix<float>& a, const Matrix<float>& b);
Vector<float> operator*(const Matrix<float>& m, const Vector<float>& v);

// The model matrix T · Rz · Ry · Rx · S of a body: a model-space point is scaled by (sx, sy, sz), turned right-handed
// about x by rx, about y by ry and about z by rz (degrees; roll, pitch, yaw when x points forward), then moved to
// (tx, ty, tz).
Matrix<float> BuildTransform(float sx, float sy, float sz, float rx, float ry, float rz, float tx, float ty, float tz);

// Four routines on matrices of 16 floats in storage order, every argument passed by address. Translations and rotations
// are composed on the left, matrix = new · matrix, so that the calls read in the order in which a point meets them:
// translate by −hub, rotate, translate by +hub turns points about an axis through the hub.
void mat_identity_(float* matrix);
void mat_translate_(float* matrix, const float* dx, const float* dy, const float* dz);
// Right-handed by *angle degrees about the axis of three floats, which need not be of unit length. A zero axis leaves
// the matrix as it is.
void mat_rotate_d_(float* matrix, const float* axis, const float* angle);
// result = matrix · (point, w = 1), three floats each; result may be point.
void mat_vtransform_(const float* matrix, const float* point, float* result);
