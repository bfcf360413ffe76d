// Renders engagements into pictures and movies.
#include "rendering.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include <QFile>

#include "antialiasing.h"
#include "dataroot.h"
#include "engagementfiles.h"
#include "inputtexts.h"
#include "interrupt.h"
#include "measuretext.h"
#include "movieoutput.h"
#include "pictureoutput.h"
#include "progressbar.h"
#include "shortestnumber.h"
#include "terrain.h"
#include "trajectoryfile.h"
#include "videolog.h"

namespace sorvane {
namespace {
class Rendering {
public:
    Rendering(const RenderRequest& request, Streams& streams)
        : request_(request), streams_(streams), view_(request.size), texts_(request.texts, request.size) {}

    ExitStatus run(bool printsCommand);

private:
    bool load();
    bool loadFile(const std::string& path);
    std::optional<std::string> addEngagement(const std::string& path);
    void reportStockFiles(const std::string& name, const TrajectoryFileHeader& header);
    bool reportParts(const std::string& name, const std::vector<LoadedPart>& parts);
    void reportTimes(const std::string& name, double first, double last);
    // Tells of something that the picture lacks.
    void miss(const std::string& text) {
        say(text);
        isComplete_ = false;
    }
    bool isFollowedFile(std::size_t file) const { return request_.followedFile == file + 1; }
    bool writeFrames(const RenderPlan& plan, FrameOutput& output);
    std::optional<sorvane::Problem> drawFrames(const RenderPlan& plan, FrameOutput& output);
    bool fail(const std::string& text);
    void say(const std::string& text) { streams_.err << "sorvane render: " << text << std::endl; }

