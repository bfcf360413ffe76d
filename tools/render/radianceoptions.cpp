// The options of `sorvane render` that make pictures of radiances.
#include "radianceoptions.h"

#include <algorithm>
#include <cmath>

#include <CLI/CLI.hpp>

#include "finiterange.h"
#include "picturesize.h"
#include "radiancefile.h"
#include "renderplan.h"
#include "shortestnumber.h"

namespace sorvane {
namespace {
constexpr int kLargestSide = 4096; // pixels

// Whether a number is absent or from `least` to `most`; what is not a number isn't.
bool isWithin(const std::optional<double>& number, double least, double most) {
    return !number || (*number >= least && *number <= most);
}

std::optional<Problem> problemOfSensor(const SensorModel& sensor) {
    constexpr double kLargest = 1e30; // W/cm²/sr
    if (!isWithin(sensor.blur, 0.0, kLargestBlur))
        return "--blur is a standard deviation from 0 to " + shortestText(kLargestBlur) + " pixels";
    if (!isWithin(sensor.noise, 0.0, kLargest))
        return "--noise is a radiance of 0 or more, in W/cm2/sr";
    if (sensor.bits && (*sensor.bits < 1 || *sensor.bits > kMostBits))
        return "--bits is from 1 to " + std::to_string(kMostBits);
    if (!isWithin(sensor.fullScale, 0.0, kLargest) || sensor.fullScale == 0.0)
        return "--full-scale is a radiance above 0, in W/cm2/sr";
    if (sensor.bits.has_value() != sensor.fullScale.has_value())
        return "--bits and --full-scale go together";
    return {};
}
} // namespace

void addRadianceOptions(CLI::App& parser, RenderRequest& request) {
    RadianceOptions& options = request.radiance;
    SensorModel& sensor = options.sensor;
    CLI::Option* const radiance = parser.add_flag(
        "--radiance", options.isOn,
        "Write what reaches the eye in W/cm2/sr, as 32-bit floats, without lines and texts: .exr, .tif or .npy");
    const auto add = [&](const char* name, auto& value, const char* type, const char* description) {
        parser.add_option(name, value, description)->type_name(type)->needs(radiance);
    };
    parser
        .add_option_function<std::string>(
            "--sensor",
            [&request](const std::string& text) {
                const std::optional<QSize> size = pictureSizeOf(text);
                if (!size)
                    throw CLI::ValidationError("--sensor", "columns and rows of pixels are wanted, such as 128x128");
                request.size = *size;
            },
            "Columns and rows of the sensor, in place of --size; each pixel has the mean over its solid angle")
        ->type_name("WxH")
        ->needs(radiance)
        ->excludes("--size");
    add("--background", options.background, "VALUE",
        "Radiance where nothing is, W/cm2/sr (default: the sky's of the followed engagement)");
    add("--blur", sensor.blur, "PIXELS", "Blur by a Gaussian of this standard deviation; the sum stays");
    add("--noise", sensor.noise, "NEP",
        "Add noise of this standard deviation, W/cm2/sr, after the blur: the same for the same seed and frame");
    add("--seed", sensor.seed, "N", "Which noise (default 0)");
    add("--bits", sensor.bits, "N", "Digitise, after the noise, in 2^N steps from 0 to --full-scale");
    add("--full-scale", sensor.fullScale, "VALUE", "Radiance of the highest step, W/cm2/sr");
    parser
        .add_option(
            "--flare-scale", options.flareScale,
            "Intensity in W/sr of a flare of brightness 1, for --radiance, --scale and the pane seeker")
        ->type_name("INTENSITY")
        ->capture_default_str()
        ->check(finiteRange(1e-30, 1e30));
}

bool showsRadiances(const RenderRequest& request) {
    return request.radiance.isOn || !request.scale.isOrdinary() ||
           std::ranges::any_of(request.panes, &ViewChoice::isSeeker);
}

std::optional<Problem> problemOfFlareScale(const RenderRequest& request) {
    if (request.radiance.flareScale != RadianceOptions().flareScale && !showsRadiances(request))
        return "--flare-scale is for radiances: --radiance, --scale or the pane seeker";
    return {};
}

std::optional<Problem> problemOfRadiance(const RenderRequest& request) {
    if (!request.radiance.isOn)
        return {};
    if (!isRadiancePath(request.output))
        return request.output + ": a radiance picture is one of " + radianceFormats();
    if (request.texts.hasReadout || request.texts.hasLabels || !request.texts.title.empty())
        return "--radiance has no texts: leave out --readout, --labels and --title";
    if (request.scale != PictureScale())
        return "--radiance has no colours: leave out --scale, --palette and --colour-bar";
    if (!request.panes.empty())
        return "--radiance has one view: leave out --panes";
    if (request.scene.samples > 0)
        return "--radiance takes means over pixels by itself: leave out --antialias";
    if (request.size.width() > kLargestSide || request.size.height() > kLargestSide)
        return "a radiance picture has at most " + std::to_string(kLargestSide) + " pixels a side";
    if (request.radiance.background && !std::isfinite(*request.radiance.background))
        return "--background is a radiance in W/cm2/sr";
    return problemOfSensor(request.radiance.sensor);
}

void spellOut(const RadianceOptions& options, std::vector<std::string>& words) {
    if (options.flareScale != RadianceOptions().flareScale)
        words.insert(words.end(), {"--flare-scale", shortestText(options.flareScale)});
    if (!options.isOn)
        return;
    words.emplace_back("--radiance");
    const auto add = [&words](const char* name, const auto& value) {
        if (value)
            words.insert(words.end(), {name, shortestText(*value)});
    };
    add("--background", options.background);
    add("--blur", options.sensor.blur);
    add("--noise", options.sensor.noise);
    if (options.sensor.noise)
        words.insert(words.end(), {"--seed", std::to_string(options.sensor.seed)});
    add("--bits", options.sensor.bits);
    add("--full-scale", options.sensor.fullScale);
}
} // namespace sorvane
