// The movie writer: its movies are read back with the FFmpeg libraries.
#include <gmock/gmock.h>

#include <QFile>
#include <QTemporaryDir>
#include <csignal>
#include <cstdarg>
#include <filesystem>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "movieframes.h"
#include "moviereader.h"
#include "qvideoencoder.h"
#include "testpictures.h"
#include "videolog.h"

extern "C" {
#include <libavformat/avformat.h>
#include <libavutil/log.h>
}

using namespace sorvane;

namespace {
using testing::HasSubstr;

constexpr unsigned kBitrate = 10000000;
constexpr unsigned kGop = 20;
constexpr unsigned kFps = 30;
constexpr int kColourTolerance = 12;

class Encoder : public QVideoEncoder {
public:
    bool close() override {
        ++closeCalls;
        return QVideoEncoder::close();
    }
    int closeCalls = 0;
};

class QVideoEncoderTest : public testing::Test {
protected:
    static void SetUpTestSuite() { av_log_set_level(AV_LOG_QUIET); }

    QString path(const char* name) const { return folder_.filePath(QString::fromUtf8(name)); }

    static bool open(QVideoEncoder& encoder, const QString& fileName, int width = 320, int height = 240) {
        return encoder.createFile(
            fileName, static_cast<unsigned>(width), static_cast<unsigned>(height), kBitrate, kGop, kFps);
    }

    QTemporaryDir folder_;
};

TEST_F(QVideoEncoderTest, EachObjectPrintsTheLibraries) {
    testing::internal::CaptureStdout();
    { const QVideoEncoder first, second; }
    const std::string lines = "License: " + std::string(avformat_license()) + "\nAVCodec version " +
                              std::to_string(avformat_version()) +
                              "\nAVFormat configuration: " + avformat_configuration() + "\n";
    EXPECT_EQ(testing::internal::GetCapturedStdout(), lines + lines);
}

TEST_F(QVideoEncoderTest, NothingIsPrintedWhileSilenceIsAsked) {
    const int before = av_log_get_level();
    av_log_set_level(AV_LOG_INFO);
    testing::internal::CaptureStdout();
    {
        const QuietVideoLog quiet;
        EXPECT_EQ(av_log_get_level(), AV_LOG_QUIET);
        QVideoEncoder().createFile(path("movie.avi"), 1, 1, kBitrate, kGop, kFps);
    }
    printVideoLine("%d frames", 3);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "3 frames\n");
    EXPECT_EQ(av_log_get_level(), AV_LOG_INFO);
    av_log_set_level(before);
}

TEST_F(QVideoEncoderTest, EveryPictureBecomesAFrame) {
    constexpr int kPictures = 39;
    constexpr const char* kFallback = "Could not deduce output format from file extension: using MPEG.\n";
    struct Row {
        const char* name;
        const char* output;
        const char* container;
        const char* codec;
        int heldBack; // pictures that the codec still holds back at the end
    };
    for (const Row& row : std::vector<Row>{
             {"movie.avi", "", "avi", "mpeg4", 0},
             {"movie.nut", "", "nut", "mpeg4", 0}, // wants the codec's header and the rate in its own
             {"movie.mpg", "", "mpeg", "mpeg1video", 1},
             {"movie.unknown", kFallback, "mpeg", "mpeg1video", 1},
             {"movie", kFallback, "mpeg", "mpeg1video", 1}}) {
        SCOPED_TRACE(row.name);
        QVideoEncoder encoder;
        testing::internal::CaptureStdout();
        ASSERT_TRUE(open(encoder, path(row.name)));
        EXPECT_EQ(testing::internal::GetCapturedStdout(), row.output);
        EXPECT_TRUE(encoder.isOk());
        for (int i = 0; i < kPictures; ++i) {
            const int bytes = encoder.encodeImage(barPicture(i, 320, 240));
            EXPECT_EQ(bytes > 0, i >= row.heldBack) << bytes;
        }
        EXPECT_EQ(encoder.frameCount(), kPictures);
        EXPECT_TRUE(encoder.close());
        EXPECT_FALSE(encoder.hasWriteError());

        const Movie movie = readMovie(path(row.name));
        EXPECT_EQ(movie.container, row.container);
        EXPECT_EQ(movie.codec, row.codec);
        EXPECT_EQ(movie.streamCount, 1);
        EXPECT_EQ(movie.codecHeaderBytes > 0, movie.container == "nut");
        EXPECT_EQ(movie.width, 320);
        EXPECT_EQ(movie.height, 240);
        EXPECT_DOUBLE_EQ(movie.framesPerSecond, kFps);
        ASSERT_EQ(movie.frames.size(), static_cast<std::size_t>(kPictures - row.heldBack));
        ASSERT_EQ(movie.seconds.size(), movie.frames.size());
        for (std::size_t i = 0; i < movie.frames.size(); ++i) {
            EXPECT_EQ(barIndex(movie.frames[i]), static_cast<int>(i));
            EXPECT_EQ(movie.isKeyFrame[i], i % kGop == 0) << i;
            EXPECT_NEAR(movie.seconds[i] - movie.seconds[0], static_cast<double>(i) / kFps, 1e-4);
        }
    }
}

