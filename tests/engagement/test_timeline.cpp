// The state of an engagement over time: stored samples around a time, and blends of them.
#include "etxyz.h"

#include <gtest/gtest.h>

#include <cmath>
#include <ctime>
#include <limits>
#include <random>

#include "rows.h"

using namespace sorvane;

namespace {
keyframe sampleAt(double time, float value = 0.0F, QList<flareKeyframe> flares = {}) {
    keyframe sample;
    sample.time = time;
    sample.flareCount = static_cast<int>(10 * time);
    for (auto* triple : {&sample.targetPos, &sample.targetAtt, &sample.threatPos, &sample.threatAtt, &sample.gyro})
        std::fill(std::begin(*triple), std::end(*triple), value);
    sample.flares = std::move(flares);
    return sample;
}

flareKeyframe flareOf(int id, float value) {
    return {{value, value, value}, {value, value, value}, {value, value, value}, value, static_cast<int>(value), id, 5};
}

void addSamples(etxyz& engagement, std::initializer_list<double> times) {
    for (const double time : times)
        engagement.keyframes.insert(time, sampleAt(time, static_cast<float>(time)));
}

constexpr double kInfinity = std::numeric_limits<double>::infinity();
} // namespace

TEST(Timeline, CountsTheSamplesThatAreNotAfterATime) {
    etxyz engagement;
    EXPECT_EQ(engagement.sampleCountAt(1.0), 0U);
    addSamples(engagement, {0.0, 0.5, 1.0, 1.5});
    for (const auto& [t, count] : Rows<double, std::size_t>{
             {-0.1, 0}, {0.0, 1}, {0.49, 1}, {0.5, 2}, {1.2, 3}, {1.5, 4}, {99.0, 4}, {std::nan(""), 0}})
        EXPECT_EQ(engagement.sampleCountAt(t), count) << t;
}

TEST(Timeline, GivesTheStoredSampleAroundATime) {
    etxyz engagement;
    addSamples(engagement, {0.0, 1.0, 2.0});
    for (const auto& [t, previous, next, nearest] : Rows<double, double, double, double>{
             {-5, 0, 0, 0},
             {0, 0, 1, 0},
             {0.5, 0, 1, 1},
             {1, 1, 2, 1},
             {1.4, 1, 2, 1},
             {1.5, 1, 2, 2},
             {2, 2, 2, 2},
             {99, 2, 2, 2},
             {std::nan(""), 0, 0, 0}}) {
        EXPECT_EQ(engagement.PreviousKeyframe(t).time, previous) << t;
        EXPECT_EQ(engagement.NextKeyframe(t).time, next) << t;
        EXPECT_EQ(engagement.NearestKeyframe(t), engagement.keyframes[nearest]) << t;
        EXPECT_EQ(engagement.NearestKeyframe(t, static_cast<etxyz::RoundingType>(3)).time, next) << t;
    }
    // Nothing to blend.
    for (const auto& [t, stored] : Rows<double, double>{{1.0, 1.0}, {-5.0, 0.0}, {99.0, 2.0}})
        EXPECT_EQ(engagement.InterpolatedFrame(t), engagement.keyframes[stored]);
    etxyz single;
    addSamples(single, {3.0});
    for (const double t : {0.0, 3.0, 4.0})
        EXPECT_EQ(single.InterpolatedFrame(t), single.keyframes[3.0]);
}

TEST(Timeline, BlendsFifteenFloatsInDoubleAndAnglesAsPlainNumbers) {
    etxyz engagement;
    engagement.keyframes = {{0.0, sampleAt(0.0, 179.0F)}, {1.0, sampleAt(1.0, -179.0F)}};
    keyframe expected = sampleAt(0.0, 0.0F);
    expected.time = 0.5;
    EXPECT_EQ(engagement.InterpolatedFrame(0.5), expected);

    // 16777216 and 16777220 a third of the way: in single precision the products would round first.
    etxyz large;
    large.keyframes.insert(1.0, sampleAt(1.0, 16777216.0F));
    large.keyframes.insert(4.0, sampleAt(4.0, 16777220.0F));
    const keyframe blended = large.InterpolatedFrame(2.5);
    for (const auto* triple :
         {&blended.targetPos, &blended.targetAtt, &blended.threatPos, &blended.threatAtt, &blended.gyro})
        EXPECT_EQ(std::to_array(*triple), std::to_array({16777218.0F, 16777218.0F, 16777218.0F}));
    EXPECT_EQ(blended.flareCount, 10);
}

