// `sorvane compare`.
#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

#include <QImage>

#include "commandrun.h"
#include "picturecomparison.h"
#include "temporarydirectory.h"
#include "trajectorytext.h"

using namespace sorvane;

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
    runCommand({"compare", a, savedPicture("b.png", 100), "--difference", difference});
    EXPECT_EQ(QImage(QString::fromStdString(difference)).pixel(3, 7), qRgb(128 + 100 * 127 / 255, 0, 0));
    runCommand({"compare", a, savedPicture("b.png", 100), "--difference", difference, "--tolerance", "100"});
    EXPECT_EQ(QImage(QString::fromStdString(difference)).pixel(3, 7), qRgb(30, 30, 30)) << "A's grey, not B's";
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

TEST(PictureComparison, SeesEachChannel) {
    QImage grey(1, 1, QImage::Format_RGB32);
    grey.fill(qRgb(90, 90, 90));
    for (const QRgb pixel : {qRgb(97, 90, 90), qRgb(90, 83, 90), qRgb(90, 90, 97)}) {
        QImage other = grey;
        other.setPixel(0, 0, pixel);
        EXPECT_EQ(comparePictures(grey, other).largest, 7);
    }
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
    const auto shortened = nlohmann::json::parse(runCommand({"compare", a, b, "--json", "--list", "1"}).out);
    EXPECT_EQ(shortened["found_differences"], 4);
    EXPECT_EQ(shortened["differences"].size(), 1U);
    EXPECT_EQ(shortened["fields"][0]["largest_difference"], 0.5);
}

TEST_F(CompareTest, ASummaryTellsTheLargestDifferenceAndAHeaderAloneIsOne) {
    const std::string a = savedTrajectory("a", {{.time = 0.0}, {.time = 1.0}, {.time = 2.0}});
    const std::string b = savedTrajectory(
        "b", {{.time = 0.0}, {.time = 1.0, .target = {5, 0, -1000}}, {.time = 2.0, .target = {2, 0, -1000}}});
    EXPECT_THAT(
        runCommand({"compare", a, b}).out, HasSubstr("summary target_x: 2 samples differ, the most by 5 at 1 s\n"));
    const QByteArray records = trajectoryRecord({.time = 0.0});
    const std::string white = folder.write("w", (trajectoryHeader("white") + records).toStdString());
    const std::string cyan = folder.write("c", (trajectoryHeader("cyan") + records).toStdString());
    EXPECT_EQ(runCommand({"compare", white, cyan}).status, ExitStatus::ProblemsFound);
}

// Each number of a trajectory is another one, and changed by itself.
TEST_F(CompareTest, NamesTheFieldOfEachNumber) {
    const std::string header[] = {
        "terrain_topography",
        "terrain_radiance",
        "target_signature",
        "terrain_triple_a",
        "terrain_triple_b",
        "target_geometry",
        "target_brdf",
        "",
        "text_9",
        "int_10",
        "threat_id",
        "field_of_view_deg"};
    const std::string sample = "0 1 101 102 103 104 105 106\n107 108 109 110 111 112\n0 0 113 114 115\n"
                               "120 121 122 123 124 125 126 127 128 129 130 131 132\n";
    const std::vector<std::pair<int, std::vector<std::string>>> fields = {
        {101, {"target_x", "target_y", "target_z", "target_roll", "target_pitch", "target_yaw"}},
        {107, {"threat_x", "threat_y", "threat_z", "threat_roll", "threat_pitch", "threat_yaw"}},
        {113, {"gyro_roll", "gyro_pitch", "gyro_yaw"}},
        {121, {"flare_120_kind", "flare_120_x", "flare_120_y", "flare_120_z", "flare_120_brightness"}},
        {126, {"flare_120_value_1", "flare_120_value_2", "flare_120_value_3"}},
        {129, {"flare_120_intensity_1", "flare_120_intensity_2", "flare_120_intensity_3", "flare_120_bands"}},
    };
    const std::string head = "a\nb\nc\n1 2 3\n4 5 6\nf\ng\nh\ni\n10\nk\n12\n";
    const std::string a = folder.write("a", head + sample);
    const auto differences = [&](const std::string& text) {
        return runCommand({"compare", a, folder.write("b", text)}).out;
    };
    for (const auto& [first, names] : fields)
        for (std::size_t i = 0; i < names.size(); ++i) {
            std::string changed = sample;
            changed.replace(changed.find(std::to_string(first + static_cast<int>(i))), 1, "9");
            EXPECT_THAT(differences(head + changed), testing::StartsWith("0 s " + names[i] + ": ")) << names[i];
        }
    std::size_t at = 0;
    for (const std::string& name : header) {
        std::string changed = head;
        changed.insert(at, "7");
        EXPECT_THAT(
            differences(changed + sample), testing::StartsWith(name.empty() ? "equal: " : "header " + name + ": "));
        at = head.find('\n', at) + 1;
    }
}

TEST_F(CompareTest, TellsFlaresOfOneIdApart) {
    const std::string a = savedTrajectory("a", {{.flares = {{.id = 4, .x = 1.0}, {.id = 4, .x = 2.0}}}});
    const std::string b = savedTrajectory("b", {{.flares = {{.id = 4, .x = 1.0}, {.id = 4, .x = 3.0}}}});
    EXPECT_THAT(runCommand({"compare", a, b}).out, testing::StartsWith("0 s flare_4_x: 2 | 3\n"));
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
