// The keys that choose what the colours of a view mean in radiance.
#include "scalekeys.h"

#include <algorithm>
#include <cmath>

namespace sorvane {
namespace {
constexpr double kStep = 1.2589254117941673; // ten of them are a power of ten
constexpr double kLeastWhite = 1e-12;        // W/cm²/sr
constexpr double kMostWhite = 1e6;

// Off, the fixed scale with its bar, the automatic one, off.
PictureScale cycled(PictureScale scale) {
    if (scale == PictureScale())
        return {.hasColourBar = true};
    if (scale.range == PictureScale::Range::Automatic)
        return {};
    scale.range = PictureScale::Range::Automatic;
    scale.hasColourBar = true;
    return scale;
}

PictureScale withWhite(PictureScale scale, const ScaleEnds& shown, double factor) {
    double white = ScaleEnds().white;
    if (scale.range == PictureScale::Range::Automatic)
        white = shown.white;
    else if (scale.range == PictureScale::Range::Chosen)
        white = scale.white; // which may not have been shown yet
    scale.range = PictureScale::Range::Chosen;
    scale.hasColourBar = true;
    scale.white = std::clamp(white * factor, kLeastWhite, kMostWhite);
    return scale;
}

PictureScale withNextPalette(PictureScale scale) {
    const auto current = std::ranges::find(kPalettes, scale.palette, &PaletteName::palette);
    scale.palette = current + 1 == kPalettes.end() ? kPalettes.front().palette : (current + 1)->palette;
    scale.hasColourBar = true;
    return scale;
}
} // namespace

std::optional<PictureScale> scaleAfter(KeyCommand command, PictureScale scale, const ScaleEnds& shown) {
    switch (command) {
    case KeyCommand::CycleScale:
        return cycled(scale);
    case KeyCommand::CyclePalette:
        return withNextPalette(scale);
    case KeyCommand::ScaleUp:
        return withWhite(scale, shown, kStep);
    case KeyCommand::ScaleDown:
        return withWhite(scale, shown, 1.0 / kStep);
    default:
        return std::nullopt;
    }
}

QString scaleText(const PictureScale& scale) {
    if (scale == PictureScale())
        return QStringLiteral("Scale off: white is 1/3000 W/cm²/sr");
    const QString palette = QString::fromLatin1(nameOf(scale.palette).shown);
    switch (scale.range) {
    case PictureScale::Range::Fixed:
        break;
    case PictureScale::Range::Automatic:
        return QStringLiteral("Scale: automatic, %1").arg(palette);
    case PictureScale::Range::Chosen:
        return QStringLiteral("Scale: up to %1 W/cm²/sr, %2").arg(QString::number(scale.white, 'e', 1), palette);
    }
    return QStringLiteral("Scale: up to 1/3000 W/cm²/sr, %1").arg(palette);
}
} // namespace sorvane
