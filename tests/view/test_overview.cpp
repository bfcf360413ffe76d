// The camera over a whole engagement, against the projection written out by hand.
#include "overview.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>
#include <random>
#include <vector>

#include "camera.h"
#include "etxyz.h"
#include "vec3.h"

using namespace sorvane;

namespace {
Vec3d exact(const Vector<float>& v) {
    return {double{v.ElementAt(0)}, double{v.ElementAt(1)}, double{v.ElementAt(2)}};
}

// How far from the middle of the picture, 1 being an edge, the outermost point is; 2 for one behind the eye.
double outermost(const Viewpoint& from, const std::vector<Vec3d>& points, double fieldOfView, double aspect) {
    const Vec3d forward = unit(exact(from.centre) - exact(from.eye));
    const Vec3d right = unit(cross(forward, {0.0, 0.0, -1.0})); // world z points down
    const Vec3d up = cross(right, forward);
    const double tangent = std::tan(fieldOfView / 2.0 * std::numbers::pi / 180.0);
    double farthest = 0.0;
    for (const Vec3d& point : points) {
        const Vec3d way = point - exact(from.eye);
        const double depth = dot(way, forward);
        if (depth <= 0.1)
            return 2.0;
        farthest = std::max(
            {farthest, std::abs(dot(way, right)) / (depth * tangent * aspect),
             std::abs(dot(way, up)) / (depth * tangent)});
    }
    return farthest;
}

struct RandomEngagement {
    RandomEngagement(unsigned int seed, double spread, const std::array<double, 3>& centre) {
        std::mt19937 random(seed);
        std::uniform_real_distribution<double> any(-1.0, 1.0);
        const auto place = [&](float(&position)[3]) {
            for (std::size_t i = 0; i < 3; ++i)
                position[i] = static_cast<float>(centre[i] + spread * any(random));
            points.push_back({double{position[0]}, double{position[1]}, double{position[2]}});
        };
        for (int i = 0; i < 40; ++i) {
            keyframe sample;
            sample.time = i;
            place(sample.targetPos);
            place(sample.threatPos);
            if (i > 20)
                place(sample.flares.emplace_back().pos);
            engagement.keyframes.insert(sample.time, sample);
        }
    }
    etxyz engagement;
    std::vector<Vec3d> points;
};

TEST(Overview, ShowsEverySampleOfAnyEngagementAndNoMoreRoomThanNeeded) {
    for (unsigned int seed = 1; seed <= 30; ++seed)
        for (const double spread : {1.0, 300.0, 9000.0})
            for (const auto& [width, height] : {std::pair{824, 496}, {300, 900}, {1, 1}}) {
                const RandomEngagement random(seed, spread, {4000.0 * seed, -70.0 * seed, -2000.0});
                const Viewpoint over = overviewOf(random.engagement, 30.0, width, height);
                const double edge = outermost(over, random.points, 30.0, static_cast<double>(width) / height);
                EXPECT_LT(edge, 0.95) << seed << ' ' << spread;
                if (spread > 1.0) {
                    EXPECT_GT(edge, 0.85) << seed << ' ' << spread;
                }
            }
}

TEST(Overview, LooksAtASinglePointAndAtNothingFromADistance) {
    etxyz one;
    one.keyframes.insert(0.0, keyframe{});
    keyframe broken;
    broken.targetPos[0] = std::nanf("");
    broken.threatPos[1] = INFINITY;
    etxyz none;
    none.keyframes.insert(0.0, broken);
    for (const etxyz* const engagement : {&one, &none}) {
        const Viewpoint over = overviewOf(*engagement, 1.5, 100, 100);
        EXPECT_NEAR(Length(over.centre - over.eye), 10.0, 1e-4);
        EXPECT_LT(over.eye.ElementAt(2), 0.0F) << "from above";
        EXPECT_LT(outermost(over, {{0.0, 0.0, 0.0}}, 1.5, 1.0), 1e-3);
    }
}

TEST(Overview, KnowsWhenEverythingIsBeyondSight) {
    const RandomEngagement random(7, 1000.0, {0.0, 0.0, 0.0});
    Camera camera;
    for (const auto& [distance, isBeyond] : {std::pair{500.0F, false}, {98000.0F, false}, {102000.0F, true}}) {
        camera.place({distance, 0.0F, 0.0F, 1.0F}, {0.0F, 0.0F, 0.0F, 1.0F});
        EXPECT_EQ(isBeyondSight(random.engagement, camera), isBeyond) << distance;
        camera.place({distance, 0.0F, 0.0F, 1.0F}, {2.0F * distance, 0.0F, 0.0F, 1.0F});
        EXPECT_FALSE(isBeyondSight(random.engagement, camera)) << "what lies behind is not far away";
    }
}
} // namespace
