// The texts in rendered pictures.
#include "picturetexts.h"

#include <QFileInfo>
#include <QPainter>

#include "readouttext.h"

namespace sorvane {
PictureTexts::PictureTexts(const TextRequest& request, QSize picture)
    : request_(request), labelPainter_(textPixelSize(picture)) {
    if (request.isAny())
        application_.emplace();
}

std::optional<sorvane::Problem> PictureTexts::problem() const {
    return application_ ? application_->problem() : std::nullopt;
}

void PictureTexts::paint(QImage& picture, const PictureSubject& subject) {
    if (!request_.isAny())
        return;
    const QSizeF size = picture.size();
    QPainter painter(&picture);
    if (request_.hasLabels)
        labelPainter_.paint(painter, size, labels(subject, size));
    if (request_.hasReadout)
        paintReadout(painter, size, readout(subject));
    if (!request_.title.empty())
        paintTitle(painter, size, QString::fromStdString(request_.title).simplified());
}

QString PictureTexts::readout(const PictureSubject& subject) {
    const SceneEngagement& followed = subject.view.engagements()[subject.followed];
    const std::span<const Sample> samples = followed.engagement->samples.samples();
    const auto [closest, isNew] = closest_.try_emplace(followed.id);
    if (isNew)
        closest->second = closestApproach(samples);
    return readoutLines({.time = subject.time,
                         .engagement = QFileInfo(paths_[followed.id]).fileName(),
                         .samples = samples,
                         .closest = closest->second,
                         .view = QString::fromLatin1(nameOf(subject.camera.mode).shown),
                         .unit = request_.unit})
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
