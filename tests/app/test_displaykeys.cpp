// Keys that choose how the view shows things: names beside bodies, the seekers' circles, units and corners; and what of
// that the next session takes up.
#include "encountertrajectory.h"
#include "windowfixture.h"

#include <QDialog>
#include <QSettings>

#include "environmentvariable.h"
#include "framegrab.h"
#include "pixels.h"

using namespace sorvane;

namespace {
struct DisplayKeysTest : WindowTest {
    void load(const QString& name, double aside = 0.0) {
        QList<TestSample> samples = encounterSamples();
        for (TestSample& sample : samples)
            sample.threat[1] += aside;
        window.loadEtxyzFile(writeTrajectory(folder.filePath(name), samples, trajectoryHeader("white", "20")));
        loads->hide();
    }
    // What lies over the frame on the screen.
    QRect overlaid() const {
        const QImage shown = onScreen(*view); // before a frame is drawn for the grabbing
        return differingPart(shown, view->grabFramebuffer().convertToFormat(QImage::Format_RGB32));
    }
};

TEST_F(DisplayKeysTest, NamesStandBesideTheBodiesAndGoWithThem) {
    showWindow();
    load("ETXYZ.OUT.pass");
    entry(0, 3)->trigger(); // the target in the middle
    notice->hide();
    ASSERT_TRUE(overlaid().isNull());
    box->setValue(4.0);
    press(Qt::Key_N);
    const QRect atFour = overlaid();
    const QPoint middle = view->rect().center();
    EXPECT_TRUE(atFour.adjusted(-60, -60, 60, 60).contains(middle)) << "beside the target, the threat 22 units away";
    QRect before = atFour;
    const auto expectOthers = [&](const char* after, bool areShown = true) {
        const QRect now = overlaid();
        EXPECT_NE(now, before) << after;
        EXPECT_NE(now.isNull(), areShown) << after;
        before = now;
    };
    slider->setValue(3000);
    expectOthers("time");
    press(Qt::Key_Minus);
    expectOthers("camera");
    entry(0, 0)->trigger();
    expectOthers("hidden", false);
    entry(0, 0)->trigger();
    expectOthers("shown again");
    load("ETXYZ.OUT.second", 30.0);
    expectOthers("another one");
    window.resize(window.width() + 80, window.height() + 80);
    expectOthers("size");
    EXPECT_GT(before.width(), atFour.width()) << "among several, names have the file's before them";
    press(Qt::Key_N);
    EXPECT_TRUE(overlaid().isNull());
}

TEST_F(DisplayKeysTest, NamesKeepClearOfOtherTexts) {
    showWindow();
    load("ETXYZ.OUT.pass");
    entry(0, 3)->trigger();
    QLabel text(view); // where the target's name would be
    text.setStyleSheet("background: black;");
    text.setGeometry(QRect(view->rect().center() + QPoint(0, -80), QSize(200, 80)));
    text.show();
    const auto green = [&] {
        return countPixels(onScreen(*view), [](int r, int g, int) { return g > 150 && r < 80; });
    };
    const int without = green();
    press(Qt::Key_N);
    EXPECT_GT(green(), without + 5);
}

TEST_F(DisplayKeysTest, NamesAndReadoutCostNoFrame) {
    showWindow();
    load("ETXYZ.OUT.pass");
    press(Qt::Key_N);
    press(Qt::Key_H);
    QTest::qWait(700);
    PaintCounter counter;
    view->installEventFilter(&counter);
    for (int i = 1; i <= 10; ++i) {
        box->setValue(0.5 * i);
        QTest::qWait(40);
    }
    EXPECT_LE(counter.paints, 11) << "one for each time";
    QTest::qWait(1100);
    EXPECT_LE(counter.paints, 11) << "and none while nothing changes";
}

TEST_F(DisplayKeysTest, GyroViewShowsAllCirclesOrTheFollowedOnes) {
    showWindow();
    load("ETXYZ.OUT.narrow");
    window.loadEtxyzFile(
        writeTrajectory(folder.filePath("ETXYZ.OUT.wide"), encounterSamples(), trajectoryHeader("white", "10")));
    press(Qt::Key_2);
    const QImage all = grabFrame(*view);
    press(Qt::Key_R);
    EXPECT_EQ(notice->text(), "Gyro view: the circle of the followed engagement only");
    const QImage followed = grabFrame(*view);
    EXPECT_NE(followed, all);
    entry(1, 0)->trigger();
    press(Qt::Key_R);
    EXPECT_EQ(grabFrame(*view), followed) << "as when the other one is hidden";
    entry(1, 0)->trigger();
    EXPECT_EQ(grabFrame(*view), all);
}

TEST_F(DisplayKeysTest, TheReadoutGoesRoundTheCornersClearOfNotices) {
    load("ETXYZ.OUT.pass");
    showWindow();
    press(Qt::Key_H, Qt::ShiftModifier);
    ASSERT_TRUE(readout->isVisible());
    const auto gaps = [&] {
        const QRect& at = readout->geometry();
        return QRect(QPoint(at.x(), at.y()), QPoint(view->width() - 1 - at.right(), view->height() - 1 - at.bottom()));
    };
    EXPECT_TRUE(gaps().left() == 8 && gaps().bottom() == 8);
    press(Qt::Key_H, Qt::ShiftModifier);
    EXPECT_TRUE(gaps().right() == 8 && gaps().bottom() == 8);
    press(Qt::Key_H, Qt::ShiftModifier);
    EXPECT_TRUE(gaps().right() == 8 && gaps().top() == 44);
    window.resize(window.width() + 80, window.height());
    EXPECT_TRUE(QTest::qWaitFor([&] { return gaps().right() == 8; }));
    press(Qt::Key_H, Qt::ShiftModifier);
    EXPECT_TRUE(gaps().left() == 8 && gaps().top() == 44);
    press(Qt::Key_C);
    EXPECT_FALSE(notice->geometry().intersects(readout->geometry()));
    press(Qt::Key_H, Qt::ShiftModifier);
    EXPECT_TRUE(gaps().left() == 8 && gaps().bottom() == 8);
}

TEST_F(DisplayKeysTest, LengthsGetTheNameOfTheUnitAndKeepTheirNumbers) {
    load("ETXYZ.OUT.pass");
    press(Qt::Key_H);
    box->setValue(2.0);
    for (const char* const unit : {"ft", "m", "units"}) {
        press(Qt::Key_U);
        const QString range = QString("Range 60.83 %1 Closing speed 19.7 %1/s Closest approach 10.00 %1 at").arg(unit);
        EXPECT_TRUE(readout->text().simplified().contains(range)) << readout->text().toStdString();
        press(Qt::Key_C);
        EXPECT_EQ(notice->text(), QString("Closest approach: 10.00 %1").arg(unit));
        box->setValue(2.0);
    }
}

// A folder for settings of its own, and a window that goes by them.
struct PreferencesTest : testing::Test {
    QTemporaryDir folder;
    EnvironmentVariable areOn{"SORVANE_NO_SETTINGS", std::nullopt};

