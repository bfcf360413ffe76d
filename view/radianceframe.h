// A frame of radiances: what reaches the eye in W/cm²/sr, pixel by pixel.
#pragma once

#include <array>
#include <deque>
#include <optional>
#include <span>
#include <vector>

#include "framedepth.h"
#include "keyframe.h"
#include "pixelplane.h"
#include "radiancebuffer.h"
#include "radiancesums.h"
#include "scene.h"

namespace sorvane {
// The number of centimetres in a metre and in a foot.
inline constexpr double kCentimetresPerMetre = 100.0;
inline constexpr double kCentimetresPerFoot = 30.48;

// How finely a frame is sampled. By default sums over a picture are right to a part in a thousand.
struct RadianceFineness {
    int pixel = 4; // samples of a pixel to a side where nothing is small
    // Samples to a side of the box about a body, of which an edge that lies between two rows of them costs a part in
    // 1024, and about a flare, whose outline crosses them. With 0 there is no box.
    int body = 1024;
    int flare = 256;
};

// What the numbers of flares in a trajectory mean; the radiances of all else don't depend on its units.
struct FlareUnits {
    double centimetres = kCentimetresPerMetre; // in a unit of length
    double intensity = 1.0;                    // W/sr of a brightness of 1
};

// What lights the bodies.
struct RadianceLight {
    bool hasSun = true;
    bool hasSkyAndEarth = true;
};

struct RadianceRequest {
    double fieldOfViewDegrees = 30.0; // vertical
    int width = 0;                    // pixels
    int height = 0;
    double time = 0.0; // seconds
    bool showTerrain = false;
    bool loadsTerrain = true; // before it is drawn; without, terrain that is not loaded is left out
    float background = 0.0F;  // W/cm²/sr, where nothing is
    FlareUnits flareUnits{};
    RadianceFineness fineness{};
    RadianceLight light{};
    bool showFlares = true;
    std::optional<EngagementId> bodiesOf{}; // without one of all
};

struct RadiancePicture {
    int width = 0;
    int height = 0;
    std::vector<float> radiances{}; // W/cm²/sr, the top row first
};

// Draws bodies, terrain and flares as the Scene has them, without lines, grid and reticle. A pixel is the mean radiance
// of the solid angle that it covers: bodies and flares are sampled as finely as they are small, so that sums over the
// picture don't depend on how large they are in it. A flare is an ellipsoid that radiates its brightness, taken as
// W/sr, evenly from the area that the eye sees of it; behind something it is hidden.
// The member functions and, once something has been drawn, the destructor need the GL context current.
class RadianceFrame {
public:
    // Nothing when the context has no framebuffers of floats. Terrain that is not loaded loads. GL state stays.
    std::optional<RadiancePicture>
    draw(const std::vector<SceneEngagement>& engagements, const Camera& camera, const RadianceRequest& request);

    // What reaches the eye along the middle of a part of the picture, W/cm²/sr.
    std::optional<float> sample(
        const std::vector<SceneEngagement>& engagements, const Camera& camera, const RadianceRequest& request,
        const TangentBox& box);

private:
    // A body or a flare of the frame.
    struct Subject {
        const SceneEngagement* shown = nullptr;
        Hardbody* body = nullptr;             // else a flare
        const flareKeyframe* flare = nullptr; // else a body
        const float (*position)[3] = nullptr;
        const float (*attitude)[3] = nullptr;
        double radius = 0.0;
        std::optional<std::size_t> box{}; // its own, if it has one
    };
    // What is seen more finely for a subject.
    struct FineBox {
        LookAt lookAt;
        SampledBox sampled;
        double sampleSolidAngle = 0.0;
        const Subject* subject = nullptr;
    };

    void collect(const std::vector<SceneEngagement>& engagements, const Camera& camera, double time);
    static std::vector<std::array<double, 3>> outlineOf(const Subject& subject, const LookAt& lookAt);
    std::optional<FineBox> fineBoxOf(const Subject& subject, const LookAt& lookAt, const PixelPlane& plane) const;
    std::vector<FineBox> fineBoxes(const LookAt& lookAt, const PixelPlane& plane);
    bool drawBox(const LookAt& lookAt, const TangentBox& box, int columns, int rows, std::size_t finestBox);
    void drawSubjects(const LookAt& lookAt, const Sight& sight, const DepthSlice& slice, std::size_t finestBox);
    void drawSubject(const Subject& subject, const LookAt& lookAt) const;
    bool drawRest(const LookAt& lookAt, const PixelPlane& plane, std::vector<float>& rest);

    RadianceBuffer buffer_;
    FrameDepth depth_;
    // Of the frame that is being drawn.
    RadianceRequest request_;
    std::deque<keyframe> states_;
    std::vector<Subject> subjects_;
    std::vector<const SceneEngagement*> grounds_;
};
} // namespace sorvane
