// The keys of the camera, and the notice when nothing is in sight.
#include "windowfixture.h"

#include <QWheelEvent>

using namespace sorvane;

namespace {
struct CameraKeysTest : WindowTest {
    void wheel(int delta) {
        const QPointF middle = view->rect().center();
        QWheelEvent event(
            middle, view->mapToGlobal(middle), {}, {0, delta}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(view, &event);
    }
    void drag(Qt::MouseButton button, const QPoint& by) {
        const QPoint from = view->rect().center();
        QTest::mousePress(view, button, {}, from);
        move(button, from + by);
        QTest::mouseRelease(view, button, {}, from + by);
    }
    void move(Qt::MouseButton held, const QPoint& to) {
        QMouseEvent event(QEvent::MouseMove, to, view->mapToGlobal(to), Qt::NoButton, held, Qt::NoModifier);
        QCoreApplication::sendEvent(view, &event);
    }
    std::array<float, 6> camera() const {
        const Vector<float>& eye = view->camera().eye();
        const Vector<float>& centre = view->camera().centre();
        return {eye.ElementAt(0),    eye.ElementAt(1),    eye.ElementAt(2),
                centre.ElementAt(0), centre.ElementAt(1), centre.ElementAt(2)};
    }
};
} // namespace

TEST_F(CameraKeysTest, DoWhatTheMouseDoes) {
    showWindow();
    loadUntil(20.0);
    const Qt::KeyboardModifiers slide = Qt::AltModifier | Qt::ShiftModifier;
    for (const auto& [key, by] :
         {std::pair{Qt::Key_Left, QPoint(-50, 0)},
          {Qt::Key_Right, QPoint(50, 0)},
          {Qt::Key_Up, QPoint(0, -50)},
          {Qt::Key_Down, QPoint(0, 50)}})
        for (const bool isTurn : {true, false}) {
            view->reset();
            drag(isTurn ? Qt::LeftButton : Qt::RightButton, by);
            const auto dragged = camera();
            view->reset();
            press(key, isTurn ? Qt::AltModifier : slide);
            EXPECT_EQ(camera(), dragged) << key << isTurn;
        }
    for (const auto& [key, delta] : {std::pair{Qt::Key_Plus, 120}, {Qt::Key_Equal, 120}, {Qt::Key_Minus, -120}}) {
        view->reset();
        wheel(delta);
        const auto zoomed = camera();
        view->reset();
        press(key);
        EXPECT_EQ(camera(), zoomed) << key;
    }
    entry(0, 2)->trigger();
    const auto before = camera();
    press(Qt::Key_Plus);
    press(Qt::Key_Left, Qt::AltModifier);
    EXPECT_EQ(camera(), before) << "the seeker's view is the seeker's";
}

TEST_F(CameraKeysTest, TheOverviewIsAFreeView) {
    showWindow();
    press(Qt::Key_5); // of nothing
    loadUntil(20.0);
    press(Qt::Key_5);
    EXPECT_EQ(view->viewMode(), ViewFree);
    EXPECT_TRUE(entry(0, 4)->isChecked());
    const auto first = camera();
    EXPECT_GT(std::abs(first[0] - first[3]) + std::abs(first[1] - first[4]), 20.0F);
    box->setValue(10.0);
    press(Qt::Key_Minus);
    press(Qt::Key_5);
    EXPECT_EQ(camera(), first) << "whatever the time and the camera are";
    EXPECT_TRUE(entry(0, 4)->isChecked()) << "chosen again it stays";
}

TEST_F(CameraKeysTest, ADragAfterADoubleClickBeginsAtTheCamerasStart) {
    showWindow();
    loadUntil(20.0);
    box->setValue(10.0);
    const auto start = camera();
    const QPoint middle = view->rect().center();
    QTest::mouseDClick(view, Qt::LeftButton, {}, middle);
    move(Qt::LeftButton, middle + QPoint(1, 0));
    for (std::size_t i = 0; i < start.size(); ++i)
        EXPECT_NEAR(camera()[i], start[i], 0.1F) << "a tenth of a degree at 10 units";
}

TEST_F(CameraKeysTest, ANoticeTellsThatEverythingIsTooFarAway) {
    showWindow();
    loadUntil(20.0);
    for (int i = 0; i < 7; ++i)
        wheel(-1200);
    EXPECT_EQ(notice->text(), "") << "10 units times e to the 8.4";
    wheel(-1200);
    EXPECT_EQ(
        notice->text(),
        "Everything is farther than 100000 units away, where nothing is drawn: a double click starts over");
}
