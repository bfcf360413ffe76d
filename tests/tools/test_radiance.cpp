// `sorvane render --radiance`: what its files hold, and what it refuses.
#include <array>
#include <cmath>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>

#include <gmock/gmock.h>

#include <ImfChannelList.h>
#include <ImfDoubleAttribute.h>
#include <ImfFrameBuffer.h>
#include <ImfHeader.h>
#include <ImfInputFile.h>
#include <ImfStringAttribute.h>
#include <ImfVecAttribute.h>
#include <nlohmann/json.hpp>
#include <tiffio.h>

#include "commandrun.h"
#include "environmentvariable.h"
#include "radiancefile.h"
#include "rows.h"
#include "temporarydirectory.h"
#include "trajectorytext.h"

using namespace sorvane;

namespace {
using testing::HasSubstr;

std::string contentsOf(const std::string& path) {
    std::ostringstream text;
    text << std::ifstream(path, std::ios::binary).rdbuf();
    return text.str();
}

// The floats of a file of NumPy's, whose data begin behind its first line.
std::vector<float> floatsOf(const std::string& npy) {
    const std::size_t begin = npy.find('\n') + 1;
    std::vector<float> values((npy.size() - begin) / sizeof(float));
    std::memcpy(values.data(), npy.data() + begin, values.size() * sizeof(float));
    return values;
}

RadianceImage smallImage() {
    RadianceImage image{3, 2, {0.0F, 1.5e-4F, -2.0F, 3.4e38F, 1e-30F, 7.0F}, {}};
    image.facts = {1.25, {1.0, -2.5, 3.0}, {0.6, 0.0, -0.8}, 30.0, 7e-8, 2e-5};
    return image;
}

TEST(RadianceFile, TiffReadsBack) {
    const TemporaryDirectory folder;
    const RadianceImage image = smallImage();
    const std::string path = folder.file("a.tif");
    ASSERT_FALSE(writeRadiance(image, path));
    const std::unique_ptr<TIFF, void (*)(TIFF*)> tiff(TIFFOpen(path.c_str(), "r"), TIFFClose);
    ASSERT_NE(tiff, nullptr);
    std::uint16_t bits = 0;
    std::uint16_t format = 0;
    char* description = nullptr;
    TIFFGetField(tiff.get(), TIFFTAG_BITSPERSAMPLE, &bits);
    TIFFGetField(tiff.get(), TIFFTAG_SAMPLEFORMAT, &format);
    TIFFGetField(tiff.get(), TIFFTAG_IMAGEDESCRIPTION, &description);
    EXPECT_EQ(bits, 32);
    EXPECT_EQ(format, SAMPLEFORMAT_IEEEFP);
    const auto facts = nlohmann::json::parse(description);
    EXPECT_EQ(facts["unit"], "W/cm2/sr");
    EXPECT_EQ(facts["time_s"], 1.25);
    EXPECT_EQ(facts["pixel_solid_angle_sr"], 7e-8);
    std::vector<float> values;
    for (std::uint32_t row = 0; row < 2; ++row) {
        std::array<float, 3> line{};
        ASSERT_EQ(TIFFReadScanline(tiff.get(), line.data(), row, 0), 1);
        values.insert(values.end(), line.begin(), line.end());
    }
    EXPECT_EQ(values, image.radiances);
}

TEST(RadianceFile, ExrReadsBack) {
    const TemporaryDirectory folder;
    const RadianceImage image = smallImage();
    const std::string path = folder.file("a.exr");
    ASSERT_FALSE(writeRadiance(image, path));
    Imf::InputFile file(path.c_str(), 0);
    const Imf::Header& header = file.header();
    EXPECT_EQ(header.typedAttribute<Imf::StringAttribute>("unit").value(), "W/cm2/sr");
    EXPECT_EQ(header.typedAttribute<Imf::DoubleAttribute>("time").value(), 1.25);
    EXPECT_EQ(header.typedAttribute<Imf::V3dAttribute>("eye").value(), Imath::V3d(1.0, -2.5, 3.0));
    EXPECT_EQ(header.typedAttribute<Imf::V3dAttribute>("axis").value(), Imath::V3d(0.6, 0.0, -0.8));
    EXPECT_EQ(header.typedAttribute<Imf::DoubleAttribute>("verticalFieldOfView").value(), 30.0);
    std::vector<float> values(6);
    Imf::FrameBuffer pixels;
    pixels.insert(
        "Y", Imf::Slice(Imf::FLOAT, reinterpret_cast<char*>(values.data()), sizeof(float), 3 * sizeof(float)));
    file.setFrameBuffer(pixels);
    file.readPixels(0, 1);
    EXPECT_EQ(values, image.radiances);
}

TEST(RadianceFile, NpyIsAHeaderAndTheFloatsWithTheFactsBeside) {
    const TemporaryDirectory folder;
    const RadianceImage image = smallImage();
    const std::string path = folder.file("a.npy");
    ASSERT_FALSE(writeRadiance(image, path));
    const std::string bytes = contentsOf(path);
    EXPECT_EQ(bytes.substr(0, 8), std::string("\x93NUMPY\x01\x00", 8));
    EXPECT_EQ((bytes.find('\n') + 1) % 64, 0U);
    EXPECT_EQ(
        static_cast<unsigned char>(bytes[8]) + 256U * static_cast<unsigned char>(bytes[9]), bytes.find('\n') + 1 - 10);
    EXPECT_THAT(bytes, HasSubstr("{'descr': '<f4', 'fortran_order': False, 'shape': (2, 3), }"));
    EXPECT_EQ(floatsOf(bytes), image.radiances);
    EXPECT_EQ(nlohmann::json::parse(contentsOf(path + ".json"))["axis"][2], -0.8);
    EXPECT_TRUE(writeRadiance(image, folder.file("no/a.npy")).has_value());
}

struct RadianceCommandTest : testing::Test {
    TemporaryDirectory directory;
    TemporaryDirectory results;
    EnvironmentVariable dataRoot{"PELSAR_DATA", directory.file("")}; // no bodies: the flare is what is drawn
    std::string trajectory;
    std::string lookAt = "100,0,0";

