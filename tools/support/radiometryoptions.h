// The options of measures of radiation.
#pragma once

#include <string>
#include <vector>

#include "radiometer.h"

namespace CLI {
class App;
}

namespace sorvane {
// Adds --signature-step, --background, --flare-scale and --rotors. `options` must outlive the parser.
void addRadiometryOptions(CLI::App& parser, RadiometryOptions& options);

// Appends those that were given.
void spellOut(const RadiometryOptions& options, std::vector<std::string>& words);
} // namespace sorvane
