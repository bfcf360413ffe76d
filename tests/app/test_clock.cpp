// The playback clock: box, slider, play button, speeds.
#include "windowfixture.h"

using namespace sorvane;

namespace {
struct ClockTest : WindowTest {
    void tick(int count = 1) {
        for (int i = 0; i < count; ++i)
            window.incrementTime();
    }
    void speed(const QString& name) { action(name)->trigger(); }
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

TEST_F(ClockTest, TheBoxTakesATimeTypedDigitByDigit) {
    loadUntil(20.0);
    showWindow();
    box->setFocus();
    box->selectAll();
    QTest::keyClicks(box, "3.25");
    EXPECT_EQ(box->value(), 3.25);
    EXPECT_EQ(slider->value(), 3250);
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

TEST_F(ClockTest, AnEngagementPastTheBoxsMaximumNeverStops) {
    loadUntil(40.0);
    EXPECT_EQ(slider->maximum(), 40000);
    box->setValue(29.99);
    playButton->click();
    tick(5);
    EXPECT_TRUE(timer->isActive());
    EXPECT_EQ(box->value(), 29.999);
}

TEST_F(ClockTest, SpeedsCompoundAndOnlyOneIsAbsolute) {
    struct Row {
        QStringList actions;
        double expected; // after one tick from 0
    };
    const Row rows[] = {
        {{}, 0.033},
        {{"actionX2"}, 0.066},
        {{"actionX10", "actionX10"}, 3.3},
        {{"actionX10", "actionX0_1"}, 0.033},
        {{"actionX0_5"}, 0.0165},
        {{"actionX10", "actionX10", "action1_0"}, 0.033},
        {{"actionX0_1", "actionX0_1", "actionX0_1"}, 0.0}, // 0.000033 s is rounded away
    };
    loadUntil(20.0);
    for (const Row& row : rows) {
        box->setValue(0.0);
        speed("action1_0");
        for (const QString& name : row.actions)
            speed(name);
        tick();
        // The slider counts whole milliseconds, and where it changes it sets the box to them.
        EXPECT_NEAR(box->value(), row.expected, 0.0011) << row.actions.join(' ').toStdString();
        EXPECT_EQ(box->value() == 0.0, row.expected == 0.0);
    }
}

TEST_F(ClockTest, PlaysInRealTimeAndPauses) {
    showWindow();
    loadUntil(20.0);
    QTest::mouseClick(playButton, Qt::LeftButton);
    EXPECT_EQ(timer->interval(), 33);
    ASSERT_TRUE(QTest::qWaitFor([&] { return box->value() > 0.2; }, 10000));
    QTest::mouseClick(playButton, Qt::LeftButton);
    EXPECT_FALSE(timer->isActive());
    const double paused = box->value();
    QTest::qWait(100);
    EXPECT_EQ(box->value(), paused);
    EXPECT_EQ(view->currentTime(), paused);
}

TEST_F(ClockTest, TheIconFollowsTheState) {
    loadUntil(20.0);
    const auto pictureOf = [](const QIcon& icon) {
        return icon.pixmap(24).toImage();
    };
    const QImage play = pictureOf(QIcon(":/images/play.svg"));
    const QImage pause = pictureOf(QIcon(":/images/pause.svg"));
    ASSERT_NE(play, pause);
    EXPECT_EQ(pictureOf(playButton->icon()), play);
    playButton->click();
    EXPECT_EQ(pictureOf(playButton->icon()), pause);
    playButton->click();
    EXPECT_EQ(pictureOf(playButton->icon()), play);
}
} // namespace
