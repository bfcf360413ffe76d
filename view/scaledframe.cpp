// A picture whose colours stand for radiances on a scale that is chosen.
#include "scaledframe.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "colourbar.h"
#include "glapi.h"

namespace sorvane {
namespace {
constexpr double kLowPart = 0.02;
constexpr double kHighPart = 0.998;
constexpr float kNothing = -1.0F; // less than any radiance

// Between neighbours in proportion. Changes the order of the values.
double quantile(std::vector<float>& values, double part) {
    const double place = part * static_cast<double>(values.size() - 1);
    const auto below = values.begin() + static_cast<std::ptrdiff_t>(place);
    std::ranges::nth_element(values, below);
    const auto above = std::min_element(below + 1, values.end());
    const double share = place - std::floor(place);
    // Of two values that are alike it is exactly that value.
    return above == values.end() ? double{*below} : double{*below} + share * (double{*above} - double{*below});
}

// What the part of the framebuffer under the viewport holds.
QImage pixels(int width, int height) {
    QImage picture(width, height, QImage::Format_RGB32);
    const GLint rowAlignment = 4;
    glPixelStorei(GL_PACK_ALIGNMENT, rowAlignment);
    glReadPixels(0, 0, width, height, GL_BGRA, GL_UNSIGNED_BYTE, picture.bits());
    return picture.mirrored();
}

// The picture in the current framebuffer becomes this one, of its size.
void showPicture(const QImage& picture) {
    const QImage upwards = picture.convertToFormat(QImage::Format_RGB32).mirrored();
    glPushAttrib(GL_ALL_ATTRIB_BITS);
    for (const GLenum off : {GLenum{GL_LIGHTING}, GLenum{GL_DEPTH_TEST}, GLenum{GL_BLEND}, GLenum{GL_TEXTURE_2D}})
        glDisable(off);
    glWindowPos2i(0, 0);
    glDrawPixels(upwards.width(), upwards.height(), GL_BGRA, GL_UNSIGNED_BYTE, upwards.constBits());
    glPopAttrib();
}

// Lines over a black ground and over a white one: what they have in common is theirs, and by what they differ the
// ground shows through.
QRgb over(QRgb onBlack, QRgb onWhite, QRgb ground) {
    constexpr QRgb kColour = 0xFFFFFF;
    if ((onBlack & kColour) == 0 && (onWhite & kColour) == kColour)
        return ground; // no line, as nearly everywhere
    const auto channel = [&](int (*of)(QRgb)) {
        const int shown = std::clamp(of(onWhite) - of(onBlack), 0, 255);
        return std::min(of(onBlack) + (of(ground) * shown + 127) / 255, 255);
    };
    return qRgb(channel(qRed), channel(qGreen), channel(qBlue));
}

// The diffuse radiance of the followed engagement's sky, W/cm²/sr; 0 without one.
float skyOf(const std::vector<SceneEngagement>& engagements, const std::optional<EngagementId>& followed) {
    for (const SceneEngagement& shown : engagements)
        if (shown.id == followed && shown.engagement->atm != nullptr)
            return shown.engagement->atm->diffuseSkyRadiance();
    return 0.0F;
}

// Ghosts have no radiance.
std::vector<SceneEngagement> withoutGhosts(std::vector<SceneEngagement> engagements, const SceneOptions& options) {
    for (SceneEngagement& shown : engagements)
        shown.isHidden = shown.isHidden || (options.ghosts != nullptr && options.ghosts->contains(shown.id));
    return engagements;
}
} // namespace

ScaleEnds automaticEnds(std::vector<float> radiances, float sky) {
    constexpr std::size_t kFew = 8;
    std::erase_if(radiances, [](float radiance) { return !std::isfinite(radiance) || radiance < 0.0F; });
    if (radiances.empty())
        return {};
    if (radiances.size() < kFew)
        radiances.push_back(sky);
    const ScaleEnds ends{quantile(radiances, kLowPart), quantile(radiances, kHighPart)};
    if (ends.white > ends.black)
        return ends;
    return ends.white > 0.0 ? ScaleEnds{0.0, ends.white} : ScaleEnds{};
}

QRgb colourOf(double radiance, const ScaleEnds& ends, std::span<const QRgb, 256> colours) {
    constexpr double kLast = 255.0;
    const double place = (radiance - ends.black) / (ends.white - ends.black) * kLast;
    // What is not a number is as dark as can be.
    return colours[place > 0.0 ? static_cast<std::size_t>(std::lround(std::min(place, kLast))) : 0];
}

RadianceRequest ScaledFrame::radianceRequest(const SceneOptions& options, const ScaledRequest& request) {
    constexpr int kSamplesOfSmallBody = 64;
    constexpr int kSamplesOfSmallFlare = 32;
    return {
        .fieldOfViewDegrees = request.fieldOfViewDegrees,
        .width = request.width,
        .height = request.height,
        .time = options.time,
        .showTerrain = options.showTerrain,
        .loadsTerrain = options.loadsTerrain,
        .flareUnits = request.flareUnits,
        .fineness = {options.samples > 0 ? 2 : 1, kSamplesOfSmallBody, kSamplesOfSmallFlare}};
}

std::optional<ScaledPicture> ScaledFrame::draw(
    Scene& scene, const std::vector<SceneEngagement>& engagements, const Camera& camera, const SceneOptions& options,
    const ScaledRequest& request) {
    const std::vector<SceneEngagement> solid = withoutGhosts(engagements, options);
    RadianceRequest frame = radianceRequest(options, request);
    frame.background = skyOf(engagements, request.followed);
    const std::optional<RadiancePicture> drawn = radiances_.draw(solid, camera, frame);
    if (!drawn)
        return std::nullopt;
    ScaledPicture scaled{
        QImage(request.width, request.height, QImage::Format_RGB32),
        endsOf(solid, camera, frame, request, drawn->radiances)};

    SceneOptions lines = options;
    lines.areLinesAlone = true;
    const auto linesOver = [&](float ground) {
        glClearColor(ground, ground, ground, 1.0F);
        scene.draw(engagements, camera, lines);
        return pixels(request.width, request.height);
    };
    const QImage onWhite = linesOver(1.0F);
    const QImage onBlack = linesOver(0.0F);

    const auto colours = coloursOf(request.scale.palette);
    auto radiance = drawn->radiances.begin();
    for (int y = 0; y < request.height; ++y) {
        auto* const row = reinterpret_cast<QRgb*>(scaled.picture.scanLine(y));
        const auto* const white = reinterpret_cast<const QRgb*>(onWhite.constScanLine(y));
        const auto* const black = reinterpret_cast<const QRgb*>(onBlack.constScanLine(y));
        for (int x = 0; x < request.width; ++x, ++radiance)
            row[x] = over(black[x], white[x], colourOf(double{*radiance}, scaled.ends, colours));
    }
    return scaled;
}

void ScaledFrame::paint(
    Scene& scene, const std::vector<SceneEngagement>& engagements, const Camera& camera, const SceneOptions& options,
    const ScaledRequest& request) {
    ends_ = {};
    std::optional<ScaledPicture> scaled;
    if (!request.scale.isOrdinary())
        scaled = draw(scene, engagements, camera, options, request);
    if (!scaled) {
        glClearColor(0.0F, 0.0F, 0.0F, 1.0F);
        scene.draw(engagements, camera, options);
        if (!request.scale.hasColourBar)
            return;
        scaled = ScaledPicture{pixels(request.width, request.height), {}};
    }
    ends_ = scaled->ends;
    if (request.scale.hasColourBar)
        paintColourBar(scaled->picture, ends_, request.scale.palette);
    showPicture(scaled->picture);
}

std::optional<PointedRadiance> ScaledFrame::at(
    int column, int row, const std::vector<SceneEngagement>& engagements, const Camera& camera,
    const SceneOptions& options, const ScaledRequest& request) {
    const TangentBox box = PixelPlane(request.fieldOfViewDegrees, request.width, request.height).boxOf(column, row);
    const std::vector<SceneEngagement> solid = withoutGhosts(engagements, options);
    const auto sample = [&](RadianceLight light) {
        RadianceRequest asked = radianceRequest(options, request);
        asked.background = skyOf(engagements, request.followed);
        asked.light = light;
        return radiances_.sample(solid, camera, asked, box);
    };
    const std::optional<float> lit = sample({});
    if (!lit)
        return std::nullopt;
    const Tangents middle{(box.left + box.right) / 2.0, (box.bottom + box.top) / 2.0};
    PointedRadiance pointed{
        pick_.along(rayThrough(LookAt(camera), middle), solid, camera.mode(), options), double{*lit}};
    const bool isFacet = pointed.picked.thing == Picked::Thing::Target || pointed.picked.thing == Picked::Thing::Threat;
    if (!isFacet)
        return pointed;
    const std::optional<float> inShade = sample({.hasSun = false});
    const std::optional<float> inDark = sample({.hasSun = false, .hasSkyAndEarth = false});
    if (inShade && inDark)
        pointed.parts = {
            double{pointed.picked.ownRadiance}, double{*lit} - double{*inShade}, double{*inShade} - double{*inDark},
            double{*inDark} - double{pointed.picked.ownRadiance}};
    return pointed;
}

ScaleEnds ScaledFrame::endsOf(
    const std::vector<SceneEngagement>& engagements, const Camera& camera, const RadianceRequest& request,
    const ScaledRequest& scaled, const std::vector<float>& radiances) {
    switch (scaled.scale.range) {
    case PictureScale::Range::Fixed:
        return {};
    case PictureScale::Range::Chosen:
        return {0.0, scaled.scale.white};
    case PictureScale::Range::Automatic:
        break;
    }
    RadianceRequest followed = request;
    followed.background = kNothing;
    followed.showFlares = false;
    followed.bodiesOf = scaled.followed;
    followed.fineness = {1, 0, 0};
    const std::optional<RadiancePicture> drawn = radiances_.draw(engagements, camera, followed);
    const auto isThere = [](float radiance) {
        return radiance >= 0.0F;
    };
    if (drawn && std::ranges::any_of(drawn->radiances, isThere))
        return automaticEnds(drawn->radiances, request.background);
    // Where they are too small to be met, by whatever shows.
    std::vector<float> shown = radiances;
    std::erase_if(shown, [&](float radiance) { return radiance == request.background; });
    return automaticEnds(std::move(shown), request.background);
}

} // namespace sorvane
