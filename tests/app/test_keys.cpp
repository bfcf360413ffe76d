// The keys of the window, pressed for real.
#include "encountertrajectory.h"
#include "windowfixture.h"

#include <QDialog>
#include <QMenuBar>
#include <QScrollArea>

#include "rows.h"

using namespace sorvane;

namespace {
constexpr double kBoxStep = 0.0011; // box and slider can be a millisecond off

struct KeyTest : WindowTest {
    QDialog* const help = window.findChild<QDialog*>("keyHelp");

    void tick() {
        timer->stop();
        window.incrementTime();
    }
    void load(const QList<TestSample>& samples) {
        window.loadEtxyzFile(writeTrajectory(folder.filePath("ETXYZ.OUT.1"), samples));
    }
};

TEST_F(KeyTest, SpacePlaysAtTheSpeedAndPauses) {
    showWindow();
    loadUntil(20.0);
    action("actionX10")->trigger();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
    EXPECT_TRUE(timer->isActive());
    EXPECT_EQ(timer->interval(), 33);
    tick();
    EXPECT_NEAR(box->value(), 0.33, kBoxStep);
    playButton->click();
    press(Qt::Key_Space);
    EXPECT_FALSE(timer->isActive());
}

TEST_F(KeyTest, TheShuttleLeavesTheSpeedAlone) {
    loadUntil(20.0);
    action("actionX10")->trigger();
    box->setValue(1.0);
    press(Qt::Key_L);
    press(Qt::Key_L);
    EXPECT_TRUE(timer->isActive());
    tick();
    EXPECT_NEAR(box->value(), 1.066, kBoxStep);
    press(Qt::Key_J);
    tick();
    EXPECT_NEAR(box->value(), 1.033, 2 * kBoxStep);
    press(Qt::Key_K);
    EXPECT_FALSE(timer->isActive());
    press(Qt::Key_J);
    box->setValue(0.02);
    window.incrementTime();
    EXPECT_EQ(box->value(), 0.0);
    EXPECT_FALSE(timer->isActive()) << "backward stops at 0";
    press(Qt::Key_J);
    press(Qt::Key_Space); // pauses
    press(Qt::Key_Space);
    tick();
    EXPECT_NEAR(box->value(), 0.33, kBoxStep) << "Space runs forward at the speed";
}

TEST_F(KeyTest, ArrowsVisitTheSamplesThatAreMoreThanAMillisecondApart) {
    QList<TestSample> samples;
    for (const double time : {0.0, 0.0004, 0.0011, 0.0021, 0.5, 0.5005, 1.0, 31.0})
        samples << TestSample{.time = time};
    load(samples);
    for (const double expected : {0.0011, 0.5, 1.0, 1.0}) { // 31 s is past what the box can show
        press(Qt::Key_Right);
        EXPECT_NEAR(box->value(), expected, kBoxStep);
    }
    for (const double expected : {0.5005, 0.0021, 0.0004, 0.0004}) {
        press(Qt::Key_Left);
        EXPECT_NEAR(box->value(), expected, kBoxStep);
    }
    press(Qt::Key_Right); // 0.0021: more than 1 ms after 0.0004
    slider->setValue(300);
    press(Qt::Key_Right);
    EXPECT_NEAR(box->value(), 0.5, kBoxStep) << "from where the slider went, not from the last step";
}

TEST_F(KeyTest, ArrowsMissNoSampleOfARateThatTheBoxCannotHold) {
    QList<TestSample> samples;
    for (int i = 0; i <= 200; ++i)
        samples << TestSample{.time = i / 30.0};
    load(samples);
    for (int i = 1; i <= 200; ++i) {
        press(Qt::Key_Right);
        ASSERT_NEAR(box->value(), i / 30.0, kBoxStep);
    }
    for (int i = 199; i >= 0; --i) {
        press(Qt::Key_Left);
        ASSERT_NEAR(box->value(), i / 30.0, kBoxStep);
    }
}

TEST_F(KeyTest, SecondsAndEndsStayInsideTheEngagements) {
    loadUntil(2.5);
    for (const auto& [key, modifier, expected] : Rows<Qt::Key, Qt::KeyboardModifier, double>{
             {Qt::Key_Right, Qt::ControlModifier, 1.0},
             {Qt::Key_Right, Qt::ShiftModifier, 1.1},
             {Qt::Key_Right, Qt::ControlModifier, 2.1},
             {Qt::Key_Right, Qt::ControlModifier, 2.5},
             {Qt::Key_Home, Qt::NoModifier, 0.0},
             {Qt::Key_Left, Qt::ControlModifier, 0.0},
             {Qt::Key_End, Qt::NoModifier, 2.5},
             {Qt::Key_Left, Qt::ControlModifier, 1.5}}) {
        press(key, modifier);
        EXPECT_NEAR(box->value(), expected, kBoxStep);
    }
    box->setValue(29.999); // the slider, which moves to its end, sets the box back
    box->setValue(29.999); // the end of the clock
    press(Qt::Key_Right, Qt::ControlModifier);
    EXPECT_EQ(box->value(), 29.999) << "forward there is nothing";
    press(Qt::Key_Left, Qt::ShiftModifier);
    EXPECT_NEAR(box->value(), 2.4, kBoxStep);
}

TEST_F(KeyTest, BracketsVisitTheEventsAndCTheClosestApproach) {
    load(encounterSamples());
    showWindow();
    for (const double expected : {2.0, 4.0, 5.0, 10.0, 10.0}) {
        press(Qt::Key_BracketRight);
        EXPECT_NEAR(box->value(), expected, kBoxStep);
    }
    for (const double expected : {5.0, 4.0, 2.0, 0.0, 0.0}) {
        press(Qt::Key_BracketLeft);
        EXPECT_NEAR(box->value(), expected, kBoxStep);
    }
    press(Qt::Key_C);
    EXPECT_NEAR(box->value(), 5.0, kBoxStep);
}

TEST_F(KeyTest, EventsAtOneTimeAreOneStep) {
    // The threat comes nearest at the end, where a flare appears as well.
    load(
        {{.time = 0.0},
         {.time = 1.0, .flares = {{.id = 7}, {.id = 4}}},
         {.time = 2.0, .threat = {0.0, 0.0, -900.0}, .flares = {{.id = 9}}}});
    showWindow();
    for (const char* const expected :
         {"Flare 7, Flare 4: 1.000 s", "Flare 9, Closest approach, Last sample: 2.000 s"}) {
        press(Qt::Key_BracketRight);
        EXPECT_EQ(notice->text(), expected);
    }
}

TEST_F(KeyTest, WhatTheTimeBoxCannotShowIsNoPlaceToGo) {
    load({{.time = -1.0}, {.time = 20.0}, {.time = 31.0, .threat = {0.0, 0.0, -900.0}}});
    showWindow();
    press(Qt::Key_C);
    EXPECT_EQ(box->value(), 0.0);
    EXPECT_EQ(notice->text(), "Closest approach: 31.000 s, which the time box can't show");
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_BracketLeft, Qt::Key_BracketRight}) {
        press(key);
        EXPECT_EQ(box->value(), 0.0);
    }
    press(Qt::Key_End);
    EXPECT_EQ(box->value(), 29.999);
    press(Qt::Key_Left);
    EXPECT_EQ(box->value(), 20.0);
}

