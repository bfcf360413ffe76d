// Several views of one moment in one picture: each pane is what the view alone would be.
#include <filesystem>

#include <gmock/gmock.h>

#include <QImage>
#include <QPainter>

#include "commandrun.h"
#include "environmentvariable.h"
#include "makedemonstration.h"
#include "moviereader.h"
#include "overlaytext.h"
#include "rows.h"
#include "temporarydirectory.h"
#include "textapplication.h"

using namespace sorvane;

namespace {
using testing::HasSubstr;

QImage read(const std::string& path) {
    return QImage(QString::fromStdString(path)).convertToFormat(QImage::Format_RGB32);
}

struct PanesTest : testing::Test {
    static inline TemporaryDirectory* demo = nullptr;
    TemporaryDirectory results;
    EnvironmentVariable dataRoot{"PELSAR_DATA", demo->file("demo/data/")};

    static void SetUpTestSuite() {
        demo = new TemporaryDirectory;
        ASSERT_EQ(makeDemonstration(demo->file("demo")), std::nullopt);
    }
    static void TearDownTestSuite() {
        delete demo;
        demo = nullptr;
    }
    CommandRun render(const std::string& output, std::vector<std::string> options) {
        options.insert(options.begin(), {"render", demo->file("demo/ETXYZ.OUT.turn"), "-o", results.file(output)});
        return runCommand(options);
    }
    QImage rendered(const std::vector<std::string>& options) {
        const CommandRun run = render("a.png", options);
        EXPECT_EQ(run.status, ExitStatus::Success) << run.err;
        return read(results.file("a.png"));
    }
};

int pixelsOtherThan(QRgb colour, const QImage& picture, const QRect& part) {
    int count = 0;
    for (int y = part.top(); y <= part.bottom(); ++y)
        for (int x = part.left(); x <= part.right(); ++x)
            count += picture.pixel(x, y) != colour ? 1 : 0;
    return count;
}

constexpr QRgb kGap = 0xFF303030U;

TEST_F(PanesTest, EachPaneIsTheViewAlone) {
    struct Row {
        const char* panes;
        const char* size;
        const char* paneSize;
        std::vector<QPoint> places;
    };
    // By hand: (640 − 2) / 2 = 319 and (480 − 2) / 2 = 239; of an odd side, the odd pixel goes to the gap.
    for (const Row& row : {
             Row{"threat,gyro", "640x480", "319x480", {{0, 0}, {321, 0}}},
             Row{"target,free,overview", "640x480", "319x239", {{0, 0}, {321, 0}, {0, 241}}},
             Row{"threat,gyro,target,overview", "401x303", "199x150", {{0, 0}, {202, 0}, {0, 153}, {202, 153}}},
         }) {
        const std::vector<std::string> common = {"--at", "6", "--labels", "--antialias", "2"};
        const auto with = [&](std::vector<std::string> options) {
            options.insert(options.end(), common.begin(), common.end());
            return rendered(options);
        };
        const QImage together = with({"--panes", row.panes, "--size", row.size});
        std::size_t number = 0;
        for (const QString& view : QString(row.panes).split(',')) {
            const QImage alone = with({"--view", view.toStdString(), "--size", row.paneSize});
            const QRect place(row.places[number++], alone.size());
            EXPECT_TRUE(together.copy(place) == alone) << row.panes << ": " << view.toStdString();
            EXPECT_GT(pixelsOtherThan(alone.pixel(0, 0), alone, alone.rect()), 100) << "something is in it";
        }
        EXPECT_EQ(pixelsOtherThan(kGap, together, {QPoint(row.places[1].x() - 2, 0), QSize(2, together.height())}), 0);
        if (number > 2) {
            EXPECT_EQ(
                pixelsOtherThan(kGap, together, {QPoint(0, row.places[2].y() - 2), QSize(together.width(), 2)}), 0);
        }
    }
    const QImage three = rendered({"--panes", "threat,gyro,target"});
    EXPECT_EQ(pixelsOtherThan(kGap, three, {319, 239, 321, 241}), 0) << "the fourth place is empty";
}

TEST_F(PanesTest, ASeekerIsAGyroViewOnAnAutomaticScale) {
    const std::vector<std::string> common = {"--at", "6", "--size", "402x202", "--panes"};
    const auto with = [&](std::vector<std::string> options) {
        options.insert(options.begin(), common.begin(), common.end());
        return rendered(options);
    };
    const QRect right(202, 0, 200, 202);
    const QImage seeker = with({"gyro,seeker"}).copy(right);
    EXPECT_FALSE(seeker == with({"gyro,gyro"}).copy(right));
    EXPECT_TRUE(seeker == with({"gyro,gyro", "--scale", "auto"}).copy(right));
    EXPECT_TRUE(with({"gyro,seeker", "--scale", "1e-4"}) == with({"gyro,gyro", "--scale", "1e-4"}));
    EXPECT_THAT(
        render("a.png", {"--panes", "seeker,threat", "--print-command"}).out, HasSubstr(" --panes seeker,threat "));
}

TEST_F(PanesTest, TheTitleIsOverAllAndTheReadOutInTheLowerLeftPane) {
    const TextApplication texts;
    const std::vector<std::string> panes = {"--panes", "gyro,threat,overview", "--at", "6"};
    const auto with = [&](std::vector<std::string> options) {
        options.insert(options.end(), panes.begin(), panes.end());
        return rendered(options);
    };
    const QImage plain = with({});
    QImage titled = plain;
    {
        QPainter painter(&titled);
        paintTitle(painter, titled.size(), "All of it");
    }
    EXPECT_TRUE(with({"--title", "All of it"}) == titled);
    const QImage told = with({"--readout"});
    EXPECT_FALSE(told.copy(0, 241, 319, 239) == plain.copy(0, 241, 319, 239));
    EXPECT_TRUE(told.copy(0, 0, 640, 241) == plain.copy(0, 0, 640, 241));
    EXPECT_TRUE(told.copy(319, 241, 321, 239) == plain.copy(319, 241, 321, 239));
}

TEST_F(PanesTest, SequencesAndMoviesHaveThemInEachFrame) {
    const std::vector<std::string> times = {"--panes", "threat,target", "--from", "5",      "--to",
                                            "6",       "--step",        "0.5",    "--size", "320x160"};
    EXPECT_EQ(render("f%d.png", times).status, ExitStatus::Success);
    const QImage last = read(results.file("f2.png"));
    EXPECT_TRUE(last == rendered({"--panes", "threat,target", "--at", "6", "--size", "320x160"}));
    EXPECT_FALSE(last == read(results.file("f0.png")));
    EXPECT_EQ(render("a.mp4", times).status, ExitStatus::Success);
    const Movie movie = readMovie(QString::fromStdString(results.file("a.mp4")));
    ASSERT_EQ(movie.frames.size(), 3U);
    EXPECT_EQ(QSize(movie.width, movie.height), QSize(320, 160));
    EXPECT_NEAR(qRed(movie.frames[2].pixel(159, 80)), 0x30, 12) << "the gap";
}

TEST_F(PanesTest, TheCommandThatRepeatsThemNamesThem) {
    const CommandRun run = render("a.png", {"--panes", "gyro,free", "--eye", "1,2,3", "--print-command"});
    EXPECT_THAT(run.out, HasSubstr(" --panes gyro,free --eye 1,2,3 --look-at 0,0,0 --at 0 "));
    EXPECT_THAT(
        render("a.png", {"--panes", "gyro,overview", "--print-command"}).out,
        HasSubstr(" --panes gyro,overview --at 0 "));
}

TEST_F(PanesTest, RefusesWhatCannotBeMeant) {
    const std::string views = "is no view; each pane is one of threat, gyro, target, free, overview, or seeker";
    const std::string count = "two to four views with commas between them are wanted, such as threat,gyro, and not ";
    for (const auto& [options, message] : Rows<std::vector<std::string>, std::string>{
             {{"--panes", "threat,giro"}, "\"giro\" " + views},
             {{"--panes", "threat,,gyro"}, "\"\" " + views},
             {{"--panes", "threat,"}, "\"\" " + views},
             {{"--panes", "threat"}, count + "1"},
             {{"--panes", "threat,gyro,target,free,overview"}, count + "5"},
             {{"--panes", "threat,gyro", "--view", "gyro"}, "--view excludes --panes"},
             {{"--panes", "threat,gyro", "--eye", "1,2,3"}, "place the free view's camera"},
             {{"--panes", "threat,gyro", "--size", "33x16"},
              "--size 33x16 is too small for 2 panes: 34x16 is the least"},
             {{"--panes", "threat,gyro,free", "--size", "40x33"},
              "--size 40x33 is too small for 3 panes: 34x34 is the least"},
         }) {
        const CommandRun run = render("none.png", options);
        EXPECT_NE(run.status, ExitStatus::Success);
        EXPECT_THAT(run.err, HasSubstr(message));
        EXPECT_FALSE(std::filesystem::exists(results.file("none.png")));
    }
    EXPECT_EQ(render("small.png", {"--panes", "threat,gyro,free", "--size", "34x34"}).status, ExitStatus::Success);
    EXPECT_THAT(
        render("none.exr", {"--radiance", "--panes", "threat,gyro"}).err,
        HasSubstr("--radiance has one view: leave out --panes"));
}
} // namespace
