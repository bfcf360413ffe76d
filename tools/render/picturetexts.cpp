// The texts in rendered pictures.
#include "picturetexts.h"

#include <utility>

#include <QFileInfo>
#include <QPainter>

#include "readouttext.h"

namespace sorvane {
PictureTexts::PictureTexts(const TextRequest& request, QSize view)
    : request_(request), labelPainter_(textPixelSize(view)) {
    if (request.isAny())
        application_.emplace();
}

std::optional<sorvane::Problem> PictureTexts::problem() const {
    return application_ ? application_->problem() : std::nullopt;
}

void PictureTexts::paintLabels(QImage& view, const PictureSubject& subject) {
    if (!request_.hasLabels)
        return;
    const QSizeF size = view.size();
    QPainter painter(&view);
    labelPainter_.paint(painter, size, labels(subject, size));
}

void PictureTexts::paintReadout(QImage& view, const PictureSubject& subject, std::span<const CameraChoice> cameras) {
    if (!request_.hasReadout)
        return;
    QStringList names;
    for (const CameraChoice& camera : cameras)
        names << QString::fromLatin1(nameOf(camera.mode).shown);
    QPainter painter(&view);
    sorvane::paintReadout(painter, view.size(), readout(subject, names.join(QStringLiteral(", "))));
}

void PictureTexts::paintTitle(QImage& picture) const {
    if (request_.title.empty())
        return;
    QPainter painter(&picture);
    sorvane::paintTitle(painter, picture.size(), QString::fromStdString(request_.title).simplified());
}

QString PictureTexts::readout(const PictureSubject& subject, const QString& views) {
    const SceneEngagement& followed = subject.view.engagements()[subject.followed];
    auto told = told_.find(followed.id);
    if (told == told_.end()) {
        const etxyz& engagement = *followed.engagement;
        MeasuredEngagement measured(engagement.samples.series(), engagement.fieldOfView, request_.unit);
        const std::optional<ClosestApproach> closest = closestApproach(measured.samples());
        told = told_.insert({followed.id, {std::move(measured), closest}}).first;
    }
    return readoutLines({.time = subject.time,
                         .engagement = QFileInfo(paths_[followed.id]).fileName(),
                         .measured = &told->second.measured,
                         .closest = told->second.closest,
                         .view = views})
        .join(u'\n');
}

std::vector<BodyLabel> PictureTexts::labels(const PictureSubject& subject, const QSizeF& picture) const {
    const Camera camera = subject.view.cameraAt(subject.time, subject.camera, subject.followed);
    return bodyLabels(
        subject.view.engagements(),
        {.camera = camera,
         .time = subject.time,
         .fieldOfViewDegrees = subject.view.fieldOfViewDegrees(subject.camera, subject.followed),
         .size = picture},
        [this](const SceneEngagement& shown) { return shortEngagementName(paths_.at(shown.id)); });
}
} // namespace sorvane
