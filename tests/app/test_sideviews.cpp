// Further view windows: what they show, what moves them, when they end.
#include "windowfixture.h"

#include <QMouseEvent>
#include <QPointer>

#include "environmentvariable.h"
#include "framegrab.h"
#include "makedemonstration.h"
#include "rows.h"
#include "sideview.h"

using namespace sorvane;

namespace {
struct SideViewsTest : WindowTest {
    static inline QTemporaryDir* demo = nullptr;
    EnvironmentVariable dataRoot{"PELSAR_DATA", demo->filePath("data/").toStdString()};

    static void SetUpTestSuite() {
        demo = new QTemporaryDir;
        ASSERT_EQ(makeDemonstration(demo->path().toStdString()), std::nullopt);
    }
    static void TearDownTestSuite() {
        delete demo;
        demo = nullptr;
    }
    void SetUp() override {
        showWindow();
        window.loadEtxyzFile(demo->filePath("ETXYZ.OUT.turn"));
        box->setValue(6.0);
        QTest::qWait(50);
    }
    QList<SideView*> sides() { return window.findChildren<SideView*>(); }
    // Presses W in the main view; the window that opens.
    SideView* open() {
        const QList<SideView*> before = sides();
        press(Qt::Key_W);
        for (SideView* const side : sides())
            if (!before.contains(side)) {
                EXPECT_TRUE(QTest::qWaitForWindowExposed(side));
                QTest::qWait(50);
                return side;
            }
        return nullptr;
    }
    static std::array<float, 6> cameraOf(const Camera& camera) {
        const Vector<float>& eye = camera.eye();
        const Vector<float>& centre = camera.centre();
        return {eye.ElementAt(0),    eye.ElementAt(1),    eye.ElementAt(2),
                centre.ElementAt(0), centre.ElementAt(1), centre.ElementAt(2)};
    }
};

TEST_F(SideViewsTest, EachShowsAViewThatNobodyShowsYet) {
    for (const char* const title :
         {"Gyro: ETXYZ.OUT.turn", "Target: ETXYZ.OUT.turn", "Overview: ETXYZ.OUT.turn", "Threat: ETXYZ.OUT.turn"}) {
        const SideView* const side = open();
        ASSERT_NE(side, nullptr);
        EXPECT_EQ(side->windowTitle(), title);
        EXPECT_TRUE(side->isWindow());
        EXPECT_TRUE(side->screen()->availableGeometry().contains(side->geometry())) << title;
        EXPECT_FALSE(side->geometry().intersects(window.geometry())) << title;
        for (const SideView* const other : sides())
            EXPECT_TRUE(other == side || !side->geometry().intersects(other->geometry())) << title;
    }
    EXPECT_EQ(open(), nullptr);
    EXPECT_EQ(notice->text(), "Four further views are open: close one of them first");
    // One that is closed makes room, and its view is free again.
    const QPointer<SideView> closed = sides().at(1);
    closed->close();
    EXPECT_TRUE(QTest::qWaitFor([&] { return closed == nullptr; }));
    const SideView* const fresh = open();
    ASSERT_NE(fresh, nullptr);
    EXPECT_EQ(fresh->viewMode(), ViewTarget);
    window.close();
    EXPECT_TRUE(QTest::qWaitFor([&] { return sides().isEmpty(); }));
}

TEST_F(SideViewsTest, TheFirstShowsAViewThatTheMainViewDoesNot) {
    press(Qt::Key_2);
    const SideView* const side = open();
    ASSERT_NE(side, nullptr);
    EXPECT_EQ(side->viewMode(), ViewTarget);
}

// The same picture to the last bit: bodies included, which the main view has loaded.
TEST_F(SideViewsTest, ShowsWhatTheMainViewWouldInTheSameView) {
    SideView* const side = open();
    ASSERT_NE(side, nullptr);
    side->resize(view->size());
    side->setScale({});
    action("actionShow_Terrain")->setChecked(true);
    view->loadAllTerrain();
    QTest::qWait(200);
    action("actionShow_Grid")->setChecked(false);
    for (const Qt::Key key : {Qt::Key_1, Qt::Key_2, Qt::Key_3, Qt::Key_5}) {
        press(key);
        QTest::keyClick(side, key);
        QTest::qWait(100);
        ASSERT_EQ(side->size(), view->size());
        const QImage shown = grabFrame(*view);
        EXPECT_TRUE(side->picture() == shown) << "key " << key;
        EXPECT_TRUE(grabFrame(*view) == shown) << "the main view is not disturbed, key " << key;
    }
}

TEST_F(SideViewsTest, TheSeekersViewHasAScaleOfItsOwn) {
    SideView* const side = open();
    ASSERT_NE(side, nullptr);
    EXPECT_EQ(side->scale().range, PictureScale::Range::Automatic);
    const QImage automatic = onScreen(*side);
    QTest::keyClick(side, Qt::Key_3);
    EXPECT_EQ(side->scale(), PictureScale());
    QTest::keyClick(side, Qt::Key_2);
    EXPECT_TRUE(onScreen(*side) == automatic);
    QTest::keyClick(side, Qt::Key_B); // off
    EXPECT_EQ(side->scale(), PictureScale());
    EXPECT_FALSE(onScreen(*side) == automatic);
    EXPECT_EQ(view->scale(), PictureScale());
    QTest::keyClick(side, Qt::Key_B);
    QTest::keyClick(side, Qt::Key_B);
    QTest::keyClick(side, Qt::Key_3);
    EXPECT_EQ(side->scale().range, PictureScale::Range::Automatic) << "one that is chosen stays";
}

TEST_F(SideViewsTest, PlayingMovesIt) {
    SideView* const side = open();
    ASSERT_NE(side, nullptr);
    QTest::keyClick(side, Qt::Key_3);
    const QImage before = onScreen(*side);
    const auto start = cameraOf(side->camera());
    PaintCounter counter;
    side->installEventFilter(&counter);
    QTest::keyClick(side, Qt::Key_Space); // the viewer's keys work there
    EXPECT_TRUE(timer->isActive());
    EXPECT_TRUE(QTest::qWaitFor([&] { return counter.paints >= 3; }));
    QTest::keyClick(side, Qt::Key_Space);
    EXPECT_FALSE(timer->isActive());
    EXPECT_FALSE(onScreen(*side) == before);
    EXPECT_NE(cameraOf(side->camera()), start);
    // As far as the main view's, which has come the same way.
    press(Qt::Key_3);
    QTest::keyClick(side, Qt::Key_3);
    box->setValue(9.0);
    QTest::qWait(100);
    EXPECT_EQ(cameraOf(side->camera()), cameraOf(view->camera()));
}

TEST_F(SideViewsTest, KeysAndMouseMoveItsCameraAlone) {
    SideView* const side = open();
    ASSERT_NE(side, nullptr);
    const auto main = cameraOf(view->camera());
    for (const auto& [key, mode, title] : Rows<Qt::Key, ViewMode, const char*>{
             {Qt::Key_1, ViewThreat, "Threat: ETXYZ.OUT.turn"},
             {Qt::Key_2, ViewGyro, "Gyro: ETXYZ.OUT.turn"},
             {Qt::Key_4, ViewFree, "Free: ETXYZ.OUT.turn"},
             {Qt::Key_5, ViewFree, "Overview: ETXYZ.OUT.turn"},
             {Qt::Key_3, ViewTarget, "Target: ETXYZ.OUT.turn"}}) {
        QTest::keyClick(side, key);
        EXPECT_EQ(side->viewMode(), mode);
        EXPECT_EQ(side->windowTitle(), title);
    }
    EXPECT_EQ(view->viewMode(), ViewThreat);
    QTest::qWait(50);
    const auto start = cameraOf(side->camera());
    QTest::keyClick(side, Qt::Key_Left, Qt::AltModifier);
    const auto turned = cameraOf(side->camera());
    EXPECT_NE(turned, start);
    const QPoint from = side->rect().center();
    QTest::mouseDClick(side, Qt::LeftButton, {}, from);
    QTest::qWait(50);
    EXPECT_EQ(cameraOf(side->camera()), start);
    QTest::mousePress(side, Qt::LeftButton, {}, from);
    QMouseEvent move(
        QEvent::MouseMove, from - QPoint(50, 0), side->mapToGlobal(from - QPoint(50, 0)), Qt::NoButton, Qt::LeftButton,
        Qt::NoModifier);
    QCoreApplication::sendEvent(side, &move);
    EXPECT_EQ(cameraOf(side->camera()), turned);
    EXPECT_EQ(cameraOf(view->camera()), main);
}

TEST_F(SideViewsTest, FollowsWhatIsFollowedAndForgetsWhatIsGone) {
    SideView* const side = open();
    ASSERT_NE(side, nullptr);
    QTest::keyClick(side, Qt::Key_5);
    QTest::qWait(50);
    loadUntil(20.0, "ETXYZ.OUT.other");
    press(Qt::Key_PageDown);
    QTest::qWait(100);
    EXPECT_EQ(side->windowTitle(), "Overview: ETXYZ.OUT.other");
    const auto over = cameraOf(side->camera());
    QTest::keyClick(side, Qt::Key_5);
    QTest::qWait(50);
    EXPECT_EQ(cameraOf(side->camera()), over) << "it went over to the other one by itself";
    QTest::keyClick(side, Qt::Key_3);
    QTest::qWait(50);
    EXPECT_EQ(side->windowTitle(), "Target: ETXYZ.OUT.other");
    const auto other = cameraOf(side->camera());
    press(Qt::Key_3);
    QTest::qWait(50);
    EXPECT_EQ(other, cameraOf(view->camera()));
    press(Qt::Key_F5);
    engagements().clear();
    EXPECT_EQ(side->windowTitle(), "Target");
    press(Qt::Key_4);
    QTest::qWait(100);
    QTest::keyClick(side, Qt::Key_4);
    EXPECT_TRUE(onScreen(*side) == side->picture()) << "the grid";
}
} // namespace