TEST_F(QVideoEncoderTest, MoviesAreAsLargeAsTheirBitRateSays) {
    constexpr unsigned kSeconds = 3;
    for (const unsigned bitrate : {4000000U, 16000000U}) {
        QVideoEncoder encoder;
        ASSERT_TRUE(encoder.createFile(path("movie.avi"), 320, 240, bitrate, kGop, kFps));
        for (unsigned i = 0; i < kSeconds * kFps; ++i)
            encoder.encodeImage(noise(i, 320, 240));
        ASSERT_TRUE(encoder.close());
        const double bytes = static_cast<double>(QFile(path("movie.avi")).size());
        EXPECT_NEAR(bytes * 8 / kSeconds / bitrate, 1.0, 0.3);
    }
}

TEST_F(QVideoEncoderTest, ProgramStreamDeliversItsFramesInTime) {
    static int complaints;
    complaints = 0;
    av_log_set_callback([](void*, int, const char* format, std::va_list) {
        complaints += std::string_view(format).find("underflow") != std::string_view::npos ? 1 : 0;
    });
    QVideoEncoder encoder;
    ASSERT_TRUE(open(encoder, path("movie.mpg")));
    for (unsigned i = 0; i < 20; ++i)
        encoder.encodeImage(noise(i, 320, 240)); // far more than the mean bit rate
    encoder.close();
    av_log_set_callback(av_log_default_callback);
    EXPECT_EQ(complaints, 0);
}

TEST_F(QVideoEncoderTest, MoviesAreUprightAndRightColoured) {
    for (const QSize& size : {QSize(8, 8), QSize(640, 480), QSize(1920, 1080)})
        for (const char* name : {"movie.avi", "movie.mpg"}) {
            SCOPED_TRACE(testing::Message() << name << ' ' << size.width() << " x " << size.height());
            QVideoEncoder encoder;
            ASSERT_TRUE(open(encoder, path(name), size.width(), size.height()));
            for (int i = 0; i < 4; ++i)
                encoder.encodeImage(quadrants(size.width(), size.height()));
            ASSERT_TRUE(encoder.close());

            const Movie movie = readMovie(path(name));
            ASSERT_GE(movie.frames.size(), 3U);
            const QImage& shown = movie.frames.back();
            EXPECT_EQ(shown.size(), size);
            // In the smallest movie every pixel lies beside an edge of the colours.
            const int tolerance = size == QSize(8, 8) ? 2 * kColourTolerance : kColourTolerance;
            EXPECT_LE(differenceToQuadrants(shown), tolerance);
            if (differenceToQuadrants(shown) > tolerance)
                shown.save(QString("upright-%1-%2.png").arg(name).arg(size.width()));
        }
}

TEST_F(QVideoEncoderTest, NamesNeedNotBePlain) {
    for (const char* name : {"first flight.avi", "rtmp:12:30.avi", "Übung über Köln 試験.avi", "%d %s.avi"}) {
        SCOPED_TRACE(name);
        QVideoEncoder encoder;
        ASSERT_TRUE(open(encoder, path(name)));
        EXPECT_GT(encoder.encodeImage(quadrants(320, 240)), 0);
        encoder.close();
        EXPECT_EQ(encoder.fileName(), path(name));
        EXPECT_EQ(readMovie(path(name)).frames.size(), 1U);
    }
}

TEST_F(QVideoEncoderTest, RelativeNameMayHoldAColon) {
    const std::filesystem::path before = std::filesystem::current_path();
    std::filesystem::current_path(folder_.path().toStdString());
    QVideoEncoder encoder;
    EXPECT_TRUE(open(encoder, "pipe:1.avi"));
    std::filesystem::current_path(before);
    EXPECT_TRUE(QFile::exists(path("pipe:1.avi")));
}

