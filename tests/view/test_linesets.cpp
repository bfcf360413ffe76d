// The vertices of history lines, drop lines and flare trails.
#include <gtest/gtest.h>

#include <cmath>

#include "camera.h"
#include "engagementlines.h"
#include "flaretrails.h"
#include "glcontext.h"
#include "historyline.h"
#include "lookat.h"
#include "projection.h"
#include "rows.h"
#include "sight.h"

using namespace sorvane;

namespace {
keyframe sampleAt(double time) {
    keyframe sample;
    sample.time = time;
    sample.targetPos[0] = static_cast<float>(time);
    sample.targetPos[2] = -1000.0F;
    sample.threatPos[0] = static_cast<float>(-time);
    sample.threatPos[2] = -500.0F;
    return sample;
}

QMap<double, keyframe> samplesEvery(double step, int count) {
    QMap<double, keyframe> samples;
    for (int i = 0; i < count; ++i)
        samples.insert(i * step, sampleAt(i * step));
    return samples;
}

TEST(HistoryPath, DropsOneLineToTheGroundPerHalfSecond) {
    for (const auto& [step, count, dropLines] : Rows<double, int, std::size_t>{
             {0.1, 21, 4},
             {0.3, 11, 6}, // a step that divides no half second: 0.6 1.2 1.5 2.1 2.7 3.0
             {0.25, 9, 4},
             {0.5, 9, 0}, // whole half seconds have equal phases
             {1.0, 1, 0}}) {
        const HistoryPath path = historyPath(samplesEvery(step, count), PathOf::Target, true);
        EXPECT_EQ(path.dropLines.size(), dropLines) << step;
        EXPECT_EQ(path.vertices.size(), static_cast<std::size_t>(count) + 2 * dropLines) << step;
    }
}

TEST(HistoryPath, ADropLineGoesDownAndBackUpAtItsSample) {
    QMap<double, keyframe> samples;
    for (const double time : {0.4, 0.6})
        samples.insert(time, sampleAt(time));
    const HistoryPath path = historyPath(samples, PathOf::Target, true);
    const float x = 0.6F;
    EXPECT_EQ(path.vertices, (std::vector<Vertex>{{0.4F, 0, -1000}, {x, 0, -1000}, {x, 0, 0}, {x, 0, -1000}}));
    EXPECT_EQ(path.dropLines, std::vector<std::size_t>{1});
}

TEST(EngagementLines, NoticesASampleThatWasAdded) {
    QMap<double, keyframe> samples = samplesEvery(0.5, 4);
    const EngagementLines lines(samples);
    EXPECT_TRUE(lines.fit(samples));
    samples.insert(7.0, sampleAt(7.0));
    EXPECT_FALSE(lines.fit(samples));
}

TEST(FlarePaths, FollowEachIdThroughTheSamplesThatListIt) {
    const auto flareAt = [](int id, float x) {
        flareKeyframe flare;
        flare.id = id;
        flare.pos[0] = x;
        return flare;
    };
    QMap<double, keyframe> samples = samplesEvery(1.0, 4);
    samples[0.0].flares = {flareAt(7, 1.0F), flareAt(3, 10.0F)};
    samples[1.0].flares = {flareAt(3, 11.0F), flareAt(7, 99.0F), flareAt(7, 2.0F)}; // the last entry of an id counts
    samples[2.0].flares = {flareAt(5, 50.0F)};                                      // seen once: no line
    samples[3.0].flares = {flareAt(7, 3.0F)};
    const FlarePaths paths = flarePaths(samples);
    ASSERT_EQ(paths.strips.size(), 2U);
    EXPECT_EQ(paths.strips[0].first, 0U);
    EXPECT_EQ(paths.strips[0].count, 3U);
    EXPECT_EQ(paths.strips[1].first, 3U);
    EXPECT_EQ(paths.strips[1].count, 2U);
    EXPECT_EQ(paths.vertices, (std::vector<Vertex>{{1, 0, 0}, {2, 0, 0}, {3, 0, 0}, {10, 0, 0}, {11, 0, 0}}));
    EXPECT_EQ(paths.samples, (std::vector<std::uint32_t>{0, 1, 3, 0, 1}));
}

using VertexRun = std::pair<int, int>; // first vertex, count

std::vector<VertexRun> runsOf(const VertexRuns& runs) {
    std::vector<VertexRun> pairs;
    for (std::size_t i = 0; i < runs.firsts.size(); ++i)
        pairs.emplace_back(runs.firsts[i], runs.counts[i]);
    return pairs;
}

// A strip along the x axis, of which the picture shows the part from x = 800 to 1200.
TEST(LineChunks, LeaveOutWhatThePictureDoesNotShow) {
    constexpr double kDegrees = 22.6198649; // a fifth of the distance to each side
    const GlContext context(400, 400);
    ASSERT_TRUE(context.isUsable());
    applyProjection(kDegrees, 400, 400);
    std::vector<Vertex> vertices(10);
    for (int i = 0; i < 500; ++i)
        vertices.push_back({10.0F * static_cast<float>(i), 0.0F, 0.0F});
    vertices[110][2] = 5.0F; // a tooth, of 1,000 to 1,000
    const LineChunks chunks(vertices, 10, 500, 0.001);
    // Where pieces begin, the end, and the tooth with its sides.
    ASSERT_EQ(vertices.size(), 510U + 8U + 1U + 3U);
    EXPECT_EQ(vertices[512], (Vertex{990.0F, 0.0F, 0.0F}));
    EXPECT_EQ(vertices.back(), (Vertex{4990.0F, 0.0F, 0.0F}));
    Camera camera;
    camera.place({1000.0F, 1000.0F, 0.0F, 1.0F}, {1000.0F, 0.0F, 0.0F, 1.0F});
    const LookAt lookAt(camera);
    const WindowTransform window;
    const Sight sight(lookAt, window);
    const Vertex origin{};
    const LineSight inSight{sight, origin};
    const LineSight coarse{sight, origin, true};
    for (const auto& [count, sightOrNone, expected] : Rows<std::size_t, const LineSight*, std::vector<VertexRun>>{
             {500, nullptr, {{10, 500}}},
             {500, &inSight, {{74, 65}}}, // 640 to 1280, which has all of it
             {100, &inSight, {{74, 36}}}, // up to the time
             {65, &inSight, {}},          // a piece's end is the next one's beginning
             {500, &coarse, {{511, 5}}},
             {129, &coarse, {{511, 5}}},
             {128, &coarse, {{74, 64}}}, // not all of the piece: as it is
             {1, nullptr, {}}}) {
        VertexRuns runs;
        chunks.addRuns(count, sightOrNone, runs);
        EXPECT_EQ(runsOf(runs), expected) << count;
    }
    const Vertex shifted{-230.0F, 0.0F, 0.0F}; // 410 to 1050, 1050 to 1690
    const LineSight beside{sight, shifted};
    VertexRuns joined;
    chunks.addRuns(500, &beside, joined);
    EXPECT_EQ(runsOf(joined), (std::vector<VertexRun>{{74, 129}}));
    EXPECT_NEAR(sight.pixelsOf(0.001, {{0, 0, 0}, {5000, 0, 0}}, origin), 0.001, 1e-9) << "a pixel to a unit there";
    EXPECT_NEAR(sight.pixelsOf(0.001, {{0, 0, 0}, {5000, 500, 0}}, origin), 0.002, 1e-9) << "half as far";
    EXPECT_TRUE(std::isinf(sight.pixelsOf(0.001, {{0, 0, 0}, {5000, 1100, 0}}, origin))) << "around the eye";
}
} // namespace
