// What the sub-menus say: selected, hidden, field of view.
#include <gtest/gtest.h>

#include <QMenu>

#include "etxyz.h"
#include "selection.h"

using namespace sorvane;

namespace {
struct Engagement {
    QMenu menu;
    etxyz engagement;

    Engagement() {
        menu.addAction("Disable");
        for (const char* text : {"View Threat", "View Gyro", "View Target", "View Free"})
            menu.addAction(text)->setCheckable(true);
        engagement.menu = &menu;
    }
    void check(int action) { menu.actions().at(action)->setChecked(true); }
    SceneEngagement shown() { return {newEngagementId(), &engagement}; }
};

TEST(Selection, IsTheLastEngagementWithACheckedAction) {
    Engagement first;
    Engagement second;
    Engagement third;
    const std::vector<SceneEngagement> all = {first.shown(), second.shown(), third.shown()};
    EXPECT_EQ(selectedEngagement(all), nullptr);
    first.check(1);
    EXPECT_EQ(selectedEngagement(all), &first.engagement);
    second.check(4);
    EXPECT_EQ(selectedEngagement(all), &second.engagement);
    third.check(2);
    EXPECT_EQ(selectedEngagement(all), &third.engagement);
}

TEST(Selection, SkipsAnEngagementWithoutMenu) {
    etxyz engagement;
    const std::vector<SceneEngagement> all = {{newEngagementId(), &engagement}};
    EXPECT_EQ(selectedEngagement(all), nullptr);
    EXPECT_FALSE(isEngagementHidden(engagement));
    EXPECT_EQ(viewAction(engagement, ViewThreat), nullptr);
    EXPECT_EQ(fieldOfViewDegrees(all), 30.0);
}

TEST(Selection, HiddenIsWhatTheFirstActionSays) {
    Engagement shown;
    EXPECT_FALSE(isEngagementHidden(shown.engagement));
    shown.menu.actions().first()->setText("Enable");
    EXPECT_TRUE(isEngagementHidden(shown.engagement));
}

TEST(Selection, FieldOfViewIsTheSeekersOfTheLastCheckedGyroView) {
    Engagement first;
    Engagement second;
    first.engagement.fieldOfView = 2.0F;
    second.engagement.fieldOfView = 3.0F;
    const std::vector<SceneEngagement> all = {first.shown(), second.shown()};
    second.check(3);
    EXPECT_EQ(fieldOfViewDegrees(all), 30.0);
    first.check(2);
    EXPECT_EQ(fieldOfViewDegrees(all), 2.0);
    second.check(2);
    EXPECT_EQ(fieldOfViewDegrees(all), 3.0);
}
} // namespace
