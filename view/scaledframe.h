// A picture whose colours stand for radiances on a scale that is chosen.
#pragma once

#include <optional>
#include <vector>

#include <QImage>

#include "picturescale.h"
#include "radianceframe.h"
#include "radiancepick.h"
#include "scene.h"

namespace sorvane {
struct ScaledRequest {
    PictureScale scale;
    double fieldOfViewDegrees = 30.0; // vertical
    int width = 1;                    // pixels of the framebuffer
    int height = 1;
    std::optional<EngagementId> followed{}; // by whose bodies an automatic scale goes
    FlareUnits flareUnits{};
};

struct ScaledPicture {
    QImage picture; // Format_RGB32
    ScaleEnds ends;
};

// The radiance of a place in a picture, W/cm²/sr, and where it comes from: the parts add up to it.
struct PointedRadiance {
    struct Parts {
        double own = 0.0;
        double sun = 0.0;
        double skyAndEarth = 0.0;
        double otherFacets = 0.0;
    };

    Picked picked;
    double radiance = 0.0;
    std::optional<Parts> parts{}; // of a facet
};

// The ends of an automatic scale: the 2nd and the 99.8th percentile of the radiances, between neighbours in
// proportion. From 0 where they are one and the same, and the fixed ones where that is no more than 0 or there are
// none.
ScaleEnds automaticEnds(std::vector<float> radiances, float sky);

// The colours of radiances: from the first for `ends.black` to the last for `ends.white`.
QRgb colourOf(double radiance, const ScaleEnds& ends, std::span<const QRgb, 256> colours);

// Draws what a Scene draws, its bodies, flares and ground in the colours of a scale, and its lines as ever over them.
// A pixel is the mean radiance over one sample or, with anti-aliasing, four; what is smaller is sampled more finely, so
// that it doesn't flicker. The member functions and, once something has been drawn, the destructor need the GL context
// current.
class ScaledFrame {
public:
    // Into the current framebuffer, whose viewport and projection are those of the request (applyProjection); what it
    // then holds doesn't count, and the picture is given back. Nothing when the context has no framebuffers of floats.
    std::optional<ScaledPicture> draw(
        Scene& scene, const std::vector<SceneEngagement>& engagements, const Camera& camera,
        const SceneOptions& options, const ScaledRequest& request);

    // Draws the scene as it is, or this in its place where the request's scale asks for it, with the colour bar.
    void paint(
        Scene& scene, const std::vector<SceneEngagement>& engagements, const Camera& camera,
        const SceneOptions& options, const ScaledRequest& request);
    // Of the frame that was painted last.
    const ScaleEnds& ends() const { return ends_; }

    // What shows at a pixel of the picture, rows counted from the top, and its radiance. Nothing when the context has
    // no framebuffers of floats.
    std::optional<PointedRadiance>
    at(int column, int row, const std::vector<SceneEngagement>& engagements, const Camera& camera,
       const SceneOptions& options, const ScaledRequest& request);

    // The request for the frame's radiances.
    static RadianceRequest radianceRequest(const SceneOptions& options, const ScaledRequest& request);

private:
    ScaleEnds endsOf(
        const std::vector<SceneEngagement>& engagements, const Camera& camera, const RadianceRequest& request,
        const ScaledRequest& scaled, const std::vector<float>& radiances);

    RadianceFrame radiances_;
    RadiancePick pick_;
    ScaleEnds ends_;
};
} // namespace sorvane
