// Counts the frames of a movie file.
#include "movieframes.h"

#include <QFile>
#include <memory>

#include "ffmpeghandles.h"
#include "videolog.h"

extern "C" {
#include <libavformat/avformat.h>
}

namespace sorvane {
namespace {
struct InputDeleter {
    void operator()(AVFormatContext* context) const { avformat_close_input(&context); }
};
} // namespace

std::int64_t countMovieFrames(const QString& fileName) {
    const QuietVideoLog quiet;
    AVFormatContext* opened = nullptr;
    if (avformat_open_input(&opened, ("file:" + QFile::encodeName(fileName)).constData(), nullptr, nullptr) < 0)
        return 0;
    const std::unique_ptr<AVFormatContext, InputDeleter> input(opened);
    const PacketHandle packet(av_packet_alloc());
    std::int64_t frames = 0;
    while (av_read_frame(input.get(), packet.get()) == 0) {
        if ((packet->flags & AV_PKT_FLAG_CORRUPT) == 0)
            ++frames;
        av_packet_unref(packet.get());
    }
    return frames;
}
} // namespace sorvane
