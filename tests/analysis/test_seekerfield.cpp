// What lies in the seeker's field of view, and for how long.
#include <gtest/gtest.h>

#include <numbers>

#include "measuredflight.h"
#include "rows.h"

using namespace sorvane;

namespace {
// At that many degrees from the axis of a gyro without angles.
Triple at(double degrees) {
    return {100.0 * std::cos(degrees / kDegreesPerRadian), 100.0 * std::sin(degrees / kDegreesPerRadian), 0.0};
}

// A sample a second; the field's half is 10 degrees.
FlaredSample looking(double time, double target, std::vector<Flare> flares = {}) {
    FlaredSample sample = sampleAt(time, at(target), {});
    sample.flares = std::move(flares);
    return sample;
}

TEST(SeekerField, TheNearestToTheAxisIsTheLeastAngleWithinIt) {
    for (const auto& [target, flares, number, degrees] : Rows<double, std::vector<double>, double, double>{
             {3, {}, 0, 3},
             {3, {5, -2, 4}, 2, 2},
             {3, {5, -3}, 0, 3}, // of equal ones the target
             {11, {12, 9.99}, 2, 9.99},
             {11, {10.01}, std::nan(""), std::nan("")},
             {-170, {}, std::nan(""), std::nan("")},
             {1e-5, {2e-6, 1e-6}, 2, 1e-6}}) {
        FlaredSample sample = looking(0.0, target);
        for (const double angle : flares)
            sample.flares.push_back(flareAt(static_cast<int>(sample.flares.size()), at(angle)));
        const MeasuredFlight flight({sample});
        if (std::isnan(number)) {
            EXPECT_TRUE(std::isnan(flight.on("nearest", 0)));
            EXPECT_TRUE(std::isnan(flight.on("nearest-off-boresight", 0)));
            continue;
        }
        EXPECT_EQ(flight.on("nearest", 0), number);
        EXPECT_NEAR(flight.on("nearest-off-boresight", 0), degrees, 1e-9 * degrees);
    }
}

TEST(SeekerField, ObjectsEnterAndLeaveBetweenSamples) {
    // The target is in the field from 0.5 s on (20 to 0 degrees) to 2.25 s (7 to 19); the flare from 1 s, where it
    // appears, to 1.25 s (8 to 16), and from 2 3/7 s (16 to 2) to 4 s, where it goes out.
    const MeasuredFlight flight(
        {looking(0, 20), looking(1, 0, {flareAt(5, at(8))}), looking(2, 7, {flareAt(5, at(16))}),
         looking(3, 19, {flareAt(5, at(2))}), looking(4, 60), looking(5, 60)});
    EXPECT_NEAR(flight.result("target-time-in-field"), 1.75, 1e-9);
    const FieldTimes times = fieldTimes(flight.engagement);
    ASSERT_EQ(times.flares.size(), 1U);
    EXPECT_NEAR(times.flares[0], 0.25 + 4.0 / 7.0 + 1.0, 1e-9);
    EXPECT_EQ(flight.result("target-last-nearest"), 2.0);
    EXPECT_EQ(flight.result("decoyed"), 1.0);
    // Between samples the flare is blended towards the axis: at 2.9 s it lies within, the target outside.
    EXPECT_TRUE(std::isnan(flight.at("nearest", 2.35)));
    EXPECT_EQ(flight.at("nearest", 2.9), 1.0);
}

TEST(SeekerField, AFlareStaysUntilItIsOutWhileTheAxisTurnsToIt) {
    FlaredSample turned = looking(1, 90);
    turned.gyro = {0, 0, 20};
    const MeasuredFlight flight({looking(0, 90, {flareAt(5, at(20))}), turned});
    EXPECT_NEAR(fieldTimes(flight.engagement).flares[0], 0.5, 1e-9);
}

TEST(SeekerField, OfDecoyedTheLastSampleWithAnythingInTheFieldDecides) {
    const Flare inside = flareAt(1, at(2));
    const Flare outside = flareAt(1, at(30));
    for (const auto& [samples, decoyed, lastNearest] : Rows<std::vector<FlaredSample>, double, double>{
             {{looking(0, 5, {inside}), looking(1, 5, {outside}), looking(2, 50)}, 0.0, 1.0},
             {{looking(0, 5, {outside}), looking(1, 5, {inside}), looking(2, 50, {outside})}, 1.0, 0.0},
             {{looking(0, 50, {outside})}, std::nan(""), std::nan("")}}) {
        const MeasuredFlight flight(samples);
        EXPECT_TRUE(flight.result("decoyed") == decoyed || std::isnan(decoyed));
        EXPECT_EQ(std::isnan(flight.result("decoyed")), std::isnan(decoyed));
        EXPECT_TRUE(flight.result("target-last-nearest") == lastNearest || std::isnan(lastNearest));
    }
}

TEST(SeekerField, AFieldOfHalfTheWorldOrMoreHoldsAllAndANegativeOneNothing) {
    const std::vector<FlaredSample> samples = {looking(0, 180), looking(1, 180)};
    for (const auto& [field, seconds] : Rows<float, double>{{360.0F, 1.0}, {500.0F, 1.0}, {359.0F, 0.0}, {-1.0F, 0.0}})
        EXPECT_EQ(MeasuredFlight(samples, field).result("target-time-in-field"), seconds) << field;
}

TEST(SeekerField, ManyFlaresTakeTimeInProportion) {
    // 100,000 of them, at once and one after the other; anything that compares each with each takes minutes.
    std::vector<FlaredSample> samples = {looking(0, 5), looking(1, 5), looking(2, 5)};
    for (int id = 0; id < 100000; ++id) {
        samples[0].flares.push_back(flareAt(id, at(20 + id)));
        samples[1].flares.push_back(flareAt(100000 - id, at(20 + id)));
        samples.push_back(looking(3.0 + id, 5, {flareAt(200000 + id, at(1))}));
    }
    const MeasuredFlight flight(samples);
    EXPECT_EQ(flight.engagement.tracks().size(), 200001U);
    EXPECT_EQ(flight.at("flares-burning", 0.5), 100000.0);
    EXPECT_EQ(flight.at("nearest", 100002.0), 200001.0);
    EXPECT_EQ(fieldTimes(flight.engagement).flares[150000], 1.0);
    EXPECT_EQ(valuesOnAllRows(flight.engagement, *findMeasure("flare-off-boresight")).size(), 300000U);
}
} // namespace
