// The two conversions to planar YUV 4:2:0: what they accept, the arithmetic of the own one, and how they agree.
#include <gmock/gmock.h>

#include <QTemporaryDir>

#include "qvideoencoder.h"
#include "testpictures.h"
#include "yuvconversion.h"

using namespace sorvane;

namespace {
using testing::ElementsAre;
using testing::ElementsAreArray;

class OpenEncoder : public QVideoEncoder {
public:
    OpenEncoder(int width, int height) {
        createFile(
            folder_.filePath("movie.avi"), static_cast<unsigned>(width), static_cast<unsigned>(height), 1000000, 20,
            30);
    }
    std::vector<std::uint8_t> planes() const { return {picturePlanes().begin(), picturePlanes().end()}; }

private:
    QTemporaryDir folder_;
};

std::vector<std::uint8_t> convert(const std::vector<QRgb>& pixels, std::size_t width, std::size_t height) {
    std::vector<std::uint8_t> planes(width * height * 3 / 2);
    convertBgrxToYuv420p(
        reinterpret_cast<const std::uint8_t*>(pixels.data()), static_cast<std::ptrdiff_t>(width * sizeof(QRgb)), width,
        height, planes.data());
    return planes;
}

TEST(YuvConversion, ColoursComeOutAsWorkedByHand) {
    struct Row {
        QRgb colour;
        int y, cb, cr;
    };
    for (const Row& row : std::vector<Row>{
             {0x00000000, 16, 128, 128},
             {0x00FFFFFF, 235, 128, 128},
             {0x00FF0000, 81, 90, 240},
             {0x0000FF00, 145, 54, 34},
             {0x000000FF, 41, 240, 110},
             {0xFF25C95A, 136, 104, 64}}) {
        SCOPED_TRACE(row.colour);
        EXPECT_THAT(convert(std::vector(4, row.colour), 2, 2), ElementsAre(row.y, row.y, row.y, row.y, row.cb, row.cr));
    }
}

TEST(YuvConversion, ChromaIsTheRoundedMeanOfItsBlock) {
    // The mean of red 12, 1, 1, 0 rounds to 4, whose Cr is 130; cut off to 3 it would be 129, that of a row or a column
    // 131 or 128.
    EXPECT_THAT(
        convert({0x0C0000, 0x010000, 0x010000, 0x000000}, 2, 2), ElementsAre(19, 16, 16, 16, /*Cb*/ 127, /*Cr*/ 130));
}

TEST(YuvConversion, PlanesFollowEachOtherWithPackedRows) {
    constexpr QRgb kRed = 0xFF0000;
    constexpr QRgb kBlue = 0x0000FF;
    const std::vector<QRgb> pixels = {0, 0, kRed, kRed, 0, 0, kRed, kRed, kBlue, kBlue, 0, 0, kBlue, kBlue, 0, 0};
    EXPECT_THAT(
        convert(pixels, 4, 4), ElementsAreArray({16, 16, 81, 81, 16,         16, 81,  81,  41,         41,  16,  16,
                                                 41, 41, 16, 16, /*Cb*/ 128, 90, 240, 128, /*Cr*/ 128, 240, 110, 128}));
}

TEST(YuvConversion, OwnConversionReadsRowsAtTheImagesSpacing) {
    OpenEncoder encoder(16, 8);
    const QImage wide = noise(1, 24, 8);
    const QImage window(wide.constBits(), 16, 8, wide.bytesPerLine(), QImage::Format_RGB32);
    ASSERT_TRUE(encoder.convertImage(window));
    const auto fromWindow = encoder.planes();
    ASSERT_TRUE(encoder.convertImage(window.copy()));
    EXPECT_EQ(fromWindow, encoder.planes());
}

TEST(YuvConversion, RefusedImagesLeaveThePictureAlone) {
    OpenEncoder encoder(16, 8);
    const auto black = encoder.planes();
    struct Row {
        QImage image;
        const char* ownLine;
        const char* scalerLine;
    };
    for (const Row& row : std::vector<Row>{
             {quadrants(16, 8).convertToFormat(QImage::Format_RGB888), "Wrong image format\n", "Wrong image format\n"},
             {quadrants(16, 8).convertToFormat(QImage::Format_ARGB32_Premultiplied), "Wrong image format\n",
              "Wrong image format\n"},
             {QImage(), "Wrong image size!\n", "Wrong image format\n"},
             {quadrants(24, 8), "Wrong image size!\n", nullptr},
             {quadrants(16, 16), "Wrong image size!\n", nullptr}}) {
        testing::internal::CaptureStdout();
        EXPECT_FALSE(encoder.convertImage(row.image));
        EXPECT_EQ(testing::internal::GetCapturedStdout(), row.ownLine);
        if (row.scalerLine != nullptr) {
            testing::internal::CaptureStdout();
            EXPECT_FALSE(encoder.convertImage_sws(row.image));
            EXPECT_EQ(testing::internal::GetCapturedStdout(), row.scalerLine);
        }
        EXPECT_EQ(encoder.planes(), black);
    }
}

TEST(YuvConversion, ClosedEncoderConvertsNothing) {
    QVideoEncoder encoder;
    const QImage image = quadrants(16, 8);
    testing::internal::CaptureStdout();
    EXPECT_FALSE(encoder.convertImage_sws(image));
    EXPECT_FALSE(encoder.convertImage(image));
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "Cannot initialize the conversion context\nWrong image size!\n");

