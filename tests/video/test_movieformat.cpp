// Movies for players and browsers of today, as ffprobe and a decoder see them.
#include <gtest/gtest.h>

#include <QFile>
#include <QTemporaryDir>
#include <cstdlib>

#include "moviereader.h"
#include "moviesettings.h"
#include "testpictures.h"
#include "videolog.h"

using namespace sorvane;

namespace {
class MovieFormatTest : public testing::Test {
protected:
    QString path(const QString& name) const { return folder_.filePath(name); }

    QByteArray contents(const QString& name) const {
        QFile file(path(name));
        file.open(QIODevice::ReadOnly);
        return file.readAll();
    }

    void record(const QString& name, int pictures, int width = 320, int height = 240) const {
        QVideoEncoder encoder;
        ASSERT_TRUE(encoder.createFile(
            path(name), static_cast<unsigned>(width), static_cast<unsigned>(height), kMovieBitsPerSecond,
            kMovieFramesPerKeyFrame, kMovieFramesPerSecond));
        for (int i = 0; i < pictures; ++i)
            EXPECT_GE(encoder.encodeImage(barPicture(i, width, height)), 0);
        EXPECT_TRUE(encoder.close());
        EXPECT_FALSE(encoder.hasWriteError());
    }

    // What ffprobe says of the stream, in its own order.
    QByteArray probed(const QString& name) const {
        const QString command =
            QStringLiteral("ffprobe -v error -count_frames -of csv=p=0 -show_entries stream=codec_name,width,height,"
                           "pix_fmt,color_range,color_space,r_frame_rate,start_time,nb_read_frames '%1' >'%2'");
        EXPECT_EQ(std::system(qPrintable(command.arg(path(name), path("probed")))), 0);
        return contents("probed").trimmed();
    }

    QuietVideoLog quiet_;
    QTemporaryDir folder_;
};

TEST_F(MovieFormatTest, HoldsEveryPictureOnce) {
    // Fewer than the codecs hold back, and more.
    for (const int pictures : {1, 7, 75})
        for (const auto& [name, codec] :
             {std::pair{"movie.mp4", "h264"}, {"movie.mov", "h264"}, {"movie.webm", "vp9"}, {"movie.mkv", "h264"}}) {
            SCOPED_TRACE(testing::Message() << name << ", " << pictures);
            record(name, pictures, 640, 96);
            // Of a single picture in Matroska ffprobe tells no start.
            const std::string start = pictures == 1 && name == std::string("movie.mkv") ? "N/A" : "0.000000";
            EXPECT_EQ(
                probed(name).toStdString(),
                codec + (",640,96,yuv420p,tv,smpte170m,30/1," + start) + "," + std::to_string(pictures));
            const Movie movie = readMovie(path(name));
            ASSERT_EQ(movie.frames.size(), static_cast<std::size_t>(pictures));
            unsigned sinceKeyFrame = 0;
            for (std::size_t i = 0; i < movie.frames.size(); ++i) {
                EXPECT_EQ(barIndex(movie.frames[i]), static_cast<int>(i));
                sinceKeyFrame = movie.isKeyFrame[i] ? 0 : sinceKeyFrame + 1;
                EXPECT_LT(sinceKeyFrame, kMovieFramesPerKeyFrame) << i;
            }
        }
}

TEST_F(MovieFormatTest, StartsToPlayBeforeAllOfItIsThere) {
    for (const QString name : {"movie.mp4", "movie.mov"}) {
        record(name, 40);
        const QByteArray movie = contents(name);
        EXPECT_LT(movie.indexOf("moov"), movie.indexOf("mdat")) << qPrintable(name);
        EXPECT_GT(movie.indexOf("moov"), 0);
    }
}

TEST_F(MovieFormatTest, TheSamePicturesGiveTheSameFile) {
    for (const QString ending : {"mp4", "webm"}) {
        record("first." + ending, 45);
        record("second." + ending, 45);
        EXPECT_TRUE(contents("first." + ending) == contents("second." + ending)) << qPrintable(ending);
    }
}

TEST_F(MovieFormatTest, TakesTheSmallestMovieAndLargeOnes) {
    for (const QSize& size : {QSize(8, 8), QSize(1920, 1080)})
        for (const QString name : {"movie.mp4", "movie.webm"}) {
            record(name, 2, size.width(), size.height());
            const Movie movie = readMovie(path(name));
            ASSERT_EQ(movie.frames.size(), 2U) << qPrintable(name);
            EXPECT_EQ(movie.frames[1].size(), size);
        }
}
} // namespace
