// The playback clock: box, slider, play button, speeds.
#include "rows.h"
#include "windowfixture.h"

using namespace sorvane;

namespace {
struct ClockTest : WindowTest {
    void tick(int count = 1) {
        for (int i = 0; i < count; ++i)
            window.incrementTime();
    }
};

TEST_F(ClockTest, SliderAndBoxSetEachOther) {
    loadUntil(20.0);
    slider->setValue(15000);
    EXPECT_EQ(box->value(), 15.0);
    EXPECT_EQ(view->currentTime(), 15.0);
    box->setValue(7.5);
    EXPECT_EQ(slider->value(), 7500);
    EXPECT_EQ(view->currentTime(), 7.5);
    box->setValue(7.5008);
    EXPECT_EQ(slider->value(), 7500);
    EXPECT_EQ(view->currentTime(), 7.5008) << "less than the slider counts";
}

TEST_F(ClockTest, TheSliderTakesTheViewToWhereTheBoxCannotGo) {
    loadUntil(40.0);
    slider->setValue(35000);
    EXPECT_EQ(box->value(), 29.999);
    EXPECT_EQ(view->currentTime(), 35.0);
}

TEST_F(ClockTest, WithNoEngagementTheFirstTickStopsAtTheEnd) {
    playButton->click();
    EXPECT_TRUE(timer->isActive());
    tick();
    EXPECT_FALSE(timer->isActive());
    EXPECT_EQ(box->value(), 29.999);
    EXPECT_EQ(slider->value(), 1);
}

TEST_F(ClockTest, StopsOnTheFirstTickPastTheEndWithTheBoxAtItsMaximum) {
    loadUntil(12.5);
    box->setValue(12.47);
    playButton->click();
    tick();
    EXPECT_FALSE(timer->isActive());
    EXPECT_EQ(box->value(), 29.999);
    EXPECT_EQ(slider->value(), 12500);
    EXPECT_EQ(view->currentTime(), 29.999);
    // From there every tick stops again.
    playButton->click();
    tick();
    EXPECT_FALSE(timer->isActive());
    EXPECT_EQ(box->value(), 29.999);
}

TEST_F(ClockTest, ATickThatLandsOnTheEndGoesOn) {
    loadUntil(0.066);
    playButton->click();
    tick(2);
    EXPECT_TRUE(timer->isActive());
    EXPECT_EQ(box->value(), 0.066);
}

TEST_F(ClockTest, SpeedsCompoundAndOnlyOneIsAbsolute) {
    loadUntil(20.0);
    for (const auto& [actions, expected] : Rows<QStringList, double>{
             {{"actionX2"}, 0.066},
             {{"actionX10", "actionX10"}, 3.3},
             {{"actionX10", "actionX0_1"}, 0.033},
             {{"actionX0_5"}, 0.0165},
             {{"actionX10", "actionX10", "action1_0"}, 0.033},
             {{"actionX0_1", "actionX0_1", "actionX0_1"}, 0.0}}) { // 0.000033 s is rounded away
        box->setValue(0.0);
        action("action1_0")->trigger();
        for (const QString& name : actions)
            action(name)->trigger();
        tick();
        // The slider counts whole milliseconds, and where it changes it sets the box to them.
        EXPECT_NEAR(box->value(), expected, 0.0011) << actions.join(' ').toStdString();
        EXPECT_EQ(box->value() == 0.0, expected == 0.0);
    }
}

TEST_F(ClockTest, PlaysInRealTimeAndPausesAndTheIconFollows) {
    showWindow();
    loadUntil(20.0);
    const auto shows = [this](const char* icon) {
        return playButton->icon().pixmap(24).toImage() == QIcon(icon).pixmap(24).toImage();
    };
    EXPECT_TRUE(shows(":/images/play.svg"));
    QTest::mouseClick(playButton, Qt::LeftButton);
    EXPECT_EQ(timer->interval(), 33);
    EXPECT_TRUE(shows(":/images/pause.svg") && !shows(":/images/play.svg"));
    ASSERT_TRUE(QTest::qWaitFor([&] { return box->value() > 0.2; }, 10000));
    QTest::mouseClick(playButton, Qt::LeftButton);
    EXPECT_FALSE(timer->isActive());
    EXPECT_TRUE(shows(":/images/play.svg"));
    const double paused = box->value();
    QTest::qWait(100);
    EXPECT_EQ(box->value(), paused);
    EXPECT_EQ(view->currentTime(), paused);
}
} // namespace
