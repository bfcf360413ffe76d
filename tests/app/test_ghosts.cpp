// Ghosts in the viewer, by their keys.
#include "windowfixture.h"

#include "encountertrajectory.h"
#include "framegrab.h"
#include "ghostlegend.h"
#include "pixels.h"

using namespace sorvane;

namespace {
struct GhostKeysTest : WindowTest {
    GhostLegend* legend() { return dynamic_cast<GhostLegend*>(window.findChild<QWidget*>("ghostLegend")); }

    // The threat passes so far above the target, so many seconds later than at 5 s.
    void loadPass(const char* name, double above, double later) {
        QList<TestSample> samples = encounterSamples();
        for (TestSample& sample : samples) {
            sample.threat[0] -= 20.0 * later;
            sample.threat[2] = -1000.0 - above;
            sample.flares.clear();
        }
        window.loadEtxyzFile(writeTrajectory(folder.filePath(name), samples));
    }
    // The yellow of the nearest ghosts and the blue of the farthest.
    static int nearPixels(const QImage& picture) {
        return countPixels(picture, [](int r, int g, int b) { return r > 150 && g > 120 && g < r && b < g / 2; });
    }
    static int farPixels(const QImage& picture) {
        return countPixels(picture, [](int r, int g, int b) { return b > 150 && g > 100 && r < g / 2; });
    }
    QStringList texts() {
        QStringList texts;
        for (const ColourLegend::Entry& entry : legend()->legend().entries)
            texts << entry.text;
        return texts;
    }
};

TEST_F(GhostKeysTest, GShowsTheOthersInTheColoursOfTheirMiss) {
    showWindow();
    loadPass("ETXYZ.OUT.followed", 20.0, 0.0);
    press(Qt::Key_G);
    EXPECT_EQ(notice->text(), "Ghosts: there is no other engagement");
    EXPECT_FALSE(legend()->isVisible());
    loadPass("ETXYZ.OUT.far", 40.0, 0.0);
    loadPass("ETXYZ.OUT.near", 10.0, 0.0);
    loadPass("ETXYZ.OUT.below", -40.0, 0.0);
    press(Qt::Key_5);
    press(Qt::Key_Minus);
    press(Qt::Key_Minus);
    const QImage ghosts = grabFrame(*view);
    EXPECT_GT(nearPixels(ghosts), 10);
    EXPECT_GT(farPixels(ghosts), nearPixels(ghosts) * 3 / 2) << "one passes near, two far";
    ASSERT_TRUE(legend()->isVisible());
    EXPECT_EQ(texts().size(), 8);
    EXPECT_EQ(texts().first(), "10.00 units");
    EXPECT_EQ(texts().last(), "36.25 units");
    press(Qt::Key_U);
    EXPECT_EQ(texts().first(), "10.00 ft");
    // Pictures have the ghosts, the screen the legend too.
    const QRect place = legend()->geometry();
    EXPECT_NE(onScreen(*view).copy(place), ghosts.copy(place).convertToFormat(QImage::Format_RGB32));
    // Whoever is followed is none.
    press(Qt::Key_PageDown);
    press(Qt::Key_PageDown);
    EXPECT_EQ(notice->text(), "ETXYZ.OUT.near (3 of 4)");
    EXPECT_EQ(texts().first(), "10.00 ft");
    press(Qt::Key_G);
    EXPECT_EQ(notice->text(), "Ghosts off");
    EXPECT_FALSE(legend()->isVisible());
    EXPECT_EQ(farPixels(grabFrame(*view)), 0);
}

TEST_F(GhostKeysTest, ControlAndShiftChooseColoursAndStep) {
    showWindow();
    loadPass("ETXYZ.OUT.followed", 20.0, 0.0);
    loadPass("ETXYZ.OUT.late", 20.0, 3.0);
    box->setValue(2.0);
    press(Qt::Key_5);
    press(Qt::Key_G, Qt::ControlModifier);
    EXPECT_EQ(notice->text(), "Ghosts: 1, in step at the launch") << "the first press shows them";
    EXPECT_EQ(legend()->legend().title, "closest approach");
    press(Qt::Key_G, Qt::ControlModifier);
    EXPECT_EQ(legend()->legend().title, "decoyed");
    EXPECT_EQ(texts(), (QStringList{"no", "yes"}));
    const QImage atLaunch = grabFrame(*view);
    press(Qt::Key_G, Qt::ShiftModifier);
    EXPECT_EQ(notice->text(), "Ghosts: 1, in step at the first flare");
    EXPECT_EQ(grabFrame(*view), atLaunch) << "without flares: by the launch";
    press(Qt::Key_G, Qt::ShiftModifier);
    EXPECT_EQ(notice->text(), "Ghosts: 1, in step at the closest approach");
    EXPECT_NE(grabFrame(*view), atLaunch) << "three seconds on";
    press(Qt::Key_G, Qt::ShiftModifier);
    EXPECT_EQ(grabFrame(*view), atLaunch);
}
} // namespace
