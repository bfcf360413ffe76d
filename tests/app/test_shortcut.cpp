// Ctrl+C closes the window whatever has the focus.
#include "windowfixture.h"

#include <QApplication>
#include <QLineEdit>

using namespace sorvane;

namespace {
struct ShortcutTest : WindowTest, testing::WithParamInterface<const char*> {};

TEST_P(ShortcutTest, CtrlCClosesTheWindow) {
    showWindow();
    auto* const focused = window.findChild<QWidget*>(GetParam());
    ASSERT_NE(focused, nullptr);
    focused->setFocus();
    ASSERT_TRUE(QTest::qWaitFor([&] { return focused->hasFocus(); }));
    if (focused == box)
        box->findChild<QLineEdit*>()->selectAll();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_C, Qt::ControlModifier);
    EXPECT_FALSE(window.isVisible());
}

INSTANTIATE_TEST_SUITE_P(
    FocusOn, ShortcutTest,
    testing::Values("glWidget", "doubleSpinBox", "playButton", "recordButton", "horizontalSlider"),
    [](const auto& control) { return std::string(control.param); });
} // namespace
