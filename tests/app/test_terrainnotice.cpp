// Terrain that loads while the window lives.
#include "windowfixture.h"

#include <functional>
#include <utility>

#include "environmentvariable.h"
#include "framegrab.h"
#include "makedemonstration.h"
#include "terrain.h"

using namespace sorvane;

namespace {
struct TerrainNoticeTest : WindowTest {
    QString demo = folder.filePath("demo");
    EnvironmentVariable dataRoot{"PELSAR_DATA", (demo + "/data/").toStdString()};
    QLabel* const terrain = window.findChild<QLabel*>("terrainNotice");

    void load() { window.loadEtxyzFile(demo + "/ETXYZ.OUT.turn"); }
    void start() {
        ASSERT_EQ(makeDemonstration(demo.toStdString()), std::nullopt);
        showWindow();
        load();
        press(Qt::Key_3);
        QTest::qWait(50);
        action("actionShow_Terrain")->setChecked(true);
    }
    Terrain& of(std::size_t engagement) {
        return *std::next(engagements().begin(), static_cast<int>(engagement))->data().terrain;
    }
    bool isLoaded(std::size_t engagement) {
        return QTest::qWaitFor([&] { return of(engagement).isLoaded(); }, 10000);
    }
    bool isOver() {
        return QTest::qWaitFor([&] { return !terrain->isVisible(); }, 10000);
    }
    // Acts when the notice appears, mostly while the files are being read; false when that doesn't happen.
    bool inTheMiddle(const std::function<void()>& act) {
        struct Once : QObject {
            std::function<void()> act;
            bool eventFilter(QObject* watched, QEvent* event) override {
                if (event->type() == QEvent::Show && act)
                    std::exchange(act, nullptr)();
                return QObject::eventFilter(watched, event);
            }
        } once;
        bool hasActed = false;
        once.act = [&] {
            EXPECT_TRUE(terrain->text().startsWith("Terrain: ")) << terrain->text().toStdString();
            act();
            hasActed = true;
        };
        terrain->installEventFilter(&once);
        return QTest::qWaitFor([&] { return hasActed; }, 5000);
    }
};

TEST_F(TerrainNoticeTest, ShowsInTheEndWhatAPictureShowsInTheMiddle) {
    testing::internal::CaptureStdout();
    start();
    EXPECT_TRUE(inTheMiddle([&] { EXPECT_FALSE(of(0).isLoaded()); }));
    EXPECT_TRUE(isLoaded(0) && isOver());
    hideTexts();
    const QImage shown = onScreen(*view);
    EXPECT_EQ(shown, grabFrame(*view));
    engagements().clear();
    load();
    press(Qt::Key_3);
    QImage inTheMiddleOfIt;
    EXPECT_TRUE(inTheMiddle([&] {
        inTheMiddleOfIt = grabFrame(*view);
        EXPECT_TRUE(of(0).isLoaded());
    }));
    EXPECT_TRUE(isOver());
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(inTheMiddleOfIt, shown);
}

TEST_F(TerrainNoticeTest, HidingReloadingTakingOutASecondOneAndTheEndInTheMiddleAreSafe) {
    testing::internal::CaptureStdout();
    start();
    EXPECT_TRUE(inTheMiddle([&] { entry(0, 0)->trigger(); })); // hidden
    EXPECT_TRUE(isOver());
    EXPECT_FALSE(of(0).isLoaded());
    entry(0, 0)->trigger();
    EXPECT_TRUE(isLoaded(0));
    for (const std::function<void()>& act :
         {std::function<void()>([&] { press(Qt::Key_F5); }), std::function<void()>([&] { load(); })}) {
        engagements().clear();
        load();
        EXPECT_TRUE(inTheMiddle(act));
        for (std::size_t i = 0; i < engagements().size(); ++i)
            EXPECT_TRUE(isLoaded(i));
    }
    EXPECT_EQ(of(0).tile(0).content(), of(1).tile(0).content());
    engagements().clear();
    load();
    EXPECT_TRUE(inTheMiddle([&] { engagements().clear(); }));
    EXPECT_TRUE(isOver());
    load();
    EXPECT_TRUE(inTheMiddle([] {}));
    testing::internal::GetCapturedStdout();
}

TEST_F(TerrainNoticeTest, ATileThatCannotBeUsedIsTriedAgainWithTheNextFrameOnly) {
    testing::internal::CaptureStdout();
    ASSERT_EQ(makeDemonstration(demo.toStdString()), std::nullopt);
    writeFile(demo + "/data/ter0010/ter0010.temp", "words\n");
    showWindow();
    load();
    action("actionShow_Terrain")->setChecked(true);
    QTest::qWait(1000);
    const auto tries = [] {
        const std::string said = testing::internal::GetCapturedStdout();
        testing::internal::CaptureStdout();
        int count = 0;
        for (std::size_t at = said.find("SubTerrain::load\n"); at != std::string::npos;
             at = said.find("SubTerrain::load\n", at + 1))
            ++count;
        return count;
    };
    EXPECT_GT(tries(), 0);
    QTest::qWait(500);
    EXPECT_EQ(tries(), 0) << "nobody has asked for a frame";
    view->update();
    QTest::qWait(500);
    EXPECT_GT(tries(), 0);
    testing::internal::GetCapturedStdout();
}
} // namespace
