// The colours that stand for radiances.
#include "palette.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "palettetables.h"

namespace sorvane {
namespace {
using Colours = std::array<QRgb, 256>;

template <class ColourOf> Colours coloursBy(const ColourOf& colourOf) {
    Colours colours{};
    for (std::size_t i = 0; i < colours.size(); ++i)
        colours[i] = colourOf(i);
    return colours;
}
Colours opaque(const std::array<std::uint32_t, 256>& table) {
    return coloursBy([&](std::size_t i) { return 0xFF000000U | table[i]; });
}
Colours greys(bool isInverted) {
    return coloursBy([&](std::size_t i) {
        const auto grey = static_cast<int>(isInverted ? 255 - i : i);
        return qRgb(grey, grey, grey);
    });
}
} // namespace

const PaletteName& nameOf(Palette palette) {
    return *std::ranges::find(kPalettes, palette, &PaletteName::palette);
}

std::span<const QRgb, 256> coloursOf(Palette palette) {
    static const std::array<Colours, 4> all = {greys(false), greys(true), opaque(kViridis), opaque(kInferno)};
    return all[static_cast<std::size_t>(palette)];
}
} // namespace sorvane
