// What the view says by itself: how to begin, what could not be loaded, what is true of the moment, how far time runs.
#include "encountertrajectory.h"
#include "windowfixture.h"

#include <QProcess>

#include "framegrab.h"
#include "rows.h"

using namespace sorvane;

namespace {
struct NoticeTest : WindowTest {
    QLabel* const hint = window.findChild<QLabel*>("emptyHint");

    void tick(int count = 1) {
        for (int i = 0; i < count; ++i)
            window.incrementTime();
    }
    static std::string whatCheckSays(const QString& path) {
        QProcess check;
        check.start(QStringLiteral(SORVANE_COMMAND), {"check", path});
        EXPECT_TRUE(check.waitForFinished(60000));
        return (check.readAllStandardOutput() + check.readAllStandardError()).toStdString();
    }
};

TEST_F(NoticeTest, AnEmptyViewSaysHowToBeginUntilTheFirstFile) {
    showWindow();
    EXPECT_TRUE(hint->isVisible());
    EXPECT_EQ(hint->text(), "Drop trajectory files here\nF1 lists the keys");
    EXPECT_TRUE(view->rect().contains(hint->geometry()));
    EXPECT_NE(onScreen(*view), grabFrame(*view)) << "it stays out of pictures";
    loadUntil(5.0);
    EXPECT_FALSE(hint->isVisible());
    engagements().clear();
    EXPECT_TRUE(hint->isVisible());
}

TEST_F(NoticeTest, SaysWhyAFileIsNotLoadedAsItStandsInTheWordsOfTheCheck) {
    const QByteArray record = trajectoryRecord({});
    showWindow();
    // The reason stands in the view, whole or its beginning; the last column is what `sorvane check` says, too.
    for (const auto& [name, text, isLoaded, reason, byTheCheck] :
         Rows<const char*, QByteArray, bool, const char*, const char*>{
             {"missing", {}, false, "missing: there is no such file", "there is no such file"},
             {"wrong.txt", "a\nb\n", false, "wrong.txt: does not look like a trajectory", ""},
             {"odd.txt", "1\n2\n3\n4\n5\n6\n7\n8\n9\n10\n11\n12\n" + record, true,
              "odd.txt: does not look like a trajectory", ""},
             {"ETXYZ.OUT.gz", "\x1F\x8B\x08 packed", false, "ETXYZ.OUT.gz: the file is compressed by gzip",
              "the file is compressed by gzip, which the viewer does not read"},
             {"ETXYZ.OUT.none", trajectoryHeader(), false, "ETXYZ.OUT.none: there are no samples",
              "there are no samples: the viewer refuses the file"},
             {"ETXYZ.OUT.words", trajectoryHeader() + "0 0 x 0 0 0 0 0\n0 0 0 y 0 0\n0 0 z 0 0\n", true,
              "3 numbers could not be read: line 13: \"x\" is not a finite number and reads as 0",
              "\"x\" is not a finite number and reads as 0"},
             {"ETXYZ.OUT.cut", trajectoryHeader() + record.left(record.indexOf('\n') + 1), true,
              "ETXYZ.OUT.cut: the data end within the record", "the data end within the record that begins here"},
             {"stock", trajectoryHeader() + record, true,
              "stock: line 3: the target's radiance file \"/nowhere/tgt_b0001.rad\" does not exist: the stock target "
              "takes its place, and 3 more missing files of the target",
              "does not exist: the stock target takes its place"}}) {
        SCOPED_TRACE(name);
        const QString path = folder.filePath(name);
        if (!text.isNull())
            writeFile(path, text);
        const std::size_t before = engagements().size();
        testing::internal::CaptureStderr();
        window.loadEtxyzFile(path);
        const std::string terminal = testing::internal::GetCapturedStderr();
        EXPECT_EQ(engagements().size() - before, isLoaded ? 1U : 0U);
        ASSERT_TRUE(loads->isVisible());
        EXPECT_TRUE(loads->text().contains(reason)) << loads->text().toStdString();
        EXPECT_NE(terminal.find("new_sorvane: " + path.toStdString() + ": "), std::string::npos) << terminal;
        EXPECT_NE(whatCheckSays(path).find(byTheCheck), std::string::npos);
        QTest::mouseClick(loads, Qt::LeftButton);
        EXPECT_FALSE(loads->isVisible());
    }
}

TEST_F(NoticeTest, FilesWithOneReasonShareALineAndThereAreNeverTooMany) {
    window.resize(800, 560);
    showWindow();
    for (int i = 0; i < 300; ++i)
        window.loadEtxyzFile(folder.filePath(QString("missing%1").arg(i)));
    EXPECT_EQ(loads->text(), "missing0 and 299 more: there is no such file\nA click closes this.");
    for (int i = 0; i < 20; ++i)
        window.loadEtxyzFile(writeFile(
            folder.filePath(QString("ETXYZ.OUT.%1").arg(i)), trajectoryHeader() + QByteArray(1, char('a' + i)) + "\n"));
    EXPECT_TRUE(loads->text().contains("\nand "));
    EXPECT_TRUE(view->rect().contains(loads->geometry()));
    window.resize(500, 560);
    EXPECT_TRUE(QTest::qWaitFor([&] { return view->rect().contains(loads->geometry()); })) << "broken anew";
}

TEST_F(NoticeTest, NoticesOfAMomentGoWithIt) {
    window.loadEtxyzFile(writeTrajectory(folder.filePath("ETXYZ.OUT.1"), encounterSamples()));
    showWindow();
    press(Qt::Key_C);
    EXPECT_EQ(notice->text(), "Closest approach: 10.00 units");
    const std::function<void()> moves[] = {
        [&] { slider->setValue(7000); },
        [&] { box->setValue(7.5); },
        [&] { tick(); },
    };
    for (const auto& move : moves) {
        press(Qt::Key_BracketLeft);
        EXPECT_TRUE(notice->isVisible());
        move();
        EXPECT_FALSE(notice->isVisible()) << notice->text().toStdString();
    }
    press(Qt::Key_End);
    press(Qt::Key_BracketRight);
    EXPECT_EQ(notice->text(), "No event after 10.000 s");
    press(Qt::Key_Home);
    press(Qt::Key_BracketLeft);
    EXPECT_EQ(notice->text(), "No event before 0.000 s");
    action("actionX0_5")->trigger();
    EXPECT_EQ(notice->text(), "Playback speed x0.5");
    box->setValue(3.0);
    EXPECT_TRUE(notice->isVisible()) << "a speed is not of the moment";
    press(Qt::Key_L, Qt::ShiftModifier);
    press(Qt::Key_L, Qt::ShiftModifier);
    EXPECT_EQ(notice->text(), "Shuttle forward x1/4");
    press(Qt::Key_J);
    EXPECT_EQ(notice->text(), "Shuttle backward x1");
}

TEST_F(NoticeTest, TheClockRunsToTheEndOfALongEngagementOnDemand) {
    loadUntil(169.9);
    showWindow();
    const QString end = "ETXYZ.OUT.1 ends at 169.900 s, the clock at 29.999 s: E lets it run to the end";
    EXPECT_TRUE(loads->text().contains(end)) << loads->text().toStdString();
    box->setValue(29.99);
    press(Qt::Key_Space);
    tick(3);
    EXPECT_EQ(notice->text(), "The clock ends at 29.999 s: E lets it run to the end of the engagement");
    press(Qt::Key_E);
    EXPECT_FALSE(loads->text().contains(end));
    EXPECT_EQ(box->maximum(), 169.9);
    tick();
    EXPECT_GT(box->value(), 30.0);
    press(Qt::Key_End);
    EXPECT_EQ(box->value(), 169.9);
    EXPECT_EQ(view->currentTime(), 169.9);
    EXPECT_TRUE(timer->isActive());
    tick();
    EXPECT_FALSE(timer->isActive()) << "the clock ends as ever, at the box's maximum";
    EXPECT_EQ(box->value(), 169.9);
    loadUntil(200.0, "ETXYZ.OUT.2");
    EXPECT_EQ(box->maximum(), 200.0) << "for this session, whatever is loaded";
}

TEST_F(NoticeTest, ASpeedAtWhichRoundingHoldsTheClockSaysSo) {
    loadUntil(20.0);
    showWindow();
    action("actionX0_1")->trigger();
    action("actionX0_5")->trigger();
    press(Qt::Key_Space);
    timer->stop();
    timer->start(1000000);
    tick(3);
    EXPECT_EQ(notice->text(), "Playback speed x0.05");
    box->setValue(1.0);
    tick(2);
    EXPECT_EQ(box->value(), 1.0);
    EXPECT_EQ(notice->text(), "At playback speed x0.05 rounding holds the clock at 1.000 s: Shift+L plays slowly");
    // The slowest shuttle leaves it, in exact steps.
    for (int i = 0; i < 6; ++i)
        press(Qt::Key_L, Qt::ShiftModifier);
    tick(1000);
    EXPECT_NEAR(box->value(), 1.0 + 1000 * 0.033 / 32.0, 0.0021);
}
} // namespace
