// Rendering without a window: what the pictures show, and what is left behind when something goes wrong.
#include <algorithm>
#include <atomic>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <set>
#include <thread>

#include <gmock/gmock.h>
#include <unistd.h>

#include <QImage>
#include <QPainter>

#include "commandrun.h"
#include "environmentvariable.h"
#include "fulldisk.h"
#include "lzw.h"
#include "makedemonstration.h"
#include "moviereader.h"
#include "overlaytext.h"
#include "pixels.h"
#include "rows.h"
#include "signalhandling.h"
#include "standardinput.h"
#include "temporarydirectory.h"
#include "textapplication.h"
#include "trajectorytext.h"

using namespace sorvane;

namespace {
using testing::HasSubstr;
using testing::StartsWith;

struct RenderTest : testing::Test {
    TemporaryDirectory directory;
    TemporaryDirectory results;
    EnvironmentVariable dataRoot{"PELSAR_DATA", directory.file("")}; // no bodies: the lines are what is drawn
    std::string trajectory;

    // Two seconds: target and threat fly along y, 1000 and 500 up; one flare under the target.
    void SetUp() override {
        QList<TestSample> samples;
        for (int i = 0; i <= 20; ++i) {
            TestSample sample;
            sample.time = 0.1 * i;
            sample.target[1] = 5.0 * i;
            sample.threat[1] = 2.0 * i;
            sample.gyro[2] = 90.0;
            sample.flares = {{.y = 5.0 * i, .z = -990.0}};
            samples.push_back(sample);
        }
        trajectory = directory.file("ETXYZ.OUT.1");
        writeTrajectory(QString::fromStdString(trajectory), samples);
    }

    CommandRun render(const std::string& output, std::vector<std::string> options = {}) {
        options.insert(options.begin(), {"render", trajectory, "-o", results.file(output), "--allow-missing"});
        return runCommand(options);
    }
    QImage rendered(const std::string& output, const std::vector<std::string>& options = {}) {
        const CommandRun run = render(output, options);
        EXPECT_EQ(run.status, ExitStatus::Success) << run.err;
        return QImage(QString::fromStdString(results.file(output))).convertToFormat(QImage::Format_RGB32);
    }
    std::set<std::string> resultNames() const {
        std::set<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(results.path()))
            names.insert(entry.path().filename().string());
        return names;
    }
};

int litPixels(const QImage& image, int firstRow, int endRow) {
    int count = 0;
    for (int y = firstRow; y < endRow; ++y)
        for (int x = 0; x < image.width(); ++x)
            count += (image.pixel(x, y) & 0xFFFFFFU) != 0 ? 1 : 0;
    return count;
}

TEST_F(RenderTest, ThePictureIsTheRightWayUp) {
    // 10,000 m of ground from 1,000 m up: the grid fills the lower half, the axis alone reaches into the upper one.
    const QImage picture = rendered("a.png", {"--eye", "9000,0,-1000", "--look-at", "0,0,-1000", "--no-history"});
    EXPECT_EQ(picture.size(), QSize(640, 480));
    EXPECT_GT(litPixels(picture, 240, 480), 5000);
    EXPECT_LT(litPixels(picture, 0, 230), 1500);
    EXPECT_GT(litPixels(picture, 0, 230), 100);
    EXPECT_EQ(rendered("odd.ppm", {"--size", "33x17"}).size(), QSize(33, 17));
}

TEST_F(RenderTest, EveryOptionChangesThePicture) {
    std::vector<QImage> pictures;
    for (const std::vector<std::string>& options : std::vector<std::vector<std::string>>{
             {},
             {"--at", "2"},
             {"--at", "2", "--no-history"},
             {"--at", "2", "--no-drop-lines"},
             {"--at", "2", "--line-styles"},
             {"--at", "2", "--antialias", "2"},
             {"--at", "2", "--no-grid"},
             {"--at", "2", "--view", "target"},
             {"--at", "2", "--view", "gyro"},
             {"--at", "2", "--view", "free"},
             {"--at", "2", "--eye", "-400,-400,-1000"},
             {"--at", "2", "--eye", "-400,-400,-1000", "--look-at", "0,0,-900"}}) {
        const QImage picture = rendered("a.png", options);
        for (const QImage& other : pictures)
            EXPECT_FALSE(picture == other) << testing::PrintToString(options);
        pictures.push_back(picture);
    }
    // Behind the last sample everything stays where it was.
    EXPECT_TRUE(rendered("a.png", {"--at", "2"}) == rendered("b.png", {"--at", "50"}));
}

