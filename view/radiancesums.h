// Puts a radiance picture together of parts that were sampled more finely than the rest.
#pragma once

#include <array>
#include <cstddef>
#include <span>
#include <vector>

#include "pixelplane.h"

namespace sorvane {
// A grid of samples over a box of tangents of an eye that looks another way than the picture's.
struct SampledBox {
    std::array<double, 9> toPicture{}; // row by row: from this eye's coordinates to the picture's, a rotation
    TangentBox box;
    int columns = 0;
    int rows = 0;
};

// Every pixel becomes the mean of the radiances in it, by solid angle: of the finest box as far as that reaches into
// it, of the next one for the rest, and of the picture without boxes for what remains. So what a box holds adds up to
// the same sum over the picture, however much smaller than a pixel it is and wherever it lies between pixels.
class RadianceSums {
public:
    explicit RadianceSums(const PixelPlane& plane);

    // Takes the samples of a box, the bottom row first; the boxes with the finer samples come first.
    void add(const SampledBox& sampled, std::span<const float> radiances);

    // The picture, the top row first, `rest` being the same without what the boxes show.
    std::vector<float> over(std::span<const float> rest) const;

private:
    struct Pixel {
        double radiance = 0.0; // times the share
        double share = 0.0;    // of the solid angle, up to 1
        bool isWhole = false;
    };
    struct Range {
        int firstColumn = 0;
        int endColumn = 0;
        int firstRow = 0;
        int endRow = 0;

        bool meets(const Range& other) const {
            return firstColumn < other.endColumn && other.firstColumn < endColumn && firstRow < other.endRow &&
                   other.firstRow < endRow;
        }
        std::size_t indexOf(int column, int row) const {
            return static_cast<std::size_t>(row - firstRow) * static_cast<std::size_t>(endColumn - firstColumn) +
                   static_cast<std::size_t>(column - firstColumn);
        }
    };
    // What samples of one box are in a pixel.
    struct Part {
        double radiance = 0.0; // times solid angle
        double solidAngle = 0.0;
    };
    struct Added {
        SampledBox sampled;
        Range range;
    };

    Range rangeOf(const SampledBox& sampled) const;
    std::vector<Part> partsOf(const Added& added, std::span<const float> radiances) const;
    bool covers(const SampledBox& sampled, int column, int row) const;

    PixelPlane plane_;
    std::vector<Pixel> pixels_; // the top row first
    std::vector<Added> added_;
};
} // namespace sorvane
