// The names of the bodies that a view shows, and where these are.
#pragma once

#include <functional>
#include <span>
#include <vector>

#include <QPointF>
#include <QRgb>
#include <QSizeF>
#include <QString>

#include "scene.h"

namespace sorvane {
struct BodyLabel {
    QString text;
    QRgb colour = 0;     // of the body's path
    QPointF body;        // its middle, in pixels of the view from its upper left corner
    double radius = 0.0; // how far it reaches, likewise

    bool operator==(const BodyLabel&) const = default;
};

// A view as labels need to know it. The field of view is the projection's, full and vertical.
struct LabelledView {
    const Camera& camera;
    double time = 0.0; // seconds
    double fieldOfViewDegrees = 0.0;
    QSizeF size; // pixels
};

// The name of an engagement among several.
using EngagementName = std::function<QString(const SceneEngagement&)>;

// The bodies that are shown and whose middle lies in the view: "target" and "threat", behind the engagement's name
// where several engagements are shown. The engagements' order, the target first.
std::vector<BodyLabel>
bodyLabels(std::span<const SceneEngagement> engagements, const LabelledView& view, const EngagementName& nameOf);

// What stands for an engagement's file where there is little room: "turn" for ".../ETXYZ.OUT.turn.Z".
QString shortEngagementName(const QString& path);
} // namespace sorvane
