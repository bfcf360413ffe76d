// The options of `sorvane render` that choose what a picture's colours mean in radiance.
#include "scaleoptions.h"

#include <cmath>
#include <map>

#include <CLI/CLI.hpp>

#include "shortestnumber.h"

namespace sorvane {
namespace {
constexpr const char* kFixed = "fixed";
constexpr const char* kAutomatic = "auto";

void readScale(const std::string& text, PictureScale& scale) {
    if (text == kFixed) {
        scale.range = PictureScale::Range::Fixed;
    } else if (text == kAutomatic) {
        scale.range = PictureScale::Range::Automatic;
    } else {
        double white = 0.0;
        if (!CLI::detail::lexical_cast(text, white) || !(white > 0.0) || !std::isfinite(white))
            throw CLI::ValidationError("--scale", "fixed, auto or the radiance of white, above 0, is wanted");
        scale.range = PictureScale::Range::Chosen;
        scale.white = white;
    }
}
} // namespace

void addScaleOptions(CLI::App& parser, PictureScale& scale) {
    parser
        .add_option_function<std::string>(
            "--scale", [&scale](const std::string& text) { readScale(text, scale); },
            "Radiances from black to white: fixed (0 to 1/3000 W/cm2/sr), auto (2nd to 99.8th percentile of the "
            "followed bodies and the ground), or from 0 to this (default fixed)")
        ->type_name("fixed|auto|VALUE");
    std::map<std::string, Palette> palettes;
    for (const PaletteName& name : kPalettes)
        palettes[name.option] = name.palette;
    parser
        .add_option_function<std::string>(
            "--palette", [&scale, palettes](const std::string& name) { scale.palette = palettes.at(name); },
            "Colours of radiances: grey, inverted, viridis or inferno (default grey)")
        ->check(CLI::IsMember(palettes))
        ->type_name("PALETTE");
    parser.add_flag("--colour-bar", scale.hasColourBar, "Draw a bar that tells which radiance has which colour");
}

void spellOut(const PictureScale& scale, std::vector<std::string>& words) {
    if (scale.range == PictureScale::Range::Automatic)
        words.insert(words.end(), {"--scale", kAutomatic});
    if (scale.range == PictureScale::Range::Chosen)
        words.insert(words.end(), {"--scale", shortestText(scale.white)});
    if (scale.palette != Palette::Grey)
        words.insert(words.end(), {"--palette", nameOf(scale.palette).option});
    if (scale.hasColourBar)
        words.emplace_back("--colour-bar");
}
} // namespace sorvane
