// The light sources that shaders are given.
#pragma once

#include <array>
#include <cstddef>

struct Lights {
    static constexpr std::size_t kMaximum = 64;

    // What a source doesn't use stays 0 and lights nothing.
    std::array<float, kMaximum> intensity{};
    std::array<float, 4 * kMaximum> lightPosObj{}; // x, y, z, w of each, in object coordinates
};
