// Smooth edges: against pictures of many more pixels, in both ways of keeping depths apart.
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <numbers>

#include "antialiasing.h"
#include "environmentvariable.h"
#include "glapi.h"
#include "nestedbody.h"
#include "pixels.h"
#include "rows.h"
#include "scenepicture.h"

using namespace sorvane;

namespace {
constexpr QSize kSize(320, 240);

void addFlare(keyframe& sample, float y, float radius) {
    flareKeyframe flare;
    flare.id = static_cast<int>(sample.flares.size()) + 1;
    flare.pos[0] = 20.0F;
    flare.pos[1] = y;
    flare.pos[2] = -130.0F;
    std::ranges::fill(flare.intensity, radius);
    flare.scalar = 1.0e9F; // white
    sample.flares.push_back(flare);
}

// A body of shells and plates over the grid, between paths and flares, with `scale` pixels to a side of each of the
// picture's.
QImage picture(const char* way, int scale, int samples) {
    const EnvironmentVariable asked("SORVANE_DEPTH", way);
    OffscreenScene scene(scale * kSize.width(), scale * kSize.height());
    const TemporaryDirectory folder;
    etxyz engagement;
    for (const float time : {0.0F, 1.0F}) {
        keyframe sample;
        sample.time = time;
        sample.targetPos[2] = -100.0F - time;
        sample.threatPos[0] = -150.0F * time;
        sample.threatPos[1] = 30.0F - 70.0F * time;
        sample.threatPos[2] = -80.0F - 50.0F * time;
        addFlare(sample, -25.0F, 3.0F);
        addFlare(sample, 20.0F, 0.02F);
        engagement.keyframes.insert(time, sample);
    }
    engagement.hardbodiesInitialized = true; // given, not named by a file
    engagement.target =
        FacetNumbers::bodyOf(nestedMesh({50.0, 4, 12, 16, 8}), FacetNumbers::Low, folder, SORVANE_SHADERS);
    SceneOptions options{.time = 1.0};
    options.pixelRatio = scale;
    options.samples = samples;
    return scene.draw(
        {{EngagementId{1}, &engagement}}, cameraAt({160.0F, 60.0F, -140.0F, 1.0F}, {0.0F, 0.0F, -100.0F, 1.0F}),
        options);
}

// The mean of each square of `scale` pixels to a side.
QImage shrunk(const QImage& large, int scale) {
    QImage small(large.size() / scale, QImage::Format_RGB32);
    for (int y = 0; y < small.height(); ++y)
        for (int x = 0; x < small.width(); ++x) {
            int red = 0, green = 0, blue = 0;
            for (int i = 0; i < scale * scale; ++i) {
                const QRgb pixel = large.pixel(scale * x + i % scale, scale * y + i / scale);
                red += qRed(pixel);
                green += qGreen(pixel);
                blue += qBlue(pixel);
            }
            const int count = scale * scale;
            small.setPixel(x, y, qRgb(red / count, green / count, blue / count));
        }
    return small;
}

double meanDifference(const QImage& a, const QImage& b) {
    double sum = 0.0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x)
            for (const int shift : {0, 8, 16})
                sum += std::abs(
                    static_cast<int>(a.pixel(x, y) >> shift & 0xFFU) -
                    static_cast<int>(b.pixel(x, y) >> shift & 0xFFU));
    return sum / (3.0 * a.width() * a.height());
}

TEST(Antialiasing, ComesCloseToSixteenTimesAsManyPixels) {
    constexpr int kScale = 4;
    const QImage wanted = shrunk(picture("", kScale, 0), kScale);
    for (const char* const way : {"", "slices"}) {
        SCOPED_TRACE(way);
        const QImage smooth = picture(way, 1, 4);
        const double plain = meanDifference(picture(way, 1, 0), wanted);
        const double antialiased = meanDifference(smooth, wanted);
        EXPECT_LT(antialiased, 2.0);
        EXPECT_GT(plain, 3.0 * antialiased) << "a picture without edges would prove nothing";
        if (HasFailure()) {
            smooth.save("antialiased.png");
            wanted.save("oversampled.png");
        }
    }
}

TEST(Antialiasing, FlaresAreRound) {
    for (const auto& [samples, isRound] : Rows<int, bool>{{0, false}, {4, true}}) {
        OffscreenScene scene(240, 240);
        etxyz engagement;
        keyframe sample;
        addFlare(sample, 0.0F, 10.0F);
        engagement.keyframes.insert(0.0, sample);
        const Camera camera = cameraAt({70.0F, 0.0F, -130.0F, 1.0F}, {0.0F, 0.0F, -130.0F, 1.0F});
        SceneOptions options{.showGrid = false};
        options.samples = samples;
        const QImage shown = scene.draw({{EngagementId{1}, &engagement}}, camera, options);
        // 10 units at a distance of 50 appear as large as asin(0.2).
        const double radius = 120.0 * std::tan(std::asin(0.2)) / std::tan(15.0 * std::numbers::pi / 180.0);
        const auto isLit = [&](double angle, double distance) {
            const QPointF at(120.0 + distance * std::cos(angle), 120.0 + distance * std::sin(angle));
            return qGray(shown.pixel(static_cast<int>(at.x()), static_cast<int>(at.y()))) > 0;
        };
        int wrong = 0;
        for (int degree = 0; degree < 360; ++degree) {
            const double angle = degree * std::numbers::pi / 180.0;
            wrong += isLit(angle, radius - 1.5) && !isLit(angle, radius + 1.5) ? 0 : 1;
        }
        EXPECT_EQ(wrong == 0, isRound) << wrong << " of 360 degrees";
    }
}

TEST(Antialiasing, LeavesFramebufferAndLaterFramesAsTheyWere) {
    OffscreenScene scene(200, 150);
    Camera camera;
    camera.place({500.0F, 100.0F, -60.0F, 1.0F}, {0.0F, 0.0F, -60.0F, 1.0F});
    const auto draw = [&](int samples) {
        SceneOptions options;
        options.samples = samples;
        GLint framebuffer[2] = {};
        const QImage shown = scene.draw({}, camera, options);
        glGetIntegerv(GL_DRAW_FRAMEBUFFER_BINDING, &framebuffer[0]);
        glGetIntegerv(GL_READ_FRAMEBUFFER_BINDING, &framebuffer[1]);
        EXPECT_EQ(framebuffer[0], framebuffer[1]);
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
        return shown;
    };
    const QImage plain = draw(0);
    const QImage smooth = draw(4);
    EXPECT_FALSE(smooth == plain);
    EXPECT_TRUE(draw(0) == plain);
    EXPECT_TRUE(draw(4) == smooth);
    EXPECT_TRUE(draw(1000) == plain) << "more than there are";
    // What draws in software begins without.
    EXPECT_EQ(sampleChoices(), (std::vector<int>{0, 2, 4}));
    EXPECT_EQ(defaultSamples(), 0);
}
} // namespace
