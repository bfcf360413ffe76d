// What a target radiates towards the threat, against bodies whose intensity can be worked out by hand.
#include <cmath>
#include <filesystem>

#include <gtest/gtest.h>

#include "measuredflight.h"
#include "radiometry.h"
#include "rows.h"
#include "signaturebodies.h"
#include "trajectoryreader.h"

using namespace sorvane;

namespace {
constexpr const char* kDiffuseSurface = "0.3 0.6 0.0 0.3 2 diffuse";
// The sun stands level in the world's x. W/m²/sr in the third line: earth, sky, sun.
constexpr const char* kAtmosphere = "0 0 0\n0 0 0 0 0 0 0 0 90 90\n2 1 4 0\n";
constexpr double kSky = 1e-4; // W/cm²/sr

// A box of 4 by 3 by 2 m that radiates 6 W/sr ahead, 16 to the right, 18 behind, 32 to the left, 60 up and 72 down.
constexpr std::array<float, 6> kSides = {1e-4F, 2e-4F, 3e-4F, 4e-4F, 5e-4F, 6e-4F};

class RadiometryTest : public testing::Test {
protected:
    TargetModel::Band band(char digit, const char* surface, const std::array<float, 6>& sides = kSides) const {
        const std::string name = std::string("box_b000") + digit;
        SignatureFiles files = writeBody(folder_, name, boxFacets({4.0, 3.0, 2.0}, sides), surface);
        files.rotors = rotors_;
        TargetModel::Band made{digit};
        EXPECT_TRUE(made.body.load(files));
        EXPECT_TRUE(made.atmosphere.Load(folder_.write(name + ".atm", kAtmosphere)));
        return made;
    }
    TargetModel box(const char* surface = kBlackSurface) const { return {{band('1', surface)}}; }

    static void radiate(MeasuredFlight& flight, const TargetModel& model, const RadiometryWork& work = {}) {
        flight.engagement.setRadiometry(radiometryOf(flight.engagement.samples(), model, work));
    }