TEST(Timeline, BlendsFlaresWithTheLastOfTheirId) {
    etxyz engagement;
    engagement.keyframes.insert(0.0, sampleAt(0.0, 0, {flareOf(7, 1), flareOf(8, 2), flareOf(7, 3)}));
    engagement.keyframes.insert(1.0, sampleAt(1.0, 0, {flareOf(7, 100), flareOf(9, 4), flareOf(7, 5)}));
    const keyframe frame = engagement.InterpolatedFrame(0.25);
    ASSERT_EQ(frame.flares.size(), 3) << "none is added";
    const float expected[] = {0.75F * 1 + 0.25F * 5, 2, 0.75F * 3 + 0.25F * 5};
    const float unblended[] = {1, 2, 3};
    for (int i = 0; i < 3; ++i) {
        flareKeyframe flare = flareOf(frame.flares[i].id, expected[i]);
        flare.scalar = unblended[i];
        flare.bandCount = static_cast<int>(unblended[i]);
        EXPECT_EQ(frame.flares[i], flare) << i;
    }
    EXPECT_EQ(engagement.keyframes[0.0].flares[0].pos[0], 1.0F) << "the stored sample stays";
}

TEST(Timeline, MatchesManyFlaresLikeFewAndFast) {
    std::mt19937 random(5);
    for (const int count : {31, 32, 33, 500, 100'000}) {
        std::uniform_int_distribution<int> id(-count, count);
        QList<flareKeyframe> earlier;
        QList<flareKeyframe> later;
        QMap<int, float> lastOf;
        for (int i = 0; i < count; ++i) {
            earlier.append(flareOf(id(random), 0));
            later.append(flareOf(id(random), static_cast<float>(i + 1)));
            lastOf[later.last().id] = later.last().pos[0];
        }
        etxyz engagement;
        engagement.keyframes.insert(0.0, sampleAt(0.0, 0, earlier));
        engagement.keyframes.insert(1.0, sampleAt(1.0, 0, later));
        const std::clock_t start = std::clock(); // of this process: others may be busy
        const keyframe frame = engagement.InterpolatedFrame(0.5);
        EXPECT_LT(std::clock() - start, 2 * CLOCKS_PER_SEC) << count;
        for (int i = 0; i < count; ++i)
            ASSERT_EQ(frame.flares[i].pos[2], lastOf.value(earlier[i].id, 0.0F) * 0.5F) << i;
    }
}

TEST(Timeline, FindsSamplesOfLongEngagementsHoweverTheyAreSpaced) {
    std::mt19937 random(9);
    for (const bool isEven : {true, false}) {
        etxyz engagement;
        QList<double> times;
        double time = -3.0;
        for (int i = 0; i < 10'000; ++i) {
            // Uneven steps run over many orders of magnitude.
            time += isEven ? 0.01 : std::ldexp(1.0, std::uniform_int_distribution<int>(-20, 10)(random));
            engagement.keyframes.insert(time, sampleAt(time));
            times.append(time);
        }
        const auto check = [&](double t) {
            const auto upper = std::upper_bound(times.cbegin(), times.cend(), t);
            const double next = upper == times.cend() ? times.last() : *upper;
            const double previous = upper == times.cbegin() ? times.first() : *std::prev(upper);
            ASSERT_EQ(engagement.PreviousKeyframe(t).time, previous) << t;
            ASSERT_EQ(engagement.NextKeyframe(t).time, t < times.first() ? times.first() : next) << t;
        };
        for (const double t : times) {
            check(t);
            check(std::nextafter(t, -kInfinity));
            check(std::nextafter(t, kInfinity));
        }
        check(-kInfinity);
        check(kInfinity);
    }
}

TEST(Timeline, FollowsChangesOfALongEngagement) {
    etxyz engagement;
    for (int i = 1; i <= 5000; ++i)
        engagement.keyframes.insert(i, sampleAt(i));
    EXPECT_EQ(engagement.PreviousKeyframe(7.5).time, 7.0);
    engagement.keyframes.insert(7.25, sampleAt(7.25));
    EXPECT_EQ(engagement.PreviousKeyframe(7.5).time, 7.25);
    engagement.keyframes.remove(7.25);
    EXPECT_EQ(engagement.PreviousKeyframe(7.5).time, 7.0);
    EXPECT_EQ(engagement.keyframeAtZero(), keyframe()) << "an empty sample is added";
    EXPECT_EQ(engagement.keyframes.size(), 5001);
    EXPECT_EQ(engagement.PreviousKeyframe(0.5).time, 0.0);
    engagement.keyframes = {{1.0, sampleAt(1.0)}};
    EXPECT_EQ(engagement.PreviousKeyframe(7.5).time, 1.0);
}
