// The colours that stand for radiances.
#include "palette.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace sorvane {
namespace {
using Colours = std::array<QRgb, 256>;

// Nine evenly spaced entries of the published tables (van der Walt and Smith, "A better default colormap for
// Matplotlib", 2015), with straight lines between them: the lightness rises evenly.
constexpr QRgb kViridis[] = {0x440154, 0x482878, 0x3E4A89, 0x31688E, 0x26828E, 0x1F9E89, 0x35B779, 0x6DCD59, 0xFDE725};
constexpr QRgb kInferno[] = {0x000004, 0x1F0C48, 0x550F6D, 0x88226A, 0xBA3655, 0xE35933, 0xF98C0A, 0xF9C932, 0xFCFFA4};
constexpr QRgb kGrey[] = {0x000000, 0xFFFFFF};
constexpr QRgb kInverted[] = {0xFFFFFF, 0x000000};

Colours between(std::span<const QRgb> anchors) {
    Colours colours{};
    const auto last = static_cast<double>(anchors.size() - 1);
    for (std::size_t i = 0; i < colours.size(); ++i) {
        const double place = static_cast<double>(i) / (static_cast<double>(colours.size()) - 1.0) * last;
        const auto first = std::min(static_cast<std::size_t>(place), anchors.size() - 2);
        const double share = place - static_cast<double>(first);
        const auto channel = [&](int (*of)(QRgb)) {
            return static_cast<int>(std::lround((1.0 - share) * of(anchors[first]) + share * of(anchors[first + 1])));
        };
        colours[i] = qRgb(channel(qRed), channel(qGreen), channel(qBlue));
    }
    return colours;
}
} // namespace

const PaletteName& nameOf(Palette palette) {
    return *std::ranges::find(kPalettes, palette, &PaletteName::palette);
}

std::span<const QRgb, 256> coloursOf(Palette palette) {
    static const std::array<Colours, 4> all = {
        between(kGrey), between(kInverted), between(kViridis), between(kInferno)};
    return all[static_cast<std::size_t>(palette)];
}
} // namespace sorvane
