// The movie writer: pictures in, a movie file out, through the FFmpeg libraries.
#pragma once

#include <QImage>
#include <QString>
#include <cstdint>
#include <memory>
#include <span>

#include "ffmpeghandles.h"

struct AVCodec;
struct AVOutputFormat;
struct AVStream;

namespace sorvane {
struct MovieFormat;
} // namespace sorvane

// Writes one movie at a time: createFile, encodeImage for each frame, close. Problems are lines on standard output and
// the results of the operations. One object may write several movies, one after the other; it is used on one thread,
// while the encoder behind it runs threads of its own.
class QVideoEncoder {
public:
    static constexpr unsigned kSizeStep = 8; // both sides of a movie are multiples of it

    // Why a movie could not be opened.
    enum class Refusal {
        None,
        Size,   // a side is not a multiple of kSizeStep
        Format, // no container or codec takes such a movie
        Memory,
        File, // the file can't be opened or written
    };

    // Prints the licence, version and configuration of the libraries.
    QVideoEncoder();
    virtual ~QVideoEncoder();
    QVideoEncoder(const QVideoEncoder&) = delete;
    QVideoEncoder& operator=(const QVideoEncoder&) = delete;

    // Completes the file; false when nothing was open. Frames that the codec still holds back are written where
    // flushesAtClose says so, and nowhere else: deliberate, other files hold what encodeImage has returned sizes for.
    virtual bool close();

    // Encodes one frame, scaled to the movie's size: 32-bit RGB with or without alpha. Returns the number of bytes of
    // movie data that came out, 0 when the codec holds the frame back, negative on failure. An image of another format
    // is refused with a line; the frame still counts and shows the previous picture, at the start a black one.
    virtual int encodeImage(const QImage& image);

    // Whether a movie is open.
    virtual bool isOk() const { return ok_; }

    // Finishes a movie that is still open and opens a new one with its container by the extension of `fileName` (an
    // unknown extension gives an MPEG program stream) and the container's usual codec. Sides in pixels, `bitrate` in
    // bits per second, `gop` frames from one key frame to the next, `fps` frames per second. When false the encoder
    // is closed, and refusal() says why.
    bool
    createFile(const QString& fileName, unsigned width, unsigned height, unsigned bitrate, unsigned gop, unsigned fps);

    // The size given to the last createFile.
    unsigned getWidth() const { return width_; }
    unsigned getHeight() const { return height_; }
    // Whether both sides are multiples of kSizeStep; 0 × 0 is valid here, and no codec takes it.
    bool isSizeValid() const;

    // Converts an image into the picture that is encoded next, scaling it to the movie's size with libswscale. Of an
    // image taller than the movie, only as many rows as the movie has are used. On false the picture is as before.
    bool convertImage_sws(const QImage& image);
    // The same for an image of exactly the movie's size by arithmetic of our own; encodeImage does not use it.
    bool convertImage(const QImage& image);

    // Whether the open movie gets the frames that its codec holds back when it is closed: MP4, MOV,
    // WebM and Matroska.
    bool flushesAtClose() const { return format_ != nullptr; }
    // What the last createFile ended with.
    Refusal refusal() const { return refusal_; }
    // Whether anything of the last movie could not be written, such as on a full disk; still told after close.
    bool hasWriteError() const { return hasWriteError_; }
    // Frames handed to encodeImage since the last createFile, those held back or not written included.
    std::int64_t frameCount() const { return frameCount_; }
    // The name given to the last createFile.
    const QString& fileName() const { return fileName_; }

protected:
    // The planes of the picture that is encoded next: Y, Cb, Cr, rows packed. Empty while no movie is open.
    std::span<const std::uint8_t> picturePlanes() const;

private:
    void initCodec();
    bool initOutputBuf();
    bool initFrame();
    void freeOutputBuf();
    void freeFrame();
    void initVars();

    // The steps of createFile in their order; `name` in the encoding of the file system.
    bool openContainer(const QByteArray& name);
    bool addStream(unsigned fps);
    bool openCodec();
    bool writeHeader(const QByteArray& name);
    bool refuse(Refusal reason, const char* line);

    int rowsToScale(const QImage& image) const;
    bool writeReadyPackets(int& bytes);
    bool flush();

    unsigned width_ = 0;
    unsigned height_ = 0;
    unsigned bitrate_ = 0;
    unsigned gop_ = 0;
    bool ok_ = false;
    sorvane::OutputContextHandle formatContext_;
    const AVOutputFormat* outputFormat_ = nullptr;
    const sorvane::MovieFormat* format_ = nullptr; // what the container asks for beyond the plain settings
    sorvane::CodecContextHandle codecContext_;
    AVStream* stream_ = nullptr; // the format context's only one
    const AVCodec* codec_ = nullptr;
    sorvane::FrameHandle picture_; // points into pictureBuffer_
    std::unique_ptr<std::uint8_t[]> pictureBuffer_;
    int outputBufferSize_ = 0;
    std::unique_ptr<std::uint8_t[]> outputBuffer_;
    sorvane::ScalerHandle scaler_;
    sorvane::PacketHandle packet_;
    QString fileName_;

    Refusal refusal_ = Refusal::None;
    bool hasWriteError_ = false;
    std::int64_t frameCount_ = 0;
};