TEST_F(QVideoEncoderTest, RefusedMoviesSayWhyAndStayClosed) {
    using Refusal = QVideoEncoder::Refusal;
    struct Row {
        const char* name;
        int width, height;
        const char* line;
        Refusal refusal;
    };
    QVideoEncoder encoder;
    for (const Row& row : std::vector<Row>{
             {"size.avi", 642, 480, "Invalid size", Refusal::Size},
             {"size.avi", 640, 484, "Invalid size", Refusal::Size},
             {"size.avi", 0, 0, "could not open codec", Refusal::Format},
             {"size.avi", 640, -8, "could not open codec", Refusal::Format},
             {"size.mpg", 8192, 8192, "could not open codec", Refusal::Format},
             {"sound.wav", 640, 480, "codec not found", Refusal::Format},
             {"picture.gif", 640, 480, "could not open codec", Refusal::Format}}) {
        SCOPED_TRACE(testing::Message() << row.name << ' ' << row.width << " x " << row.height);
        testing::internal::CaptureStdout();
        EXPECT_FALSE(open(encoder, path(row.name), row.width, row.height));
        EXPECT_EQ(testing::internal::GetCapturedStdout(), std::string(row.line) + "\n");
        EXPECT_EQ(encoder.refusal(), row.refusal);
        EXPECT_EQ(encoder.getWidth(), static_cast<unsigned>(row.width));
        EXPECT_EQ(encoder.getHeight(), static_cast<unsigned>(row.height));
        EXPECT_EQ(encoder.isSizeValid(), row.refusal != Refusal::Size);
        EXPECT_FALSE(encoder.isOk());
        EXPECT_EQ(encoder.encodeImage(quadrants(640, 480)), -1);
        EXPECT_EQ(encoder.frameCount(), 0);
        EXPECT_FALSE(encoder.close());
        EXPECT_FALSE(QFile::exists(path(row.name)));
    }
    EXPECT_TRUE(open(encoder, path("good.avi")));
    EXPECT_EQ(encoder.refusal(), Refusal::None);
}

