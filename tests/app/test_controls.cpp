// The controls used with mouse and keyboard: what is repainted, typed, focused and timed.
#include <chrono>
#include <vector>

#include <QMenuBar>
#include <QSignalBlocker>

#include "framegrab.h"
#include "windowfixture.h"

using namespace sorvane;

namespace {
struct GermanLocale {
    GermanLocale() { QLocale::setDefault(QLocale(QLocale::German, QLocale::Germany)); }
    ~GermanLocale() { QLocale::setDefault(QLocale::c()); }
};

struct ControlTest : GermanLocale, WindowTest {
    QPushButton* const recordButton = window.findChild<QPushButton*>("recordButton");

    void click(QWidget& control, QPoint at) { QTest::mouseClick(&control, Qt::LeftButton, {}, at); }
    void type(const char* text) { QTest::keyClicks(QApplication::focusWidget(), text); }
    void type(Qt::Key key) { QTest::keyClick(QApplication::focusWidget(), key); }
};

TEST_F(ControlTest, TheScreenFollowsEveryEntryOfTheViewMenuWhateverHasTheFocus) {
    // A path across the view, with a drop line in the middle.
    window.loadEtxyzFile(writeTrajectory(
        folder.filePath("ETXYZ.OUT.1"), {{.time = 0.0, .threat = {0.0, -40.0, -500.0}},
                                         {.time = 4.9, .threat = {0.0, -20.0, -500.0}},
                                         {.time = 5.0},
                                         {.time = 10.0, .threat = {0.0, 40.0, -500.0}}}));
    showWindow();
    box->setValue(5.0);
    playButton->setFocus();
    auto* const bar = window.findChild<QMenuBar*>("menuBar");
    auto* const menu = window.findChild<QMenu*>("menuView");
    for (QAction* const entry : menu->actions()) {
        if (entry->objectName() == "actionShow_Terrain")
            continue; // without terrain files nothing shows
        const QImage before = onScreen(*view);
        click(*bar, bar->actionGeometry(menu->menuAction()).center());
        ASSERT_TRUE(QTest::qWaitForWindowExposed(menu));
        click(*menu, menu->actionGeometry(entry).center());
        EXPECT_NE(onScreen(*view), before) << entry->text().toStdString();
        entry->toggle();
        EXPECT_EQ(onScreen(*view), before) << entry->text().toStdString();
    }
}

TEST_F(ControlTest, TheScreenIsNeverStaleWithoutASelectedEngagement) {
    loadUntil(10.0);
    showWindow();
    hideTexts();
    entry(0, 1)->trigger(); // unchecks the only view
    auto* const grid = action("actionShow_Grid");
    const std::function<void()> repaints[] = {
        [&] { view->reset(); },
        [&] { view->setKeyframe(5.0); },
    };
    for (const auto& repaint : repaints) {
        onScreen(*view);
        const QSignalBlocker unheard(grid);
        grid->setChecked(!grid->isChecked());
        repaint();
        const QImage shown = onScreen(*view);
        EXPECT_EQ(shown, grabFrame(*view));
    }
}

TEST_F(ControlTest, ATypedTimeHasAPointInEveryLocaleAndReturnEndsIt) {
    loadUntil(20.0);
    showWindow();
    for (const char* const text : {"1.5", "1,5"}) {
        box->setValue(14.434);
        QTest::mouseDClick(box->findChild<QLineEdit*>(), Qt::LeftButton);
        box->selectAll();
        type(text);
        EXPECT_EQ(box->value(), 1.5) << text;
        EXPECT_TRUE(box->text().startsWith("1.5")) << box->text().toStdString();
        type(Qt::Key_Return);
        EXPECT_TRUE(view->hasFocus());
    }
    type("3");
    EXPECT_EQ(box->value(), 1.5);
    EXPECT_EQ(view->viewMode(), ViewTarget);
}

TEST_F(ControlTest, TheMouseLeavesTheKeysWithTheView) {
    loadUntil(20.0);
    showWindow();
    answerDialog([](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    click(*recordButton, recordButton->rect().center());
    click(*playButton, playButton->rect().center());
    click(*slider, slider->rect().center());
    QWheelEvent wheel({5, 5}, box->mapToGlobal(QPoint(5, 5)), {}, {0, 120}, {}, {}, Qt::NoScrollPhase, false);
    QApplication::sendEvent(box, &wheel);
    EXPECT_TRUE(view->hasFocus());
    EXPECT_TRUE(timer->isActive());
    type(Qt::Key_Space);
    EXPECT_FALSE(timer->isActive());
    type("4");
    EXPECT_EQ(view->viewMode(), ViewFree);
}

TEST_F(ControlTest, ReturnPressesTheFocusedButtonAndSpaceIsTheClocks) {
    loadUntil(20.0);
    showWindow();
    recordButton->setFocus(Qt::TabFocusReason);
    type(Qt::Key_Space); // a dialog would wait for ever
    EXPECT_TRUE(timer->isActive());
    type(Qt::Key_Space);
    bool isAsked = false;
    answerDialog([&](QFileDialog& dialog) {
        isAsked = dialog.windowTitle() == "Save Movie File";
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    type(Qt::Key_Return);
    EXPECT_TRUE(isAsked);
    EXPECT_FALSE(timer->isActive());
}

TEST_F(ControlTest, TheClockTicksEvery33Milliseconds) {
    using Clock = std::chrono::steady_clock;
    loadUntil(29.0);
    window.resize(200, 200);
    showWindow();
    std::vector<Clock::time_point> ticks;
    QObject::connect(timer, &QTimer::timeout, &window, [&] { ticks.push_back(Clock::now()); });
    click(*playButton, playButton->rect().center());
    QTest::qWait(3000);
    click(*playButton, playButton->rect().center());
    ASSERT_GT(ticks.size(), 20U);
    const std::chrono::duration<double, std::milli> span = ticks.back() - ticks.front();
    // A busy machine can only make it slow.
    EXPECT_GT(span.count() / static_cast<double>(ticks.size() - 1), 32.8) << "real time runs fast";
}
} // namespace
