// Frames as a movie.
#pragma once

#include <atomic>
#include <thread>

#include <QSize>

#include "atomicfile.h"
#include "frameoutput.h"
#include "framequeue.h"
#include "problem.h"
#include "qvideoencoder.h"

namespace sorvane {
// Encodes as the viewer's recordings do, on one thread beside the one that draws.
class MovieOutput : public FrameOutput {
public:
    // Opens the movie; a problem is told by the first add.
    MovieOutput(const std::string& path, QSize size);
    ~MovieOutput() override;

    bool add(std::int64_t number, QImage picture) override;
    bool finish() override;
    std::optional<sorvane::Problem> problem() const override;

private:
    void waitForThread();
    void encodeFrames();
    bool encode(const QImage& picture);

    std::string path_;
    AtomicFile file_;
    QVideoEncoder encoder_; // of the encoding thread while that runs
    std::int64_t heldBack_ = 0;
    std::atomic<bool> hasFailed_ = false;
    FrameQueue queue_{4};
    std::thread thread_;
};
} // namespace sorvane
