// `sorvane signature`: what bodies radiate into all directions.
#include "signaturecommand.h"

#include <charconv>
#include <cmath>
#include <filesystem>
#include <map>
#include <memory>

#include <QApplication>

#include <CLI/CLI.hpp>

#include "filekind.h"
#include "finiterange.h"
#include "inputtexts.h"
#include "interrupt.h"
#include "litbody.h"
#include "picturefile.h"
#include "picturesize.h"
#include "plotfile.h"
#include "progressbar.h"
#include "resultfile.h"
#include "shortestnumber.h"
#include "signatureplot.h"
#include "signaturetables.h"
#include "textapplication.h"
#include "unitoption.h"

namespace sorvane {
namespace {
constexpr double kLargestRange = 1e12; // units

struct SignatureOptions {
    std::vector<std::string> inputs;
    std::vector<std::string> outputs;
    BodyChoice files;
    LightChoice light;
    std::string attitude;
    LengthUnit unit = LengthUnit::Unstated;
    double step = SignatureGrid::kUsualStep;
    double range = SignatureGrid().range();
    double elevation = 0.0;
    std::string size = "800x800";
    bool isDark = false;
    bool isJson = false;
};

using Complaint = std::optional<sorvane::Problem>;

// "1,2,3"; nothing for what is not three finite numbers.
std::optional<std::array<double, 3>> threeNumbers(const std::string& text) {
    std::array<double, 3> numbers{};
    const char* at = text.data();
    const char* const end = at + text.size();
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        if (i > 0 && (at == end || *at++ != ','))
            return std::nullopt;
        const auto [after, error] = std::from_chars(at, end, numbers[i]);
        if (error != std::errc() || !std::isfinite(numbers[i]))
            return std::nullopt;
        at = after;
    }
    return at == end ? std::optional(numbers) : std::nullopt;
}

class SignatureRun {
public:
    SignatureRun(const SignatureOptions& options, Streams& streams) : options_(options), streams_(streams) {}

    Complaint run() {
        LightChoice light = options_.light;
        if (!options_.attitude.empty() && !(light.attitudeDegrees = threeNumbers(options_.attitude)))
            return "--attitude is not ROLL,PITCH,YAW: " + options_.attitude;
        if (!SignatureGrid::isStep(options_.step))
            return "--step is not a part of 90 degrees, or is below 0.5";
        if (Complaint complaint = checkOutputs())
            return complaint;
        if (light.time && !std::isfinite(*light.time))
            return "--at-time is a number of seconds";
        const BodyChoice& files = options_.files;
        if (options_.inputs.size() > 1 &&
            !(files.reflectance.empty() && files.radiance.empty() && files.rotors.empty()))
            return "--reflectance, --radiance and --rotors are for one body";
        for (const std::string& input : options_.inputs)
            if (Complaint complaint = add(input, light))
                return complaint;
        return write();
    }

private:
    Complaint checkOutputs() const {
        if (!pictureSizeOf(options_.size))
            return "--size is not WIDTHxHEIGHT: " + options_.size;
        for (const std::string& output : options_.outputs)
            if (!isJsonFile(output) && !plotFormatOf(QString::fromStdString(output)))
                return output + ": its name ends in none of .csv, .json, .png, .svg and .pdf";
        return std::nullopt;
    }

    static bool isJsonFile(const std::string& output) { return extensionOf(output) == "json"; }

    Complaint add(const std::string& input, const LightChoice& light) {
        const bool isTrajectory = input == "-" || fileKindOf(input) == FileKind::Trajectory;
        const BodyChoice& files = options_.files;
        if (isTrajectory && (light.attitudeDegrees || !(files.reflectance + files.radiance + files.band).empty()))
            return "--reflectance, --radiance, --band and --attitude are for a body alone: " + inputName(input) +
                   " says itself";
        if (!isTrajectory && light.isThreat)
            return "--body is for a trajectory: " + input;
        const Outcome<LitBody> body =
            isTrajectory ? bodyOfTrajectory(input, options_.files, light) : bodyAlone(input, options_.files, light);
        if (!body)
            return body.problem();
        const SignatureGrid grid(options_.step, options_.range);
        if (!(options_.range > body->body.radius()))
            return "--range is within " + body->name + ", which reaches " + shortestText(body->body.radius()) +
                   " units from its origin";
        const Interrupt interrupt;
        ProgressBar bar(streams_, static_cast<std::int64_t>(grid.size()), "directions");
        SignatureWork work;
        work.progress = [&](double share) {
            bar.show(static_cast<std::int64_t>(share * static_cast<double>(grid.size())));
            return Interrupt::requested() == 0;
        };
        SignatureMap map = signatureOf(body->body, body->light, grid, metresPer(options_.unit), work);
        if (map.points.empty())
            return "interrupted";
        signatures_.push_back({body->name, body->body.facets().size(), body->light, body->time, std::move(map)});
        return std::nullopt;
    }

    Complaint write() {
        if (options_.isJson)
            writeJson(streams_.out, signatures_);
        else if (options_.outputs.empty())
            writeSummary(streams_.out, signatures_);
        for (const std::string& output : options_.outputs)
            if (Complaint complaint = writeTo(output))
                return complaint;
        return std::nullopt;
    }