TEST_F(RenderTest, TextsStandOverThePictureThatThereWouldBe) {
    const std::vector<std::string> view = {"--view", "target", "--at", "1.5"};
    const auto renderedWith = [&](std::vector<std::string> options) {
        options.insert(options.end(), view.begin(), view.end());
        return rendered("a.png", options);
    };
    const TextApplication texts;
    const auto painted = [&](const auto& paint) {
        QImage picture = renderedWith({});
        QPainter painter(&picture);
        paint(painter, picture.size());
        return picture;
    };
    EXPECT_TRUE(renderedWith({"--title", "Käse\n ab"}) == painted([](QPainter& painter, const QSizeF& size) {
                    paintTitle(painter, size, "Käse ab");
                }));
    // The threat flies 500 units under the target and 45 beside it: √(500² + 45²), seen square to the target's nose.
    EXPECT_TRUE(renderedWith({"--readout", "--unit", "m"}) == painted([](QPainter& painter, const QSizeF& size) {
                    paintReadout(
                        painter, size,
                        "Time              1.500 s\n"
                        "Engagement        ETXYZ.OUT.1\n"
                        "Range             502.0 m\n"
                        "Closing speed     -2.7 m/s\n"
                        "Closest approach  500.0 m at 0.000 s\n"
                        "Aspect angle      90.0°\n"
                        "Nearest to axis   nothing in the field\n"
                        "View              Target");
                }));
    // The target is in the middle, the threat below the picture.
    EXPECT_TRUE(renderedWith({"--labels"}) == painted([](QPainter& painter, const QSizeF& size) {
                    const BodyLabel target{"target", qRgb(0, 255, 0), {320.0, 240.0}, 0.0};
                    LabelPainter(textPixelSize(size)).paint(painter, size, {&target, 1});
                }));
    // A movie's frames and the labels of several engagements.
    EXPECT_FALSE(renderedWith({"--labels", trajectory}) == renderedWith({"--labels"}));
    const CommandRun movie = render("a.mp4", {"--title", "x", "--step", "1"});
    EXPECT_EQ(movie.status, ExitStatus::Success);
    const Movie shown = readMovie(QString::fromStdString(results.file("a.mp4")));
    ASSERT_EQ(shown.frames.size(), 3U);
    EXPECT_GT(countPixels(shown.frames[2].copy(300, 0, 40, 30), [](int r, int, int) { return r > 150; }), 10);
}

TEST_F(RenderTest, TheOverviewHasThePathsInThePicture) {
    const QImage last = rendered("a.png", {"--view", "overview", "--no-grid", "--no-drop-lines", "--at", "2"});
    EXPECT_EQ(litPixels(last, 0, 6) + litPixels(last, 474, 480), 0);
    EXPECT_GT(litPixels(last, 6, 100), 0);
    EXPECT_GT(litPixels(last, 380, 474), 0) << "500 units below";
    EXPECT_EQ(render("b.png", {"--view", "overview", "--eye", "1,2,3"}).status, ExitStatus::Failed);
    EXPECT_THAT(render("c.png", {"--view", "overview", "--print-command"}).out, HasSubstr("--view overview --at"));
}

TEST_F(RenderTest, MoreSamplesThanThereAreAreRefused) {
    const CommandRun run = render("a.png", {"--antialias", "8"});
    EXPECT_EQ(run.status, ExitStatus::Failed);
    EXPECT_EQ(run.err, "sorvane render: --antialias: this OpenGL has at most 4 samples a pixel\n");
}

TEST_F(RenderTest, TheCameraFollowsTheFileThatIsAskedFor) {
    const QString other = QString::fromStdString(directory.file("ETXYZ.OUT.2"));
    TestSample elsewhere;
    elsewhere.threat[0] = 4000.0;
    writeTrajectory(other, {elsewhere});
    const QImage first = rendered("1.png", {other.toStdString()});
    EXPECT_TRUE(rendered("2.png", {other.toStdString(), "--follow", "1"}) == first);
    EXPECT_FALSE(rendered("3.png", {other.toStdString(), "--follow", "2"}) == first);
    EXPECT_EQ(render("until%d.png", {other.toStdString(), "--step", "1"}).status, ExitStatus::Success);
    EXPECT_TRUE(resultNames().contains("until2.png")) << "the longest engagement decides, not the last";
}

