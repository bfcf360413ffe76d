// `sorvane compare`.
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <QImage>

#include "commandrun.h"
#include "picturecomparison.h"
#include "temporarydirectory.h"
#include "trajectorytext.h"

namespace {
using testing::HasSubstr;

class CompareTest : public testing::Test {
protected:
    // A grey picture in which one pixel's green differs from the grey by `difference`.
    static QImage picture(int difference, int width = 10) {
        QImage made(width, 10, QImage::Format_RGB32);
        made.fill(qRgb(90, 90, 90));
        made.setPixel(3, 7, qRgb(90, 90 + difference, 90));
        return made;
    }
    std::string savedPicture(const std::string& name, int difference, int width = 10) const {
        picture(difference, width).save(QString::fromStdString(folder.file(name)));
        return folder.file(name);
    }
    std::string savedTrajectory(const std::string& name, const QList<TestSample>& samples) const {
        QByteArray text = trajectoryHeader();
        for (const TestSample& sample : samples)
            text += trajectoryRecord(sample);
        return folder.write(name, text.toStdString());
    }

    TemporaryDirectory folder;
};

TEST_F(CompareTest, PicturesDifferBeyondToleranceAndShare) {
    const std::string a = savedPicture("a.png", 0);
    const std::string b = savedPicture("b.bmp", 40); // another format, known by its content
    struct Row {
        std::vector<std::string> options;
        ExitStatus status;
        std::string text;
    };
    const Row rows[] = {
        {{}, ExitStatus::ProblemsFound, "different: 1 of 100 pixels differ by more than 0, the most by 40\n"},
        {{"--tolerance", "39"},
         ExitStatus::ProblemsFound,
         "different: 1 of 100 pixels differ by more than 39, the most by 40\n"},
        {{"--tolerance", "40"}, ExitStatus::Success, "equal: 0 of 100 pixels differ by more than 40, the most by 40\n"},
        {{"--allowed", "0.01"}, ExitStatus::Success, "equal: 1 of 100 pixels differ by more than 0, the most by 40\n"},
        {{"--allowed", "0.009"},
         ExitStatus::ProblemsFound,
         "different: 1 of 100 pixels differ by more than 0, the most by 40\n"},
    };
    for (const Row& row : rows) {
        std::vector<std::string> arguments{"compare", a, b};
        arguments.insert(arguments.end(), row.options.begin(), row.options.end());
        const CommandRun run = runCommand(arguments);
        EXPECT_EQ(run.status, row.status);
        EXPECT_EQ(run.out, row.text);
    }
    const auto json = nlohmann::json::parse(runCommand({"compare", a, b, "--json"}).out);
    EXPECT_EQ(json["equal"], false);
    EXPECT_EQ(json["differing_pixels"], 1);
    EXPECT_EQ(json["largest_difference"], 40);
}

TEST_F(CompareTest, TheDifferencePictureShowsWhere) {
    const std::string difference = folder.file("d.png");
    const std::string a = savedPicture("a.png", 0);
    EXPECT_EQ(
        runCommand({"compare", a, savedPicture("b.png", 1), "--difference", difference}).status,
        ExitStatus::ProblemsFound);
    const QImage shown(QString::fromStdString(difference));
    ASSERT_EQ(shown.size(), QSize(10, 10));
    EXPECT_EQ(shown.pixel(3, 7), qRgb(128, 0, 0));
    EXPECT_EQ(shown.pixel(7, 3), qRgb(30, 30, 30));
}

TEST_F(CompareTest, DifferentSizesAreADifference) {
    const std::string a = savedPicture("a.png", 0);
    const std::string b = savedPicture("b.png", 0, 12);
    const CommandRun run =
        runCommand({"compare", a, b, "--tolerance", "255", "--allowed", "1", "--difference", folder.file("d.png")});
    EXPECT_EQ(run.status, ExitStatus::ProblemsFound);
    EXPECT_EQ(run.out, "different sizes: " + a + " has 10x10, " + b + " has 12x10\n");
    EXPECT_FALSE(std::filesystem::exists(folder.file("d.png")));
}

TEST(PictureComparison, CountsOpacity) {
    QImage clear(2, 1, QImage::Format_ARGB32);
    clear.fill(qRgba(10, 20, 30, 255));
    QImage half = clear;
    half.setPixel(1, 0, qRgba(10, 20, 30, 155));
    EXPECT_EQ(comparePictures(clear, half).largest, 100);
    EXPECT_EQ(comparePictures(clear, half).differingShare(), 0.5);
}

TEST_F(CompareTest, TrajectoriesDifferByTimeAndField) {
    TestSample moved{.time = 1.0, .target = {0.5, 0.0, -1000.0}, .flares = {{.id = 4}, {.id = 9, .x = 2.0}}};
    const std::string a = savedTrajectory("a", {{.time = 0.0}, {.time = 1.0, .flares = {{.id = 9}}}, {.time = 2.0}});
    const std::string b = folder.write(
        "b", (trajectoryHeader("cyan") + trajectoryRecord({.time = 0.0}) + trajectoryRecord(moved) +
              trajectoryRecord({.time = 2.5}))
                 .toStdString());
    const CommandRun run = runCommand({"compare", a, b, "--list", "3"});
    EXPECT_EQ(run.status, ExitStatus::ProblemsFound);
    EXPECT_EQ(
        run.out, "header text_9: white | cyan\n"
                 "only in " +
                     a +
                     ": 2 s\n"
                     "only in " +
                     b +
                     ": 2.5 s\n"
                     "1 s target_x: 0 | 0.5\n"
                     "1 s flare_count: 1 | 2\n"
                     "1 s flare_9_x: 0 | 2\n"
                     "1 more differences\n"
                     "summary target_x: 1 samples differ, the most by 0.5 at 1 s\n"
                     "summary flare_count: 1 samples differ, the most by 1 at 1 s\n"
                     "summary flare_9_x: 1 samples differ, the most by 2 at 1 s\n"
                     "summary flare_4: 1 samples differ, the most by 1 at 1 s\n"
                     "different: 2 samples compared\n");
    const auto json = nlohmann::json::parse(runCommand({"compare", a, b, "--json", "--tolerance", "1"}).out);
    EXPECT_EQ(json["equal"], false);
    EXPECT_EQ(json["found_differences"], 2); // the flare that is nowhere in A counts whatever the tolerance
    EXPECT_EQ(json["differences"][0], nlohmann::json::parse(R"({"time_s":1,"field":"flare_9_x","a":0,"b":2})"));
    EXPECT_EQ(json["only_in_b_s"], nlohmann::json::parse("[2.5]"));
}

TEST_F(CompareTest, TrajectoriesAgreeWithinTheTolerance) {
    const std::string a = savedTrajectory("a", {{.time = 0.0}});
    const std::string b = savedTrajectory("b", {{.time = 0.0, .gyro = {0.3, 0.0, 0.0}}});
    EXPECT_EQ(runCommand({"compare", a, b, "--tolerance", "0.3"}).out, "equal: 1 samples compared\n");
    EXPECT_EQ(runCommand({"compare", a, b, "--tolerance", "0.3"}).status, ExitStatus::Success);
    EXPECT_EQ(runCommand({"compare", a, b, "--tolerance", "0.2"}).status, ExitStatus::ProblemsFound);
}

TEST_F(CompareTest, SaysWhatCannotBeCompared) {
    const std::string picture = savedPicture("a.png", 0);
    const std::string trajectory = savedTrajectory("a", {{.time = 0.0}});
    const std::string broken = folder.write("broken.png", readWholeFile(picture).substr(0, 40));
    struct Row {
        std::vector<std::string> arguments;
        std::string message;
    };
    const Row rows[] = {
        {{picture, trajectory}, picture + " is a picture, " + trajectory + " is not"},
        {{trajectory, folder.file("missing")}, folder.file("missing") + ": there is no such file"},
        {{picture, broken}, broken + ": Unable to read image data"},
        {{trajectory, trajectory, "--difference", "d.png"}, "--difference and --allowed are for pictures"},
        {{"-", "-"}, "only one of the two can be standard input"},
        {{picture, picture, "--difference", folder.file("out/d.png")},
         folder.file("out/d.png") + ": No such file or directory"},
    };
    for (const Row& row : rows) {
        std::vector<std::string> arguments{"compare"};
        arguments.insert(arguments.end(), row.arguments.begin(), row.arguments.end());
        const CommandRun run = runCommand(arguments);
        EXPECT_EQ(run.status, ExitStatus::Failed);
        EXPECT_EQ(run.err, "sorvane compare: " + row.message + "\n");
        EXPECT_EQ(run.out, "");
    }
    for (const char* const wrong :
         {"--tolerance=-1", "--allowed=1.5", "--tolerance=x", "--tolerance=nan", "--allowed=nan"})
        EXPECT_EQ(runCommand({"compare", picture, picture, wrong}).status, ExitStatus::Failed);
}
} // namespace
