// What the view says about a recording.
#include "recordingtexts.h"

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
        return QStringLiteral("Not recording: no movie format fits %1. Name it .avi or .mpg.").arg(encoder.fileName());
    case QVideoEncoder::Refusal::Memory:
        return QStringLiteral("Not recording: out of memory.");
    }
    return {};
}

QString writeErrorText(const QVideoEncoder& encoder) {
    return QStringLiteral("The recording is damaged: %1 could not be written. Is the disk full?")
        .arg(encoder.fileName());
}

QString recordingMark(const QVideoEncoder& encoder) {
    return QStringLiteral("● %1").arg(encoder.frameCount());
}
} // namespace sorvane
