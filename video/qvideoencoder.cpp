// The movie writer.
#include "qvideoencoder.h"

#include <QFile>
#include <algorithm>
#include <climits>
#include <new>

#include "movieformat.h"
#include "videolog.h"
#include "yuvconversion.h"

using namespace sorvane;

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/imgutils.h>
#include <libavutil/mathematics.h>
#include <libswscale/swscale.h>
}

namespace {
constexpr int kEncodingThreads = 10;

constexpr AVPixelFormat kMovieFormat = AV_PIX_FMT_YUV420P;
constexpr AVPixelFormat kImageFormat = AV_PIX_FMT_BGRA; // the bytes of QImage's 32-bit formats, little-endian

constexpr std::uint8_t kBlackLuma = 16;
constexpr std::uint8_t kNeutralChroma = 128;

// Frames a second, as a rate.
AVRational rateOf(unsigned fps) {
    return {static_cast<int>(fps), 1};
}

// Passes on what the codec says beside its parameters. An MPEG program stream takes its multiplexing rate from there;
// with the movie's mean bit rate instead, its start would come too late for a player that holds to the stream's clock.
bool copySideData(const AVCodecContext& codec, AVStream* stream) {
    for (int i = 0; i < codec.nb_coded_side_data; ++i) {
        const AVPacketSideData& from = codec.coded_side_data[i];
        std::uint8_t* to = av_stream_new_side_data(stream, from.type, from.size);
        if (to == nullptr)
            return false;
        std::copy_n(from.data, from.size, to);
    }
    return true;
}

bool isAccepted(const QImage& image) {
    if (image.format() == QImage::Format_RGB32 || image.format() == QImage::Format_ARGB32)
        return true;
    printVideoLine("Wrong image format");
    return false;
}
} // namespace

QVideoEncoder::QVideoEncoder() {
    initVars();
    initCodec();
}

QVideoEncoder::~QVideoEncoder() {
    QVideoEncoder::close();
}

void QVideoEncoder::initCodec() {
    printVideoLine("License: %s", avformat_license());
    // The format library's version under the codec library's label is deliberate: logs are compared by this line.
    printVideoLine("AVCodec version %u", avformat_version());
    printVideoLine("AVFormat configuration: %s", avformat_configuration());
}

void QVideoEncoder::initVars() {
    ok_ = false;
    scaler_.reset();
    packet_.reset();
    outputBuffer_.reset();
    outputBufferSize_ = 0;
    picture_.reset();
    pictureBuffer_.reset();
    codec_ = nullptr;
    codecContext_.reset();
    stream_ = nullptr;
    outputFormat_ = nullptr;
    format_ = nullptr;
    formatContext_.reset();
}

bool QVideoEncoder::isSizeValid() const {
    return width_ % kSizeStep == 0 && height_ % kSizeStep == 0;
}

bool QVideoEncoder::createFile(
    const QString& fileName, unsigned width, unsigned height, unsigned bitrate, unsigned gop, unsigned fps) {
    close();
    initVars(); // close leaves alone what a refused movie had allocated
    width_ = width;
    height_ = height;
    bitrate_ = bitrate;
    gop_ = gop;
    fileName_ = fileName;
    refusal_ = Refusal::None;
    hasWriteError_ = false;
    frameCount_ = 0;

    if (!isSizeValid())
        return refuse(Refusal::Size, "Invalid size");
    const QByteArray name = QFile::encodeName(fileName);
    if (!openContainer(name) || !addStream(fps))
        return false;
    av_dump_format(formatContext_.get(), 0, name.constData(), 1);
    if (!openCodec())
        return false;
    if (!initOutputBuf())
        return refuse(Refusal::Memory, "Can't allocate memory for output bitstream");
    if (!initFrame())
        return refuse(Refusal::Memory, "Can't init frame");
    if (!writeHeader(name))
        return false;
    ok_ = true;
    return true;
}

bool QVideoEncoder::refuse(Refusal reason, const char* line) {
    refusal_ = reason;
    printVideoLine("%s", line);
    return false;
}

bool QVideoEncoder::openContainer(const QByteArray& name) {
    outputFormat_ = av_guess_format(nullptr, name.constData(), nullptr);
    if (outputFormat_ == nullptr) {
        printVideoLine("Could not deduce output format from file extension: using MPEG.");
        outputFormat_ = av_guess_format("mpeg", nullptr, nullptr);
    }
    formatContext_.reset(avformat_alloc_context());
    if (formatContext_ == nullptr)
        return refuse(Refusal::Memory, "Error allocating format context");
    formatContext_->oformat = outputFormat_;
    format_ = movieFormatOf(*outputFormat_);
    if (format_ != nullptr)
        formatContext_->flags |= AVFMT_FLAG_BITEXACT; // no random numbers: the same pictures give the same file
    // Without a protocol of its own, a name with a colon would be taken for one.
    formatContext_->url = av_strdup(("file:" + name).constData());
    if (formatContext_->url == nullptr)
        return refuse(Refusal::Memory, "Error allocating format context");
    return true;
}

