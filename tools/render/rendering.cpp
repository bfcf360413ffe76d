// Renders engagements into pictures and movies.
#include "rendering.h"

#include <functional>
#include <memory>
#include <utility>

#include "interrupt.h"
#include "movieoutput.h"
#include "pictureoutput.h"
#include "progressbar.h"
#include "radiancefile.h"
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
    // Makes frame number `i` of what the options say; what went wrong.
    using MakeFrame = std::function<std::optional<sorvane::Problem>(std::int64_t i, const SceneOptions& scene)>;

    bool writeFrames(const RenderPlan& plan);
    bool writeRadiances(const RenderPlan& plan);
    std::optional<sorvane::Problem> makeFrames(const RenderPlan& plan, const MakeFrame& makeFrame);
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
    for (std::size_t i = 0; i < plan.cameras.size(); ++i)
        if (request_.panes.empty() ? request_.isOverview : request_.panes[i].isOverview)
            plan.cameras[i] = scene_.overview();
    if (printsCommand)
        streams_.out << reproducingCommand(request_, plan) << std::endl;
    if (!(request_.radiance.isOn ? writeRadiances(plan) : writeFrames(plan)))
        return ExitStatus::Failed;
    const bool isMissed = !scene_.isComplete() && !request_.allowsMissing;
    return scene_.hasUnusableFile() || isMissed ? ExitStatus::ProblemsFound : ExitStatus::Success;
}

bool Rendering::writeFrames(const RenderPlan& plan) {
    const std::unique_ptr<FrameOutput> output = outputOf(plan);
    const auto drawFrame = [&](std::int64_t i, const SceneOptions& scene) -> std::optional<sorvane::Problem> {
        QImage picture = scene_.draw(scene, plan.cameras);
        if (picture.isNull())
            return "the scene could not be drawn";
        return output->add(i, std::move(picture)) ? std::nullopt : std::optional(problemOf(*output));
    };
    if (const auto problem = makeFrames(plan, drawFrame))
        return fail(problem->text);
    return output->finish() || fail(problemOf(*output).text);
}

bool Rendering::writeRadiances(const RenderPlan& plan) {
    const auto drawFrame = [&](std::int64_t i, const SceneOptions& scene) -> std::optional<sorvane::Problem> {
        const std::optional<RadianceImage> image = scene_.drawRadiance(scene, plan.cameras.front(), i);
        if (!image)
            return "the scene could not be drawn in radiances: OpenGL has no framebuffers of floats here";
        return writeRadiance(*image, plan.name.path(i));
    };
    const auto problem = makeFrames(plan, drawFrame);
    return !problem || fail(problem->text);
}

// Makes the frames in order; says what ended that early.
std::optional<sorvane::Problem> Rendering::makeFrames(const RenderPlan& plan, const MakeFrame& makeFrame) {
    ProgressBar progress(streams_, plan.frameCount, "frames");
    SceneOptions scene = plan.scene;
    for (std::int64_t i = 0; i < plan.frameCount; ++i) {
        if (Interrupt::requested() != 0)
            return "stopped after " + std::to_string(i) + " of " + std::to_string(plan.frameCount) + " frames; " +
                   (plan.kind == OutputKind::PictureSequence ? "finished pictures stay" : "nothing was written");
        scene.time = plan.timeOf(i);
        if (auto problem = makeFrame(i, scene))
            return problem;
        progress.show(i + 1);
    }
    return {};
}
} // namespace

ExitStatus render(const RenderRequest& request, bool printsCommand, Streams& streams) {
    return Rendering(request, streams).run(printsCommand);
}
} // namespace sorvane
