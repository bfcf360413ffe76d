// Tells over the view how a recording goes.
#include "recordingnotice.h"

#include "qvideoencoder.h"
#include "recordingtexts.h"
#include "viewnotice.h"

namespace sorvane {
void RecordingNotice::begin(const QVideoEncoder& encoder, const QSize& viewSize) {
    isErrorTold_ = false;
    toldSize_ = QSize(static_cast<int>(encoder.getWidth()), static_cast<int>(encoder.getHeight()));
    if (encoder.isOk())
        notice_.mark(recordingMark(encoder));
    else
        notice_.notify(refusalText(encoder, viewSize));
}

void RecordingNotice::frame(const QVideoEncoder& encoder, const QSize& picture) {
    if (!encoder.isOk())
        return;
    notice_.mark(recordingMark(encoder));
    if (encoder.hasWriteError() && !isErrorTold_) {
        isErrorTold_ = true;
        notice_.notify(writeErrorText(encoder));
    } else if (picture != toldSize_) {
        toldSize_ = picture;
        const QString text = otherSizeText(encoder, picture);
        if (!text.isEmpty())
            notice_.notify(text);
    }
}

void RecordingNotice::end(const QVideoEncoder& encoder) {
    notice_.clearMark();
    if (encoder.hasWriteError()) // closing writes too
        notice_.notify(damageText(encoder));
}
} // namespace sorvane
