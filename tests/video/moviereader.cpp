// Reads a movie back with the FFmpeg libraries, for tests.
#include "moviereader.h"

#include <QFile>
#include <cstdio>

#include "ffmpeghandles.h"

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswscale/swscale.h>
}

using namespace sorvane;

namespace {
struct InputDeleter {
    void operator()(AVFormatContext* context) const { avformat_close_input(&context); }
};
using InputContextHandle = std::unique_ptr<AVFormatContext, InputDeleter>;

QImage toImage(const AVFrame& frame) {
    QImage image(frame.width, frame.height, QImage::Format_RGB32);
    const ScalerHandle scaler(sws_getContext(
        frame.width, frame.height, static_cast<AVPixelFormat>(frame.format), frame.width, frame.height, AV_PIX_FMT_BGRA,
        SWS_BICUBIC | SWS_ACCURATE_RND, nullptr, nullptr, nullptr));
    std::uint8_t* const rows[] = {image.bits()};
    const int bytesPerLine[] = {static_cast<int>(image.bytesPerLine())};
    sws_scale(scaler.get(), frame.data, frame.linesize, 0, frame.height, rows, bytesPerLine);
    return image;
}

// Takes every frame that is ready.
void receiveFrames(AVCodecContext* codec, Movie& movie) {
    const FrameHandle frame(av_frame_alloc());
    while (avcodec_receive_frame(codec, frame.get()) == 0) {
        movie.isKeyFrame.push_back(frame->key_frame != 0);
        movie.frames.push_back(toImage(*frame));
    }
}

Movie fail(const QString& fileName, const char* reason) {
    std::printf("%s: %s\n", qPrintable(fileName), reason);
    return {};
}
} // namespace

Movie readMovie(const QString& fileName) {
    AVFormatContext* opened = nullptr;
    if (avformat_open_input(&opened, ("file:" + QFile::encodeName(fileName)).constData(), nullptr, nullptr) < 0)
        return fail(fileName, "not a movie");
    const InputContextHandle input(opened);
    const int codecHeaderBytes = opened->nb_streams == 0 ? 0 : opened->streams[0]->codecpar->extradata_size;
    if (avformat_find_stream_info(input.get(), nullptr) < 0)
        return fail(fileName, "no stream information");
    const AVCodec* decoder = nullptr;
    const int index = av_find_best_stream(input.get(), AVMEDIA_TYPE_VIDEO, -1, -1, &decoder, 0);
    if (index < 0)
        return fail(fileName, "no video stream");

    const AVStream& stream = *input->streams[index];
    const CodecContextHandle codec(avcodec_alloc_context3(decoder));
    if (avcodec_parameters_to_context(codec.get(), stream.codecpar) < 0 ||
        avcodec_open2(codec.get(), decoder, nullptr) < 0)
        return fail(fileName, "no decoder");

    Movie movie;
    movie.codecHeaderBytes = codecHeaderBytes;
    movie.container = input->iformat->name;
    movie.codec = decoder->name;
    movie.streamCount = static_cast<int>(input->nb_streams);
    movie.width = codec->width;
    movie.height = codec->height;
    movie.framesPerSecond = av_q2d(av_guess_frame_rate(input.get(), input->streams[index], nullptr));

    const PacketHandle packet(av_packet_alloc());
    while (av_read_frame(input.get(), packet.get()) == 0) {
        if (packet->stream_index == index) {
            movie.seconds.push_back(static_cast<double>(packet->dts) * av_q2d(stream.time_base));
            if (avcodec_send_packet(codec.get(), packet.get()) == 0)
                receiveFrames(codec.get(), movie);
        }
        av_packet_unref(packet.get());
    }
    avcodec_send_packet(codec.get(), nullptr);
    receiveFrames(codec.get(), movie);
    return movie;
}