bool QVideoEncoder::addStream(unsigned fps) {
    stream_ = avformat_new_stream(formatContext_.get(), nullptr);
    if (stream_ == nullptr)
        return refuse(Refusal::Memory, "Could not allocate stream");

    codec_ = avcodec_find_encoder(outputFormat_->video_codec);
    codecContext_.reset(avcodec_alloc_context3(codec_)); // the codec brings its defaults; null is looked at later
    if (codecContext_ == nullptr)
        return refuse(Refusal::Memory, "Could not allocate stream");
    codecContext_->bit_rate = bitrate_;
    codecContext_->codec_type = AVMEDIA_TYPE_VIDEO;
    codecContext_->codec_id = outputFormat_->video_codec;
    codecContext_->width = static_cast<int>(width_);
    codecContext_->height = static_cast<int>(height_);
    codecContext_->time_base = av_inv_q(rateOf(fps));
    codecContext_->pix_fmt = kMovieFormat;
    codecContext_->gop_size = static_cast<int>(gop_);
    codecContext_->thread_count = kEncodingThreads;
    if (format_ != nullptr) {
        // What the conversion of pictures makes; players take large movies for another one.
        codecContext_->colorspace = AVCOL_SPC_SMPTE170M;
        codecContext_->color_range = AVCOL_RANGE_MPEG;
    }
    if ((outputFormat_->flags & AVFMT_GLOBALHEADER) != 0)
        codecContext_->flags |= AV_CODEC_FLAG_GLOBAL_HEADER;

    // What a container says of its rate comes from here.
    stream_->time_base = codecContext_->time_base;
    stream_->avg_frame_rate = rateOf(fps);
    if (avcodec_parameters_from_context(stream_->codecpar, codecContext_.get()) < 0)
        return refuse(Refusal::Format, "Invalid output format parameters");
    return true;
}

bool QVideoEncoder::openCodec() {
    if (codec_ == nullptr)
        return refuse(Refusal::Format, "codec not found");
    CodingOptions options(format_ == nullptr ? "" : format_->codecOptions);
    if (avcodec_open2(codecContext_.get(), codec_, options.get()) < 0)
        return refuse(Refusal::Format, "could not open codec");
    // Opening adds what the container's header needs.
    if (avcodec_parameters_from_context(stream_->codecpar, codecContext_.get()) < 0 ||
        !copySideData(*codecContext_, stream_))
        return refuse(Refusal::Format, "Invalid output format parameters");
    return true;
}

// The codec brings the memory of its packets; space for a frame is taken none the less, so that a movie for which
// there is none is refused before its file is touched.
bool QVideoEncoder::initOutputBuf() {
    const std::uint64_t size = std::uint64_t{3} * width_ * height_;
    if (size > INT_MAX)
        return false;
    outputBufferSize_ = static_cast<int>(size);
    outputBuffer_.reset(new (std::nothrow) std::uint8_t[size]);
    packet_.reset(av_packet_alloc());
    return outputBuffer_ != nullptr && packet_ != nullptr;
}

bool QVideoEncoder::initFrame() {
    picture_.reset(av_frame_alloc());
    if (picture_ == nullptr)
        return false;
    picture_->format = kMovieFormat;
    picture_->width = static_cast<int>(width_);
    picture_->height = static_cast<int>(height_);
    const int size = av_image_get_buffer_size(kMovieFormat, picture_->width, picture_->height, 1);
    // Vector instructions of the scaler may store beyond the last row.
    if (size > 0)
        pictureBuffer_.reset(new (std::nothrow)
                                 std::uint8_t[static_cast<std::size_t>(size) + AV_INPUT_BUFFER_PADDING_SIZE]);
    if (pictureBuffer_ == nullptr) {
        picture_.reset();
        return false;
    }
    av_image_fill_arrays(
        picture_->data, picture_->linesize, pictureBuffer_.get(), kMovieFormat, picture_->width, picture_->height, 1);
    const std::size_t pixels = std::size_t{width_} * height_;
    std::fill_n(pictureBuffer_.get(), pixels, kBlackLuma);
    std::fill_n(pictureBuffer_.get() + pixels, static_cast<std::size_t>(size) - pixels, kNeutralChroma);
    return true;
}

