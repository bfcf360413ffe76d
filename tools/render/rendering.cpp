// Renders engagements into pictures and movies.
#include "rendering.h"

#include <memory>
#include <utility>

#include "interrupt.h"
#include "movieoutput.h"
#include "pictureoutput.h"
#include "progressbar.h"
#include "renderedscene.h"
#include "videolog.h"

namespace sorvane {
namespace {
class Rendering {
public:
    Rendering(const RenderRequest& request, Streams& streams)
        : request_(request), streams_(streams), scene_(request, [this](const std::string& text) { say(text); }) {}

    ExitStatus run(bool printsCommand);

private:
    bool writeFrames(const RenderPlan& plan, FrameOutput& output);
    std::optional<sorvane::Problem> drawFrames(const RenderPlan& plan, FrameOutput& output);
    bool fail(const std::string& text);
    void say(const std::string& text) { streams_.err << "sorvane render: " << text << std::endl; }

    const RenderRequest& request_;
    Streams& streams_;
    Interrupt interrupt_;
    QuietVideoLog quietVideoLog_; // what matters of it is in the outputs' problems
    RenderedScene scene_;
};

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
    if (const auto problem = scene_.load()) {
        say(problem->text);
        return ExitStatus::Failed;
    }
    auto [plan, problem] = planRendering(request_, scene_.endSeconds());
    if (problem) {
        say(problem->text);
        return ExitStatus::Failed;
    }
    if (request_.isOverview)
        plan.camera = scene_.overview();
    if (printsCommand)
        streams_.out << reproducingCommand(request_, plan) << std::endl;
    const std::unique_ptr<FrameOutput> output = outputOf(plan);
    if (!writeFrames(plan, *output))
        return ExitStatus::Failed;
    const bool isMissed = !scene_.isComplete() && !request_.allowsMissing;
    return scene_.hasUnusableFile() || isMissed ? ExitStatus::ProblemsFound : ExitStatus::Success;
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
        QImage picture = scene_.draw(scene, plan.camera);
        if (picture.isNull())
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
