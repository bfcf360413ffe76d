// What is to be rendered: the options as the user gives them, and the frames that they come to.
#include "renderplan.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>

#include <QImageWriter>

#include "moviesettings.h"
#include "picturefile.h"
#include "picturesize.h"
#include "scaleoptions.h"
#include "shellquote.h"
#include "shortestnumber.h"

namespace sorvane {
namespace {
constexpr std::int64_t kMostFrames = 10000000; // nearly four days of movie

bool isMovie(const std::string& path) {
    return std::ranges::find(kMovieEndings, extensionOf(path).toStdString()) != kMovieEndings.end();
}

std::optional<sorvane::Problem> problemOfOutput(const RenderRequest& request) {
    const std::string& output = request.output;
    const NumberedName name(output);
    if (name.problem())
        return name.problem();
    if (request.radiance.isOn)
        return problemOfRadiance(request);
    if (isMovie(output)) {
        if (name.hasNumber())
            return output + ": a movie's name has no number in it";
        return movieSizeProblem(request.size);
    }
    const QByteArray extension = extensionOf(output);
    if (extension.isEmpty())
        return output + ": its extension tells what to make, such as .png, .mp4 or .avi";
    const QList<QByteArray> formats = QImageWriter::supportedImageFormats();
    if (!formats.contains(extension)) {
        std::string text = output + ": no format is called " + extension.toStdString() + ", but ";
        for (const std::string_view ending : kMovieEndings)
            text.append(ending).append(", ");
        return text + formats.join(", ").toStdString();
    }
    return {};
}

std::optional<sorvane::Problem> problemOfTimes(const RenderRequest& request) {
    const bool isSeries = isMovie(request.output) || NumberedName(request.output).hasNumber();
    if (isSeries && request.atSeconds)
        return "--at is for a single picture; a movie or a numbered sequence has --from and --to";
    if (!isSeries && (request.fromSeconds || request.toSeconds || request.stepSeconds || request.speed))
        return request.output + ": a single picture has --at; for a sequence put a number like %04d into the name";
    if (request.stepSeconds && request.speed)
        return "--step and --speed say the same thing; give one of them";
    for (const auto& value :
         {request.atSeconds, request.fromSeconds, request.toSeconds, request.stepSeconds, request.speed})
        if (value && !std::isfinite(*value))
            return "times are finite numbers";
    for (const auto& value : {request.stepSeconds, request.speed})
        if (value && !(*value > 0.0))
            return "--step and --speed are above 0";
    return {};
}

std::vector<ViewChoice> viewsOf(const RenderRequest& request) {
    if (!request.panes.empty())
        return request.panes;
    return {
        {.mode = request.view.value_or(request.eye || request.lookAt ? ViewFree : ViewThreat),
         .isOverview = request.isOverview}};
}

CameraChoice cameraOf(const ViewChoice& view, const RenderRequest& request) {
    CameraChoice camera{.mode = view.mode};
    if (request.eye)
        std::ranges::copy(*request.eye, camera.eye);
    if (request.lookAt)
        std::ranges::copy(*request.lookAt, camera.lookAt);
    return camera;
}

std::optional<sorvane::Problem> problemOfView(const RenderRequest& request) {
    const std::vector<ViewChoice> views = viewsOf(request);
    if ((request.eye || request.lookAt) && std::ranges::none_of(views, &ViewChoice::isFree))
        return "--eye and --look-at place the free view's camera; the other views place their own";
    const CameraChoice free;
    if ((request.eye || request.lookAt) &&
        request.eye.value_or(std::to_array(free.eye)) == request.lookAt.value_or(std::to_array(free.lookAt)))
        return "--eye and --look-at are the same point";
    if (request.followedFile && (*request.followedFile < 1 || *request.followedFile > request.files.size()))
        return "--follow counts the files from 1 to " + std::to_string(request.files.size());
    return PaneLayout(request.size, views.size()).problem();
}

std::string pointText(const float (&xyz)[3]) {
    return shortestText(xyz[0]) + "," + shortestText(xyz[1]) + "," + shortestText(xyz[2]);
}

// Appends the options that put texts into pictures, and the unit that radiances need, too.
void spellOut(const TextRequest& texts, bool hasRadiances, std::vector<std::string>& words) {
    if (texts.hasReadout)
        words.emplace_back("--readout");
    if ((texts.hasReadout || hasRadiances) && texts.unit != LengthUnit::Unstated)
        words.insert(words.end(), {"--unit", texts.unit == LengthUnit::Feet ? "ft" : "m"});
    if (texts.hasLabels)
        words.emplace_back("--labels");
    if (!texts.title.empty())
        words.insert(words.end(), {"--title", texts.title});
}

std::string absolutePath(const std::string& path) {
    return std::filesystem::absolute(path).lexically_normal().string();
}
} // namespace

std::optional<sorvane::Problem> problemOf(const RenderRequest& request) {
    if (std::ranges::count(request.files, "-") > 1)
        return "standard input can be drawn once";
    for (const auto& check : {problemOfOutput, problemOfTimes, problemOfView, problemOfFlareScale})
        if (auto problem = check(request))
            return problem;
    return {};
}

PlannedRendering planRendering(const RenderRequest& request, double endSeconds) {
    RenderPlan plan;
    plan.name = NumberedName(request.output);
    plan.size = request.size;
    plan.scene = request.scene;
    for (const ViewChoice& view : viewsOf(request))
        plan.cameras.push_back(cameraOf(view, request));
    if (isMovie(request.output))
        plan.kind = OutputKind::Movie;
    else if (plan.name.hasNumber())
        plan.kind = OutputKind::PictureSequence;
    else {
        plan.fromSeconds = plan.toSeconds = request.atSeconds.value_or(0.0);
        return {plan, {}};
    }

    plan.fromSeconds = request.fromSeconds.value_or(0.0);
    plan.toSeconds = request.toSeconds.value_or(std::max(endSeconds, plan.fromSeconds));
    plan.stepSeconds = request.stepSeconds.value_or(kTickSeconds * request.speed.value_or(1.0));
    // A last frame that falls on the end is not lost to rounding.
    constexpr double kSlack = 1e-6;
    const double steps = std::floor((plan.toSeconds - plan.fromSeconds) / plan.stepSeconds + kSlack);
    if (!(steps >= 0.0))
        return {
            plan, "there is no frame from " + shortestText(plan.fromSeconds) + " s to " + shortestText(plan.toSeconds) +
                      " s"};
    if (steps >= static_cast<double>(kMostFrames))
        return {
            plan, "there are more than " + std::to_string(kMostFrames) + " frames from " +
                      shortestText(plan.fromSeconds) + " s to " + shortestText(plan.toSeconds) + " s"};
    plan.frameCount = static_cast<std::int64_t>(steps) + 1;
    return {plan, {}};
}

std::string reproducingCommand(const RenderRequest& request, const RenderPlan& plan) {
    std::vector<std::string> words;
    const char* const dataRoot = std::getenv("PELSAR_DATA");
    if (dataRoot != nullptr && *dataRoot != '\0')
        words = {"env", std::string("PELSAR_DATA=") + dataRoot};
    words.insert(words.end(), {"sorvane", "render"});
    for (const std::string& file : request.files)
        words.push_back(file == "-" ? file : absolutePath(file));
    words.insert(words.end(), {"-o", absolutePath(request.output)});
    const std::vector<ViewChoice> views = viewsOf(request);
    words.insert(words.end(), {request.panes.empty() ? "--view" : "--panes", panesText(views)});
    if (const auto free = std::ranges::find_if(views, &ViewChoice::isFree); free != views.end()) {
        const CameraChoice camera = cameraOf(*free, request);
        words.insert(words.end(), {"--eye", pointText(camera.eye), "--look-at", pointText(camera.lookAt)});
    }
    if (plan.kind == OutputKind::Picture)
        words.insert(words.end(), {"--at", shortestText(plan.fromSeconds)});
    else
        words.insert(
            words.end(), {"--from", shortestText(plan.fromSeconds), "--to", shortestText(plan.toSeconds), "--step",
                          shortestText(plan.stepSeconds)});
    words.insert(words.end(), {"--size", sizeText(plan.size)});
    if (request.followedFile)
        words.insert(words.end(), {"--follow", std::to_string(*request.followedFile)});
    if (plan.scene.showTerrain)
        words.emplace_back("--terrain");
    if (!plan.scene.showGrid)
        words.emplace_back("--no-grid");
    if (!plan.scene.showHistoryLines)
        words.emplace_back("--no-history");
    if (!plan.scene.showDropLines)
        words.emplace_back("--no-drop-lines");
    if (plan.scene.lineStyles)
        words.emplace_back("--line-styles");
    if (plan.scene.samples > 0)
        words.insert(words.end(), {"--antialias", std::to_string(plan.scene.samples)});
    spellOut(request.texts, showsRadiances(request), words);
    spellOut(request.radiance, words);
    spellOut(request.scale, words);
    if (request.allowsMissing)
        words.emplace_back("--allow-missing");
    return shellCommand(words);
}
} // namespace sorvane
