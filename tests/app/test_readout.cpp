// The read-out over the view: its numbers, and that it stays out of pictures.
#include "encountertrajectory.h"
#include "windowfixture.h"

#include <QElapsedTimer>
#include <QProcess>

#include "framegrab.h"

using namespace sorvane;

namespace {
struct ReadoutTest : WindowTest {
    void load() {
        const QByteArray header = trajectoryHeader("white", "20");
        window.loadEtxyzFile(writeTrajectory(folder.filePath("ETXYZ.OUT.pass"), encounterSamples(), header));
    }
    void toggle() { press(Qt::Key_H); }
    QString text() const { return readout->text().simplified(); }
};

TEST_F(ReadoutTest, ShowsTheEncounterAtTheTimeOfTheBox) {
    load();
    toggle();
    // At 2 s the threat is at x = −60, 10 above: range √3700 = 60.83, closing at 20 · 60 / 60.83 = 19.73, and seen from
    // the nose at arccos(−60 / 60.83) = 170.5°. The seeker looks along x, past the target by arctan(10 / 60) = 9.5°.
    box->setValue(2.0);
    EXPECT_EQ(
        text(),
        QString("Time 2.000 s Engagement ETXYZ.OUT.pass Range 60.83 units Closing speed 19.7 units/s Closest approach "
                "10.00 units at 5.000 s Aspect angle 170.5° Nearest to axis target, 9.5° View Threat Playback speed x1 "
                "Frames per second –"));
    box->setValue(7.0);
    EXPECT_TRUE(text().contains("Range 41.23 units Closing speed -19.4 units/s Closest approach 10.00 units at 5.000 s "
                                "Aspect angle 14.0° Nearest to axis nothing in the field View"))
        << text().toStdString();
    // Between samples: √(45² + 10²), closing at 20 · 45 / 46.10, arccos(−45 / 46.10).
    box->setValue(2.75);
    EXPECT_TRUE(text().contains("Range 46.10 units Closing speed 19.5 units/s")) << text().toStdString();
    EXPECT_TRUE(text().contains("Aspect angle 167.5°")) << text().toStdString();
    entry(0, 3)->trigger();
    EXPECT_TRUE(text().contains("View Target"));
    entry(0, 3)->trigger();
    EXPECT_TRUE(text().contains("Engagement ETXYZ.OUT.pass")) << "of the engagement that was selected last";
}

TEST_F(ReadoutTest, SaysWhatTheCommandSays) {
    load();
    toggle();
    QProcess command;
    command.start(QStringLiteral(SORVANE_COMMAND), {"info", folder.filePath("ETXYZ.OUT.pass")});
    ASSERT_TRUE(command.waitForFinished(60000));
    const QString told = QString::fromUtf8(command.readAllStandardOutput()).simplified();
    const auto expectTold = [&](const QString& part) {
        EXPECT_TRUE(told.contains(part)) << part.toStdString() << "\nin\n" << told.toStdString();
    };
    for (const Qt::Key end : {Qt::Key_Home, Qt::Key_End}) {
        press(end);
        const QString range = text().section("Range ", 1).section(" Closest", 0, 0);
        const QString aspect = text().section("angle ", 1).section(" Nearest", 0, 0);
        expectTold(
            (end == Qt::Key_Home ? "start time 0.000 s range " : "end time 10.000 s range ") + range.toLower() +
            " aspect " + aspect);
    }
    expectTold("closest approach time 5.000 s range 10.00 units");
}

TEST_F(ReadoutTest, GivesNoNumbersOutsideTheSamples) {
    QList<TestSample> samples = encounterSamples();
    for (TestSample& sample : samples)
        sample.time += 0.9996;
    window.loadEtxyzFile(writeTrajectoryUntil(folder.filePath("ETXYZ.OUT.longer"), 20.0));
    window.loadEtxyzFile(writeTrajectory(folder.filePath("ETXYZ.OUT.pass"), samples));
    entry(1, 1)->trigger();
    toggle();
    box->setValue(0.5);
    EXPECT_TRUE(
        text().contains("ETXYZ.OUT.pass Encounter begins at 1.000 s Range – Closing speed – Closest approach 10.00 "
                        "units at 6.000 s Aspect angle – Nearest to axis – View"))
        << text().toStdString();
    box->setValue(11.001);
    EXPECT_TRUE(text().contains("Encounter ended at 11.000 s Range –")) << text().toStdString();
    box->setValue(11.0); // the box shows no more digits
    EXPECT_TRUE(text().contains("Range 100.5 units")) << text().toStdString();
}

TEST_F(ReadoutTest, TheEmptySampleThatTheTerrainAddsIsNoEncounter) {
    QList<TestSample> samples = encounterSamples();
    samples.removeFirst();
    window.loadEtxyzFile(writeTrajectory(folder.filePath("ETXYZ.OUT.late"), samples));
    showWindow();
    action("actionShow_Terrain")->trigger();
    view->grabFramebuffer();
    toggle();
    EXPECT_TRUE(text().contains("Closest approach 10.00 units at 5.000 s")) << text().toStdString();
}

TEST_F(ReadoutTest, FollowsWhatIsLoadedReadAgainAndTakenOut) {
    toggle();
    const QString alone = "Time 0.000 s View Threat Playback speed x1 Frames per second –";
    EXPECT_EQ(text(), alone);
    load();
    EXPECT_TRUE(text().contains("Closest approach 10.00 units at 5.000 s"));
    QList<TestSample> samples = encounterSamples();
    for (TestSample& sample : samples)
        sample.threat[2] -= 20.0;
    writeTrajectory(folder.filePath("ETXYZ.OUT.pass"), samples);
    QTest::keyClick(view, Qt::Key_F5);
    EXPECT_TRUE(text().contains("Closest approach 30.00 units at 5.000 s")) << text().toStdString();
    engagements().clear();
    EXPECT_EQ(text(), alone);
}

TEST_F(ReadoutTest, HoldsWhatIsMeasuredForAsLongAsItTellsOfIt) {
    load();
    const auto measured = [this] {
        return std::weak_ptr(engagements().begin()->measured(LengthUnit::Unstated));
    };
    EXPECT_TRUE(measured().expired()) << "nobody tells of it";
    toggle();
    const auto first = measured();
    EXPECT_FALSE(first.expired());
    box->setValue(2.0);
    EXPECT_FALSE(first.expired()) << "the next frame goes by the same";
    toggle();
    EXPECT_TRUE(first.expired());
}

TEST_F(ReadoutTest, IsOffAtStartAndNeverInGrabbedFrames) {
    load();
    showWindow();
    EXPECT_FALSE(readout->isVisible());
    const QImage without = grabFrame(*view);
    toggle();
    EXPECT_TRUE(readout->isVisible());
    EXPECT_TRUE(view->rect().contains(readout->geometry()));
    EXPECT_EQ(grabFrame(*view), without);
    window.resize(window.width(), window.height() + 80);
    const auto isInCorner = [&] {
        return readout->x() == 8 && view->height() - readout->geometry().bottom() - 1 == 8;
    };
    EXPECT_TRUE(QTest::qWaitFor(isInCorner)) << "eight pixels from the view's lower left corner";
    toggle();
    EXPECT_FALSE(readout->isVisible());
    const QString before = readout->text();
    box->setValue(3.0);
    EXPECT_EQ(readout->text(), before) << "hidden, it isn't kept up";
}

TEST_F(ReadoutTest, CountsFramesAndCausesNone) {
    load();
    showWindow();
    toggle();
    QTest::qWait(700); // what showing it has painted
    PaintCounter counter;
    view->installEventFilter(&counter);
    QTest::qWait(1200);
    EXPECT_EQ(counter.paints, 0);
    EXPECT_TRUE(text().endsWith("Frames per second –"));
    playButton->click();
    const auto shown = [&] {
        return text().section(' ', -1).toDouble();
    };
    EXPECT_TRUE(QTest::qWaitFor([&] { return shown() > 1.0; }, 10000));
    counter.paints = 0;
    QElapsedTimer elapsed;
    elapsed.start();
    QTest::qWait(1500);
    const double counted = counter.paints * 1000.0 / static_cast<double>(elapsed.elapsed());
    EXPECT_GT(shown(), counted / 3.0);
    EXPECT_LT(shown(), counted * 3.0);
    toggle();
    toggle();
    EXPECT_TRUE(text().endsWith("Frames per second –")) << "not yet measured anew";
    ASSERT_TRUE(QTest::qWaitFor([&] { return shown() > 1.0; }, 10000));
    playButton->click();
    box->setValue(1.0);
    EXPECT_TRUE(text().endsWith("Playback speed x1 Frames per second –")) << "the clock stands";
}

TEST_F(ReadoutTest, TellsTheSpeedThatIsAskedForAndWhatComesOfIt) {
    loadUntil(25.0);
    showWindow();
    toggle();
    const auto achieved = [&] {
        return text().section("achieved x", 1).section(' ', 0, 0).toDouble();
    };
    // Each tick goes 0.033 s times the rate and draws a frame, however many there are a second.
    const auto expectAchieved = [&](double rate) {
        const auto isAchieved = [&] {
            const double expected = rate * 0.033 * text().section(' ', -1).toDouble();
            return expected > 0.0 && achieved() > 0.6 * expected - 0.01 && achieved() < 1.2 * expected + 0.01;
        };
        EXPECT_TRUE(QTest::qWaitFor(isAchieved, 10000)) << text().toStdString();
    };
    action("actionX0_5")->trigger();
    EXPECT_TRUE(text().contains("Playback speed x0.5 Frames"));
    QTest::qWait(250);
    QElapsedTimer playing;
    playing.start();
    playButton->click();
    box->setValue(1.0);
    const auto isUnknown = [&] {
        return text().contains("Playback speed x0.5, achieved – Frames");
    };
    EXPECT_TRUE(isUnknown());
    EXPECT_TRUE(QTest::qWaitFor([&] { return !isUnknown(); }, 10000));
    EXPECT_GE(playing.elapsed(), 450) << "no number counts the time before";
    expectAchieved(0.5);
    // Round a loop of 0.3 s, going back is no playback.
    for (const auto& [time, key] : {std::pair{1.0, Qt::Key_I}, {1.3, Qt::Key_O}, {1.0, Qt::Key_Backslash}}) {
        box->setValue(time);
        press(key);
    }
    press(Qt::Key_L);
    press(Qt::Key_L);
    expectAchieved(2.0);
    press(Qt::Key_Backslash);
    box->setValue(20.0);
    press(Qt::Key_J);
    press(Qt::Key_J);
    QTest::qWait(50);
    EXPECT_TRUE(text().contains("Playback speed x2 backward, achieved")) << text().toStdString();
    expectAchieved(2.0);
    // A clock that rounding holds gets nowhere.
    QTest::keyClick(view, Qt::Key_Space);
    action("actionX0_1")->trigger();
    box->setValue(1.0);
    QTest::keyClick(view, Qt::Key_Space);
    EXPECT_TRUE(QTest::qWaitFor([&] { return text().contains("x0.05, achieved x0.00"); }, 5000));
}
} // namespace
