// The viewer's view without its window: engagements, a camera and the drawing of a frame.
#pragma once

#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include <QImage>
#include <QSize>

#include "camera.h"
#include "loaderguard.h"
#include "offscreencontext.h"
#include "problem.h"
#include "radianceframe.h"
#include "scaledframe.h"
#include "scene.h"

namespace sorvane {
// Where the camera is. In a free view it stays at `eye` and looks at `lookAt`, in the viewer's world units.
struct CameraChoice {
    ViewMode mode = ViewThreat;
    float eye[3] = {100.0F, 0.0F, 0.0F};
    float lookAt[3] = {};
};

// A body or the terrain of an engagement, or a tile of that: what its loaders said, and whether it is drawn.
struct LoadedPart {
    std::string name;
    bool isUsable = false;
    LoaderOutcome outcome;
};

// A picture is a function of the engagements, the camera's choice and the options, its time among them: no frame
// depends on the ones before. The OpenGL context is current on the thread that made the view.
class OffscreenView {
public:
    explicit OffscreenView(QSize size);
    ~OffscreenView();
    OffscreenView(const OffscreenView&) = delete;
    OffscreenView& operator=(const OffscreenView&) = delete;

    // Why nothing can be drawn; nothing when all is well.
    const std::optional<sorvane::Problem>& problem() const { return context_.problem(); }

    // Takes an engagement with samples and initialises its bodies, and its terrain with all tiles if `withTerrain`.
    // When a file is so broken that the loaders don't return, the engagement is not taken, and its parts end there.
    std::vector<LoadedPart> add(std::unique_ptr<etxyz> engagement, bool withTerrain);
    std::size_t engagementCount() const { return engagements_.size(); }
    // In the order in which they were added.
    std::span<const SceneEngagement> engagements() const { return shown_; }

    // The free view that has all of the engagement number `followed`, from 0, in the picture. Needs an engagement.
    CameraChoice overview(std::size_t followed) const;

    // The camera as the viewer has it at `time` after the view was chosen, on the engagement number `followed`,
    // likewise.
    Camera cameraAt(double time, const CameraChoice& choice, std::size_t followed) const;

    // The full vertical field of view, likewise.
    double fieldOfViewDegrees(const CameraChoice& choice, std::size_t followed) const;

    // Draws all engagements in the order in which they were added, in the colours of a scale. A colour bar needs a
    // QGuiApplication.
    QImage draw(
        const SceneOptions& options, const CameraChoice& choice, std::size_t followed, const PictureScale& scale = {},
        const FlareUnits& flareUnits = {});

    // The same in radiances. Of the options time and terrain count; W/cm²/sr where nothing is. Nothing when OpenGL has
    // no such framebuffers.
    std::optional<RadiancePicture> drawRadiance(
        const SceneOptions& options, const CameraChoice& choice, std::size_t followed, float background,
        const FlareUnits& flareUnits);
    // The sky's of the engagement number `followed`; 0 without an atmosphere.
    float skyRadiance(std::size_t followed) const;

private:
    QSize size_;
    OffscreenContext context_; // outlives what was made in it
    std::vector<std::unique_ptr<etxyz>> engagements_;
    std::vector<SceneEngagement> shown_; // in the same order
    Scene scene_;
    ScaledFrame scaledFrame_;
    RadianceFrame radianceFrame_;
};
} // namespace sorvane
