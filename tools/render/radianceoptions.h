// The options of `sorvane render` that make pictures of radiances.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "problem.h"
#include "sensormodel.h"

namespace CLI {
class App;
}

namespace sorvane {
struct RenderRequest;

struct RadianceOptions {
    bool isOn = false;
    std::optional<double> background; // W/cm²/sr, in place of the followed engagement's sky
    double flareScale = 1.0;          // W/sr of a flare of brightness 1, in every picture that goes by radiances
    SensorModel sensor;
};

// Adds --radiance and the options that need it. `request` must outlive the parser.
void addRadianceOptions(CLI::App& parser, RenderRequest& request);

// Whether the picture's colours or numbers stand for radiances.
bool showsRadiances(const RenderRequest& request);

// What is wrong with a request for radiances, whatever the files hold; nothing when it can be tried.
std::optional<Problem> problemOfRadiance(const RenderRequest& request);
std::optional<Problem> problemOfFlareScale(const RenderRequest& request);

// Appends the options as given.
void spellOut(const RadianceOptions& options, std::vector<std::string>& words);
} // namespace sorvane