bool QVideoEncoder::writeHeader(const QByteArray& name) {
    if (avio_open(&formatContext_->pb, formatContext_->url, AVIO_FLAG_WRITE) < 0) {
        refusal_ = Refusal::File;
        printVideoLine("Could not open '%s'", name.constData());
        return false;
    }
    CodingOptions options(format_ == nullptr ? "" : format_->containerOptions);
    const bool isWritten = avformat_write_header(formatContext_.get(), options.get()) >= 0;
    avio_flush(formatContext_->pb); // a full disk is better found before the first frame
    if (isWritten && formatContext_->pb->error >= 0)
        return true;
    refusal_ = formatContext_->pb->error < 0 ? Refusal::File : Refusal::Format;
    return false;
}

void QVideoEncoder::freeOutputBuf() {
    packet_.reset();
    outputBuffer_.reset();
    outputBufferSize_ = 0;
}

void QVideoEncoder::freeFrame() {
    pictureBuffer_.reset();
    picture_.reset();
}

int QVideoEncoder::encodeImage(const QImage& image) {
    if (!ok_)
        return -1;
    convertImage_sws(image); // a refused image leaves the previous picture, which is then encoded again
    picture_->pts = frameCount_++;
    if (avcodec_send_frame(codecContext_.get(), picture_.get()) < 0)
        return -1;
    int bytes = 0;
    return writeReadyPackets(bytes) ? bytes : -1;
}

// Adds the sizes of the packets to `bytes`.
bool QVideoEncoder::writeReadyPackets(int& bytes) {
    for (;;) {
        const int received = avcodec_receive_packet(codecContext_.get(), packet_.get());
        if (received == AVERROR(EAGAIN) || received == AVERROR_EOF)
            return true;
        if (received < 0)
            return false;
        bytes += packet_->size;
        av_packet_rescale_ts(packet_.get(), codecContext_->time_base, stream_->time_base);
        packet_->stream_index = stream_->index;
        if (av_interleaved_write_frame(formatContext_.get(), packet_.get()) < 0) {
            hasWriteError_ = true;
            return false;
        }
    }
}

bool QVideoEncoder::convertImage_sws(const QImage& image) {
    if (!isAccepted(image))
        return false;
    scaler_.reset(sws_getCachedContext(
        scaler_.release(), image.width(), image.height(), kImageFormat, static_cast<int>(width_),
        static_cast<int>(height_), kMovieFormat, SWS_BICUBIC, nullptr, nullptr, nullptr));
    if (scaler_ == nullptr) {
        printVideoLine("Cannot initialize the conversion context");
        return false;
    }
    if (picture_ == nullptr)
        return false;
    const std::uint8_t* const rows[] = {image.constBits()};
    const int bytesPerLine[] = {static_cast<int>(image.bytesPerLine())};
    sws_scale(scaler_.get(), rows, bytesPerLine, 0, rowsToScale(image), picture_->data, picture_->linesize);
    return true;
}

// Of an image taller than the movie only the movie's height of rows, so that the top of the picture changes and the
// rest keeps what it had: deliberate. A lower image has no more rows than its own.
int QVideoEncoder::rowsToScale(const QImage& image) const {
    // Beyond it swscale works in two passes, which crash when the image is not whole.
    constexpr int kLargestPartialShrink = 32;
    if (image.width() / kLargestPartialShrink >= picture_->width ||
        image.height() / kLargestPartialShrink >= picture_->height)
        return image.height();
    return std::min(image.height(), picture_->height);
}

bool QVideoEncoder::convertImage(const QImage& image) {
    if (static_cast<unsigned>(image.width()) != width_ || static_cast<unsigned>(image.height()) != height_) {
        printVideoLine("Wrong image size!");
        return false;
    }
    if (!isAccepted(image) || pictureBuffer_ == nullptr)
        return false;
    convertBgrxToYuv420p(image.constBits(), image.bytesPerLine(), width_, height_, pictureBuffer_.get());
    return true;
}

std::span<const std::uint8_t> QVideoEncoder::picturePlanes() const {
    if (pictureBuffer_ == nullptr)
        return {};
    return {pictureBuffer_.get(), std::size_t{width_} * height_ * 3 / 2};
}

// Writes what the codec holds back; no frame can follow.
bool QVideoEncoder::flush() {
    int bytes = 0;
    return avcodec_send_frame(codecContext_.get(), nullptr) >= 0 && writeReadyPackets(bytes);
}

bool QVideoEncoder::close() {
    if (!ok_)
        return false;
    if (flushesAtClose() && !flush())
        hasWriteError_ = true;
    const int trailer = av_write_trailer(formatContext_.get());
    codecContext_.reset();
    freeFrame();
    freeOutputBuf();
    const int closed = avio_closep(&formatContext_->pb);
    if (trailer < 0 || closed < 0)
        hasWriteError_ = true;
    initVars();
    return true;
}
