// The texts in rendered pictures.
#pragma once

#include <map>
#include <optional>
#include <span>
#include <string>

#include <QImage>

#include "encounter.h"
#include "measuredengagement.h"
#include "offscreenview.h"
#include "overlaytext.h"
#include "problem.h"
#include "textapplication.h"

namespace sorvane {
struct TextRequest {
    bool hasReadout = false;
    bool hasLabels = false;
    std::string title; // UTF-8; none when empty
    LengthUnit unit = LengthUnit::Unstated;

    bool hasColourBar = false; // which the view paints

    bool isAny() const { return hasReadout || hasLabels || !title.empty() || hasColourBar; }
};

// What a picture shows: a view at a time (seconds), with a camera that follows the engagement number `followed`.
struct PictureSubject {
    const OffscreenView& view;
    const CameraChoice& camera;
    std::size_t followed = 0;
    double time = 0.0;
};

// Paints texts over pictures on the thread that made it.
class PictureTexts {
public:
    // For views of that size in pixels.
    PictureTexts(const TextRequest& request, QSize view);

    // Why what is asked for can't be painted; nothing when all is well.
    std::optional<sorvane::Problem> problem() const;

    // What an engagement of the view is called.
    void name(EngagementId id, const std::string& path) { paths_[id] = QString::fromStdString(path); }

    // Each paints what is asked for, and nothing otherwise.
    void paintLabels(QImage& view, const PictureSubject& subject);
    // The read-out names the views of all `cameras`.
    void paintReadout(QImage& view, const PictureSubject& subject, std::span<const CameraChoice> cameras);
    // Over the whole picture, whatever views are in it.
    void paintTitle(QImage& picture) const;

private:
    struct Told {
        MeasuredEngagement measured;
        std::optional<ClosestApproach> closest;
    };

    QString readout(const PictureSubject& subject, const QString& views);
    std::vector<BodyLabel> labels(const PictureSubject& subject, const QSizeF& picture) const;

    TextRequest request_;
    std::optional<TextApplication> application_;
    LabelPainter labelPainter_;
    std::map<EngagementId, QString> paths_;
    std::map<EngagementId, Told> told_; // of those that have been asked for
};
} // namespace sorvane
