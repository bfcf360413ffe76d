// What the view says about a recording.
#include "recordingtexts.h"

#include "movieframes.h"
#include "moviesettings.h"
#include "qvideoencoder.h"

namespace sorvane {
namespace {
QString sizeText(const QSize& size) {
    return QStringLiteral("%1 × %2").arg(size.width()).arg(size.height());
}
} // namespace

QString refusalText(const QVideoEncoder& encoder, const QSize& viewSize) {
    switch (encoder.refusal()) {
    case QVideoEncoder::Refusal::None:
        return {};
    case QVideoEncoder::Refusal::Size:
        return QStringLiteral("Not recording: the sides of a movie are multiples of %1. The view is %2; resize the "
                              "window until it is %3.")
            .arg(QVideoEncoder::kSizeStep)
            .arg(
                sizeText(viewSize),
                sizeText({nearestMovieSide(viewSize.width()), nearestMovieSide(viewSize.height())}));
    case QVideoEncoder::Refusal::File:
        return QStringLiteral("Not recording: %1 could not be opened for writing.").arg(encoder.fileName());
    case QVideoEncoder::Refusal::Format:
        return QStringLiteral("Not recording: no movie format fits %1. Name it .avi, .mpg, .mp4, .mov, .mkv or .webm.")
            .arg(encoder.fileName());
    case QVideoEncoder::Refusal::Memory:
        return QStringLiteral("Not recording: out of memory.");
    }
    return {};
}

QString writeErrorText(const QVideoEncoder& encoder) {
    return QStringLiteral("The recording is damaged: %1 could not be written. Is the disk full?")
        .arg(encoder.fileName());
}

QString damageText(const QVideoEncoder& encoder) {
    return QStringLiteral("The recording is damaged: %1 holds %2 of %3 frames. Is the disk full?")
        .arg(encoder.fileName())
        .arg(countMovieFrames(encoder.fileName()))
        .arg(encoder.frameCount());
}

QString recordedText(const QVideoEncoder& encoder) {
    return QStringLiteral("Recorded %1 frames: %2").arg(encoder.frameCount()).arg(encoder.fileName());
}

QString otherSizeText(const QVideoEncoder& encoder, const QSize& picture) {
    const QSize movie(static_cast<int>(encoder.getWidth()), static_cast<int>(encoder.getHeight()));
    if (picture == movie)
        return {};
    const QString text =
        QStringLiteral("The view is now %1, the movie stays %2: ").arg(sizeText(picture), sizeText(movie));
    return text + (picture.height() > movie.height()
                       ? QStringLiteral("it shows the upper part only. Make the view as large as before.")
                       : QStringLiteral("it shows the view stretched."));
}

QString recordingMark(const QVideoEncoder& encoder) {
    if (encoder.hasWriteError())
        return QStringLiteral("● damaged");
    return QStringLiteral("● %1").arg(encoder.frameCount());
}
} // namespace sorvane