    TemporaryDirectory folder_;
    std::string rotors_;
};

FlaredSample posed(double time, const Triple& attitude, const Triple& threat) {
    FlaredSample sample = sampleAt(time, {100, 200, -300}, {100 + threat[0], 200 + threat[1], -300 + threat[2]});
    sample.targetAttitude = attitude;
    return sample;
}

TEST(TargetRadiometryTest, IsEvenInTheLogarithm) {
    const double none = std::nan("");
    const TargetRadiometry radiometry(
        {.times = {0, 1, 2, 3, 4, 5}, .areas = {1, 1, 1, 1, 1, 1}, .bands = {{'1', {1, 100, 100, 0, none, 3}}}});
    for (const auto& [time, expected] : Rows<double, double>{
             {-0.1, none},
             {0, 1},
             {0.5, 10},
             {0.75, 31.622776601683793},
             {1, 100},
             {1.5, 100},
             {2.25, 75},
             {3, 0},
             {3.5, none},
             {4, none},
             {4.5, none},
             {5, 3},
             {5.1, none},
             {none, none}})
        if (std::isnan(expected))
            EXPECT_TRUE(std::isnan(radiometry.emissionAt(time))) << time;
        else
            EXPECT_NEAR(radiometry.emissionAt(time), expected, 1e-12) << time;
    EXPECT_EQ(radiometry.emissionAt(1, '1'), 100);
    EXPECT_TRUE(std::isnan(radiometry.emissionAt(1, '4')));
}

// Radiance times area times cosine of the sides that are seen.
TEST_F(RadiometryTest, TakesTheSidesThatFaceTheThreat) {
    const TargetModel model = box();
    for (const auto& [attitude, threat, intensity, area] : Rows<Triple, Triple, double, double>{
             {{0, 0, 0}, {500, 0, 0}, 6, 6},
             {{0, 0, 90}, {0, 500, 0}, 6, 6},
             {{0, 0, 90}, {500, 0, 0}, 32, 8},
             {{0, 90, 0}, {0, 0, -500}, 6, 6},
             {{0, 90, 0}, {500, 0, 0}, 72, 12},
             {{90, 0, 0}, {0, 0, 500}, 16, 8},
             {{90, 0, 0}, {0, 500, 0}, 60, 12},
             {{0, 0, 0}, {300, 400, 0}, 0.6 * 6 + 0.8 * 16, 10},
             {{0, 0, 30}, {-250, -433.0127018922, 0}, 0.5 * std::sqrt(3.0) * 18 + 0.5 * 32, 3 * std::sqrt(3.0) + 4},
             {{30, 0, 0}, {0, 250, -433.0127018922}, 60, 12}}) {
        MeasuredFlight flight({posed(0, attitude, threat)}, 20.0F, LengthUnit::Metres);
        radiate(flight, model);
        SCOPED_TRACE(
            testing::Message() << attitude[0] << ' ' << attitude[1] << ' ' << attitude[2] << ", " << threat[0]);
        EXPECT_NEAR(flight.on("target-intensity", 0), intensity, 1e-4 * intensity);
        EXPECT_NEAR(flight.on("target-contrast", 0), intensity - kSky * 1e4 * area, 1e-4 * intensity);
        EXPECT_NEAR(flight.on("target-irradiance", 0) * 5e4 * 5e4, intensity, 1e-4 * intensity);
    }
}

TEST_F(RadiometryTest, UnitsCountSquaredAndIrradiancesNeedNone) {
    const TargetModel model = box();
    const double squareFoot = 0.09290304;
    for (const auto& [unit, intensity] : Rows<LengthUnit, double>{
             {LengthUnit::Metres, 6.0}, {LengthUnit::Feet, 6.0 * squareFoot}, {LengthUnit::Unstated, std::nan("")}}) {
        FlaredSample sample = posed(0, {}, {500, 0, 0});
        sample.gyro = {0, 0, 180};
        sample.flares = {flareAt(1, {100, 200, -300})};
        sample.flares[0].brightness = 3.0;
        MeasuredFlight flight({sample}, 20.0F, unit);
        radiate(flight, model, {.background = 2e-5});
        EXPECT_NEAR(flight.on("target-irradiance", 0), 6.0 / (5e4 * 5e4), 1e-13);
        for (const auto& [measure, expected] : Rows<const char*, double>{
                 {"target-intensity", intensity},
                 {"target-contrast", 0.8 * intensity},
                 {"jam-to-signal", 3 / intensity}})
            if (std::isnan(expected))
                EXPECT_TRUE(std::isnan(flight.on(measure, 0))) << measure;
            else
                EXPECT_NEAR(flight.on(measure, 0), expected, 1e-4) << measure;
    }
}

// The target yaws from the sun on its nose to the sun on its tail while the threat stays on the sun's side.
TEST_F(RadiometryTest, ReflectsSunSkyAndEarthAtItsAttitude) {
    MeasuredFlight flight(
        {posed(0, {0, 0, 0}, {500, 0, 0}), posed(1, {0, 0, 180}, {500, 0, 0}), posed(4, {0, 0, 180}, {-500, 0, 0})},
        20.0F, LengthUnit::Metres);
    radiate(flight, box(kDiffuseSurface));
    const double around = 0.4 * (2.0 + 1.0) * 6.0; // of 6 m²
    const double sun = 0.3 * 4.0 * 6.0;
    EXPECT_NEAR(flight.on("target-intensity", 0), 6.0 + around + sun, 1e-3);
    EXPECT_NEAR(flight.on("target-intensity", 1), 18.0 + around + sun, 1e-3);
    EXPECT_NEAR(flight.on("target-intensity", 2), 6.0 + around, 1e-3);
    const double underTheCurve = 1.0 * (6.0 + 18.0) / 2.0 + 3.0 * (18.0 + 6.0) / 2.0 + 4.0 * around + 2.5 * sun;
    EXPECT_NEAR(flight.result("target-mean-intensity"), underTheCurve / 4.0, 1e-3);
}

// 6 W/sr ahead and 16 to the right: the threat goes round from the nose to the right wing in two seconds.
TEST_F(RadiometryTest, IsWorkedOutAtStepsAndEvenInTheLogarithmBetween) {
    std::vector<FlaredSample> samples;
    for (int i = 0; i <= 203; ++i) {
        const double angle = i / 203.0 * std::numbers::pi / 2.0;
        samples.push_back(posed(i / 100.0, {}, {500 * std::cos(angle), 500 * std::sin(angle), 0}));
    }
    MeasuredFlight flight(samples, 20.0F, LengthUnit::Metres);
    const auto exact = [](double time) {
        const double angle = time / 2.03 * std::numbers::pi / 2.0;
        return 6 * std::cos(angle) + 16 * std::sin(angle);
    };
    double done = -1.0;
    radiate(flight, box(), {.step = 0.5, .progress = [&](double share) {
                                return std::exchange(done, share) < share;
                            }});
    EXPECT_GT(done, 0.7);
    EXPECT_EQ(flight.engagement.radiometry()->series().times, (std::vector<double>{0, 0.5, 1, 1.5, 2, 2.03}));
    for (const double time : {0.0, 0.5, 1.5, 2.0, 2.03})
        EXPECT_NEAR(flight.at("target-intensity", time), exact(time), 1e-3) << time;
    EXPECT_NEAR(flight.at("target-intensity", 0.25), std::sqrt(exact(0.0) * exact(0.5)), 1e-3);
    EXPECT_NEAR(flight.at("target-intensity", 2.015), std::sqrt(exact(2.0) * exact(2.03)), 1e-3);
    radiate(flight, box());
    EXPECT_EQ(flight.engagement.radiometry()->series().times.size(), 22U);
    EXPECT_NEAR(flight.at("target-intensity", 0.25), std::sqrt(exact(0.2) * exact(0.3)), 1e-3);
    EXPECT_EQ(
        radiometryOf(
            flight.engagement.samples(), box(),
            {.progress =
                 [](double) {
                     return false;
                 }}),
        nullptr);
    EXPECT_EQ(radiometryOf({}, box(), {}), nullptr);
}

TEST_F(RadiometryTest, IsUndefinedWhereNothingCanBeSaid) {
    MeasuredFlight flight(
        {posed(0, {}, {500, 0, 0}), posed(1, {}, {}), posed(2, {}, {}), posed(3, {}, {500, 0, 0}),
         posed(4, {0, std::nan(""), 0}, {500, 0, 0}), posed(5, {}, {INFINITY, 0, 0})},
        20.0F, LengthUnit::Metres);
    EXPECT_TRUE(std::isnan(flight.on("target-intensity", 0))); // before it is given
    EXPECT_TRUE(std::isnan(flight.result("target-mean-intensity")));
    radiate(flight, box(), {.step = 1.0});
    for (const auto& [sample, isDefined] :
         Rows<std::size_t, bool>{{0, true}, {1, true}, {2, false}, {3, true}, {4, false}, {5, false}})
        EXPECT_EQ(std::isfinite(flight.on("target-intensity", sample)), isDefined) << sample;
    EXPECT_TRUE(std::isnan(flight.on("target-irradiance", 1))); // they meet there
    EXPECT_TRUE(std::isnan(flight.at("target-intensity", 6)));
    // Times that can't be gone through in steps are ends alone.
    MeasuredFlight endless({posed(-1e308, {}, {500, 0, 0}), posed(1e308, {}, {500, 0, 0})}, 20.0F, LengthUnit::Metres);
    radiate(endless, box());
    EXPECT_NEAR(endless.on("target-intensity", 1), 6.0, 1e-4);
    MeasuredFlight longOne({posed(0, {}, {500, 0, 0}), posed(1e6, {}, {500, 0, 0})}, 20.0F, LengthUnit::Metres);
    radiate(longOne, box(), {.step = 1e-3, .pixels = 8});
    EXPECT_EQ(longOne.engagement.radiometry()->series().times.size(), 100'001U);
}

TEST_F(RadiometryTest, RotorsTurnWithTime) {
    rotors_ = folder_.write("rotors", "1 12  0 0 0  0 0 1  0.25\n"); // the front to the left in a second
    MeasuredFlight flight({posed(0, {}, {0, -500, 0}), posed(1, {}, {0, -500, 0})}, 20.0F, LengthUnit::Metres);
    radiate(flight, box());
    EXPECT_NEAR(flight.on("target-intensity", 0), 32.0, 1e-3);
    EXPECT_NEAR(flight.on("target-intensity", 1), 6.0, 1e-3);
}

// The target radiates 6 W/sr. The seeker looks at flare 1 with a half field of 10 degrees, flare 2 lies beside it.
TEST_F(RadiometryTest, FlaresAgainstTheTarget) {
    std::vector<FlaredSample> samples;
    const auto add = [&](double time, double first, double second) {
        FlaredSample sample = posed(time, {}, {500, 0, 0});
        sample.gyro = {0, 0, 180};
        if (first > 0.0) {
            sample.flares = {flareAt(7, {200, 200, -300}), flareAt(8, {200, 350, -300})};
            sample.flares[0].brightness = first;
            sample.flares[1].brightness = second;
        }
        samples.push_back(sample);
    };
    add(0, 0, 0);
    add(1, 30, 900);
    add(2, 180, 900);
    add(3, 120, 900);
    samples[3].flares[1].position = {200, 210, -300};
    samples[3].flares.push_back(samples[3].flares[0]); // of two of one number the last one counts
    add(4, 0, 0);
    MeasuredFlight flight(samples, 20.0F, LengthUnit::Metres);
    radiate(flight, box(), {.flareScale = 0.1});
    for (const auto& [time, together] : Rows<double, double>{{0, 0}, {1, 0.5}, {1.5, 0.5}, {2, 3}, {3, 17}, {4, 0}})
        EXPECT_NEAR(flight.at("jam-to-signal", time), together, 1e-3) << time;
    EXPECT_NEAR(flight.ofFlare("flare-jam-to-signal", 0, 2), 3.0, 1e-4);
    EXPECT_NEAR(flight.ofFlare("flare-jam-to-signal", 1, 2), 15.0, 1e-3);
    EXPECT_TRUE(std::isnan(flight.ofFlare("flare-jam-to-signal", 0, 4)));
    EXPECT_NEAR(flight.result("greatest-jam-to-signal"), 17.0, 1e-3);
    for (const auto& [measure, expected] : Rows<const char*, double>{
             {"greatest-jam-to-signal-time", 3},
             {"target-outshone-time", 2},
             {"target-mean-intensity", 6},
             {"target-intensity-at-first-flare", 6}})
        EXPECT_NEAR(flight.result(measure), expected, 1e-4) << measure;
    MeasuredFlight dark(samples, 20.0F, LengthUnit::Metres);
    radiate(dark, {{band('1', kBlackSurface, {})}});
    EXPECT_TRUE(std::isnan(dark.on("jam-to-signal", 1)));
    EXPECT_EQ(dark.on("target-intensity", 1), 0.0);
}

TEST_F(RadiometryTest, OtherBandsLieBesideTheNamedOne) {
    const auto copy = [&](const char* from, const char* to) {
        for (const char* const extension : {".brdf", ".rad", ".atm"})
            std::filesystem::copy(
                folder_.file(std::string(from) + extension), folder_.file(std::string(to) + extension));
    };
    band('1', kBlackSurface);
    band('4', kBlackSurface, {2e-4F, 2e-4F, 3e-4F, 4e-4F, 5e-4F, 6e-4F});
    copy("box_b0001", "box_nir_x");
    copy("box_b0004", "box_midir_x");
    copy("box_b0004", "box_b0006");
    copy("box_b0001", "box");
    std::filesystem::remove(folder_.file("box_b0006.atm"));
    const auto filesOf = [&](const char* signature, BandChoice choice) {
        TrajectoryFileHeader header;
        header.targetSignaturePath = QString::fromStdString(folder_.file(std::string(signature) + ".rad"));
        header.targetBrdfPath = QString::fromStdString(folder_.file(std::string(signature) + ".brdf"));
        header.targetGeometryPath = QString::fromStdString(folder_.file("box_b0001.vnl"));
        return targetFilesOf(header, choice);
    };
    EXPECT_TRUE(filesOf("box_b0006", BandChoice::All).empty());
    EXPECT_EQ(filesOf("box_b0001", BandChoice::Named).size(), 1U);
    for (const char* const signature : {"box_b0001", "box_nir_x"}) {
        const std::vector<TargetFiles> files = filesOf(signature, BandChoice::All);
        ASSERT_EQ(files.size(), 2U) << signature;
        MeasuredFlight flight({posed(0, {}, {500, 0, 0})}, 20.0F, LengthUnit::Metres);
        radiate(flight, *loadTargetModel(files));
        EXPECT_NEAR(flight.on("target-intensity", 0), 6.0, 1e-4) << signature;
        EXPECT_NEAR(flight.on("target-intensity-band-1", 0), 6.0, 1e-4);
        EXPECT_NEAR(flight.on("target-intensity-band-4", 0), 12.0, 1e-4);
        EXPECT_TRUE(std::isnan(flight.on("target-intensity-band-6", 0)));
    }
    EXPECT_EQ(loadTargetModel({}), nullptr);
    const std::vector<TargetFiles> nameless = filesOf("box", BandChoice::All);
    ASSERT_EQ(nameless.size(), 1U);
    EXPECT_EQ(nameless[0].band, 0) << "its name tells no band";
}
} // namespace
