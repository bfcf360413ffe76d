// Tuple3<T>: a plain triple, for index triples, points, normals and colours.
#pragma once

template <class T> struct Tuple3 {
    T x, y, z;
    bool operator==(const Tuple3&) const = default;
};
