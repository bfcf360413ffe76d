// One sample of a spectral library in ASTER format, reduced to its mean reflectance over a band.
#pragma once

#include <string>
#include <string_view>

namespace sorvane {
class TextHead;
} // namespace sorvane

inline constexpr const char* ASTER_EXT = "txt";

// Text, lines of at most 511 characters: kHeaderLines lines that are skipped, then lines of two numbers, a wavelength
// and a reflectance in percent, with wavelengths rising or falling.
class Aster {
public:
    static constexpr int kHeaderLines = 26;

    // Whether a text, of which no line counts as a comment, begins like a sample.
    static bool looksLike(const sorvane::TextHead& head);

    // One entry of the process-wide cache, which only grows.
    struct asterdata {
        std::string name;
        float reflectance = -1.0F;
        float lambda1 = 0.0F;
        float lambda2 = 0.0F;
    };

    // A class without a material.
    Aster() = default;

    // The sample in the file `path` over the band lambda1 to lambda2, in the file's unit of wavelength. A file that is
    // missing gives a class without a material, after a line on standard output.
    Aster(const std::string& path, float lambda1, float lambda2);

    // Averages the sample called name() over the band, or takes the mean from the cache. False after a message when the
    // file can't be opened.
    bool readFile(float lambda1, float lambda2);

    // The trapezoidal mean, as a fraction, of the sample's points inside the band. There is no interpolation at the
    // edges, and the mean of no point is not a number: deliberate, existing tables were made so.
    static float bandMean(std::string_view text, float lambda1, float lambda2);

    // Takes the sample `name` out of the cache, for every band.
    static void forget(const std::string& name);

    // Fills `out` with the arguments and a reflectance of -1, or that of the first cached entry that equals them.
    static bool hasBeenLoaded(const std::string& name, float lambda1, float lambda2, asterdata& out);

    // The file's path, "aster::alpha" without a material.
    const std::string& name() const { return name_; }
    // A fraction; -1 without a material.
    float getReflectance() const { return reflectance_; }
    // -1 without a material.
    float getEmissivity() const { return reflectance_ < 0.0F ? -1.0F : 1.0F - reflectance_; }
    bool isAlpha() const { return reflectance_ < 0.0F; }
    void print() const;

private:
    std::string name_ = "aster::alpha";
    float reflectance_ = -1.0F;
};
