// `sorvane render --scale --palette --colour-bar`: what its pictures hold, and what it refuses.
#include <filesystem>

#include <gmock/gmock.h>

#include <QImage>

#include "commandrun.h"
#include "environmentvariable.h"
#include "overlaytext.h"
#include "palette.h"
#include "rows.h"
#include "temporarydirectory.h"
#include "trajectorytext.h"

using namespace sorvane;

namespace {
using testing::HasSubstr;

// A flare of two units' radius, 20 units before the eye.
struct ScaleCommandTest : testing::Test {
    // Its radiance, W/cm²/sr, is 850 / (π 200²); on this scale it has colour 100.
    static constexpr const char* kWhite = "0.01724843";

    TemporaryDirectory directory;
    EnvironmentVariable dataRoot{"PELSAR_DATA", directory.file("")}; // no bodies
    std::string trajectory = directory.file("ETXYZ.OUT.1");
    std::string output = directory.file("a.png");

    void SetUp() override {
        QList<TestSample> samples;
        for (int i = 0; i <= 10; ++i) {
            TestSample sample;
            sample.time = 0.1 * i;
            sample.flares = {{.x = 20.0, .y = 0.0, .z = 0.0, .scalar = 850.0, .radius = 2.0}};
            samples.push_back(sample);
        }
        writeTrajectory(QString::fromStdString(trajectory), samples);
    }

    std::string size = "81x61";

    CommandRun render(std::vector<std::string> options) const {
        options.insert(
            options.begin(), {"render", trajectory, "-o", output, "--allow-missing", "--eye", "0,0,0", "--look-at",
                              "20,0,0", "--size", size, "--no-grid", "--no-history", "--no-drop-lines"});
        return runCommand(options);
    }
    QImage rendered(const std::vector<std::string>& options) const {
        const CommandRun run = render(options);
        EXPECT_EQ(run.status, ExitStatus::Success) << run.err;
        return QImage(QString::fromStdString(output)).convertToFormat(QImage::Format_RGB32);
    }
};

TEST_F(ScaleCommandTest, ColoursStandForRadiances) {
    const auto viridis = [](std::size_t number) {
        return coloursOf(Palette::Viridis)[number];
    };
    for (const auto& [options, flare, sky] : Rows<std::vector<std::string>, QRgb, QRgb>{
             {{"--scale", kWhite}, qRgb(100, 100, 100), qRgb(0, 0, 0)},
             {{"--scale", kWhite, "--palette", "inverted"}, qRgb(155, 155, 155), qRgb(255, 255, 255)},
             {{"--scale", kWhite, "--palette", "viridis"}, viridis(100), viridis(0)},
             {{"--scale", "0.2", "--palette", "viridis", "--unit", "ft"}, viridis(93), viridis(0)}, // / 0.3048²
             {{"--palette", "viridis"}, viridis(255), viridis(0)},                                  // far above 1/3000
             {{"--scale", "auto"}, qRgb(255, 255, 255), qRgb(0, 0, 0)},
         }) {
        const QImage picture = rendered(options);
        EXPECT_EQ(picture.pixel(40, 30), flare) << options[1];
        EXPECT_EQ(picture.pixel(2, 2), sky) << options[1];
    }
}

TEST_F(ScaleCommandTest, TheUsualScaleChangesNoByteAndItsBarOnlyTheRight) {
    const QImage usual = rendered({});
    EXPECT_TRUE(rendered({"--scale", "fixed", "--palette", "grey"}) == usual);
    const QRect left(0, 0, 20, 61);
    EXPECT_TRUE(rendered({"--colour-bar"}).copy(left) == usual.copy(left));
    size = "800x600";
    for (const auto& [palette, option] : Rows<Palette, const char*>{
             {Palette::Grey, "grey"}, {Palette::Inverted, "inverted"}, {Palette::Inferno, "inferno"}}) {
        const QImage barred = rendered({"--palette", option, "--colour-bar"});
        // Down the middle of the bar, the greatest radiance first.
        const int x = barred.width() - textPixelSize(barred.size()) * 3 / 2;
        QList<QRgb> colours;
        for (int row = 0; row < barred.height(); ++row)
            colours << barred.pixel(x, row);
        EXPECT_TRUE(colours.contains(coloursOf(palette).front())) << option;
        EXPECT_LT(colours.indexOf(coloursOf(palette)[250]), colours.indexOf(coloursOf(palette)[5])) << option;
    }
}

TEST_F(ScaleCommandTest, PrintsTheCommandThatRepeatsIt) {
    for (const auto& [options, expected] : Rows<std::vector<std::string>, const char*>{
             {{"--scale", "auto", "--colour-bar"}, " --scale auto --colour-bar"},
             {{"--scale", "5e-5", "--palette", "inferno"}, " --scale 5e-05 --palette inferno"},
             {{"--scale", "5e-5", "--unit", "ft"}, " --unit ft --scale 5e-05"},
             {{"--scale", "fixed", "--palette", "grey"}, "81x61 --allow-missing"}}) {
        std::vector<std::string> all = options;
        all.emplace_back("--print-command");
        EXPECT_THAT(render(all).out, HasSubstr(expected));
    }
}

TEST_F(ScaleCommandTest, RefusesWhatMakesNoSense) {
    for (const auto& [options, message] : Rows<std::vector<std::string>, const char*>{
             {{"--scale", "0"}, "--scale: fixed, auto or the radiance of white, above 0, is wanted"},
             {{"--scale", "-1e-4"}, "the radiance of white, above 0, is wanted"},
             {{"--scale", "nan"}, "the radiance of white, above 0, is wanted"},
             {{"--scale", "inf"}, "the radiance of white, above 0, is wanted"},
             {{"--scale", "1e-4x"}, "the radiance of white, above 0, is wanted"},
             {{"--palette", "rainbow"}, "--palette: rainbow not in"},
             {{"--scale", "auto", "--radiance"}, "leave out --scale, --palette and --colour-bar"}}) {
        output = directory.file(options.back() == "--radiance" ? "a.npy" : "b.png");
        const CommandRun run = render(options);
        EXPECT_EQ(run.status, ExitStatus::Failed) << options[1];
        EXPECT_THAT(run.err, HasSubstr(message));
        EXPECT_FALSE(std::filesystem::exists(output)) << options[1];
    }
}
} // namespace
