// The view as a widget: start, events, time, size. Real events go to a real window.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>

#include <QMainWindow>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QWheelEvent>

#include "aircraftwidget.h"
#include "etxyz.h"
#include "framegrab.h"
#include "pixels.h"
#include "scenepicture.h"
#include "surfaceformat.h"
#include "ui_new_sorvane.h"

using namespace sorvane;

namespace {
double eye(const AircraftWidget& view, int i) {
    return view.camera().eye().ElementAt(i);
}
double centre(const AircraftWidget& view, int i) {
    return view.camera().centre().ElementAt(i);
}
bool isGreen(int r, int g, int b) {
    return r == 0 && g == 255 && b == 0;
}

// A shown view with one engagement: the threat starts at (1000, 0, −500) and moves 100 units along x in 1 s, the target
// starts at (0, 0, −1000) and moves 200 along y; the gyro turns from 0 to 90 degrees about z.
struct AircraftWidgetTest : testing::Test {
    static constexpr EngagementId kId{1000};
    etxyz engagement;
    QMenu menu;
    AircraftWidget view;

    AircraftWidgetTest() {
        engagement.atm = std::make_unique<AtmFile>();
        keyframe first;
        first.threatPos[0] = 1000.0F;
        first.threatPos[2] = -500.0F;
        first.targetPos[2] = -1000.0F;
        keyframe last = first;
        last.time = 1.0;
        last.threatPos[0] = 1100.0F;
        last.targetPos[1] = 200.0F;
        last.gyro[2] = 90.0F;
        engagement.keyframes.insert(0.0, first);
        engagement.keyframes.insert(1.0, last);
        menu.addAction("Disable");
        for (const char* text : {"View Threat", "View Gyro", "View Target", "View Free"})
            menu.addAction(text)->setCheckable(true);
        engagement.menu = &menu;

        view.init(15.0F, 15.0F, ViewThreat, nullptr);
        view.resize(400, 300);
        view.show();
        EXPECT_TRUE(QTest::qWaitForWindowExposed(&view));
    }
    void select(ViewMode mode) {
        view.addEtxyz(&engagement, kId);
        menu.actions().at(mode + 1)->setChecked(true);
        view.setViewMode(mode);
        view.reset();
    }
    void wheel(int delta) {
        const QPointF at(200.0, 150.0);
        QWheelEvent event(
            at, view.mapToGlobal(at), {}, {0, delta}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&view, &event);
    }
};

TEST_F(AircraftWidgetTest, StartsAtItsCameraWithItsPolicies) {
    EXPECT_EQ(eye(view, 0), 100.0);
    EXPECT_EQ(centre(view, 0), 0.0);
    EXPECT_EQ(view.minimumSize(), QSize(50, 50));
    EXPECT_TRUE(view.sizePolicy().hasHeightForWidth());
    EXPECT_EQ(view.sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    EXPECT_EQ(view.heightForWidth(123), 123);
    EXPECT_EQ(view.sizeHint(), QSize(300, 300));
    EXPECT_EQ(viewSurfaceFormat().depthBufferSize(), 24) << "a driver may give more, and does";
}

TEST_F(AircraftWidgetTest, RidesAlongWithTheSelectedBodyFromWhereADoubleClickTakesItBack) {
    select(ViewThreat);
    EXPECT_EQ(eye(view, 0), 1010.0);
    view.setKeyframe(0.5);
    EXPECT_EQ(view.currentTime(), 0.5);
    EXPECT_FLOAT_EQ(static_cast<float>(eye(view, 0)), 1060.0F);
    EXPECT_FLOAT_EQ(static_cast<float>(centre(view, 0)), 1050.0F);
    view.setKeyframe(0.5); // the same time again changes nothing
    EXPECT_FLOAT_EQ(static_cast<float>(eye(view, 0)), 1060.0F);
    wheel(1200);
    EXPECT_NE(eye(view, 0), 1060.0);
    QTest::mouseDClick(&view, Qt::LeftButton); // resets the camera
    EXPECT_EQ(eye(view, 0), 1060.0);
}

TEST_F(AircraftWidgetTest, TheWheelZoomsByItsNotches) {
    select(ViewTarget);
    wheel(120);
    EXPECT_NEAR(eye(view, 0), 50.0 * std::exp(-0.12), 1e-3);
    wheel(-120);
    EXPECT_NEAR(eye(view, 0), 50.0, 1e-3);
}

TEST_F(AircraftWidgetTest, LeftDragTurnsRightDragPansAndBothPan) {
    select(ViewFree);
    const auto drag = [this](Qt::MouseButtons buttons, const QPoint& to) {
        const QPoint from(10, 10);
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton})
            if (buttons.testFlag(button))
                QTest::mousePress(&view, button, {}, from);
        QMouseEvent move(QEvent::MouseMove, to, view.mapToGlobal(QPointF(to)), Qt::NoButton, buttons, Qt::NoModifier);
        QCoreApplication::sendEvent(&view, &move);
        for (const Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton})
            if (buttons.testFlag(button))
                QTest::mouseRelease(&view, button, {}, to);
    };
    drag(Qt::LeftButton, {10 + 900, 10});
    EXPECT_NEAR(eye(view, 1), 100.0, 1e-2);
    EXPECT_NEAR(centre(view, 1), 0.0, 1e-6);
    drag(Qt::LeftButton, {10 - 900, 10}); // and back
    drag(Qt::RightButton, {10 + 10, 10});
    EXPECT_NEAR(eye(view, 1), 1.0, 1e-2);
    EXPECT_NEAR(centre(view, 1), 1.0, 1e-2);
    drag(Qt::LeftButton | Qt::RightButton, {10 + 10, 10});
    EXPECT_NEAR(centre(view, 1), 2.0, 1e-2);
}

