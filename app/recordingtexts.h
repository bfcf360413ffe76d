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

// The same when the recording is over and its file closed, with the number of frames that are in it.
QString damageText(const QVideoEncoder& encoder);
// At the end of one that is whole.
QString recordedText(const QVideoEncoder& encoder);

// What becomes of pictures of another size than the movie's; empty for its own.
QString otherSizeText(const QVideoEncoder& encoder, const QSize& picture);

// The mark of a running recording: its number of frames, or that it is damaged.
QString recordingMark(const QVideoEncoder& encoder);
} // namespace sorvane
