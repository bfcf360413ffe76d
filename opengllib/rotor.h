// The rotor file: the spinning parts of a body.
#pragma once

#include <array>
#include <cstdio>

namespace sorvane {
class TextHead;
} // namespace sorvane

// Text, a line for each rotor; lines that begin with "#" are comments:
//     first facet, last facet, hub x y z, axis x y z, turns per second
// Facets count from 1 in file order, and the last one belongs to the rotor. Missing numbers are 0.
class Rotor {
public:
    // Whether a text begins like a rotor file, which may have any name.
    static bool looksLike(const sorvane::TextHead& head);

    // Reads the file at `path`. A rotor file is an essential part of a model that asks for one: every fault prints a
    // message on standard error and ends the process.
    explicit Rotor(const char* path);
    // Reads from an open stream instead.
    explicit Rotor(std::FILE* stream) { read(stream); }

    int getRotorCount() const { return rotorCount_; }

    // The first and the last facet of a rotor, counted from 1 in file order; the rotors count from 1 as well. A rotor
    // that isn't there prints a message on standard error and gives -1.
    int getRotorStart(int rotor) const;
    int getRotorEnd(int rotor) const;

    // Hub and axis in model coordinates, and turns per second, of a rotor that is there.
    const std::array<float, 3>& getRotorHub(int rotor) const { return hub_.at(static_cast<std::size_t>(rotor - 1)); }
    const std::array<float, 3>& getRotorAxis(int rotor) const { return axis_.at(static_cast<std::size_t>(rotor - 1)); }
    float getRotorRate(int rotor) const { return rate_.at(static_cast<std::size_t>(rotor - 1)); }

    // Fills `matrix`, 16 floats in OpenGL's order, with the turn of a rotor after `time` seconds: about the axis
    // through its hub by 360 · rate · time degrees. A rotor that isn't there prints the same message and changes
    // nothing.
    void getRotorMatrix(int rotor, float time, float* matrix) const;

private:
    static constexpr std::size_t kMaximumRotors = 100;

    void read(std::FILE* stream);
    bool isValid(int rotor) const;

    int rotorCount_ = 0;
    // What a line doesn't give stays 0, which makes a line of anything else a range that is refused.
    std::array<int, kMaximumRotors> startFacet_{};
    std::array<int, kMaximumRotors> endFacet_{};
    std::array<std::array<float, 3>, kMaximumRotors> hub_{};  // model coordinates
    std::array<std::array<float, 3>, kMaximumRotors> axis_{}; // model coordinates
    std::array<float, kMaximumRotors> rate_{};                // turns per second
};