TEST_F(AircraftWidgetTest, GyroViewIgnoresDragAndWheel) {
    select(ViewGyro);
    view.setKeyframe(1.0);
    EXPECT_EQ(eye(view, 0), 1100.0);
    EXPECT_NEAR(centre(view, 1), 100.0, 1e-3);
    wheel(120);
    QTest::mousePress(&view, Qt::LeftButton, {}, {10, 10});
    QTest::mouseMove(&view, {200, 200});
    QTest::mouseRelease(&view, Qt::LeftButton, {}, {200, 200});
    QTest::mouseDClick(&view, Qt::LeftButton);
    EXPECT_EQ(eye(view, 0), 1100.0);
    EXPECT_NEAR(centre(view, 1), 100.0, 1e-3);
}

TEST_F(AircraftWidgetTest, TheFirstFrameInitialisesTheBodies) {
    view.addEtxyz(&engagement);
    EXPECT_FALSE(engagement.areHardbodiesInitialized());
    AircraftWidget other;
    other.init(15.0F, 15.0F, ViewThreat, nullptr);
    other.addEtxyz(&engagement);
    other.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&other));
    ASSERT_TRUE(QTest::qWaitFor([&] { return engagement.areHardbodiesInitialized(); }));
    etxyz late;
    other.initHardbodiesIfReady(late);
    EXPECT_TRUE(late.areHardbodiesInitialized());
}

