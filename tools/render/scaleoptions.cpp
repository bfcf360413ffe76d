// The options of `sorvane render` that choose what a picture's colours mean in radiance.
#include "scaleoptions.h"

#include <algorithm>
#include <cmath>
#include <string_view>

#include <CLI/CLI.hpp>

#include "shortestnumber.h"

namespace sorvane {
namespace {
constexpr const char* kFixed = "fixed";
constexpr const char* kAutomatic = "auto";
} // namespace

std::optional<Problem> takeScale(const std::string& text, PictureScale& scale) {
    double white = 0.0;
    if (text == kFixed) {
        scale.range = PictureScale::Range::Fixed;
    } else if (text == kAutomatic) {
        scale.range = PictureScale::Range::Automatic;
    } else if (CLI::detail::lexical_cast(text, white) && white > 0.0 && std::isfinite(white)) {
        scale.range = PictureScale::Range::Chosen;
        scale.white = white;
    } else {
        return Problem{"--scale: fixed, auto or the radiance of white, above 0, is wanted"};
    }
    return std::nullopt;
}

std::optional<Problem> takePalette(const std::string& name, PictureScale& scale) {
    const auto* const found =
        std::ranges::find(kPalettes, name, [](const PaletteName& known) { return std::string_view(known.option); });
    if (found == kPalettes.end())
        return Problem{"--palette is grey, inverted, viridis or inferno"};
    scale.palette = found->palette;
    return std::nullopt;
}

void addScaleOptions(CLI::App& parser, PictureScale& scale) {
    parser
        .add_option_function<std::string>(
            "--scale",
            [&scale](const std::string& text) {
                if (const std::optional<Problem> problem = takeScale(text, scale))
                    throw CLI::ValidationError(problem->text);
            },
            "Radiances from black to white: fixed (0 to 1/3000 W/cm2/sr), auto (2nd to 99.8th percentile of the "
            "followed bodies and the ground), or from 0 to this (default fixed)")
        ->type_name("fixed|auto|VALUE");
    std::vector<std::string> names;
    names.reserve(std::size(kPalettes));
    for (const PaletteName& name : kPalettes)
        names.emplace_back(name.option);
    parser
        .add_option_function<std::string>(
            "--palette", [&scale](const std::string& name) { static_cast<void>(takePalette(name, scale)); },
            "Colours of radiances: grey, inverted, viridis or inferno (default grey)")
        ->check(CLI::IsMember(names))
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
