// What the colours of a picture mean in radiance.
#pragma once

#include "palette.h"
#include "radiancegrey.h"

namespace sorvane {
// The radiances of a palette's first and last colour, W/cm²/sr; what lies beyond is as they are.
struct ScaleEnds {
    double black = 0.0;
    double white = 1.0 / double{kGreysPerRadiance};

    bool operator==(const ScaleEnds&) const = default;
};

struct PictureScale {
    enum class Range {
        Fixed,     // the ends that a picture has always had
        Automatic, // from the 2nd to the 99.8th percentile of the followed bodies and the ground, each frame anew
        Chosen,    // from 0 to `white`
    };

    Range range = Range::Fixed;
    double white = ScaleEnds().white; // W/cm²/sr
    Palette palette = Palette::Grey;
    bool hasColourBar = false;

    // Whether it is that of the scene as it is drawn without a scale.
    bool isOrdinary() const { return range == Range::Fixed && palette == Palette::Grey; }
    bool operator==(const PictureScale&) const = default;
};
} // namespace sorvane
