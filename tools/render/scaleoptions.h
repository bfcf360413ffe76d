// The options of `sorvane render` that choose what a picture's colours mean in radiance.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "picturescale.h"
#include "problem.h"

namespace CLI {
class App;
}

namespace sorvane {
// Takes "fixed", "auto" or the radiance of white in W/cm²/sr, and what a palette is called. What is wrong with it, else
// nothing.
std::optional<Problem> takeScale(const std::string& text, PictureScale& scale);
std::optional<Problem> takePalette(const std::string& name, PictureScale& scale);

// Adds --scale, --palette and --colour-bar. `scale` must outlive the parser.
void addScaleOptions(CLI::App& parser, PictureScale& scale);

// Appends the options that differ from a picture as ever.
void spellOut(const PictureScale& scale, std::vector<std::string>& words);
} // namespace sorvane