TEST_F(KeyTest, DigitsChooseViewsAndNeverUncheckOne) {
    loadUntil(10.0, "ETXYZ.OUT.1");
    loadUntil(10.0, "ETXYZ.OUT.2");
    press(Qt::Key_3);
    EXPECT_TRUE(entry(0, 3)->isChecked());
    EXPECT_EQ(view->viewMode(), ViewTarget);
    const auto eye = [&] {
        return view->camera().eye().ElementAt(0);
    };
    QTest::mousePress(view, Qt::RightButton, {}, {10, 10});
    QTest::mouseMove(view, {60, 10});
    QTest::mouseRelease(view, Qt::RightButton, {}, {60, 10});
    QWheelEvent wheel({5, 5}, {5, 5}, {}, {0, 120}, Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
    QApplication::sendEvent(view, &wheel);
    ASSERT_NE(eye(), 50.0F);
    press(Qt::Key_3);
    EXPECT_EQ(eye(), 50.0F) << "the camera is back at its start";
    EXPECT_TRUE(entry(0, 3)->isChecked());

    entry(1, 2)->trigger();
    entry(1, 2)->trigger(); // unchecks it: nothing is selected
    press(Qt::Key_4);
    EXPECT_TRUE(entry(1, 4)->isChecked()) << "of the engagement that was selected last";
    press(Qt::Key_2);
    EXPECT_TRUE(entry(1, 2)->isChecked());
    press(Qt::Key_1);
    EXPECT_EQ(view->viewMode(), ViewThreat);
    EXPECT_TRUE(entry(1, 1)->isChecked());
}

TEST_F(KeyTest, LoopsBetweenInAndOutPoint) {
    loadUntil(10.0);
    showWindow();
    box->setValue(2.0);
    press(Qt::Key_I);
    box->setValue(3.0);
    press(Qt::Key_O);
    EXPECT_EQ(notice->text(), "Loop off, 2.000 s to 3.000 s");
    press(Qt::Key_Backslash);
    EXPECT_EQ(notice->text(), "Loop on, 2.000 s to 3.000 s");
    tick();
    EXPECT_NEAR(box->value(), 2.0, kBoxStep);
}

TEST(KeyHelp, FitsTheScreenHoweverLargeTheLettersAre) {
    const QFont before = QApplication::font();
    QApplication::setFont(QFont("sans-serif", 40));
    const new_sorvane window;
    const QSize size = window.findChild<QDialog*>("keyHelp")->size();
    QApplication::setFont(before);
    EXPECT_LE(size.height(), window.screen()->availableSize().height());
    EXPECT_LE(size.width(), window.screen()->availableSize().width());
}

TEST_F(KeyTest, WindowKeys) {
    showWindow();
    press(Qt::Key_F11);
    EXPECT_TRUE(window.isFullScreen());
    press(Qt::Key_F11);
    EXPECT_FALSE(window.isFullScreen());
    for (const Qt::Key key : {Qt::Key_F1, Qt::Key_Question}) {
        press(key);
        ASSERT_TRUE(help->isVisible());
        EXPECT_FALSE(help->isModal());
        QTest::keyClick(help, key);
        EXPECT_FALSE(help->isVisible());
    }
    press(Qt::Key_F1);
    EXPECT_TRUE(window.isActiveWindow()) << "the viewer keeps the keyboard";
    QTest::keyClick(help, Qt::Key_H);
    EXPECT_TRUE(readout->isVisible()) << "also where the list has it";
    QTest::keyClick(help, Qt::Key_H);
    QStringList texts;
    for (const QLabel* const label : help->findChildren<QLabel*>())
        texts << label->text();
    EXPECT_EQ(
        texts.mid(0, 3), (QStringList{"<b>Playback</b>", "Space", "play forward at the playback speed, or pause"}));
    for (const char* const text : {"F1, ?", "<b>Mouse</b>", "Wheel"})
        EXPECT_TRUE(texts.contains(text)) << text;
    const auto* const list = help->findChild<QScrollArea*>();
    EXPECT_LE(help->height(), help->screen()->availableSize().height());
    EXPECT_TRUE(QTest::qWaitFor([&] { return list->viewport()->width() >= list->widget()->width(); })) << "uncut";
    EXPECT_EQ(help->windowTitle(), "Keys");
    QTest::keyClick(help, Qt::Key_Escape);
    EXPECT_FALSE(help->isVisible());
    for (const char* const told :
         {"Anti-aliasing: 2 samples a pixel", "Anti-aliasing: 4 samples a pixel", "Anti-aliasing off"}) {
        press(Qt::Key_A);
        EXPECT_EQ(notice->text(), told);
    }
    press(Qt::Key_S);
    EXPECT_TRUE(view->lineStyles());
    bool isAsked = false;
    answerDialog([&](QFileDialog& dialog) {
        isAsked = dialog.windowTitle() == "Save Image File";
        QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    press(Qt::Key_F12);
    EXPECT_TRUE(isAsked);
}

TEST_F(KeyTest, FocusedControlsKeepTheKeysThatTheyUse) {
    load(encounterSamples());
    showWindow();
    focus(slider);
    QTest::keyClick(slider, Qt::Key_Right);
    EXPECT_EQ(slider->value(), 1);
    QTest::keyClick(slider, Qt::Key_PageUp);
    EXPECT_EQ(slider->value(), 11);
    QTest::keyClick(slider, Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(slider->value(), 10);
    QTest::keyClick(slider, Qt::Key_End);
    EXPECT_EQ(slider->value(), 10000);
    QTest::keyClick(slider, Qt::Key_Home);
    QTest::keyClick(slider, Qt::Key_C);
    EXPECT_EQ(slider->value(), 5000);

    focus(playButton);
    QTest::keyClick(playButton, Qt::Key_Space);
    EXPECT_TRUE(timer->isActive()) << "pressed once, by the button";
    QTest::keyClick(playButton, Qt::Key_K);
    EXPECT_FALSE(timer->isActive());
    QTest::keyClick(playButton, Qt::Key_Home);
    QTest::keyClick(playButton, Qt::Key_Right);
    EXPECT_NEAR(box->value(), 1.0, kBoxStep);
    EXPECT_TRUE(playButton->hasFocus());

    focus(box);
    box->selectAll();
    QTest::keyClick(box, Qt::Key_3);
    EXPECT_EQ(box->value(), 3.0);
    EXPECT_FALSE(entry(0, 3)->isChecked());
    QTest::keyClick(box, Qt::Key_Home);
    QTest::keyClick(box, Qt::Key_End);
    QTest::keyClick(box, Qt::Key_Right);
    QTest::keyClick(box, Qt::Key_Left, Qt::ControlModifier);
    EXPECT_EQ(box->value(), 3.0);
    QTest::keyClick(box, Qt::Key_Up);
    EXPECT_NEAR(box->value(), 3.01, kBoxStep);
    QTest::keyClick(box, Qt::Key_Space);
    EXPECT_TRUE(timer->isActive());
    QTest::keyClick(box, Qt::Key_K);
    EXPECT_FALSE(timer->isActive());
    QTest::keyClick(box, Qt::Key_C);
    EXPECT_NEAR(box->value(), 5.0, kBoxStep);
}

TEST_F(KeyTest, MenusKeepTheirKeys) {
    showWindow();
    auto* const bar = window.findChild<QMenuBar*>("menuBar");
    auto* const menu = window.findChild<QMenu*>("menuView");
    QTest::mouseClick(bar, Qt::LeftButton, {}, bar->actionGeometry(menu->menuAction()).center());
    ASSERT_TRUE(QTest::qWaitForWindowExposed(menu));
    for (const Qt::Key key : {Qt::Key_H, Qt::Key_L, Qt::Key_Space, Qt::Key_F1})
        QTest::keyClick(menu, key);
    EXPECT_FALSE(readout->isVisible());
    EXPECT_FALSE(timer->isActive());
    EXPECT_FALSE(help->isVisible());
    menu->close();
    press(Qt::Key_H);
    EXPECT_TRUE(readout->isVisible());
}

TEST_F(KeyTest, HeldKeysRepeatStepsOnly) {
    load(encounterSamples());
    const auto hold = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        for (const bool isRepeat : {false, true, true, true}) {
            QKeyEvent event(QEvent::KeyPress, key, modifiers, {}, isRepeat);
            QApplication::sendEvent(view, &event);
        }
    };
    for (const auto& [key, modifier, expected] : Rows<Qt::Key, Qt::KeyboardModifier, double>{
             {Qt::Key_Right, Qt::NoModifier, 4.0},
             {Qt::Key_Right, Qt::ShiftModifier, 4.4},
             {Qt::Key_Left, Qt::ControlModifier, 0.4},
             {Qt::Key_BracketRight, Qt::NoModifier, 10.0}}) {
        hold(key, modifier);
        EXPECT_NEAR(box->value(), expected, kBoxStep) << key;
    }
    // What switches something acts once: an even number of times would undo it.
    hold(Qt::Key_Space);
    EXPECT_TRUE(timer->isActive());
    timer->stop();
    hold(Qt::Key_H);
    EXPECT_TRUE(readout->isVisibleTo(view));
    hold(Qt::Key_L);
    timer->stop();
    box->setValue(1.0);
    window.incrementTime();
    EXPECT_NEAR(box->value(), 1.033, kBoxStep) << "not faster and faster";
    press(Qt::Key_F1);
    QKeyEvent held(QEvent::KeyPress, Qt::Key_F1, Qt::NoModifier, {}, true);
    QApplication::sendEvent(help, &held);
    EXPECT_TRUE(help->isVisible()) << "the key that opened the list is still held";
}
} // namespace
