// Frames as a movie.
#include "movieoutput.h"

#include <QFile>

#include "moviesettings.h"

namespace sorvane {
MovieOutput::MovieOutput(const std::string& path, QSize size) : path_(path), file_(path) {
    hasFailed_ =
        file_.temporaryPath().empty() ||
        !encoder_.createFile(
            QFile::decodeName(file_.temporaryPath().c_str()), static_cast<unsigned>(size.width()),
            static_cast<unsigned>(size.height()), kMovieBitsPerSecond, kMovieFramesPerKeyFrame, kMovieFramesPerSecond);
    if (!hasFailed_)
        thread_ = std::thread(&MovieOutput::encodeFrames, this);
}

MovieOutput::~MovieOutput() {
    queue_.abandon();
    waitForThread();
}

bool MovieOutput::add(std::int64_t number, QImage picture) {
    if (!hasFailed_ && queue_.push({number, std::move(picture)}))
        return true;
    // What is wrong is asked for next, of the encoder.
    queue_.abandon();
    waitForThread();
    return false;
}

bool MovieOutput::finish() {
    queue_.close();
    waitForThread();
    return !hasFailed_ && file_.commit();
}

void MovieOutput::waitForThread() {
    if (thread_.joinable())
        thread_.join();
}

std::optional<sorvane::Problem> MovieOutput::problem() const {
    if (file_.problem() || !hasFailed_)
        return file_.problem();
    if (encoder_.hasWriteError() || encoder_.refusal() == QVideoEncoder::Refusal::File)
        return path_ + ": could not be written; is the disk full?";
    return path_ + ": the movie could not be encoded";
}

void MovieOutput::encodeFrames() {
    QImage last;
    while (const auto frame = queue_.pop()) {
        last = frame->picture;
        if (!encode(last))
            break;
    }
    // Where closing doesn't write the frames that the codec holds back, more of the last one push them out.
    const std::int64_t wanted = encoder_.flushesAtClose() ? 0 : heldBack_;
    for (std::int64_t more = wanted; more > 0 && !hasFailed_; --more)
        encode(last);
    encoder_.close();
    if (encoder_.hasWriteError())
        hasFailed_ = true;
    queue_.abandon();
}

bool MovieOutput::encode(const QImage& picture) {
    const int bytes = encoder_.encodeImage(picture);
    if (bytes == 0)
        ++heldBack_;
    if (bytes < 0 || encoder_.hasWriteError())
        hasFailed_ = true;
    return !hasFailed_;
}
} // namespace sorvane
