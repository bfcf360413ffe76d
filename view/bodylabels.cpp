// The names of the bodies that a view shows, and where these are.
#include "bodylabels.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <optional>

#include <QFileInfo>
#include <QRectF>

#include "bodies.h"
#include "lookat.h"
#include "material.h"

namespace sorvane {
namespace {
QRgb rgbOf(const LineMaterial& material) {
    const auto byte = [](float component) {
        return static_cast<int>(std::lround(255.0F * component));
    };
    return qRgb(byte(material.colour[0]), byte(material.colour[1]), byte(material.colour[2]));
}

// Where world positions appear in a view.
class Projection {
public:
    explicit Projection(const LabelledView& view)
        : lookAt_(view.camera), size_(view.size),
          pixelsPerTangent_(view.size.height() / 2.0 / std::tan(view.fieldOfViewDegrees * std::numbers::pi / 360.0)) {}

    // Nothing for what lies outside the view.
    std::optional<BodyLabel> labelAt(std::span<const float, 3> position, const Hardbody* body) const {
        const auto [right, up, towardsEye] = lookAt_.inEye(position);
        const double depth = -towardsEye;
        if (!(depth >= kNearDepth && depth <= kFarDepth))
            return std::nullopt;
        const double pixelsPerUnit = pixelsPerTangent_ / depth;
        BodyLabel label;
        label.body = {size_.width() / 2.0 + right * pixelsPerUnit, size_.height() / 2.0 - up * pixelsPerUnit};
        if (!QRectF(QPointF(0.0, 0.0), size_).contains(label.body))
            return std::nullopt;
        if (body != nullptr)
            label.radius = radiusOf(*body) * pixelsPerUnit;
        return label;
    }

private:
    LookAt lookAt_;
    QSizeF size_;
    double pixelsPerTangent_;
};
} // namespace

std::vector<BodyLabel>
bodyLabels(std::span<const SceneEngagement> engagements, const LabelledView& view, const EngagementName& nameOf) {
    const auto isShown = [](const SceneEngagement& shown) {
        return !shown.isHidden && !shown.engagement->keyframes.isEmpty();
    };
    const bool areSeveral = std::ranges::count_if(engagements, isShown) > 1;
    const Projection projection(view);
    std::vector<BodyLabel> labels;
    for (const SceneEngagement& shown : engagements) {
        if (!isShown(shown))
            continue;
        const etxyz& engagement = *shown.engagement;
        const keyframe state = engagement.InterpolatedFrame(view.time);
        const auto add = [&](const char* body, std::optional<BodyLabel> label, const LineMaterial& material) {
            if (!label)
                return;
            label->text = QString::fromLatin1(body);
            if (areSeveral)
                label->text.prepend(nameOf(shown) + u' ');
            label->colour = rgbOf(material);
            labels.push_back(*std::move(label));
        };
        add("target", projection.labelAt(state.targetPos, engagement.target.get()), cyl_front_mat);
        if (view.camera.mode() != ViewGyro) // which shows no threat
            add("threat", projection.labelAt(state.threatPos, engagement.threat.get()), threatMaterial(engagement));
    }
    return labels;
}

QString shortEngagementName(const QString& path) {
    constexpr QLatin1String kPrefix("ETXYZ.OUT.");
    constexpr QLatin1String kCompressed(".Z");
    QString name = QFileInfo(path).fileName();
    if (name.startsWith(kPrefix) && name.size() > kPrefix.size())
        name.remove(0, kPrefix.size());
    if (name.endsWith(kCompressed) && name.size() > kCompressed.size())
        name.chop(kCompressed.size());
    return name;
}
} // namespace sorvane
