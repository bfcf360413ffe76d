// Files of pictures of radiances: 32-bit floats, with what is needed to make intensities of them.
#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include "problem.h"

namespace sorvane {
inline constexpr const char* kRadianceUnit = "W/cm2/sr";

// What a picture shows. Positions in the trajectory's world, z down.
struct RadianceFacts {
    double time = 0.0; // seconds
    std::array<double, 3> eye{};
    std::array<double, 3> axis{};    // unit vector along the line of sight
    double fieldOfViewDegrees = 0.0; // over the height
    double pixelSolidAngle = 0.0;    // of a pixel in the middle, sr
    double background = 0.0;         // W/cm²/sr
};

struct RadianceImage {
    int width = 0;
    int height = 0;
    std::vector<float> radiances; // W/cm²/sr, the top row first
    RadianceFacts facts;
};

// "exr, tif, tiff, npy".
std::string radianceFormats();
// Whether the path's extension is one of them.
bool isRadiancePath(const std::string& path);

// Writes the picture in the format of the path's extension; a file has its name only once it is whole. NPY holds no
// facts: they lie beside it, in a file with ".json" after the name. The same picture makes the same bytes. Answers what
// went wrong, with the path before it.
std::optional<Problem> writeRadiance(const RadianceImage& image, const std::string& path);

// The facts as a JSON object.
std::string factsText(const RadianceFacts& facts);

// The bytes of a file in each format; empty when the library behind it failed.
std::string exrBytes(const RadianceImage& image);
std::string tiffBytes(const RadianceImage& image);
std::string npyBytes(const RadianceImage& image);
} // namespace sorvane