    PreferencesTest() { QSettings::setPath(QSettings::NativeFormat, QSettings::UserScope, folder.path()); }

    struct State {
        QString readout;
        QPoint corner;
        int samples = 0;
        QSize help;
        QSize plots;
        bool operator==(const State&) const = default;
    };
    static State stateOf(new_sorvane& window) {
        const auto& view = *window.findChild<AircraftWidget*>("glWidget");
        const auto& readout = *window.findChild<QLabel*>("viewReadout");
        return {
            readout.text().section("Range", 1).section('\n', 0, 0).simplified(), readout.pos(), view.samples(),
            window.findChild<QDialog*>("keyHelp")->size(), window.findChild<QWidget*>("plotWindow")->size()};
    }
    // A session: a window with an engagement and its read-out, in which keys are pressed and the list of keys and
    // the plots are resized.
    State session(const std::function<void(QWidget& view, new_sorvane& window)>& act = {}) const {
        new_sorvane window;
        window.loadEtxyzFile(writeTrajectory(folder.filePath("ETXYZ.OUT.pass"), encounterSamples()));
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        QTest::qWait(50); // the graphics tell their samples with the first frame
        QWidget& view = *window.findChild<AircraftWidget*>("glWidget");
        QTest::keyClick(&view, Qt::Key_H);
        QTest::keyClick(&view, Qt::Key_P);
        if (act)
            act(view, window);
        return stateOf(window);
    }
};

TEST_F(PreferencesTest, TheNextSessionTakesThemUp) {
    const State first = session();
    const State chosen = session([](QWidget& view, new_sorvane& window) {
        for (const Qt::Key key : {Qt::Key_U, Qt::Key_U, Qt::Key_A, Qt::Key_F1})
            QTest::keyClick(&view, key);
        QTest::keyClick(&view, Qt::Key_H, Qt::ShiftModifier);
        window.findChild<QDialog*>("keyHelp")->resize(500, 300);
        window.findChild<QWidget*>("plotWindow")->resize(640, 360);
    });
    EXPECT_EQ(chosen.readout, "100.5 m");
    EXPECT_NE(chosen.corner, first.corner);
    EXPECT_GT(chosen.samples, first.samples);
    EXPECT_EQ(session(), chosen);
    {
        const EnvironmentVariable areOff("SORVANE_NO_SETTINGS", "1");
        EXPECT_EQ(session([](QWidget& view, new_sorvane&) { QTest::keyClick(&view, Qt::Key_U); }).readout, "100.5 ft");
        EXPECT_EQ(session(), first);
    }
    EXPECT_EQ(session(), chosen) << "nothing was written meanwhile";
}

TEST_F(PreferencesTest, WhatIsNoChoiceIsOverlooked) {
    const State first = session();
    for (const int corner : {-1, 4}) {
        SCOPED_TRACE(corner);
        {
            QSettings spoilt("sorvane", "new_sorvane");
            spoilt.setValue("lengthUnit", 3);
            spoilt.setValue("readoutCorner", corner);
            spoilt.setValue("antialiasingSamples", "many");
            spoilt.setValue("geometry/keyHelp", "somewhere");
        }
        EXPECT_EQ(session(), first);
    }
}
} // namespace
