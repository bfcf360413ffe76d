// Recording through the real window, by real clicks; the movies are read back.
#include "windowfixture.h"

#include <csignal>

#include <QLayout>

#include "fulldisk.h"
#include "moviereader.h"
#include "qvideoencoder.h"
#include "recordingtexts.h"
#include "rows.h"

using namespace sorvane;

namespace {
struct RecordingTest : WindowTest {
    RecordingTest() { std::signal(SIGXFSZ, SIG_IGN); } // as a full disk, which kills nobody

    QPushButton* const recordButton = window.findChild<QPushButton*>("recordButton");

    // Presses Record and answers its dialog with `path`.
    void record(const QString& path) {
        answerDialog([path](QFileDialog& dialog) {
            EXPECT_EQ(dialog.windowTitle(), "Save Movie File");
            EXPECT_EQ(
                dialog.nameFilters(), (QStringList{"AVI Files (*.avi)", "MPEG Files (*.mpg)", "All Files (*.*)"}));
            enterName(dialog, path);
        });
        QTest::mouseClick(recordButton, Qt::LeftButton);
    }
    // Stops the clock's own ticks and makes `count` by hand.
    void tick(int count) {
        timer->stop();
        for (int i = 0; i < count; ++i)
            window.incrementTime();
    }
};

TEST_F(RecordingTest, TheViewStartsAtASizeThatAMovieCanHave) {
    showWindow();
    EXPECT_EQ(window.size(), QSize(846, 586));
    EXPECT_EQ(view->width() % 8, 0) << view->width();
    EXPECT_EQ(view->height() % 8, 0) << view->height();
    EXPECT_EQ(window.sizeIncrement(), QSize(8, 8));
    EXPECT_EQ(window.baseSize(), window.size() - view->size());
}

TEST_F(RecordingTest, AWindowThatFillsTheScreenGivesTheViewASizeThatAMovieCanHave) {
    showWindow();
    const QMargins before = window.centralWidget()->layout()->contentsMargins();
    for (const Qt::WindowState state : {Qt::WindowMaximized, Qt::WindowFullScreen}) {
        for (const QSize& size : {QSize(1021, 763), QSize(1026, 770), QSize(1000, 801)}) {
            window.resize(size);
            window.setWindowState(state);
            QTest::qWait(100);
            EXPECT_EQ(view->width() % 8 + view->height() % 8, 0) << view->width() << " x " << view->height();
            EXPECT_GT(view->width(), size.width() - 22 - 8) << "no more is given up than needed";
        }
        record(folder.filePath(QStringLiteral("%1.avi").arg(state)));
        EXPECT_FALSE(notice->text().startsWith("Not recording")) << qPrintable(notice->text());
        QTest::keyClick(view, Qt::Key_R, Qt::ControlModifier);
        window.setWindowState(Qt::WindowNoState);
        window.resize(901, 700);
        EXPECT_TRUE(QTest::qWaitFor([&] { return window.centralWidget()->layout()->contentsMargins() == before; }));
    }
}

TEST_F(RecordingTest, AKeyBeginsAndEndsIt) {
    showWindow();
    loadUntil(20.0);
    const QString path = folder.filePath("a.avi");
    answerDialog([path](QFileDialog& dialog) { enterName(dialog, path); });
    press(Qt::Key_R, Qt::ControlModifier);
    tick(3);
    press(Qt::Key_R, Qt::ControlModifier);
    const int frames = notice->text().section(' ', 1, 1).toInt();
    EXPECT_EQ(notice->text(), QStringLiteral("Recorded %1 frames: %2").arg(frames).arg(path));
    EXPECT_GE(frames, 3);
    EXPECT_EQ(readMovie(path).frames.size(), static_cast<std::size_t>(frames));
    record(folder.filePath("missing/b.avi")); // refused
    answerDialog([this](QFileDialog& dialog) { enterName(dialog, folder.filePath("c.avi")); });
    QTest::keyClick(view, Qt::Key_R, Qt::ControlModifier);
    EXPECT_TRUE(QFile::exists(folder.filePath("c.avi"))) << "a refused recording is none that the key could end";
}

TEST_F(RecordingTest, WhereTheClockStandsANoticeNamesTheKeyThatEndsIt) {
    showWindow();
    loadUntil(40.0);
    box->setValue(29.999);
    record(folder.filePath("a.avi"));
    const QString told =
        "The clock ends at 29.999 s: E lets it run to the end of the engagement, Ctrl+R ends the recording";
    EXPECT_TRUE(QTest::qWaitFor([&] { return notice->text() == told; })) << qPrintable(notice->text());
}

TEST_F(RecordingTest, EveryTickIsAFrameUprightAndInItsColours) {
    showWindow();
    loadUntil(20.0);
    const QString path = folder.filePath("with blanks: and ümlauts.avi");
    record(path);
    EXPECT_TRUE(timer->isActive());
    EXPECT_TRUE(notice->isVisible());
    const int ticks = static_cast<int>(box->value() / 0.033 + 0.5); // the clock may have ticked already
    tick(25);
    const QImage last = view->grabFramebuffer();
    tick(1);
    EXPECT_EQ(notice->text(), QStringLiteral("● %1").arg(ticks + 26));
    window.findChild<QSlider*>("horizontalSlider")->setValue(20000);
    tick(1); // past the end: the recording ends with the playback
    EXPECT_FALSE(notice->isVisible());
    const Movie movie = readMovie(path);
    EXPECT_EQ(movie.container, "avi");
    EXPECT_EQ(movie.frames.size(), static_cast<std::size_t>(ticks + 27));
    EXPECT_EQ(movie.framesPerSecond, 30.0);
    ASSERT_GT(movie.isKeyFrame.size(), 20U);
    for (std::size_t i = 0; i < movie.isKeyFrame.size(); ++i)
        EXPECT_EQ(movie.isKeyFrame[i], i % 20 == 0) << i;
    // The frame of the last tick but one shows what the view showed: compared as the mean of each quarter.
    const QImage recorded = movie.frames[static_cast<std::size_t>(ticks + 25)];
    ASSERT_EQ(recorded.size(), view->size());
    const auto quarter = [](const QImage& picture, int i) {
        const QSize half = picture.size() / 2;
        const QRgb mean = picture.copy(QRect(QPoint(i % 2 * half.width(), i / 2 * half.height()), half))
                              .scaled(1, 1, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                              .pixel(0, 0);
        return std::array{qRed(mean), qGreen(mean), qBlue(mean)};
    };
    for (int i = 0; i < 4; ++i)
        for (std::size_t c = 0; c < 3; ++c)
            EXPECT_NEAR(quarter(recorded, i)[c], quarter(last, i)[c], 4) << "quarter " << i << " colour " << c;
}

TEST_F(RecordingTest, ANewNameFinishesTheOldMovie) {
    showWindow();
    loadUntil(20.0);
    // The newer formats' codecs hold back more pictures than these.
    const QStringList names = {"first.avi", "second.mp4", "third.webm", "fourth.avi"};
    std::size_t told = 0;
    for (const QString& name : names) {
        record(folder.filePath(name));
        if (told != 0) {
            EXPECT_EQ(readMovie(folder.filePath(names.at(names.indexOf(name) - 1))).frames.size(), told);
        }
        tick(5);
        told = notice->text().section(' ', 1).toULongLong();
        EXPECT_GE(told, 5U);
    }
}

TEST_F(RecordingTest, PausingOrACancelledDialogGoOnWithTheSameMovie) {
    showWindow();
    loadUntil(20.0);
    record(folder.filePath("a.avi"));
    tick(2);
    answerDialog([](QFileDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    QTest::mouseClick(recordButton, Qt::LeftButton);
    timer->start(); // as it was
    playButton->click();
    EXPECT_FALSE(timer->isActive());
    playButton->click();
    EXPECT_TRUE(timer->isActive());
    timer->stop();
    const int before = notice->text().section(' ', 1).toInt();
    tick(1);
    EXPECT_EQ(notice->text(), QStringLiteral("● %1").arg(before + 1));
    slider->setValue(20000);
    tick(1);
    EXPECT_EQ(readMovie(folder.filePath("a.avi")).frames.size(), static_cast<std::size_t>(before + 2));
}

TEST_F(RecordingTest, EveryTickOfTheShuttleIsAFrameOfTheSameMovieAndAnotherMovieLeavesIt) {
    showWindow();
    loadUntil(20.0);
    record(folder.filePath("a.avi"));
    tick(1);
    const auto frames = [&] {
        return notice->text().section(' ', 1).toInt();
    };
    for (const auto& [key, from, to] : Rows<Qt::Key, double, double>{
             {Qt::Key_J, 5.0, 4.967},
             {Qt::Key_J, 5.0, 4.934},
             {Qt::Key_L, 5.0, 5.033},
             {Qt::Key_J, 0.01, 0.0},
             {Qt::Key_Space, 1.0, 1.033}}) {
        const int before = frames();
        box->setValue(from);
        press(key);
        tick(1);
        EXPECT_NEAR(box->value(), to, 0.0021);
        EXPECT_EQ(frames(), before + 1) << "to " << to;
    }
    press(Qt::Key_J);
    record(folder.filePath("b.avi"));
    box->setValue(5.0);
    tick(1);
    EXPECT_NEAR(box->value(), 5.033, 0.0021);
}

TEST_F(RecordingTest, ARefusedMovieIsNoticedAndTheClockRuns) {
    loadUntil(20.0);
    showWindow();
    window.resize(window.width() + 3, window.height());
    ASSERT_TRUE(QTest::qWaitFor([&] { return view->width() % 8 == 3; }));
    record(folder.filePath("a.avi"));
    EXPECT_TRUE(timer->isActive());
    EXPECT_TRUE(notice->isVisible());
    EXPECT_EQ(
        notice->text(), QStringLiteral("Not recording: the sides of a movie are multiples of 8. The view is 827 × %1; "
                                       "resize the window until it is 824 × %1.")
                            .arg(view->height()));
    tick(2);
    EXPECT_TRUE(notice->text().startsWith("Not recording")) << qPrintable(notice->text());
    notice->findChild<QTimer*>()->stop();
    tick(1);
    EXPECT_FALSE(notice->text().startsWith("●")) << "no mark of a recording";
    EXPECT_FALSE(QFile::exists(folder.filePath("a.avi")));
}

TEST_F(RecordingTest, ARefusalSaysWhy) {
    const QString path = folder.filePath("missing/a.avi");
    QVideoEncoder encoder;
    encoder.createFile(path, 64, 48, 1000000, 20, 30);
    EXPECT_EQ(refusalText(encoder, {64, 48}), "Not recording: " + path + " could not be opened for writing.");
    encoder.createFile(folder.filePath("a.avi"), 64, 48, 1000000, 20, 30);
    EXPECT_EQ(refusalText(encoder, {64, 48}), "");
}

TEST_F(RecordingTest, AWriteErrorIsNoticedAndTheClockGoesOn) {
    showWindow();
    loadUntil(20.0);
    const QString path = folder.filePath("a.avi");
    const FullDisk fullDisk(20000);
    for (const QString& each : {folder.filePath("earlier.avi"), path}) {
        record(each);
        for (int i = 0; i < 60; ++i) {
            action("actionShow_Grid")->toggle(); // pictures that differ take room
            tick(1);
        }
        EXPECT_EQ(
            notice->text(),
            QStringLiteral("The recording is damaged: %1 could not be written. Is the disk full?").arg(each));
    }
    const double before = box->value();
    tick(1);
    EXPECT_GT(box->value(), before);
    auto* const until = notice->findChild<QTimer*>();
    until->start(1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return notice->text() == "● damaged"; })) << "and no number any more";
    slider->setValue(20000);
    tick(1);
    // What a decoder makes of the file; the last frame may be cut.
    const int shown = static_cast<int>(readMovie(path).frames.size());
    const QString text = notice->text();
    const int held = text.section(" holds ", 1).section(' ', 0, 0).toInt();
    EXPECT_TRUE(held > 0 && (held == shown || held == shown - 1)) << qPrintable(text);
    EXPECT_EQ(
        text,
        QStringLiteral("The recording is damaged: %1 holds %2 of 62 frames. Is the disk full?").arg(path).arg(held));
}

TEST_F(RecordingTest, AWriteErrorAtClosingIsNoticed) {
    showWindow();
    loadUntil(20.0);
    for (const char* const name : {"first.avi", "second.avi"}) {
        const QString path = folder.filePath(name);
        slider->setValue(0);
        record(path);
        tick(1);
        slider->setValue(20000);
        const FullDisk fullDisk(1); // few frames wait in memory for a full buffer or the movie's end
        tick(1);
        EXPECT_TRUE(notice->text().startsWith("The recording is damaged: " + path + " holds "))
            << qPrintable(notice->text());
    }
}

TEST_F(RecordingTest, AViewOfAnotherSizeIsToldOnceForEach) {
    showWindow();
    loadUntil(20.0);
    record(folder.filePath("a.avi"));
    tick(1);
    const QSize movie = view->size();
    for (const auto& [added, end] : Rows<QSize, const char*>{
             {{40, 0}, "it shows the view stretched."},
             {{40, 16}, "it shows the upper part only. Make the view as large as before."}}) {
        const QSize size = movie + added;
        window.resize(window.size() + size - view->size());
        ASSERT_TRUE(QTest::qWaitFor([&view = view, &size] { return view->size() == size; }));
        notice->findChild<QTimer*>()->stop();
        tick(1);
        EXPECT_EQ(
            notice->text(), QStringLiteral("The view is now %1 × %2, the movie stays %3 × %4: ")
                                    .arg(size.width())
                                    .arg(size.height())
                                    .arg(movie.width())
                                    .arg(movie.height()) +
                                end);
        notice->findChild<QTimer*>()->stop();
        tick(1);
        EXPECT_TRUE(notice->text().startsWith("●")) << qPrintable(notice->text());
    }
}

TEST_F(RecordingTest, ANoticeHidesTheMarkForSomeSecondsAndFitsTheView) {
    showWindow();
    loadUntil(20.0);
    record(folder.filePath("a.avi"));
    tick(1);
    const QString mark = notice->text();
    QTest::keyClick(view, Qt::Key_Backslash);
    EXPECT_EQ(notice->text(), "Loop on, 0.000 s to 20.000 s");
    tick(1);
    EXPECT_EQ(notice->text(), "Loop on, 0.000 s to 20.000 s") << "a new mark waits";
    auto* const until = notice->findChild<QTimer*>();
    EXPECT_NEAR(until->remainingTime(), 6000, 1000);
    until->start(1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return notice->text().startsWith("●") && notice->text() != mark; }));
    window.resize(300, window.height());
    ASSERT_TRUE(QTest::qWaitFor([&] { return view->width() < 300; }));
    timer->stop();
    record(folder.filePath("a name that is longer than the view is wide, whatever the font may be.nothing"));
    EXPECT_TRUE(view->rect().contains(notice->geometry())) << notice->width();
}

TEST(Recording, ClosingTheWindowFinishesTheMovie) {
    QTemporaryDir folder;
    const QString path = folder.filePath("a.avi");
    {
        struct Window : RecordingTest {
            void TestBody() override {}
        } test;
        test.showWindow();
        test.loadUntil(20.0);
        test.record(path);
        test.tick(4);
    }
    EXPECT_GE(readMovie(path).frames.size(), 4U);
}
} // namespace
