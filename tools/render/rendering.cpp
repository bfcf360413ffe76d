// Renders engagements into pictures and movies.
#include "rendering.h"

#include <algorithm>

#include <QFile>

#include "clocknumbers.h"
#include "inputfile.h"
#include "inputtexts.h"
#include "interrupt.h"
#include "movieoutput.h"
#include "pictureoutput.h"
#include "progressbar.h"
#include "videolog.h"

namespace sorvane {
namespace {
class Rendering {
public:
    Rendering(const RenderRequest& request, Streams& streams)
        : request_(request), streams_(streams), view_(request.size) {}

    ExitStatus run(bool printsCommand);

private:
    bool load();
    bool loadFile(const std::string& path);
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
    double endSeconds_ = 0.0;  // of the longest engagement
    std::size_t followed_ = 0; // among those that could be loaded
    bool hasUnusableFile_ = false;
};

// Why a file gave no samples.
std::string reasonOf(const std::string& path) {
    return openInputFile(path) == nullptr ? problemOfOpening(path).text : "holds no samples";
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
    if (view_.problem()) {
        say(view_.problem()->text);
        return ExitStatus::Failed;
    }
    if (!load())
        return ExitStatus::Failed;
    const auto [plan, problem] = planRendering(request_, endSeconds_);
    if (problem) {
        say(problem->text);
        return ExitStatus::Failed;
    }
    if (printsCommand)
        streams_.out << reproducingCommand(request_, plan) << std::endl;
    const std::unique_ptr<FrameOutput> output = outputOf(plan);
    if (!writeFrames(plan, *output))
        return ExitStatus::Failed;
    return hasUnusableFile_ ? ExitStatus::ProblemsFound : ExitStatus::Success;
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

// Says what is wrong with a file that can't be used, and what the loaders have to say about one that can.
bool Rendering::loadFile(const std::string& path) {
    auto engagement = std::make_unique<etxyz>();
    const LoaderOutcome read = runLoader([&] { engagement->LoadETXYZ(QFile::decodeName(path.c_str())); });
    if (!read.hasReturned() || engagement->keyframes.isEmpty())
        return fail(path + ": " + (read.hasReturned() ? reasonOf(path) : "its files are too broken to be used"));
    const double end = engagement->NearestKeyframe(kEndOfTime).time;
    const LoaderOutcome prepared = view_.add(std::move(engagement), request_.scene.showTerrain);
    for (const auto& messages : {read.messages, prepared.messages})
        for (const Message& message : messages)
            if (message.isError)
                say(path + ": " + message.text);
    if (!prepared.hasReturned())
        return fail(path + ": its files are too broken to be used");
    endSeconds_ = std::max(endSeconds_, end);
    return true;
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
