// Measures against closed forms and hand-made attitudes.
#include <algorithm>
#include <numbers>

#include <gtest/gtest.h>

#include "measuredflight.h"
#include "rows.h"

using namespace sorvane;

namespace {
constexpr double kRelative = 1e-9;
constexpr double kRadian = 180.0 / std::numbers::pi;

void expectNear(double actual, double expected, const std::string& what) {
    EXPECT_NEAR(actual, expected, kRelative * std::abs(expected)) << what;
}

TEST(Measures, OfAPassAtConstantVelocityAreTheClosedForms) {
    // The threat passes a target, both far from the origin and moving, at v = 300 and b = 40 apart, at t = 1.
    constexpr double kSpeed = 300.0;
    constexpr double kMiss = 40.0;
    std::vector<FlaredSample> samples;
    for (const double t : {0.0, 0.1, 0.75, 1.5, 4.0}) {
        const Triple target{1000.0 - 50.0 * t, 20.0 * t, -800.0};
        samples.push_back(sampleAt(t, target, {target[0] + kSpeed * (t - 1.0), target[1], target[2] - kMiss}));
    }
    const MeasuredFlight flight(samples);
    for (const double t : {0.0, 0.1, 0.3, 0.74, 0.75, 1.2, 1.5, 3.99, 4.0}) {
        const double along = kSpeed * (t - 1.0);
        const double range = std::sqrt(along * along + kMiss * kMiss);
        for (const auto& [measure, expected] : Rows<const char*, double>{
                 {"range", range},
                 {"closing-speed", -along * kSpeed / range},
                 {"line-of-sight-rate", kSpeed * kMiss / (range * range) * kRadian},
                 {"zero-effort-miss", kMiss},
                 {"time-to-go", 1.0 - t},
                 {"target-altitude", 800.0},
                 {"threat-altitude", 800.0 + kMiss},
                 {"target-speed", std::hypot(50.0, 20.0)},
                 {"threat-speed", std::hypot(250.0, 20.0)},
                 // The threat moves along (250, 20, 0), the target lies along (−along, 0, b).
                 {"lead-angle", std::acos(-250.0 * along / (range * std::hypot(250.0, 20.0))) * kRadian},
                 {"aspect", std::acos(along / range) * kRadian}})
            expectNear(flight.at(measure, t), expected, measure + (" at " + std::to_string(t)));
    }
    expectNear(flight.result("closest-approach"), kMiss, "closest approach");
    expectNear(flight.result("closest-approach-time"), 1.0, "its time");
    expectNear(flight.result("closest-approach-relative-speed"), kSpeed, "the speed there");
    EXPECT_EQ(flight.result("closest-approach-closing-speed"), 0.0);
    expectNear(flight.result("closest-approach-aspect"), 90.0, "the aspect there");
    EXPECT_TRUE(std::isnan(flight.at("range", 4.001)));
    EXPECT_TRUE(std::isnan(flight.at("range", -0.001)));
}

TEST(Measures, OfACircleAreItsSpeedAndAcceleration) {
    constexpr double kRadius = 900.0;
    constexpr double kTurn = 0.4; // radians per second
    const double acceleration = kTurn * kTurn * kRadius;
    // Even steps longer than the 0.1 s that accelerations look around, shorter ones, and uneven ones.
    for (const std::vector<double>& steps : {std::vector{0.5}, {0.01}, {0.02, 0.05, 0.03}}) {
        std::vector<FlaredSample> samples;
        double t = 3.0;
        for (std::size_t i = 0; i < 100; ++i, t += steps[i % steps.size()])
            samples.push_back(
                sampleAt(t, {kRadius * std::cos(kTurn * t), kRadius * std::sin(kTurn * t), -500.0}, {t, 0, 0}));
        const MeasuredFlight flight(samples, 20.0F, LengthUnit::Feet);
        const std::string what = "steps of " + std::to_string(steps[0]);
        const double middle = samples[40].time + 0.3 * steps[0];
        expectNear(flight.on("target-lateral-acceleration", 50), acceleration, what);
        expectNear(flight.at("target-lateral-acceleration", middle), acceleration, what);
        expectNear(flight.on("target-load-factor", 50), acceleration * 0.3048 / 9.80665, what);
        EXPECT_TRUE(std::isnan(flight.on("target-lateral-acceleration", 0))) << what;
        EXPECT_TRUE(std::isnan(flight.on("target-lateral-acceleration", 99))) << what;
        EXPECT_NEAR(flight.on("threat-lateral-acceleration", 50), 0.0, 1e-9) << "straight on";
        if (steps.size() == 1) // the central difference of a circle
            expectNear(
                flight.on("target-speed", 50), kRadius * std::sin(kTurn * steps[0]) / steps[0], what + ", speed");
    }
}

TEST(Measures, SpeedsOfEvenAccelerationAreExactAtUnevenSteps) {
    std::vector<FlaredSample> samples;
    for (const double t : {0.0, 0.1, 0.75, 1.5})
        samples.push_back(sampleAt(t, {}, {5.0 * t * t, 0, 0}));
    const MeasuredFlight flight(samples);
    for (const double t : {0.1, 0.3, 0.75})
        expectNear(flight.at("threat-speed", t), 10.0 * t, std::to_string(t));
    expectNear(flight.on("threat-speed", 0), 0.5, "the first interval's");
    expectNear(flight.on("threat-speed", 3), 5.0 * (1.5 * 1.5 - 0.75 * 0.75) / 0.75, "the last interval's");
}

TEST(Measures, AccelerationsLookAroundFarEnoughForRoundedPositions) {
    // Straight flight in steps of 0.01 s, positions rounded to thousandths: neighbours would leave 10 units/s².
    std::vector<FlaredSample> samples;
    for (int i = 0; i < 200; ++i) {
        const double t = 0.01 * i;
        samples.push_back(sampleAt(t, {std::round(123456.7 * t) / 1000.0, std::round(98765.4 * t) / 1000.0, 0}, {}));
    }
    const MeasuredFlight flight(samples);
    const std::vector<double> values = valuesOnSamples(flight.engagement, *findMeasure("target-lateral-acceleration"));
    for (std::size_t i = 10; i < 190; ++i)
        EXPECT_LT(values[i], 0.2) << i;
    EXPECT_TRUE(std::isnan(values[9]));
    EXPECT_TRUE(std::isnan(values[190]));
}

TEST(Measures, ThreatIsSeenFromTheTargetsBody) {
    // Yaw turns to the right, pitch lifts the nose, roll lowers the right wing; world z points down.
    for (const auto& [attitude, toThreat, azimuth, elevation] : Rows<Triple, Triple, double, double>{
             {{0, 0, 0}, {2, 2, 0}, 45, 0},
             {{0, 0, 0}, {-2, 0, 0}, 180, 0},
             {{0, 0, 0}, {3, 0, -3}, 0, 45},
             {{90, 0, 0}, {1, 1, 0}, 0, 45},
             {{-30, 0, 0}, {0, 1, 0}, 90, -30},
             {{0, 90, 0}, {1, 0, -1}, 0, -45},
             {{0, 30, 0}, {1, 0, 0}, 0, -30},
             {{0, 0, 90}, {-1, 1, 0}, 45, 0},
             {{90, 0, 90}, {-1, 1, 0}, 0, 45},
             {{0, 90, 90}, {0, 1, -1}, 0, -45}}) {
        FlaredSample sample = sampleAt(1.0, {7, 8, 9}, {7 + toThreat[0], 8 + toThreat[1], 9 + toThreat[2]});
        sample.targetAttitude = attitude;
        const MeasuredFlight flight({sample});
        const std::string what = ::testing::PrintToString(attitude) + ::testing::PrintToString(toThreat);
        EXPECT_NEAR(flight.on("threat-azimuth", 0), azimuth, 1e-9) << what;
        EXPECT_NEAR(flight.on("threat-elevation", 0), elevation, 1e-9) << what;
    }
}

TEST(Measures, OffBoresightAnglesAreFromTheGyrosAxis) {
    for (const auto& [gyro, target, degrees] : Rows<Triple, Triple, double>{
             {{0, 0, 0}, {1000, 0, 0}, 0.0},
             {{0, 0, 0}, {1000.0 * std::cos(1e-6), 1000.0 * std::sin(1e-6), 0}, 1e-6 * kRadian},
             {{0, 0, 0}, {-1000.0 * std::cos(1e-6), 0, 1000.0 * std::sin(1e-6)}, 180.0 - 1e-6 * kRadian},
             {{55, 0, 30}, {0, 500, 0}, 60.0},
             {{0, 30, 0}, {0, 0, -9}, 60.0},
             {{0, -90, 20}, {0, 0, 9}, 0.0}}) {
        FlaredSample sample = sampleAt(0.0, target, {});
        sample.gyro = gyro;
        const MeasuredFlight flight({sample});
        EXPECT_NEAR(flight.on("off-boresight", 0), degrees, degrees * kRelative + 1e-14) << degrees;
    }
    // Between samples the angles are blended, not the axes: at a quarter of the turn to 90 degrees they are 22.5.
    FlaredSample later = sampleAt(4.0, {1000, 0, 0}, {});
    later.gyro = {0, 0, 90};
    const MeasuredFlight flight({sampleAt(0.0, {1000, 0, 0}, {}), later}, 2.2F);
    expectNear(flight.at("off-boresight", 1.0), 22.5, "between samples");
    EXPECT_EQ(flight.at("half-field", 1.0), 1.1) << "the digits of the file, not those of single precision";
}

TEST(Measures, FollowAFlareThatGoesOutAndComesBack) {
    Flare bright = flareAt(7, {0, 30, 0});
    bright.brightness = 5.0;
    bright.halfAxes = {1, 2, 3};
    Flare dim = flareAt(7, {0, 40, 0});
    dim.halfAxes = {3, 2, 1};
    std::vector<FlaredSample> samples;
    for (int i = 0; i < 6; ++i)
        samples.push_back(sampleAt(10.0 + i, {0, 100, 0}, {}));
    samples[1].flares = {flareAt(9, {}), bright};
    samples[2].flares = {dim};
    samples[4].flares = {flareAt(7, {5, 5, 5}), dim}; // of two of one number the last one counts
    // The file is out of order, and begins with a record that a later one replaces.
    std::rotate(samples.begin(), samples.begin() + 3, samples.end());
    samples.insert(samples.begin(), samples[4]);
    samples[0].flares = {flareAt(55, {})};
    const MeasuredFlight flight(samples);
    const double out = std::nan("");
    for (const auto& [time, age, range, distance, brightness, band] :
         Rows<double, double, double, double, double, double>{
             {10.5, out, out, out, out, out},
             {11.0, 0.0, 30, 70, 5, 1},
             {11.5, 0.5, 35, 65, 5, 2},
             {12.0, 1.0, 40, 60, 0, 3},
             {12.5, 1.5, 40, 60, 0, 3}, // it stays until the sample without it
             {13.0, out, out, out, out, out},
             {13.5, out, out, out, out, out},
             {14.0, 0.0, 40, 60, 0, 3}, // anew
             {15.0, out, out, out, out, out}})
        for (const auto& [measure, expected] : Rows<const char*, double>{
                 {"flare-age", age},
                 {"flare-range", range},
                 {"flare-distance", distance},
                 {"flare-brightness", brightness},
                 {"flare-band-1", band}}) {
            const double actual = flight.ofFlare(measure, 1, time);
            if (std::isnan(expected))
                EXPECT_TRUE(std::isnan(actual)) << measure << " at " << time;
            else
                EXPECT_DOUBLE_EQ(actual, expected) << measure << " at " << time;
        }
    EXPECT_EQ(flight.ofFlare("flare-band-3", 1, 11.5), 2.0);
    EXPECT_EQ(flight.at("flares-burning", 11.9), 2.0);
    EXPECT_EQ(flight.at("flares-burning", 14.0), 1.0);
    EXPECT_EQ(flight.result("first-flare-time"), 11.0);
    // By row, all of them: the one that doesn't count has no value.
    const std::vector<double> ages = valuesOnAllRows(flight.engagement, *findMeasure("flare-age"));
    ASSERT_EQ(ages.size(), 5U);
    EXPECT_EQ(ages[2], 1.0);
    EXPECT_TRUE(std::isnan(ages[3]));
    const auto rows = flight.engagement.tracks().rows(1);
    EXPECT_EQ(valuesOnRows(flight.engagement, *findMeasure("flare-range"), rows), (std::vector<double>{30, 40, 40}));
}

TEST(Measures, AreNotANumberWhereThereIsNone) {
    const double infinite = INFINITY;
    const FlaredSample still = sampleAt(0.0, {1, 2, 3}, {1, 2, 3});
    FlaredSample flared = sampleAt(1.0, {1, 2, 3}, {4, infinite, 6});
    flared.gyro = {0, std::nan(""), 0};
    flared.flares = {flareAt(1, {4, infinite, 6}), flareAt(1, {}), flareAt(-3, {std::nan(""), 0, 0})};
    const std::vector<std::vector<FlaredSample>> engagements = {
        {still},
        {still, sampleAt(1.0, {1, 2, 3}, {1, 2, 3})},
        {flared},
        {still, flared, sampleAt(1.0, {}, {}), flared, sampleAt(2.0, {}, {5, 5, 5})},
        {sampleAt(-1e308, {}, {1, 1, 1}), sampleAt(1e308, {}, {2, 1, 1})}};
    for (const std::vector<FlaredSample>& samples : engagements)
        for (const float field : {1.5F, -1.0F, 0.0F, 400.0F, std::nanf("")}) {
            const MeasuredFlight flight(samples, field);
            const EngagementResults results = resultsOf(flight.engagement);
            for (const Measure& measure : allMeasures()) {
                if (measure.isOfMoments()) {
                    valuesOnSamples(flight.engagement, measure);
                    for (const double time : {-1e308, -1.0, 0.0, 0.5, 1.0, 1.5, 2.0, std::nan(""), infinite})
                        valueText(flight.engagement, measure, valueAt(flight.engagement, measure, time));
                } else if (measure.isOfFlareMoments()) {
                    valuesOnAllRows(flight.engagement, measure);
                    for (std::size_t track = 0; track < flight.engagement.tracks().size(); ++track)
                        flight.ofFlare(measure.name, track, 1.5);
                } else if (measure.isOfEngagement()) {
                    valueOf(results, measure);
                }
            }
        }
    const MeasuredFlight one({still});
    for (const char* const measure :
         {"closing-speed", "line-of-sight-rate", "zero-effort-miss", "time-to-go", "threat-speed", "lead-angle",
          "target-lateral-acceleration", "off-boresight", "threat-azimuth", "threat-elevation", "nearest",
          "target-load-factor"})
        EXPECT_TRUE(std::isnan(one.on(measure, 0))) << measure;
    EXPECT_EQ(one.on("range", 0), 0.0);
    EXPECT_EQ(one.on("flares-burning", 0), 0.0);
    for (const char* const measure : {"closest-approach-relative-speed", "first-flare-time", "decoyed"})
        EXPECT_TRUE(std::isnan(one.result(measure))) << measure;
    const MeasuredFlight none({});
    EXPECT_TRUE(std::isnan(none.at("range", 0.0)));
    EXPECT_TRUE(std::isnan(none.result("closest-approach")));
    // What is not finite ahead doesn't spoil the sample itself.
    EXPECT_EQ(MeasuredFlight({sampleAt(0, {}, {3, 4, 0}), flared}).on("range", 0), 5.0);
}

TEST(Measures, AreNamedWithTheirUnits) {
    for (const auto& [name, column, unit] : Rows<const char*, const char*, const char*>{
             {"range", "range_ft", "ft"},
             {"closing-speed", "closing_speed_ft_per_s", "ft/s"},
             {"line-of-sight-rate", "line_of_sight_rate_deg_per_s", "°/s"},
             {"threat-lateral-acceleration", "threat_lateral_acceleration_ft_per_s2", "ft/s²"},
             {"threat-load-factor", "threat_load_factor_g", "g"},
             {"time-to-go", "time_to_go_s", "s"},
             {"flares-burning", "flares_burning", ""}}) {
        const Measure& measure = *findMeasure(name);
        EXPECT_EQ(columnName(measure, LengthUnit::Feet), column);
        EXPECT_EQ(unitSymbol(measure.unit, LengthUnit::Feet), QString::fromUtf8(unit)) << name;
    }
    EXPECT_EQ(findMeasure("rang"), nullptr);
    FlaredSample sample = sampleAt(0.0, {0, 10, 0}, {});
    sample.flares = {flareAt(-4, {10, 0, 0})};
    const MeasuredFlight flight({sample});
    const Measure& nearest = *findMeasure("nearest");
    EXPECT_EQ(valueText(flight.engagement, nearest, flight.on("nearest", 0)), "flare -4");
    EXPECT_EQ(valueText(flight.engagement, nearest, 0.0), "target");
    EXPECT_EQ(valueText(flight.engagement, nearest, std::nan("")), "");
    EXPECT_EQ(valueText(flight.engagement, *findMeasure("line-of-sight-rate"), 0.0123456), "0.01235°/s");
}
} // namespace
