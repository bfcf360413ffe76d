// Owning handles for the objects of the FFmpeg libraries.
#include "ffmpeghandles.h"

using namespace sorvane;

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libswscale/swscale.h>
}

void FfmpegDeleter::operator()(AVCodecContext* context) const {
    avcodec_free_context(&context);
}

void FfmpegDeleter::operator()(AVFormatContext* context) const {
    avio_closep(&context->pb);
    avformat_free_context(context);
}

void FfmpegDeleter::operator()(AVFrame* frame) const {
    av_frame_free(&frame);
}

void FfmpegDeleter::operator()(AVPacket* packet) const {
    av_packet_free(&packet);
}

void FfmpegDeleter::operator()(SwsContext* context) const {
    sws_freeContext(context);
}
