// What the view says about a recording.
#pragma once

#include <QSize>
#include <QString>

class QVideoEncoder;

namespace sorvane {
// Why the movie that `encoder` was asked for is not recorded, and what helps; empty when it is. `viewSize` in pixels.
QString refusalText(const QVideoEncoder& encoder, const QSize& viewSize);

// That a movie is damaged, after a write error.
QString writeErrorText(const QVideoEncoder& encoder);

// The mark of a running recording, with its number of frames.
QString recordingMark(const QVideoEncoder& encoder);
} // namespace sorvane