TEST_F(RenderTest, SequencesAndMoviesHoldTheFramesOfTheirTimes) {
    const std::vector<std::string> times = {"--view", "free", "--eye", "-400,-400,-1000",
                                            "--step", "0.25", "--to",  "2"};
    const CommandRun sequence = render("f%02d.png", times);
    EXPECT_EQ(sequence.out, "");
    EXPECT_EQ(std::ranges::count(sequence.err, '\n'), 4) << "what is missing is told once and not with every frame";
    EXPECT_EQ(resultNames().size(), 9U);
    const QImage last = rendered("last.png", {"--eye", "-400,-400,-1000", "--at", "2"});
    EXPECT_TRUE(QImage(QString::fromStdString(results.file("f08.png"))).convertToFormat(QImage::Format_RGB32) == last);

    for (const char* const name : {"a.avi", "a.mpg", "a.mp4", "a.webm"}) {
        EXPECT_EQ(render(name, times).status, ExitStatus::Success);
        const Movie movie = readMovie(QString::fromStdString(results.file(name)));
        ASSERT_EQ(movie.frames.size(), 9U) << name;
        EXPECT_EQ(QSize(movie.width, movie.height), QSize(640, 480));
        EXPECT_DOUBLE_EQ(movie.framesPerSecond, 30.0);
        // The target's path runs through these pixels at the end and not at the beginning.
        int differing = 0;
        for (int y = 0; y < 480; ++y)
            for (int x = 0; x < 640; ++x)
                differing += std::abs(qGreen(movie.frames.back().pixel(x, y)) - qGreen(last.pixel(x, y))) > 60 ? 1 : 0;
        EXPECT_LT(differing, 300) << name;
    }
}

TEST_F(RenderTest, MoviesHaveTheirBitRateAndKeyFrames) {
    EXPECT_EQ(render("a.avi", {"--step", "0.1", "--to", "2", "--size", "64x48"}).status, ExitStatus::Success);
    const std::string bytes = readWholeFile(results.file("a.avi"));
    ASSERT_GT(bytes.size(), 40U);
    std::uint32_t bytesPerSecond = 0; // second number of the main header
    std::memcpy(&bytesPerSecond, bytes.data() + 36, sizeof bytesPerSecond);
    EXPECT_EQ(bytesPerSecond, 10'000'000U / 8);
    const Movie movie = readMovie(QString::fromStdString(results.file("a.avi")));
    EXPECT_EQ(movie.frames.size(), 21U);
    EXPECT_EQ(std::ranges::count(movie.isKeyFrame, true), 2);
}

TEST_F(RenderTest, TheSameBytesComeOutEachTime) {
    for (const char* const name : {"a.png", "a.jpg", "a.avi", "a.mpg", "a.mp4", "a.webm"}) {
        std::vector<std::string> options = {"--view", "target"};
        EXPECT_EQ(render(name, options).status, ExitStatus::Success);
        const std::string first = readWholeFile(results.file(name));
        EXPECT_EQ(render(name, options).status, ExitStatus::Success);
        EXPECT_FALSE(first.empty());
        EXPECT_TRUE(readWholeFile(results.file(name)) == first) << name;
    }
}

TEST_F(RenderTest, ABrokenFileIsNamedAndLeftOut) {
    const QImage alone = rendered("alone.png");
    const std::string broken = directory.write("ETXYZ.OUT.broken", "nonsense\n");
    const std::string missing = directory.file("missing");
    const CommandRun run = render("a.png", {broken, missing});
    EXPECT_EQ(run.status, ExitStatus::ProblemsFound);
    EXPECT_THAT(run.err, HasSubstr("sorvane render: " + broken + ": holds no samples\n"));
    EXPECT_THAT(run.err, HasSubstr("sorvane render: " + missing + ": there is no such file\n"));
    EXPECT_TRUE(QImage(QString::fromStdString(results.file("a.png"))).convertToFormat(QImage::Format_RGB32) == alone);

    const CommandRun none = runCommand({"render", missing, "-o", results.file("none.png")});
    EXPECT_EQ(none.status, ExitStatus::Failed);
    EXPECT_THAT(none.err, HasSubstr("sorvane render: there is nothing to draw\n"));
    const CommandRun unfollowed = render("none.png", {missing, "--follow", "2"});
    EXPECT_EQ(unfollowed.status, ExitStatus::Failed);
    EXPECT_THAT(unfollowed.err, HasSubstr("sorvane render: there is no engagement for the camera to follow\n"));
    EXPECT_FALSE(resultNames().contains("none.png"));
}

