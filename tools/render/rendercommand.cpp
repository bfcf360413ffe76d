// `sorvane render`: pictures and movies of engagements, without a window.
#include "rendercommand.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <map>
#include <memory>
#include <string>

#include <CLI/CLI.hpp>

#include "picturesize.h"
#include "radianceoptions.h"
#include "rendering.h"
#include "scaleoptions.h"
#include "unitoption.h"

namespace sorvane {
namespace {
struct RenderArguments {
    RenderRequest request;
    bool printsCommand = false;
};

// Reads a number off the front of `text`; false when there is none.
bool takeNumber(std::string_view& text, float& number) {
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc())
        return false;
    text.remove_prefix(static_cast<std::size_t>(end - text.data()));
    return true;
}

bool takeCharacter(std::string_view& text, char wanted) {
    if (text.empty() || text.front() != wanted)
        return false;
    text.remove_prefix(1);
    return true;
}

std::array<float, 3> pointOf(const std::string& option, std::string_view text) {
    std::array<float, 3> point{};
    if (!takeNumber(text, point[0]) || !takeCharacter(text, ',') || !takeNumber(text, point[1]) ||
        !takeCharacter(text, ',') || !takeNumber(text, point[2]) || !text.empty() ||
        !std::ranges::all_of(point, [](float value) { return std::isfinite(value); }))
        throw CLI::ValidationError(option, "three numbers with commas between them are wanted, such as 100,0,-250.5");
    return point;
}

QSize sizeOf(std::string_view text) {
    const std::optional<QSize> size = pictureSizeOf(text);
    if (!size)
        throw CLI::ValidationError("--size", "width and height in pixels are wanted, such as 640x480");
    return *size;
}

void addOutputOptions(CLI::App& parser, RenderArguments& arguments) {
    RenderRequest& request = arguments.request;
    parser.add_option("FILE", request.files, "Trajectory files, all drawn into one scene; - is standard input")
        ->required();
    parser
        .add_option(
            "-o,--output", request.output,
            "What to make, by its extension: a movie (.mp4, .webm, .avi, .mpg), a picture (.png and what Qt writes), "
            "or numbered "
            "pictures when the name holds a number, as in frame-%04d.png; the numbers begin at 0")
        ->required()
        ->type_name("OUT");
    parser
        .add_option_function<std::string>(
            "--size", [&request](const std::string& text) { request.size = sizeOf(text); },
            "Width and height in pixels; for a movie multiples of 8 (default 640x480)")
        ->type_name("WxH");
    parser.add_flag(
        "--allow-missing", request.allowsMissing,
        "Give status 0, too, when bodies or terrain are missing, can't be used or have been replaced by the stock "
        "ones");
    parser.add_flag(
        "--print-command", arguments.printsCommand,
        "Print the command that makes the same pictures, with every default spelt out");
}

void addTimeOptions(CLI::App& parser, RenderRequest& request) {
    const auto add = [&parser](const char* name, std::optional<double>& seconds, const char* description) {
        parser.add_option(name, seconds, description)->type_name("SECONDS");
    };
    add("--at", request.atSeconds, "Time of a single picture (default 0)");
    add("--from", request.fromSeconds, "Time of the first frame (default 0)");
    add("--to", request.toSeconds, "Time that no frame is later than (default: the end of the longest engagement)");
    add("--step", request.stepSeconds, "Engagement time from one frame to the next (default 0.033)");
    parser
        .add_option(
            "--speed", request.speed,
            "The same as a factor: 1 adds 0.033 s a frame, which a movie plays in real time, 0.1 is slow motion")
        ->type_name("FACTOR");
}

void addCameraOptions(CLI::App& parser, RenderRequest& request) {
    std::map<std::string, ViewMode> modes;
    for (const ViewModeName& view : kViewModes)
        modes[view.option] = view.mode;
    modes[kOverview] = ViewFree;
    parser
        .add_option_function<std::string>(
            "--view",
            [&request, modes](const std::string& name) {
                request.view = modes.at(name);
                request.isOverview = name == kOverview;
            },
            "What the camera follows: threat, target, the threat's seeker (gyro) or nothing (free), or where it sees "
            "every sample (overview) (default threat)")
        ->check(CLI::IsMember(modes))
        ->type_name("VIEW");
    parser
        .add_option_function<std::string>(
            "--panes",
            [&request](const std::string& text) {
                if (const auto problem = readPanes(text, request.panes))
                    throw CLI::ValidationError("--panes", problem->text);
            },
            "Two to four of these views in one picture of --size, such as threat,gyro,target,overview; seeker is gyro "
            "with "
            "--scale auto")
        ->type_name("VIEW,VIEW...")
        ->excludes("--view");
    const auto addPoint = [&](const char* name, std::optional<std::array<float, 3>>& point, const char* description) {
        parser
            .add_option_function<std::string>(
                name, [name, &point](const std::string& text) { point = pointOf(name, text); }, description)
            ->type_name("X,Y,Z");
    };
    addPoint("--eye", request.eye, "Where the free view's camera is; z points down (default 100,0,0)");
    addPoint("--look-at", request.lookAt, "What the free view's camera looks at (default 0,0,0)");
    parser
        .add_option(
            "--follow", request.followedFile,
            "Which of the files the camera follows, from 1 (default: the first that can be used)")
        ->type_name("N");
}

void addSceneOptions(CLI::App& parser, SceneOptions& scene) {
    const auto add = [&parser](const char* name, bool& option, bool value, const char* description) {
        parser.add_flag_callback(
            name, [&option, value] { option = value; }, description);
    };
    add("--terrain", scene.showTerrain, true, "Draw the terrain");
    add("--no-grid", scene.showGrid, false, "Leave out the grid");
    add("--no-history", scene.showHistoryLines, false, "Leave out the paths of target, threat and flares");
    add("--no-drop-lines", scene.showDropLines, false, "Leave out the lines from the paths down to the ground");
    parser.add_option("--antialias", scene.samples, "Samples a pixel, for smooth edges and round flares (default 0)")
        ->check(CLI::IsMember({0, 2, 4, 8}))
        ->type_name("N");
    add("--line-styles", scene.lineStyles, true, "Tell the paths apart by line styles: solid, dashed, dotted");
}

void addTextOptions(CLI::App& parser, TextRequest& texts) {
    parser.add_flag("--readout", texts.hasReadout, "Write the encounter's numbers into the lower left corner");
    addUnitOption(
        parser, texts.unit,
        "What the trajectory's unit of length is: for the read-out, and for flares in radiance pictures");
    parser.add_flag(
        "--labels", texts.hasLabels, "Write beside each body what it is, and of several engagements which one's");
    parser.add_option("--title", texts.title, "Write a line over the picture's top")->type_name("TEXT");
}
} // namespace

SubCommand addRenderCommand(CLI::App& parent) {
    const auto arguments = std::make_shared<RenderArguments>();
    CLI::App* const parser = parent.add_subcommand(
        "render",
        "Draw engagements as the viewer does, without a window, into a picture, numbered pictures or a movie.");
    addOutputOptions(*parser, *arguments);
    addTimeOptions(*parser, arguments->request);
    addCameraOptions(*parser, arguments->request);
    addSceneOptions(*parser, arguments->request.scene);
    addTextOptions(*parser, arguments->request.texts);
    addScaleOptions(*parser, arguments->request.scale);
    addRadianceOptions(*parser, arguments->request);
    return {parser, [arguments](Streams& streams) {
                if (const auto problem = problemOf(arguments->request)) {
                    streams.err << "sorvane render: " << problem->text << std::endl;
                    return ExitStatus::Failed;
                }
                return render(arguments->request, arguments->printsCommand, streams);
            }};
}
} // namespace sorvane
