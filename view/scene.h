// The drawing of a frame, as a function of engagements, camera and options. Knows no widget.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "antialiasing.h"
#include "bodies.h"
#include "camera.h"
#include "engagementid.h"
#include "engagementlines.h"
#include "etxyz.h"
#include "framedepth.h"
#include "ghosts.h"
#include "grid.h"
#include "lookat.h"
#include "projection.h"
#include "sight.h"
#include "terrains.h"

namespace sorvane {
// What to draw and when.
struct SceneOptions {
    bool showTerrain = false;
    bool showHistoryLines = true;
    bool showDropLines = true;
    bool showGrid = true;
    bool loadsTerrain = true; // before it is drawn; without, terrain that is not loaded is left out
    double time = 0.0;        // seconds
    // Paths differ in their line patterns, not only in their colours.
    bool lineStyles = false;
    // How many pixels of the framebuffer a pixel of the view has to a side: widths of lines and sizes of flares go by
    // the view's.
    double pixelRatio = 1.0;
    // Samples a pixel, 0 for no anti-aliasing; one of sampleChoices(). With it, flares are round.
    int samples = 0;
    // The one engagement whose seeker's reticle gyro view shows; of all of them without one.
    std::optional<EngagementId> reticleOf{};
    // Those that are drawn as ghosts and not as themselves; none without a set.
    std::shared_ptr<const GhostSet> ghosts{};
    // Bodies, flares and terrain hide what lies behind them and have no colour of their own: that of the background.
    bool areLinesAlone = false;

    bool operator==(const SceneOptions&) const = default;
};

// An engagement in the scene; not owned.
struct SceneEngagement {
    EngagementId id{}; // what is kept for the engagement between frames is kept by this
    etxyz* engagement = nullptr;
    bool isHidden = false;
};

// The direction towards the sun in eye coordinates, of unit length: the engagement's world direction (z up, used as it
// is) turned by the rotation part of `modelView`, 16 floats column by column.
Vector<float> sunDirectionInEye(const AtmFile& atmosphere, const float* modelView);

// Sets what holds for every frame: clear colour, culling, depth test, light 0. Needs a current GL context.
void setUpScene();

// Clears colour and depth where nothing is drawn. Needs a current GL context.
void clearFrame();

// Draws frames and keeps the vertices that stay the same between them. Everything but the constructor, the destructor
// of a scene that has drawn something included, needs the GL context that it draws in to be current.
class Scene {
public:
    // Draws one frame into the current framebuffer, with the projection set (applyProjection). Showing
    // the terrain of an engagement that has no sample at time 0.0 adds an empty one to it, deliberately: the look-up of
    // the threat's first z does that.
    void draw(const std::vector<SceneEngagement>& engagements, const Camera& camera, const SceneOptions& options);

    // The terrains that a frame shows, in the order in which it draws them.
    static std::vector<Terrain*>
    shownTerrains(const std::vector<SceneEngagement>& engagements, const SceneOptions& options);

    // Lets go of what is kept for an engagement whose samples are others from now on, or that is drawn no more.
    void forget(EngagementId id);

private:
    // What the slices of a frame have in common.
    struct Frame {
        const Camera& camera;
        const SceneOptions& options;
        const LookAt& lookAt;
        const WindowTransform& window;
        Sight sight;
        bool areMany = false;
    };
    struct Slice {
        const DepthSlice& depths;
        SliceOfBodies bodies;
        SliceOfTerrains terrains;
        std::vector<float> reticles{}; // the fields of view of those that are drawn
    };
    void drawGhosts(const std::vector<SceneEngagement>& engagements, const Frame& frame, const DepthSlice& slice);
    void drawFrame(const std::vector<SceneEngagement>& engagements, const Frame& frame);
    void drawEngagement(const SceneEngagement& shown, const Frame& frame, Slice& parts);
    // An engagement's line sets up to a number of samples.
    struct Paths {
        const etxyz& engagement;
        EngagementLines& lines;
        std::size_t sampleCount;
    };
    static bool isInSight(const Box& box, const Paths& paths, const Frame& frame, const DepthSlice& slice);
    static void drawPath(const Paths& paths, PathOf body, const Frame& frame, const DepthSlice& slice);
    static void drawTrails(const Paths& paths, const Frame& frame, const DepthSlice& slice);
    EngagementLines& linesOf(EngagementId id, const QMap<double, keyframe>& samples);

    std::map<EngagementId, EngagementLines> lines_;
    Ghosts ghosts_;
    Grid grid_;
    SampledFrame sampled_;
    FrameDepth depth_;
};
} // namespace sorvane