TEST_F(RenderTest, TellsWhatThePictureLacks) {
    const auto lines = [&](const std::vector<std::string>& options, ExitStatus expected) {
        std::vector<std::string> arguments = {"render", trajectory, "-o", results.file("a.png")};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const CommandRun run = runCommand(arguments);
        EXPECT_EQ(run.status, expected) << run.err;
        return run.err;
    };
    const std::string line = "sorvane render: " + trajectory + ": ";
    const std::string folder = directory.file("");
    const std::string bodies =
        line + "target: \"/nowhere/tgt.vnl\" does not exist: the stock target takes its place\n" + line +
        "atmosphere: Unable to open file \"" + folder +
        "tgt4004/tgt4004_b0001_mat0004_ter0010_w0001_t1500_rad0003.atm\" for reading.\n" + line +
        "target: Could not open file \"" + folder + "tgt4004/tgt4004_b0001_mat0004.brdf\" for reading.\n" + line +
        "threat: Could not open file \"" + folder + "tgt0450/tgt0450_b0001.brdf\" for reading.\n";
    EXPECT_EQ(lines({}, ExitStatus::ProblemsFound), bodies);
    EXPECT_EQ(lines({"--allow-missing"}, ExitStatus::Success), bodies);
    EXPECT_THAT(
        lines({"--terrain"}, ExitStatus::ProblemsFound),
        testing::EndsWith(line + "terrain: Terrain::Init: Cant find old topo file\n"));
    EXPECT_EQ(
        lines({"--allow-missing", "--at", "2.5"}, ExitStatus::Success),
        bodies + line + "has no samples at 2.5 s: it ended at 2.000 s\n");

    ASSERT_EQ(sorvane::makeDemonstration(directory.file("demo")), std::nullopt);
    const EnvironmentVariable demonstrated{"PELSAR_DATA", directory.file("demo/data/")};
    trajectory = directory.file("demo/ETXYZ.OUT.turn");
    EXPECT_EQ(lines({"--terrain", "--at", "3"}, ExitStatus::Success), "");
    directory.write("demo/data/ter0010/ter0010_n0001.le-ftop", "short");
    EXPECT_THAT(lines({"--terrain"}, ExitStatus::ProblemsFound), HasSubstr(trajectory + ": terrain: tile "));

    const EnvironmentVariable none{"PELSAR_DATA", directory.file("none/")};
    EXPECT_THAT(
        lines({}, ExitStatus::ProblemsFound),
        StartsWith("sorvane render: there is no data tree \"" + directory.file("none/") + "\"; PELSAR_DATA says"));
}

TEST_F(RenderTest, DrawsStandardInputAndNothingThatIsNoTrajectory) {
    const QImage fromFile = rendered("a.png");
    const std::string own = trajectory;
    {
        const StandardInput input(own);
        trajectory = "-";
        EXPECT_TRUE(rendered("b.png") == fromFile);
    }
    for (const auto& [name, contents, reason] : Rows<const char*, std::string, const char*>{
             {"a.vnl", "3 1\n", "is no trajectory"},
             {"ETXYZ.OUT.7", lzwCompressed(readWholeFile(own)),
              "is compressed by compress, but its name does not end in .Z"},
             {"ETXYZ.OUT.8", "\x1F\x8B\b", "is compressed by gzip, which the viewer does not read"}}) {
        trajectory = directory.write(name, contents);
        const CommandRun run = render("none.png");
        EXPECT_EQ(run.status, ExitStatus::Failed);
        EXPECT_EQ(
            run.err, "sorvane render: " + trajectory + ": " + reason + "\nsorvane render: there is nothing to draw\n");
    }
    for (const char* const command : {"info", "check", "export"}) {
        const StandardInput compressed(directory.file("ETXYZ.OUT.7"));
        const CommandRun run = runCommand({command, "-"});
        EXPECT_NE(run.status, ExitStatus::Success);
        EXPECT_THAT(run.out + run.err, HasSubstr("is compressed by compress: decompress it before")) << command;
    }
}

