// What a rendering comes to: names, times, refusals and the command that repeats it.
#include <cmath>
#include <filesystem>

#include <gtest/gtest.h>

#include "commandrun.h"
#include "environmentvariable.h"
#include "renderplan.h"
#include "shellquote.h"

using namespace sorvane;

namespace {
TEST(NumberedName, TakesOneNumber) {
    struct Row {
        const char* name;
        std::int64_t number;
        const char* path; // null where the name is refused
    };
    const Row rows[] = {
        {"a.png", 7, "a.png"},
        {"a-%04d.png", 7, "a-0007.png"},
        {"%d.png", 123, "123.png"},
        {"%3d.png", 7, "  7.png"},
        {"%02d.png", 12345, "12345.png"},
        {"100%%-%02d.png", 7, "100%-07.png"},
        {"100%%.png", 7, "100%.png"},
        {"%d/a.png", 7, "%d/a.png"}, // only the last component has conversions
        {"%", 0, nullptr},
        {"a%20b.png", 0, nullptr},
        {"%s.png", 0, nullptr},
        {"%ld.png", 0, nullptr},
        {"%-3d.png", 0, nullptr},
        {"%.3d.png", 0, nullptr},
        {"%99999999999d.png", 0, nullptr},
        {"%d-%d.png", 0, nullptr},
    };
    for (const Row& row : rows) {
        const NumberedName name(row.name);
        EXPECT_EQ(name.problem().has_value(), row.path == nullptr) << row.name;
        if (row.path != nullptr) {
            EXPECT_EQ(name.path(row.number), row.path);
        }
    }
}

TEST(RenderPlan, PlacesFramesByTheirNumber) {
    struct Row {
        std::optional<double> from;
        std::optional<double> to;
        std::optional<double> step;
        std::optional<double> speed;
        std::int64_t frames;
        double last; // seconds
    };
    const Row rows[] = {
        {{}, {}, {}, {}, 364, 11.979}, // 12 / 0.033 = 363.6
        {{}, 3.3, {}, {}, 101, 3.3},   // falls on the end
        {1.0, 2.0, 0.5, {}, 3, 2.0},     {{}, 0.33, {}, 0.1, 101, 0.33},
        {10.0, {}, {}, 10.0, 7, 11.98},  {20.0, {}, {}, {}, 1, 20.0}, // begins behind the data
        {-1.0, 40.0, 1.0, {}, 42, 40.0},                              // goes beyond them on both sides
    };
    for (const Row& row : rows) {
        RenderRequest request;
        request.output = "a.avi";
        request.fromSeconds = row.from;
        request.toSeconds = row.to;
        request.stepSeconds = row.step;
        request.speed = row.speed;
        const auto [plan, problem] = planRendering(request, 12.0);
        EXPECT_EQ(problem, std::nullopt);
        EXPECT_EQ(plan.frameCount, row.frames);
        EXPECT_NEAR(plan.timeOf(plan.frameCount - 1), row.last, 1e-12);
    }
    RenderRequest far;
    far.output = "%d.png";
    EXPECT_EQ(planRendering(far, 1e9).problem, "there are more than 10000000 frames from 0 s to 1e+09 s");
}

TEST(RenderCommand, RefusesWhatCanNotBeMeant) {
    const auto refusal = [](std::vector<std::string> options) {
        options.insert(options.begin(), {"render", "x"});
        const CommandRun run = runCommand(options);
        EXPECT_EQ(run.status, ExitStatus::Failed);
        EXPECT_EQ(run.out, "");
        return run.err.substr(0, run.err.find('\n'));
    };
    EXPECT_EQ(
        refusal({"-o", "a.avi", "--size", "642x477"}),
        "sorvane render: the sides of a movie are multiples of 8: not 642x477, but for example 640x480");
    EXPECT_EQ(refusal({"-o", "a%02d.mpg"}), "sorvane render: a%02d.mpg: a movie's name has no number in it");
    EXPECT_EQ(
        refusal({"-o", "noending"}),
        "sorvane render: noending: its extension tells what to make, such as .png, .mp4 or .avi");
    EXPECT_EQ(
        refusal({"-o", "a.avi", "--at", "3"}),
        "sorvane render: --at is for a single picture; a movie or a numbered sequence has --from and --to");
    EXPECT_EQ(
        refusal({"-o", "a.png", "--to", "3"}),
        "sorvane render: a.png: a single picture has --at; for a sequence put a number like %04d into the name");
    EXPECT_EQ(
        refusal({"-o", "a.avi", "--step", "1", "--speed", "1"}),
        "sorvane render: --step and --speed say the same thing; give one of them");
    EXPECT_EQ(refusal({"-o", "a.avi", "--speed", "0"}), "sorvane render: --step and --speed are above 0");
    EXPECT_EQ(refusal({"-o", "a.avi", "--from", "nan"}), "sorvane render: times are finite numbers");
    EXPECT_EQ(
        refusal({"-o", "a.png", "--eye", "1,2,3", "--view", "gyro"}),
        "sorvane render: --eye and --look-at place the free view's camera; the other views place their own");
    EXPECT_EQ(
        refusal({"-o", "a.png", "--look-at", "100,0,0"}), "sorvane render: --eye and --look-at are the same point");
    EXPECT_EQ(refusal({"-o", "a.png", "--follow", "2"}), "sorvane render: --follow counts the files from 1 to 1");
    EXPECT_EQ(
        refusal({"-o", "a.png", "--eye", "1,2"}),
        "sorvane render: --eye: three numbers with commas between them are wanted, such as 100,0,-250.5; "
        "see sorvane render --help");
    EXPECT_EQ(
        refusal({"-o", "a.png", "--size", "640*480"}),
        "sorvane render: --size: width and height in pixels are wanted, such as 640x480; see sorvane render --help");
    EXPECT_EQ(
        refusal({"-o", "a.xyz"}).substr(0, 75),
        "sorvane render: a.xyz: no format is called xyz, but avi, mpg, mp4, webm, bm");
}

TEST(RenderPlan, SpellsOutTheCommandThatRepeatsIt) {
    const EnvironmentVariable root("PELSAR_DATA", "/it's/");
    RenderRequest request;
    request.files = {"/a b/ETXYZ.OUT.1", "/x/../2"};
    request.output = "/o/%03d.png";
    request.eye = std::array<float, 3>{-100.5F, 0.0F, 1e-7F};
    request.speed = 0.1;
    request.followedFile = 2;
    request.size = {320, 240};
    request.scene.showGrid = false;
    EXPECT_EQ(
        reproducingCommand(request, planRendering(request, 1.0).plan),
        "env 'PELSAR_DATA=/it'\\''s/' sorvane render '/a b/ETXYZ.OUT.1' /2 -o /o/%03d.png --view free "
        "--eye -100.5,0,1e-07 --look-at 0,0,0 --from 0 --to 1 --step 0.0033000000000000004 --size 320x240 --follow 2 "
        "--no-grid");

    RenderRequest picture;
    picture.files = {"ETXYZ.OUT.1"};
    picture.output = "a.png";
    picture.atSeconds = 1.5;
    picture.scene.showTerrain = picture.scene.lineStyles = true;
    picture.scene.samples = 4;
    picture.texts = {.hasReadout = true, .hasLabels = true, .title = "It's", .unit = LengthUnit::Feet};
    picture.scene.showHistoryLines = picture.scene.showDropLines = false;
    const std::string here = std::filesystem::current_path().string() + "/";
    EXPECT_EQ(
        reproducingCommand(picture, planRendering(picture, 1.0).plan),
        "env 'PELSAR_DATA=/it'\\''s/' sorvane render " + here + "ETXYZ.OUT.1 -o " + here +
            "a.png --view threat --at 1.5 --size 640x480 --terrain --no-history --no-drop-lines --line-styles "
            "--antialias 4 "
            "--readout --unit ft "
            "--labels --title 'It'\\''s'");
}
} // namespace
