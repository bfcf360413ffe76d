// Names beside the bodies: where the bodies are, where their labels go, and what is painted.
#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include <QPainter>

#include "labelplacement.h"
#include "overlaytext.h"
#include "pixels.h"
#include "rows.h"
#include "scenepicture.h"

using namespace sorvane;

namespace {
constexpr QSizeF kView(200, 150);

// Target and threat fly 100 units along y until 1 s, 100 and 50 units up.
struct LabelTest : testing::Test {
    etxyz first, second;
    std::vector<SceneEngagement> engagements = {{EngagementId{1}, &first}, {EngagementId{2}, &second, true}};
    Camera camera;

    LabelTest() {
        second.headerText9 = QStringLiteral("cyan");
        for (etxyz* const engagement : {&first, &second})
            for (const float time : {0.0F, 1.0F}) {
                keyframe sample;
                sample.time = time;
                sample.targetPos[1] = sample.threatPos[1] = 100.0F * time;
                sample.targetPos[2] = -100.0F;
                sample.threatPos[2] = engagement == &first ? -50.0F : -20.0F;
                engagement->keyframes.insert(time, sample);
            }
        camera.setMode(ViewFree);
        look(500.0F, 0.0F, -60.0F);
    }
    // Along −x, so that y points to the left.
    void look(float x, float y, float z) { camera.place({x, y, z, 1.0F}, {x - 500.0F, y, z, 1.0F}); }
    std::vector<BodyLabel> labels(double time = 0.5) const {
        return bodyLabels(
            engagements, {.camera = camera, .time = time, .fieldOfViewDegrees = 30.0, .size = kView},
            [](const SceneEngagement& shown) { return QString::number(static_cast<quint64>(shown.id)); });
    }
    QStringList texts() const {
        QStringList texts;
        for (const BodyLabel& label : labels())
            texts << label.text;
        return texts;
    }
};

TEST_F(LabelTest, StandsWhereTheBodyIs) {
    const std::vector<BodyLabel> found = labels();
    ASSERT_EQ(found.size(), 2U);
    // 75 pixels are tan 15° at a distance of 1: at 500 a unit has 0.5598 of them.
    constexpr double kScale = 0.5598;
    EXPECT_NEAR(found[0].body.x(), 100.0 - 50.0 * kScale, 0.01);
    EXPECT_NEAR(found[0].body.y(), 75.0 - 40.0 * kScale, 0.01);
    EXPECT_NEAR(found[1].body.y(), 75.0 + 10.0 * kScale, 0.01);
    EXPECT_EQ(found[0].colour, qRgb(0, 255, 0));
    EXPECT_EQ(found[1].colour, qRgb(255, 255, 0));
    EXPECT_EQ(found[0].radius, 0.0);
}

TEST_F(LabelTest, NamesWhatTheViewShows) {
    EXPECT_EQ(texts(), (QStringList{"target", "threat"}));
    look(-500.0F, 50.0F, -60.0F);
    EXPECT_EQ(texts(), QStringList()) << "behind the eye";
    look(200000.0F, 50.0F, -60.0F);
    EXPECT_EQ(texts(), QStringList()) << "behind the far plane";
    look(100.0F, 50.0F, -100.0F);
    EXPECT_EQ(texts(), QStringList("target")) << "the threat is below the picture";
    look(500.0F, 0.0F, -60.0F);
    camera.setMode(ViewGyro);
    EXPECT_EQ(texts(), QStringList("target"));
    camera.setMode(ViewThreat);
    engagements[1].isHidden = false;
    EXPECT_EQ(texts(), (QStringList{"1 target", "1 threat", "2 target", "2 threat"}));
    EXPECT_EQ(labels()[3].colour, qRgb(0, 255, 255));
    first.keyframes.clear();
    EXPECT_EQ(texts(), (QStringList{"target", "threat"})) << "one alone needs no name";
}

TEST(EngagementName, IsWhatTellsOneFromTheOther) {
    for (const auto& [path, name] : Rows<const char*, const char*>{
             {"/data/ETXYZ.OUT.turn", "turn"},
             {"ETXYZ.OUT.weave.Z", "weave"},
             {"ETXYZ.OUT.", "ETXYZ.OUT."},
             {"a/run.7", "run.7"},
             {"standard input", "standard input"}})
        EXPECT_EQ(shortEngagementName(QString::fromUtf8(path)), QString::fromUtf8(name));
}

TEST(LabelPlacement, BesideTheBodyOnTheSideThatHasRoom) {
    // A gap of 4 pixels, and 10 / √2 = 7.07 of the body's radius.
    const QSizeF label(40, 10);
    for (const auto& [body, corner] : Rows<QPointF, QPointF>{
             {{100, 70}, {111.07, 48.93}},   // upper right
             {{100, 5}, {111.07, 16.07}},    // lower right
             {{180, 70}, {128.93, 48.93}},   // upper left
             {{180, 5}, {128.93, 16.07}}}) { // lower left
        const LabelWish wish{body, 10.0, label};
        const auto place = placeLabels({&wish, 1}, kView).front();
        ASSERT_TRUE(place);
        EXPECT_NEAR(place->left(), corner.x(), 0.01);
        EXPECT_NEAR(place->top(), corner.y(), 0.01);
        EXPECT_EQ(place->size(), label);
    }
    const LabelWish huge{{100, 75}, 1000.0, label};
    EXPECT_TRUE(placeLabels({&huge, 1}, kView).front()) << "what fills the view has its label within it";
}

TEST(LabelPlacement, LabelsNeitherHideEachOtherNorLeaveTheView) {
    std::mt19937 random(7);
    const auto upTo = [&random](double most) {
        return std::uniform_real_distribution(0.0, most)(random);
    };
    const QSizeF view(640, 480);
    const QRectF inside(QPointF(-0.01, -0.01), view + QSizeF(0.02, 0.02));
    for (const bool isCrowd : {false, true}) {
        std::vector<LabelWish> wishes;
        for (int i = 0; i < 200; ++i)
            wishes.push_back(
                {isCrowd ? QPointF(320, 240) : QPointF(upTo(640), upTo(480)), upTo(30), {20 + upTo(40), 14}});
        const QRectF occupied(300, 230, 40, 40);
        const auto places = placeLabels(wishes, view, {&occupied, 1});
        ASSERT_EQ(places.size(), wishes.size());
        std::vector<QRectF> shown{occupied};
        for (const auto& place : places)
            if (place) {
                EXPECT_TRUE(inside.contains(*place));
                EXPECT_TRUE(std::ranges::none_of(shown, [&](const QRectF& other) { return other.intersects(*place); }));
                shown.push_back(*place);
            }
        // As high as the view is, 32 labels stand above each other, and some fewer where it is occupied.
        EXPECT_GT(shown.size(), isCrowd ? 24U : 180U);
    }
}

QImage blank() {
    QImage picture(640, 480, QImage::Format_RGB32);
    picture.fill(qRgb(0, 0, 255));
    return picture;
}

QRect paintedPart(const QImage& picture) {
    return differingPart(picture, blank());
}

TEST(OverlayText, StandsAtItsEdgesAndWithinThePicture) {
    QImage titled = blank();
    QPainter title(&titled);
    paintTitle(title, titled.size(), QString(300, u'W'));
    title.end();
    EXPECT_EQ(paintedPart(titled).topLeft(), QPoint(0, 0));
    EXPECT_EQ(paintedPart(titled).width(), 640);
    EXPECT_LT(paintedPart(titled).height(), 40);
    for (const int edge : {0, 632})
        EXPECT_EQ(countPixels(titled.copy(edge, 0, 8, 40), [](int r, int, int) { return r > 50; }), 0)
            << "letters end before the edge";

    QImage told = blank();
    QPainter readout(&told);
    paintReadout(readout, told.size(), QStringLiteral("Time      1\nRange   200"));
    readout.end();
    EXPECT_EQ(paintedPart(told).left(), 8);
    EXPECT_EQ(paintedPart(told).bottom(), 480 - 8 - 1);
    EXPECT_GT(countPixels(told, [](int r, int g, int b) { return r > 200 && g > 200 && b > 200; }), 40);
    EXPECT_EQ(textPixelSize({640, 480}), 13);
    EXPECT_EQ(textPixelSize({1920, 1080}), 30);
    EXPECT_EQ(textPixelSize({64, 48}), 10);
}

TEST(OverlayText, LabelsAreSharpWherePixelsAreSmall) {
    const std::vector<BodyLabel> labels = {{"target", qRgb(0, 255, 0), {100, 100}, 0.0}};
    std::vector<QRect> parts;
    for (const double ratio : {1.0, 2.0}) {
        QImage picture = blank();
        QPainter painter(&picture);
        painter.scale(ratio, ratio);
        LabelPainter labelPainter(20, ratio);
        labelPainter.paint(painter, {320, 240}, labels);
        labelPainter.paint(painter, {320, 240}, labels); // the second time from what was kept
        painter.end();
        parts.push_back(paintedPart(picture));
        EXPECT_GT(countPixels(picture, [](int r, int g, int b) { return r == 0 && g > 200 && b < 50; }), 20);
    }
    EXPECT_EQ(parts[1].size(), 2 * parts[0].size());
    EXPECT_EQ(parts[1].topLeft(), 2 * parts[0].topLeft());
    EXPECT_EQ(parts[0].bottomLeft(), QPoint(104, 95));
}
} // namespace
