// `sorvane convert`: writes a trajectory again, cut, scaled, moved or turned.
#include "convertcommand.h"

#include <cmath>
#include <memory>
#include <optional>
#include <string>

#include <CLI/CLI.hpp>

#include <QStringList>

#include "exactreader.h"
#include "exactwriter.h"
#include "inputtexts.h"
#include "lzw.h"
#include "placement.h"
#include "resultfile.h"
#include "shortestnumber.h"
#include "timecut.h"
#include "trajectoryfile.h"
#include "unwrap.h"
#include "wordconversion.h"

namespace sorvane {
namespace {
struct ConvertOptions {
    std::string file;
    std::string output = "-";
    std::optional<double> from;
    std::optional<double> to;
    std::string origin;
    std::string scale;
    std::string axes;
    std::optional<double> headingOfX;
    bool unwrapsAngles = false;
};

// What is wrong, for people; nothing when all is well.
using Complaint = std::optional<sorvane::Problem>;

std::optional<double> parseScale(const std::string& text) {
    constexpr double kMetresPerFoot = 0.3048;
    if (text == "ft-to-m")
        return kMetresPerFoot;
    if (text == "m-to-ft")
        return 1.0 / kMetresPerFoot;
    const std::optional<double> factor = toDouble(QString::fromStdString(text));
    return factor && *factor > 0.0 ? factor : std::nullopt;
}

// X,Y or X,Y,Z
std::optional<Triple> parsePoint(const std::string& text) {
    const QStringList parts = QString::fromStdString(text).split(u',');
    if (parts.size() != 2 && parts.size() != 3)
        return std::nullopt;
    Triple point{};
    for (std::size_t i = 0; i < static_cast<std::size_t>(parts.size()); ++i) {
        const std::optional<double> number = toDouble(parts[static_cast<qsizetype>(i)]);
        if (!number)
            return std::nullopt;
        point[i] = *number;
    }
    return point;
}

std::string counted(std::int64_t count, const char* thing) {
    return std::to_string(count) + " " + thing + (count == 1 ? "" : "s");
}

// The height at which the viewer draws the terrain's height 0.
double groundHeight(const std::vector<ExactSample>& samples) {
    for (const ExactSample& sample : samples)
        if (sample.time == 0.0)
            return sample.threatPosition[2];
    return 0.0;
}

// A run of the sub-command.
class ConvertRun {
public:
    ConvertRun(const ConvertOptions& options, Streams& streams) : options_(options), streams_(streams) {}

    ExitStatus run() {
        Complaint complaint = takeOptions();
        if (!complaint)
            complaint = convert();
        if (complaint) {
            say(complaint->text);
            return ExitStatus::Failed;
        }
        return isFaultless() ? ExitStatus::Success : ExitStatus::ProblemsFound;
    }

private:
    Complaint takeOptions() {
        for (const auto& [name, number] :
             {std::pair{"--from", options_.from}, {"--to", options_.to}, {"--heading-of-x", options_.headingOfX}})
            if (number && !std::isfinite(*number))
                return std::string(name) + " is no finite number";
        if (options_.from && options_.to && *options_.from > *options_.to)
            return "--from is later than --to";
        if (!options_.origin.empty()) {
            const std::optional<Triple> origin = parsePoint(options_.origin);
            if (!origin)
                return "--origin is not X,Y or X,Y,Z: " + options_.origin;
            placement_.origin = *origin;
        }
        if (!options_.scale.empty()) {
            const std::optional<double> scale = parseScale(options_.scale);
            if (!scale)
                return "--scale is neither ft-to-m nor m-to-ft nor a number above 0: " + options_.scale;
            placement_.scale = *scale;
        }
        if (!options_.axes.empty() && !(placement_.axes = Axes::parse(options_.axes)))
            return "--axes does not name each of x, y and z once, as in x,-y,-z: " + options_.axes;
        placement_.headingOfX = options_.headingOfX;
        return std::nullopt;
    }