    const RenderRequest& request_;
    Streams& streams_;
    Interrupt interrupt_;
    QuietVideoLog quietVideoLog_; // what matters of it is in the outputs' problems
    OffscreenView view_;
    PictureTexts texts_;
    double endSeconds_ = 0.0;  // of the longest engagement
    std::size_t followed_ = 0; // among those that could be loaded
    bool hasUnusableFile_ = false;
    bool isComplete_ = true; // nothing that was to be drawn is missing
};

// Whether a loader's message is worth a line. The terrain's faults are among its reports on standard output.
bool isFault(const Message& message) {
    return message.isError || !isTerrainNews(message.text);
}

std::optional<QString> firstMissing(std::initializer_list<QString> paths) {
    for (const QString& path : paths)
        if (!QFile::exists(path))
            return path;
    return std::nullopt;
}

std::unique_ptr<FrameOutput> outputOf(const RenderPlan& plan) {
    if (plan.kind == OutputKind::Movie)
        return std::make_unique<MovieOutput>(plan.name.path(0), plan.size);
    return std::make_unique<PictureOutput>(plan.name, plan.frameCount);
}

sorvane::Problem problemOf(const FrameOutput& output) {
    return output.problem().value_or("the frames could not be written");
}

bool Rendering::fail(const std::string& text) {
    say(text);
    return false;
}

ExitStatus Rendering::run(bool printsCommand) {
    for (const auto& problem : {view_.problem(), texts_.problem()})
        if (problem) {
            say(problem->text);
            return ExitStatus::Failed;
        }
    if (const int most = sampleChoices().back(); request_.scene.samples > most) {
        say("--antialias: this OpenGL has at most " + std::to_string(most) + " samples a pixel");
        return ExitStatus::Failed;
    }
    std::error_code ignored;
    if (!std::filesystem::is_directory(sorvane::dataRoot(), ignored))
        miss("there is no data tree \"" + sorvane::dataRoot() + "\"; PELSAR_DATA says where it is");
    if (!load())
        return ExitStatus::Failed;
    auto [plan, problem] = planRendering(request_, endSeconds_);
    if (problem) {
        say(problem->text);
        return ExitStatus::Failed;
    }
    if (request_.isOverview)
        plan.camera = view_.overview(followed_);
    if (printsCommand)
        streams_.out << reproducingCommand(request_, plan) << std::endl;
    const std::unique_ptr<FrameOutput> output = outputOf(plan);
    if (!writeFrames(plan, *output))
        return ExitStatus::Failed;
    const bool isMissed = !isComplete_ && !request_.allowsMissing;
    return hasUnusableFile_ || isMissed ? ExitStatus::ProblemsFound : ExitStatus::Success;
}

bool Rendering::load() {
    for (std::size_t i = 0; i < request_.files.size(); ++i) {
        if (Interrupt::requested() != 0)
            return fail("stopped; nothing was written");
        if (loadFile(request_.files[i])) {
            if (isFollowedFile(i))
                followed_ = view_.engagementCount() - 1;
            continue;
        }
        hasUnusableFile_ = true;
        if (isFollowedFile(i))
            return fail("there is no engagement for the camera to follow");
    }
    return view_.engagementCount() > 0 || fail("there is nothing to draw");
}

// Says what is wrong with a file that can't be used, and what one that can lacks.
bool Rendering::loadFile(const std::string& path) {
    const std::optional<std::string> fault = addEngagement(path);
    return !fault || fail(*fault);
}

std::optional<std::string> Rendering::addEngagement(const std::string& path) {
    const std::string name = inputName(path);
    const std::string broken = name + ": its files are too broken to be used";
    const Outcome<TrajectoryInput> input = openTrajectoryFile(path);
    if (!input)
        return input.problem().text;
    auto engagement = std::make_unique<etxyz>();
    TrajectoryFileHeader header;
    const LoaderOutcome read = runLoader([&] { header = engagement->load(*input); });
    if (!read.hasReturned())
        return broken;
    if (const auto problem = problemOfReading(*input, !engagement->samples.isEmpty(), path))
        return problem->text;
    const double first = engagement->samples.samples().front().time;
    const double last = engagement->samples.samples().back().time;
    reportStockFiles(name, header);
    for (const Message& message : read.messages)
        miss(name + ": atmosphere: " + message.text);
    if (!reportParts(name, view_.add(std::move(engagement), request_.scene.showTerrain)))
        return broken;
    texts_.name(view_.engagements().back().id, name);
    reportTimes(name, first, last);
    endSeconds_ = std::max(endSeconds_, last);
    return std::nullopt;
}

// One missing file has all stock files take the places of those named.
void Rendering::reportStockFiles(const std::string& name, const TrajectoryFileHeader& header) {
    const EngagementFiles named = namedFiles(header);
    const auto report = [&](const char* part, std::optional<QString> missing) {
        if (missing)
            miss(
                name + ": " + part + ": \"" + missing->toStdString() + "\" does not exist: the stock " + part +
                " takes its place");
    };
    report(
        "target",
        firstMissing(
            {named.targetGeometryPath(), named.targetBrdfPath, named.targetRadiancePath(), named.atmospherePath()}));
    if (request_.scene.showTerrain)
        report("terrain", firstMissing({named.terrainTopoPath, named.terrainRadPath}));
}

// False when the engagement was not taken.
bool Rendering::reportParts(const std::string& name, const std::vector<LoadedPart>& parts) {
    for (const LoadedPart& part : parts) {
        const std::string who = name + ": " + part.name + ": ";
        bool isTold = part.isUsable;
        for (const Message& message : part.outcome.messages)
            if (isFault(message)) {
                say(who + message.text);
                isTold = true;
                isComplete_ = false;
            }
        if (!isTold)
            say(who + (part.outcome.messages.empty() ? "can't be used" : part.outcome.messages.back().text));
        isComplete_ = isComplete_ && part.isUsable;
    }
    return parts.back().outcome.hasReturned();
}

// Outside its samples an engagement stays as its first or last one is.
void Rendering::reportTimes(const std::string& name, double first, double last) {
    const double time = request_.atSeconds.value_or(0.0);
    if (!request_.atSeconds || (time >= first && time <= last))
        return;
    say(name + ": has no samples at " + shortestText(time) + " s: it " +
        (time < first ? "begins at " + timeText(first).toStdString() : "ended at " + timeText(last).toStdString()));
}

bool Rendering::writeFrames(const RenderPlan& plan, FrameOutput& output) {
    if (const auto problem = drawFrames(plan, output))
        return fail(problem->text);
    return output.finish() || fail(problemOf(output).text);
}

// Draws the frames and hands them over; says what ended that early.
std::optional<sorvane::Problem> Rendering::drawFrames(const RenderPlan& plan, FrameOutput& output) {
    ProgressBar progress(streams_, plan.frameCount, "frames");
    SceneOptions scene = plan.scene;
    for (std::int64_t i = 0; i < plan.frameCount; ++i) {
        if (Interrupt::requested() != 0)
            return "stopped after " + std::to_string(i) + " of " + std::to_string(plan.frameCount) + " frames; " +
                   (plan.kind == OutputKind::PictureSequence ? "finished pictures stay" : "nothing was written");
        scene.time = plan.timeOf(i);
        QImage picture;
        const LoaderOutcome drawn = runLoader([&] { picture = view_.draw(scene, plan.camera, followed_); });
        if (!drawn.hasReturned() || picture.isNull())
            return "the scene could not be drawn";
        texts_.paint(picture, {view_, plan.camera, followed_, scene.time});
        if (!output.add(i, std::move(picture)))
            return problemOf(output);
        progress.show(i + 1);
    }
    return {};
}
} // namespace

ExitStatus render(const RenderRequest& request, bool printsCommand, Streams& streams) {
    return Rendering(request, streams).run(printsCommand);
}
} // namespace sorvane
