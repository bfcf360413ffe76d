// What a sensor makes of a picture of radiances.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

namespace sorvane {
// The least and greatest values that the parts of a sensor take.
inline constexpr double kLargestBlur = 1000.0; // pixels
inline constexpr int kMostBits = 24;           // what a 32-bit float holds every step of

// Each part is off when it is not given. Radiances in W/cm²/sr.
struct SensorModel {
    std::optional<double> blur;      // standard deviation of the point-spread function, a Gaussian, in pixels
    std::optional<double> noise;     // standard deviation of what is added to every pixel
    std::uint64_t seed = 0;          // of the noise
    std::optional<int> bits;         // of the digitiser, 1 to kMostBits
    std::optional<double> fullScale; // the radiance of its highest step, above 0; given with the bits

    bool operator==(const SensorModel&) const = default;
};

// A picture, row by row.
struct SensorPicture {
    int width = 0;
    int height = 0;
    std::vector<float> values;
};

// Takes a picture, whose pixels are means over the sensor's pixels, through the sensor's parts in the order in which
// light meets them: blur by the optics, noise of the detector, steps of the digitiser. The noise is a function of seed,
// frame and pixel alone.
void applySensor(const SensorModel& model, std::uint64_t frame, SensorPicture& picture);

// Its steps, one by one.

// Spreads every value over its neighbours by a Gaussian of standard deviation `sigma` pixels, integrated over each
// pixel. What would leave the picture is reflected at its edges: the sum stays, and an even picture stays even.
void blur(double sigma, SensorPicture& picture);
// Adds a normally distributed number of standard deviation `deviation` to every value.
void addNoise(double deviation, std::uint64_t seed, std::uint64_t frame, SensorPicture& picture);
// Makes every value the nearest of 2^bits ones, evenly spaced from 0 to `fullScale`.
void digitise(int bits, double fullScale, SensorPicture& picture);
} // namespace sorvane