    Complaint convert() {
        const sorvane::Outcome<TrajectoryInput> input = openTrajectoryFile(options_.file);
        if (!input)
            return input.problem();
        trajectory_ = readExactly(input->device.get(), input->isProcess);
        if (Complaint complaint = problemOfReading(*input, !trajectory_.samples.empty(), options_.file))
            return complaint;
        if (options_.unwrapsAngles)
            unwrapAngles(trajectory_.samples);
        const double groundBefore = groundHeight(trajectory_.samples);
        trajectory_.samples = timeCut(trajectory_.samples, options_.from, options_.to);
        if (trajectory_.samples.empty())
            return inputName(options_.file) + ": has no samples between --from and --to";
        const double groundAfter = groundHeight(trajectory_.samples);
        place(trajectory_.samples, placement_);
        if (!fitsSinglePrecision(trajectory_.samples))
            return inputName(options_.file) + ": its numbers become too large";
        if (Complaint complaint = write())
            return complaint;
        if (groundBefore != groundAfter)
            say("note: the viewer draws the terrain's height 0 where the threat is at time 0, which is now at z = " +
                shortestText(groundAfter) + " of the file instead of " + shortestText(groundBefore));
        return std::nullopt;
    }

    Complaint write() const {
        std::string text = writtenTrajectory(trajectory_);
        if (options_.output.ends_with(".Z"))
            text = sorvane::lzwCompressed(text);
        return writeResult(options_.output, streams_, [&](std::ostream& out) { out << text; });
    }

    // What the viewer reads in silence and what is therefore written so: what looked broken now looks sound.
    bool isFaultless() const {
        const std::string name = inputName(options_.file);
        if (trajectory_.badNumbers > 0)
            say(name + ":" + std::to_string(trajectory_.firstBadLine) + ": " +
                counted(trajectory_.badNumbers, "number") +
                " from here on can't be read or are missing, and were written as 0; see sorvane check");
        if (trajectory_.isTruncated)
            say(name + ": the data end within a record; what it lacks was written as 0");
        if (trajectory_.linesNotRead > 0)
            say(name + ": a blank line ends the data, and " + counted(trajectory_.linesNotRead, "line") +
                " behind it were not read");
        return trajectory_.badNumbers == 0 && !trajectory_.isTruncated && trajectory_.linesNotRead == 0;
    }

    void say(const std::string& text) const { streams_.err << "sorvane convert: " << text << std::endl; }

    const ConvertOptions& options_;
    Streams& streams_;
    Placement placement_;
    ExactTrajectory trajectory_;
};
} // namespace

SubCommand addConvertCommand(CLI::App& parent) {
    const auto options = std::make_shared<ConvertOptions>();
    CLI::App* const parser =
        parent.add_subcommand("convert", "Write a trajectory again: cut, moved, scaled, with other axes.");
    parser->add_option("FILE", options->file, "Trajectory to read; - is standard input")->required();
    parser
        ->add_option(
            "-o,--output", options->output,
            "File to write, compressed when its name ends in .Z; standard output without it")
        ->type_name("OUT");
    parser->add_option("--from", options->from, "Leave out what is before this time, which becomes time 0")
        ->type_name("SECONDS");
    parser->add_option("--to", options->to, "Leave out what is after this time")->type_name("SECONDS");
    parser
        ->add_option(
            "--origin", options->origin,
            "Point that becomes the origin, in the file's units and axes, for maps' coordinates such as UTM; without Z "
            "heights stay")
        ->type_name("X,Y[,Z]");
    parser
        ->add_option(
            "--scale", options->scale,
            "What lengths are multiplied by: a number, ft-to-m or m-to-ft. The brightness of flares goes with its "
            "square, so that they look as before")
        ->type_name("FACTOR");
    parser
        ->add_option(
            "--axes", options->axes,
            "The viewer's x, y and z (down) by the file's axes, each with a minus if it points the other way: x,-y,-z "
            "for x forward, y left, z up. Positions and angles turn alike; the angles are those about the file's axes")
        ->type_name("X,Y,Z");
    parser
        ->add_option(
            "--heading-of-x", options->headingOfX,
            "The file's angles are roll (right wing down), pitch (nose up) and heading (from north towards east), "
            "whatever its axes: write yaw as the heading less that of the written x, which is 90 when x is east")
        ->type_name("DEGREES");
    parser->add_flag(
        "--unwrap-angles", options->unwrapsAngles,
        "Add full turns to angles that jump by more than 180 degrees from one sample to the next, which would turn the "
        "long way round");
    parser->footer("The piece is cut out first, then moved, scaled and turned. Header and comments stay as they are.\n"
                   "Numbers are the shortest that read back equal, those that are worked out to 15 digits.");
    return {parser, [options](Streams& streams) {
                return ConvertRun(*options, streams).run();
            }};
}
} // namespace sorvane
