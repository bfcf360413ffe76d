// The colours that stand for radiances.
#pragma once

#include <array>
#include <span>

#include <QRgb>

namespace sorvane {
enum class Palette { Grey, Inverted, Viridis, Inferno };

struct PaletteName {
    Palette palette = Palette::Grey;
    const char* option = ""; // on the command line
    const char* shown = "";
};
inline constexpr std::array<PaletteName, 4> kPalettes = {{
    {Palette::Grey, "grey", "grey"},
    {Palette::Inverted, "inverted", "inverted grey"},
    {Palette::Viridis, "viridis", "viridis"},
    {Palette::Inferno, "inferno", "inferno"},
}};
const PaletteName& nameOf(Palette palette);

// Opaque, from the least radiance to the greatest.
std::span<const QRgb, 256> coloursOf(Palette palette);
} // namespace sorvane