// Run at other scale factors too, where the framebuffer has more pixels than the widget.
TEST_F(AircraftWidgetTest, GrabbedFramesShowTheSceneWhateverTheScaleFactor) {
    flareKeyframe flare;
    std::fill_n(flare.intensity, 3, 8.0F);
    flare.pos[0] = 1050.0F;
    flare.pos[1] = 20.0F;
    flare.pos[2] = -505.0F;
    flare.scalar = 2.0e7F;
    for (keyframe& sample : engagement.keyframes)
        sample.flares = {flare};
    select(ViewThreat);
    wheel(-3600); // off, to where path and flare are seen
    view.setKeyframe(1.0);
    OffscreenScene scene(400, 300);
    const QImage expected = scene.draw({{EngagementId{1}, &engagement}}, view.camera(), {.time = 1.0});
    const QImage grabbed = grabFrame(view);
    // Coarse enough for lines to lie half a pixel aside.
    const auto coarse = [](const QImage& picture) {
        return picture.scaled(40, 30, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    };
    int largest = 0;
    int brightest = 0;
    for (int y = 0; y < 30; ++y)
        for (int x = 0; x < 40; ++x) {
            const QRgb a = coarse(expected).pixel(x, y);
            const QRgb b = coarse(grabbed).pixel(x, y);
            largest = std::max({largest, std::abs(qRed(a) - qRed(b)), std::abs(qBlue(a) - qBlue(b))});
            brightest = std::max(brightest, qBlue(a));
        }
    EXPECT_LT(largest, 24);
    EXPECT_GT(brightest, 100) << "the flare";
    if (largest >= 24 || brightest <= 100) {
        expected.save("scale_factor_expected.png");
        grabbed.save("scale_factor_grabbed.png");
    }
}

TEST_F(AircraftWidgetTest, LineStylesAreOffUntilTheyAreSetAndGoIntoTheFrame) {
    for (keyframe& sample : engagement.keyframes) {
        flareKeyframe flare;
        std::copy_n(sample.targetPos, 3, flare.pos);
        flare.pos[2] -= 20.0F;
        sample.flares = {flare};
    }
    select(ViewTarget);
    view.setKeyframe(1.0);
    wheel(-3600);
    EXPECT_FALSE(view.lineStyles());
    const QImage plain = grabFrame(view);
    view.setLineStyles(true);
    EXPECT_TRUE(view.lineStyles());
    EXPECT_FALSE(grabFrame(view) == plain) << "the flare's trail is dotted";
}

TEST_F(AircraftWidgetTest, AnAntialiasedViewHasPixelsBetweenItsColours) {
    select(ViewTarget);
    const auto colours = [&] {
        return countPixels(grabFrame(view), [](int r, int g, int b) { return r + g + b > 0 && (r < 100 || g < 100); });
    };
    EXPECT_EQ(view.samples(), 0) << "where it is drawn in software";
    const int plain = colours();
    view.setSamples(2);
    EXPECT_EQ(view.samples(), 2);
    view.setSamples(64);
    EXPECT_EQ(view.samples(), 4) << "the most that there are";
    EXPECT_GT(colours(), plain + 100);
    view.resize(600, 450);
    const auto litAtTheRight = [&] {
        return litPixels(grabFrame(view).copy(410, 0, 190, 450));
    };
    const int lit = litAtTheRight();
    view.setSamples(0);
    EXPECT_GT(lit, litAtTheRight()) << "a larger view is covered whole, and edges spread";
    view.resize(400, 300);
    EXPECT_EQ(colours(), plain);
}

TEST_F(AircraftWidgetTest, GyroViewHasTheSeekersFieldOfView) {
    engagement.fieldOfView = 4.0F;
    select(ViewGyro);
    view.setKeyframe(0.0);
    const QImage frame = grabFrame(view);
    // The reticle's circle reaches the edge of the field of view, which is as high as the view. Its line of one pixel
    // of the framebuffer is paler where several of those make one of the picture.
    const auto isReticle = [](int r, int g, int b) {
        return r > 60 && r == g && g == b;
    };
    EXPECT_GT(countPixels(frame.copy(48, 140, 5, 20), isReticle), 10);
}

TEST_F(AircraftWidgetTest, AnEngagementThatIsReadAgainShowsItsOwnLines) {
    select(ViewTarget);
    view.setKeyframe(1.0);
    wheel(-3600);
    EXPECT_GT(countPixels(grabFrame(view), isGreen), 50);
    etxyz fresh; // as many samples, elsewhere
    fresh.atm = std::make_unique<AtmFile>();
    fresh.menu = &menu;
    fresh.keyframes = engagement.keyframes;
    for (keyframe& sample : fresh.keyframes)
        sample.targetPos[0] = 1.0e5F;
    view.replaceEtxyz(kId, fresh);
    EXPECT_EQ(countPixels(grabFrame(view), isGreen), 0);
}

TEST_F(AircraftWidgetTest, EachCheckMarkOfTheViewMenuShowsItsPart) {
    QMainWindow window;
    Ui::new_sorvane form;
    form.setupUi(&window);
    view.init(15.0F, 15.0F, ViewThreat, &form);
    for (const double time : {0.4, 0.6}) // a drop line between them
        engagement.keyframes.insert(time, engagement.InterpolatedFrame(time));
    engagement.keyframes.remove(0.0);
    select(ViewTarget);
    view.setKeyframe(1.0);
    wheel(-3600);
    const auto grab = [this] {
        return grabFrame(view);
    };
    const auto gridColour = [](int r, int g, int b) {
        return r == 102 && g == 102 && b == 128;
    };
    const int withDropLine = countPixels(grab(), isGreen);
    form.actionShow_Drop_Lines->setChecked(false);
    const int path = countPixels(grab(), isGreen);
    EXPECT_GT(withDropLine, path + 20);
    EXPECT_GT(countPixels(grab(), gridColour), 100);
    form.actionShow_Grid->setChecked(false);
    EXPECT_EQ(countPixels(grab(), gridColour), 0);
    EXPECT_EQ(countPixels(grab(), isGreen), path);
    form.actionShow_History_Lines->setChecked(false);
    EXPECT_EQ(litPixels(grab()), 0);
    form.actionShow_Terrain->setChecked(true);
    EXPECT_FALSE(engagement.keyframes.contains(0.0));
    grab();
    EXPECT_TRUE(engagement.keyframes.contains(0.0)) << "the look-up of the terrain's height";
}

TEST_F(AircraftWidgetTest, SurvivesTheSmallestSizes) {
    select(ViewGyro);
    view.setMinimumSize(0, 0);
    for (const QSize& size : {QSize(0, 0), QSize(1, 500), QSize(500, 1)}) {
        view.resize(size);
        QCoreApplication::processEvents();
        grabFrame(view);
    }
}

TEST_F(AircraftWidgetTest, OfTwoDistantPathsTheOneAUnitNearerIsSeenAtEverySize) {
    for (keyframe& sample : engagement.keyframes) {
        const float along = sample.time > 0.0 ? 5000.0F : -5000.0F;
        std::ranges::copy(std::array{-5000.0F, along, -200.0F}, sample.targetPos);
        std::ranges::copy(std::array{-4999.0F, along, -200.0F}, sample.threatPos);
    }
    select(ViewFree);
    view.setKeyframe(1.0);
    for (const QSize size : {QSize(400, 300), QSize(500, 420)}) {
        view.resize(size);
        const QImage picture = grabFrame(view);
        EXPECT_GE(
            countPixels(picture, [](int r, int g, int b) { return r > 200 && g > 200 && b < 50; }), size.width() - 4);
        EXPECT_EQ(countPixels(picture, [](int r, int g, int b) { return r < 50 && g > 200 && b < 50; }), 0);
    }
}
} // namespace