    encoder.createFile("/dev/null/movie.avi", 16, 8, 1000000, 20, 30);
    encoder.createFile("/dev/null/movie.wav", 16, 8, 1000000, 20, 30); // refused before it has a picture
    EXPECT_FALSE(encoder.convertImage_sws(image));
    EXPECT_FALSE(encoder.convertImage(image));
}

TEST(YuvConversion, AlphaIsIgnored) {
    OpenEncoder encoder(16, 8);
    QImage image = quadrants(16, 8);
    ASSERT_TRUE(encoder.convertImage_sws(image));
    const auto opaque = encoder.planes();
    image = image.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            image.setPixel(x, y, image.pixel(x, y) & 0x00FFFFFFU);
    ASSERT_TRUE(encoder.convertImage_sws(image));
    EXPECT_EQ(encoder.planes(), opaque);
}

// The largest difference between the conversions over part of the planes.
struct Disagreement {
    int luma = 0;
    int chroma = 0;
};

Disagreement disagreement(const QImage& image) {
    OpenEncoder encoder(image.width(), image.height());
    EXPECT_TRUE(encoder.convertImage(image));
    const auto own = encoder.planes();
    EXPECT_TRUE(encoder.convertImage_sws(image));
    const auto scaled = encoder.planes();
    const auto lumaSize = static_cast<std::size_t>(image.width()) * static_cast<std::size_t>(image.height());
    Disagreement result;
    for (std::size_t i = 0; i < own.size(); ++i) {
        int& largest = i < lumaSize ? result.luma : result.chroma;
        largest = std::max(largest, std::abs(int{own[i]} - int{scaled[i]}));
    }
    return result;
}

TEST(YuvConversion, BothConversionsAgreeInLumaEverywhere) {
    EXPECT_LE(disagreement(noise(2, 640, 480)).luma, 1);
    EXPECT_LE(disagreement(quadrants(8, 8)).luma, 1);
    EXPECT_LE(disagreement(noise(3, 824, 480)).luma, 1); // rows that are no multiple of 16 bytes
}

TEST(YuvConversion, BothConversionsAgreeInChromaOnGradients) {
    QImage gradient(640, 480, QImage::Format_RGB32);
    for (int y = 0; y < 480; ++y)
        for (int x = 0; x < 640; ++x)
            gradient.setPixel(x, y, qRgb(x * 255 / 639, y * 255 / 479, 255 - x * 255 / 639));
    const Disagreement found = disagreement(gradient);
    EXPECT_LE(found.luma, 1);
    EXPECT_LE(found.chroma, 2);
}

TEST(YuvConversion, ImageOfAnotherSizeIsScaledFromTheRowsThatItHas) {
    struct Row {
        int width, height;
        int changed; // rows of a 64 × 48 picture, without those for which the scaler lacks neighbours
    };
    // A taller image gives its first 48 rows only; the rest of the picture stays as it was. The library can't take part
    // of an image that it shrinks very much, so such a one is taken whole.
    for (const Row& row : std::vector<Row>{
             {32, 24, 48}, {64, 24, 48}, {128, 48, 48}, {64, 96, 16}, {64, 1552, 48}, {4096, 96, 48}, {4096, 24, 48}}) {
        SCOPED_TRACE(testing::Message() << row.width << " x " << row.height);
        OpenEncoder encoder(64, 48);
        QImage white(row.width, row.height, QImage::Format_RGB32);
        white.fill(Qt::white);
        ASSERT_TRUE(encoder.convertImage_sws(white));
        const auto planes = encoder.planes();
        const auto luma = [&planes](int y) {
            return int{planes[static_cast<std::size_t>(y) * 64 + 32]};
        };
        EXPECT_NEAR(luma(0), 235, 1);
        EXPECT_NEAR(luma(row.changed - 1), 235, 1);
        EXPECT_NEAR(luma(47), row.changed == 48 ? 235 : 16, 1);
    }
}
} // namespace