    // One second: a flare of half a unit, 200 units along x from where the eye is put.
    void SetUp() override {
        QList<TestSample> samples;
        for (int i = 0; i <= 10; ++i) {
            TestSample sample;
            sample.time = 0.1 * i;
            sample.flares = {{.x = 200.0, .y = 3.0 * i, .z = 10.0}};
            samples.push_back(sample);
        }
        trajectory = directory.file("ETXYZ.OUT.1");
        writeTrajectory(QString::fromStdString(trajectory), samples);
    }

    CommandRun render(const std::string& output, std::vector<std::string> options) const {
        options.insert(
            options.begin(), {"render", trajectory, "-o", results.file(output), "--allow-missing", "--radiance",
                              "--eye", "0,0,0", "--look-at", lookAt});
        return runCommand(options);
    }
    std::vector<float> rendered(const std::string& output, const std::vector<std::string>& options) const {
        const CommandRun run = render(output, options);
        EXPECT_EQ(run.status, ExitStatus::Success) << run.err;
        return floatsOf(contentsOf(results.file(output)));
    }
};

TEST_F(RadianceCommandTest, AFlareAddsUpToItsIntensityThroughTheWholeSensor) {
    const auto intensity = [&](const std::vector<std::string>& options, double centimetres) {
        std::vector<std::string> all = {"--sensor", "40x30", "--background", "0.001", "--at", "0.5"};
        all.insert(all.end(), options.begin(), options.end());
        double sum = 0.0;
        for (const float value : rendered("a.npy", all))
            sum += double{value} - 0.001;
        // Off the axis by θ, tan²θ = (15² + 10²) / 200², a pixel has cos³θ of its solid angle on the axis.
        const double pitch = 2.0 * std::tan(std::acos(-1.0) / 12.0) / 30.0;
        const double solidAngle = pitch * pitch * std::pow(1.0 + 325.0 / 40000.0, -1.5);
        return sum * solidAngle * (40000.0 + 325.0) * centimetres * centimetres;
    };
    const double plain = intensity({}, 100.0);
    EXPECT_GT(plain, 0.0);
    EXPECT_NEAR(intensity({"--unit", "ft"}, 30.48) / plain, 1.0, 1e-4);
    EXPECT_NEAR(intensity({"--blur", "1.5"}, 100.0) / plain, 1.0, 1e-3);
    EXPECT_NEAR(plain / TestFlare().scalar, 1.0, 0.01);
    EXPECT_NEAR(intensity({"--flare-scale", "0.25"}, 100.0) / plain, 0.25, 1e-4);
}

TEST_F(RadianceCommandTest, TheSameCallMakesTheSameBytesAndFramesHaveNoiseOfTheirOwn) {
    for (const char* const format : {"exr", "tif", "npy"}) {
        const std::vector<std::string> options = {"--sensor", "20x20", "--noise", "1e-6", "--seed", "5"};
        const std::string one = std::string("one.") + format;
        const std::string two = std::string("two.") + format;
        ASSERT_EQ(render(one, options).status, ExitStatus::Success);
        ASSERT_EQ(render(two, options).status, ExitStatus::Success);
        EXPECT_EQ(contentsOf(results.file(one)), contentsOf(results.file(two))) << format;
    }
    lookAt = "-100,0,0"; // at nothing but the sky
    ASSERT_EQ(
        render("s-%02d.npy", {"--size", "16x8", "--to", "0.2", "--step", "0.1", "--noise", "1e-6"}).status,
        ExitStatus::Success);
    EXPECT_FALSE(contentsOf(results.file("s-00.npy")) == contentsOf(results.file("s-01.npy")));
    EXPECT_EQ(nlohmann::json::parse(contentsOf(results.file("s-02.npy.json")))["time_s"], 0.2);
    const std::vector<float> even =
        rendered("even.npy", {"--size", "8x8", "--background", "0.3", "--bits", "1", "--full-scale", "0.5"});
    EXPECT_EQ(even, std::vector<float>(64, 0.5F));
}

TEST_F(RadianceCommandTest, PrintsTheCommandThatRepeatsIt) {
    const CommandRun run = render(
        "a.npy", {"--sensor", "9x7", "--blur", "0.5", "--noise", "1e-6", "--bits", "8", "--full-scale", "0.25",
                  "--unit", "ft", "--flare-scale", "0.5", "--print-command"});
    EXPECT_THAT(
        run.out, HasSubstr(" --size 9x7 --unit ft --flare-scale 0.5 --radiance --blur 0.5 --noise 1e-06 --seed 0 "
                           "--bits 8 --full-scale 0.25 "
                           "--allow-missing"));
}

TEST_F(RadianceCommandTest, RefusesWhatMakesNoSense) {
    for (const auto& [output, options, message] : Rows<const char*, std::vector<std::string>, const char*>{
             {"a.png", {}, "a radiance picture is one of exr, tif, tiff, npy"},
             {"a.mp4", {}, "a radiance picture is one of exr, tif, tiff, npy"},
             {"a", {}, "a radiance picture is one of exr, tif, tiff, npy"},
             {"a.exr", {"--blur", "-1"}, "--blur is a standard deviation from 0 to 1000 pixels"},
             {"a.exr", {"--blur", "nan"}, "--blur is a standard deviation from 0 to 1000 pixels"},
             {"a.exr", {"--noise", "-1e-9"}, "--noise is a radiance of 0 or more"},
             {"a.exr", {"--bits", "0", "--full-scale", "1"}, "--bits is from 1 to 24"},
             {"a.exr", {"--bits", "8"}, "--bits and --full-scale go together"},
             {"a.exr", {"--bits", "8", "--full-scale", "0"}, "--full-scale is a radiance above 0"},
             {"a.exr", {"--background", "inf"}, "--background is a radiance"},
             {"a.exr", {"--sensor", "0x0"}, "--sensor: columns and rows of pixels are wanted"},
             {"a.exr", {"--sensor", "100000x100000"}, "at most 4096 pixels a side"},
             {"a.exr", {"--sensor", "8x8", "--size", "8x8"}, "--size excludes --sensor"},
             {"a.exr", {"--readout"}, "--radiance has no texts"},
             {"a.exr", {"--antialias", "4"}, "leave out --antialias"}}) {
        const CommandRun run = render(output, options);
        EXPECT_EQ(run.status, ExitStatus::Failed) << message;
        EXPECT_THAT(run.err, HasSubstr(message));
        EXPECT_FALSE(std::filesystem::exists(results.file(output))) << message;
    }
    for (const auto& [option, message] : Rows<const char*, const char*>{
             {"--blur", "--blur requires --radiance"}, {"--flare-scale", "--flare-scale is for radiances"}}) {
        const CommandRun run = runCommand({"render", trajectory, "-o", results.file("a.png"), option, "2"});
        EXPECT_THAT(run.err, HasSubstr(message));
    }
}
} // namespace
