// What is to be rendered: the options as the user gives them, and the frames that they come to.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include <QSize>

#include "clocknumbers.h"
#include "numberedname.h"
#include "offscreenview.h"
#include "panes.h"
#include "picturetexts.h"
#include "problem.h"
#include "radianceoptions.h"
#include "scene.h"

namespace sorvane {
// The options of a rendering as the user gives them; what is not given has a default that may depend on the rest.
struct RenderRequest {
    std::vector<std::string> files;
    std::string output;
    std::optional<ViewMode> view;
    bool isOverview = false;       // a free view of all of the followed engagement
    std::vector<ViewChoice> panes; // in place of the one view
    std::optional<std::array<float, 3>> eye;
    std::optional<std::array<float, 3>> lookAt;
    std::optional<double> atSeconds; // of the one picture
    std::optional<double> fromSeconds;
    std::optional<double> toSeconds;
    std::optional<double> stepSeconds;
    std::optional<double> speed;
    std::optional<std::size_t> followedFile; // from 1
    QSize size{640, 480};
    SceneOptions scene; // its time is not used
    TextRequest texts;
    RadianceOptions radiance;
    PictureScale scale;
    bool allowsMissing = false;
};

enum class OutputKind {
    Picture,
    PictureSequence,
    Movie,
};

// The frames of a rendering. Frame number i shows the time from + i · step, however many came before it.
struct RenderPlan {
    OutputKind kind = OutputKind::Picture;
    NumberedName name{""};
    QSize size;
    std::vector<CameraChoice> cameras; // of the panes, or of the one view
    SceneOptions scene;
    double fromSeconds = 0.0;
    double toSeconds = 0.0;
    double stepSeconds = kTickSeconds;
    std::int64_t frameCount = 1;

    double timeOf(std::int64_t frame) const { return fromSeconds + static_cast<double>(frame) * stepSeconds; }
};

// What is wrong with the request whatever the files hold; nothing when it can be tried.
std::optional<sorvane::Problem> problemOf(const RenderRequest& request);

// The plan for a request without problems, of engagements of which the longest ends at `endSeconds`. A `problem` is set
// when the times come to no frame or to more than can be meant.
struct PlannedRendering {
    RenderPlan plan;
    std::optional<sorvane::Problem> problem;
};
PlannedRendering planRendering(const RenderRequest& request, double endSeconds);

// The command that makes the same pictures from any folder: absolute paths, every default spelt out.
std::string reproducingCommand(const RenderRequest& request, const RenderPlan& plan);
} // namespace sorvane
