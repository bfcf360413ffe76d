// Tells over the view how a recording goes.
#pragma once

#include <QSize>

class QVideoEncoder;

namespace sorvane {
class ViewNotice;

// One recording at a time: begin after createFile, frame after each encodeImage, end after close.
class RecordingNotice {
public:
    explicit RecordingNotice(ViewNotice& notice) : notice_(notice) {}

    void begin(const QVideoEncoder& encoder, const QSize& viewSize);
    // Nothing for a movie that was refused. `picture` is the size of what was handed to the encoder.
    void frame(const QVideoEncoder& encoder, const QSize& picture);
    void end(const QVideoEncoder& encoder);

private:
    ViewNotice& notice_;
    bool isErrorTold_ = false;
    QSize toldSize_; // of pictures that are not of the movie's size
};
} // namespace sorvane