TEST_F(QVideoEncoderTest, UnwritableFolderIsTold) {
    const QString name = path("movie.avi");
    ASSERT_EQ(chmod(folder_.path().toUtf8().constData(), 0555), 0);
    const uid_t user = geteuid();
    constexpr uid_t kNobody = 65534; // permissions do not bind root
    ASSERT_EQ(seteuid(user == 0 ? kNobody : user), 0);
    QVideoEncoder encoder;
    testing::internal::CaptureStdout();
    EXPECT_FALSE(open(encoder, name));
    ASSERT_EQ(seteuid(user), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Could not open '" + name.toStdString() + "'\n");
    EXPECT_EQ(encoder.refusal(), QVideoEncoder::Refusal::File);
    EXPECT_FALSE(encoder.isOk());
    ASSERT_EQ(chmod(folder_.path().toUtf8().constData(), 0755), 0);
}

// Runs in a process of its own, whose files can't grow beyond `limit` bytes: a full disk.
// Returns the exit status, 0 when the write error was noticed by the end of encoding or of closing as expected.
int recordOnFullDisk(const QString& fileName, rlim_t limit, int pictures, bool isNoticedWhileEncoding) {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit fileSize = {limit, limit};
    if (setrlimit(RLIMIT_FSIZE, &fileSize) != 0)
        return 2;
    QVideoEncoder encoder;
    if (!encoder.createFile(fileName, 320, 240, kBitrate, kGop, kFps) || encoder.hasWriteError())
        return 3;
    int last = 0;
    for (int i = 0; i < pictures; ++i)
        last = encoder.encodeImage(noise(static_cast<unsigned>(i), 320, 240));
    if ((last == -1) != isNoticedWhileEncoding || encoder.hasWriteError() != isNoticedWhileEncoding)
        return 4;
    if (encoder.frameCount() != pictures || !encoder.isOk())
        return 5;
    if (!encoder.close() || !encoder.hasWriteError())
        return 6;
    // The same object can still write where there is space.
    if (!encoder.createFile("/dev/null", 8, 8, kBitrate, kGop, kFps) || encoder.hasWriteError())
        return 7;
    return 0;
}

TEST_F(QVideoEncoderTest, FullDiskIsNoticed) {
    ASSERT_TRUE(QFile::link("/dev/full", path("full.avi")));
    QVideoEncoder encoder;
    EXPECT_FALSE(open(encoder, path("full.avi"))) << "no room for the header";
    EXPECT_EQ(encoder.refusal(), QVideoEncoder::Refusal::File);
    EXPECT_EXIT(std::exit(recordOnFullDisk(path("encoding.avi"), 100000, 20, true)), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(std::exit(recordOnFullDisk(path("closing.avi"), 10000, 1, false)), testing::ExitedWithCode(0), "");
}

TEST_F(QVideoEncoderTest, FramesOfAMovieThatIsCutAreCounted) {
    QVideoEncoder encoder;
    ASSERT_TRUE(open(encoder, path("movie.avi")));
    int bytes = 0;
    for (unsigned i = 0; i < 10; ++i) {
        const int size = encoder.encodeImage(noise(i, 320, 240));
        bytes += i < 6 ? size : 0;
    }
    ASSERT_TRUE(encoder.close());
    EXPECT_EQ(countMovieFrames(path("movie.avi")), 10);
    constexpr int kHeaders = 10000; // at most, of the file and of six frames; the seventh is larger
    ASSERT_TRUE(QFile::resize(path("movie.avi"), bytes + kHeaders));
    EXPECT_EQ(countMovieFrames(path("movie.avi")), 6);
    EXPECT_EQ(countMovieFrames(path("none.avi")), 0);
}

TEST_F(QVideoEncoderTest, OneObjectWritesMovieAfterMovie) {
    Encoder encoder;
    ASSERT_TRUE(open(encoder, path("first.avi"), 64, 48));
    encoder.encodeImage(quadrants(64, 48));
    encoder.encodeImage(quadrants(64, 48));
    const int before = encoder.closeCalls;
    ASSERT_TRUE(open(encoder, path("second.mpg"), 320, 240)); // finishes the first
    EXPECT_EQ(encoder.closeCalls, before + 1);
    EXPECT_EQ(readMovie(path("first.avi")).frames.size(), 2U);
    EXPECT_EQ(encoder.frameCount(), 0);
    for (int i = 0; i < 4; ++i)
        encoder.encodeImage(barPicture(i, 320, 240));
    EXPECT_TRUE(encoder.close());
    const Movie second = readMovie(path("second.mpg"));
    ASSERT_EQ(second.frames.size(), 3U);
    EXPECT_EQ(barIndex(second.frames[2]), 2);

    EXPECT_FALSE(encoder.close());
    EXPECT_FALSE(encoder.close());
    EXPECT_EQ(readMovie(path("second.mpg")).frames.size(), 3U);
}

TEST_F(QVideoEncoderTest, DestructionFinishesTheMovie) {
    {
        QVideoEncoder encoder;
        ASSERT_TRUE(open(encoder, path("movie.avi")));
        encoder.encodeImage(quadrants(320, 240));
    }
    EXPECT_EQ(readMovie(path("movie.avi")).frames.size(), 1U);
}

TEST_F(QVideoEncoderTest, RefusedPictureShowsThePreviousOneAgain) {
    QVideoEncoder encoder;
    ASSERT_TRUE(open(encoder, path("movie.avi")));
    const QImage refused = quadrants(320, 240).convertToFormat(QImage::Format_RGB888);
    testing::internal::CaptureStdout();
    EXPECT_GT(encoder.encodeImage(refused), 0);
    EXPECT_GT(encoder.encodeImage(barPicture(7, 320, 240)), 0);
    EXPECT_GT(encoder.encodeImage(refused), 0);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Wrong image format\nWrong image format\n");
    encoder.close();

    const Movie movie = readMovie(path("movie.avi"));
    ASSERT_EQ(movie.frames.size(), 3U);
    EXPECT_LE(colourDifference(movie.frames[0].pixel(160, 120), qRgb(0, 0, 0)), kColourTolerance);
    EXPECT_EQ(barIndex(movie.frames[1]), 7);
    EXPECT_EQ(barIndex(movie.frames[2]), 7);
}

TEST_F(QVideoEncoderTest, PictureOfAnotherSizeFillsTheMovie) {
    QVideoEncoder encoder;
    ASSERT_TRUE(open(encoder, path("movie.avi")));
    EXPECT_GT(encoder.encodeImage(quadrants(160, 120)), 0);
    EXPECT_GT(encoder.encodeImage(quadrants(641, 233)), 0);
    encoder.close();
    const Movie movie = readMovie(path("movie.avi"));
    ASSERT_EQ(movie.frames.size(), 2U);
    for (const QImage& frame : movie.frames) {
        EXPECT_EQ(frame.size(), QSize(320, 240));
        EXPECT_LE(differenceToQuadrants(frame), kColourTolerance);
    }
}
} // namespace
