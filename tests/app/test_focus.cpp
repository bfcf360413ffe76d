// Going from control to control by Tab, how the view shows that it has the keyboard, and Ctrl+C whatever has it.
#include "windowfixture.h"

using namespace sorvane;

namespace {
struct FocusTest : WindowTest {};

TEST_F(FocusTest, TheViewShowsThatTabHasGivenItTheFocus) {
    showWindow();
    const auto isFramed = [this] {
        const QColor colour = window.palette().color(QPalette::Highlight);
        const QImage shown = onScreen(*view);
        return shown.pixelColor(0, 100) == colour && shown.pixelColor(shown.width() - 1, shown.height() - 1) == colour;
    };
    focus(box);
    QTest::mouseClick(view, Qt::LeftButton);
    ASSERT_TRUE(view->hasFocus());
    EXPECT_FALSE(isFramed()) << "who clicks knows where";
    focus(slider);
    QTest::keyClick(slider, Qt::Key_Tab);
    ASSERT_TRUE(QTest::qWaitFor([&] { return view->hasFocus(); }));
    EXPECT_TRUE(isFramed());
    QTest::keyClick(view, Qt::Key_Tab);
    ASSERT_FALSE(view->hasFocus());
    EXPECT_FALSE(isFramed());
}

TEST_F(FocusTest, TabVisitsTheControlsInOrderAndTheyHaveNames) {
    showWindow();
    QStringList order;
    for (int i = 0; i < 6; ++i) {
        EXPECT_FALSE(QApplication::focusWidget()->accessibleName().isEmpty());
        order << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(
        order,
        (QStringList{"glWidget", "doubleSpinBox", "playButton", "recordButton", "horizontalSlider", "glWidget"}));
}

struct ShortcutTest : WindowTest, testing::WithParamInterface<const char*> {};

TEST_P(ShortcutTest, CtrlCClosesTheWindow) {
    showWindow();
    focus(window.findChild<QWidget*>(GetParam()));
    box->selectAll();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_FALSE(window.isVisible());
}

INSTANTIATE_TEST_SUITE_P(
    FocusOn, ShortcutTest,
    testing::Values("glWidget", "doubleSpinBox", "playButton", "recordButton", "horizontalSlider"),
    [](const auto& control) { return std::string(control.param); });
} // namespace
