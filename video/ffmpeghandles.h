// Owning handles for the objects of the FFmpeg libraries. The libraries' own headers are not needed to hold one.
#pragma once

#include <memory>

struct AVCodecContext;
struct AVFormatContext;
struct AVFrame;
struct AVPacket;
struct SwsContext;

namespace sorvane {
struct FfmpegDeleter {
    void operator()(AVCodecContext* context) const;
    // Closes the file behind the context as well.
    void operator()(AVFormatContext* context) const;
    // Leaves the planes alone where the frame only points at them.
    void operator()(AVFrame* frame) const;
    void operator()(AVPacket* packet) const;
    void operator()(SwsContext* context) const;
};

using CodecContextHandle = std::unique_ptr<AVCodecContext, FfmpegDeleter>;
using OutputContextHandle = std::unique_ptr<AVFormatContext, FfmpegDeleter>;
using FrameHandle = std::unique_ptr<AVFrame, FfmpegDeleter>;
using PacketHandle = std::unique_ptr<AVPacket, FfmpegDeleter>;
using ScalerHandle = std::unique_ptr<SwsContext, FfmpegDeleter>;
} // namespace sorvane
