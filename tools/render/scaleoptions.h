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
// Adds --scale, --palette and --colour-bar. `scale` must outlive the parser.
void addScaleOptions(CLI::App& parser, PictureScale& scale);

// Appends the options that differ from a picture as ever.
void spellOut(const PictureScale& scale, std::vector<std::string>& words);
} // namespace sorvane