TEST_F(RenderTest, AFileThatEndsTheViewerIsLeftOut) {
    const QImage alone = rendered("alone.png");
    ASSERT_EQ(sorvane::makeDemonstration(directory.file("demo")), std::nullopt);
    const std::string geometry = "demo/data/tgt4004/tgt4004.vnl";
    std::string text = readWholeFile(directory.file(geometry));
    const std::size_t corner = text.find("1 1 2 3 radome");
    ASSERT_NE(corner, std::string::npos);
    directory.write(geometry, text.replace(corner, 7, "1 0 2 3"));

    const std::string broken = directory.file("demo/ETXYZ.OUT.turn");
    const CommandRun run = render("a.png", {broken});
    EXPECT_EQ(run.status, ExitStatus::ProblemsFound);
    EXPECT_THAT(
        run.err, HasSubstr(
                     broken + ": target: us0 should be less than numVerts = 4186, but is 65535.\nsorvane render: " +
                     broken + ": its files are too broken to be used\n"));
    EXPECT_TRUE(QImage(QString::fromStdString(results.file("a.png"))).convertToFormat(QImage::Format_RGB32) == alone);
}

TEST_F(RenderTest, AFailedWriteLeavesWhatWasThere) {
    for (const char* const name : {"a.png", "a.bmp", "a.avi", "a.mpg", "a.mp4", "a.webm"}) {
        std::filesystem::remove_all(results.path());
        results.write(name, "before");
        CommandRun run;
        {
            const FullDisk full(2000);
            run = render(name, {"--view", "target"});
        }
        EXPECT_EQ(run.status, ExitStatus::Failed);
        EXPECT_THAT(run.err, HasSubstr("sorvane render: " + results.file(name) + ": ")) << name;
        EXPECT_EQ(resultNames(), std::set<std::string>{name});
        EXPECT_EQ(readWholeFile(results.file(name)), "before");
    }
    // What a movie is closed with has no room left.
    EXPECT_EQ(render("whole.avi", {"--to", "0.1"}).status, ExitStatus::Success);
    {
        const FullDisk full(static_cast<rlim_t>(std::filesystem::file_size(results.file("whole.avi"))) - 8);
        EXPECT_EQ(render("cut.avi", {"--to", "0.1"}).status, ExitStatus::Failed);
    }
    EXPECT_FALSE(resultNames().contains("cut.avi"));
    for (const char* const name : {"missing/a.png", "missing/a.avi", "missing/%d.png"})
        EXPECT_THAT(render(name).err, HasSubstr(": No such file or directory\n")) << name;
    std::filesystem::create_directory(results.file("folder.png"));
    EXPECT_THAT(render("folder.png").err, HasSubstr("folder.png: not a regular file\n"));
}

TEST_F(RenderTest, AnInterruptedRunLeavesNothing) {
    for (const int signal : {SIGINT, SIGTERM}) {
        const SignalHandling heeded(signal, [](int) {});
        std::atomic<bool> hasEnded = false;
        std::thread killer([&] {
            // The movie's temporary file appears once the signals are taken care of.
            while (resultNames().empty() && !hasEnded)
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
            ::kill(::getpid(), signal);
        });
        const CommandRun run = render("a.avi", {"--to", "100000"});
        hasEnded = true;
        killer.join();
        EXPECT_EQ(run.status, ExitStatus::Failed);
        EXPECT_THAT(run.err, StartsWith("sorvane render: "));
        EXPECT_THAT(run.err, HasSubstr(" of 3030304 frames; nothing was written\n"));
        EXPECT_EQ(resultNames(), std::set<std::string>{});
    }
}

TEST_F(RenderTest, WithoutEglOneLineSaysSo) {
    const std::string messages = directory.file("messages");
    const std::string command = "__EGL_VENDOR_LIBRARY_FILENAMES=/nowhere '" SORVANE_COMMAND "' render '" + trajectory +
                                "' -o '" + results.file("a.png") + "' 2>'" + messages + "'";
    EXPECT_EQ(WEXITSTATUS(std::system(command.c_str())), 2);
    EXPECT_EQ(
        readWholeFile(messages),
        "sorvane render: no OpenGL without a display: EGL offers none (is Mesa's EGL driver installed?)\n");
}
} // namespace