    Complaint writeTo(const std::string& output) {
        const std::optional<PlotFormat> format = plotFormatOf(QString::fromStdString(output));
        if (!format || *format == PlotFormat::Csv)
            return writeResult(output, streams_, [&](std::ostream& out) {
                isJsonFile(output) ? writeJson(out, signatures_) : writeCsv(out, signatures_);
            });
        const TextApplication application(makeApplication<QApplication>);
        if (application.problem())
            return application.problem();
        PolarPlot plot(polarOf(signatures_, options_.elevation), options_.isDark ? darkPlotTheme() : lightPlotTheme());
        const QByteArray bytes = plotPicture(plot, *format, *pictureSizeOf(options_.size));
        if (bytes.isEmpty())
            return "a plot of " + options_.size + " can't be drawn";
        return writeResult(output, streams_, [&](std::ostream& out) { out.write(bytes.data(), bytes.size()); });
    }

    const SignatureOptions& options_;
    Streams& streams_;
    std::vector<NamedSignature> signatures_;
};

void addBodyOptions(CLI::App& parser, SignatureOptions& options) {
    parser.add_option("--reflectance", options.files.reflectance, "Reflectance file of a BODY")->type_name("FILE");
    parser.add_option("--radiance", options.files.radiance, "Radiance file of a BODY")->type_name("FILE");
    parser
        .add_option(
            "--band", options.files.band,
            "Of several files beside a BODY those that have _b000 and this digit in their name")
        ->type_name("DIGIT");
    parser.add_option("--rotors", options.files.rotors, "Rotor file, whose facets turn with the time")
        ->type_name("FILE");
    addUnitOption(parser, options.unit, "What one of the body's units of length is; a metre without it");
}

void addLightOptions(CLI::App& parser, SignatureOptions& options) {
    parser
        .add_option(
            "--atm", options.light.atmosphere,
            "Atmosphere file with sun, sky and earth; without it that of the trajectory, and for a BODY none, so that "
            "it shows what it emits, and reflects of its own facets")
        ->type_name("FILE");
    parser
        .add_option(
            "--attitude", options.attitude,
            "How a BODY stands in the world of the atmosphere, as a trajectory has it; 0,0,0 without it")
        ->type_name("ROLL,PITCH,YAW");
    parser
        .add_option(
            "--at-time", options.light.time,
            "Time in seconds, for the attitude in a trajectory and for rotors; without it that of the first sample, or "
            "0")
        ->type_name("SECONDS");
    parser
        .add_option_function<std::string>(
            "--body", [&options](const std::string& name) { options.light.isThreat = name == "threat"; },
            "Which body of a TRAJECTORY: target or threat")
        ->type_name("BODY")
        ->default_str("target")
        ->check(CLI::IsMember({"target", "threat"}));
}
} // namespace

SubCommand addSignatureCommand(CLI::App& parent) {
    const auto options = std::make_shared<SignatureOptions>();
    CLI::App* const parser =
        parent.add_subcommand("signature", "Work out the radiant intensity of bodies in all directions.");
    parser
        ->add_option(
            "BODY", options->inputs, "Geometry files of bodies, or trajectories with a body; - is standard input")
        ->required();
    parser
        ->add_option(
            "-o,--output", options->outputs,
            "File to write: .csv or .json for the numbers, .svg, .pdf or .png for a polar plot; may be given several "
            "times. Without it a summary is printed")
        ->type_name("OUT")
        ->allow_extra_args(false);
    parser->add_flag("--json", options->isJson, "Print one JSON object");
    parser->add_option("--step", options->step, "Between directions, in degrees: a part of 90")
        ->type_name("DEGREES")
        ->capture_default_str();
    parser
        ->add_option(
            "--range", options->range,
            "Distance from the body's origin in its units: the apparent intensity from there, to which a radiance "
            "picture from there adds up; without it from far away")
        ->type_name("UNITS")
        ->check(finiteRange(0.0, kLargestRange));
    addBodyOptions(*parser, *options);
    addLightOptions(*parser, *options);
    parser->add_option("--elevation", options->elevation, "Elevation of the polar plot, in degrees")
        ->type_name("DEGREES")
        ->check(finiteRange(-90.0, 90.0))
        ->capture_default_str();
    parser->add_option("--size", options->size, "Size of the plot in pixels; on a page of PDF there are 96 to the inch")
        ->type_name("WIDTHxHEIGHT")
        ->capture_default_str();
    parser
        ->add_option_function<std::string>(
            "--theme", [options](const std::string& name) { options->isDark = name == "dark"; }, "light or dark")
        ->type_name("THEME")
        ->default_str("light")
        ->check(CLI::IsMember({"light", "dark"}));
    return {parser, [options](Streams& streams) {
                SignatureRun run(*options, streams);
                if (Complaint complaint = run.run()) {
                    streams.err << "sorvane signature: " << complaint->text << std::endl;
                    return ExitStatus::Failed;
                }
                return ExitStatus::Success;
            }};
}
} // namespace sorvane
