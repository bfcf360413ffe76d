// What is nearer hides what is farther, however near or far both are, in each way of keeping depths apart.
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <string_view>

#include "environmentvariable.h"
#include "nestedbody.h"
#include "pixels.h"
#include "scenepicture.h"

using namespace sorvane;

namespace {
constexpr int kSide = 240; // pixels
// Coordinates that single precision has to round.
const Vertex kPlace = {1234.5F, -876.3F, -345.7F};

// Asks for a way of keeping depths apart, and draws a mesh with the greys of its facets' numbers.
class NumberedPictures {
public:
    NumberedPictures(const char* way, const Mesh& mesh, const Vertex& place)
        : way_("SORVANE_DEPTH", way), scene_(kSide, kSide) {
        keyframe sample;
        std::ranges::copy(place, sample.targetPos);
        sample.targetAtt[0] = -180.0F; // takes back what the view adds: the model's axes are the world's
        for (const FacetNumbers::Digit digit : {FacetNumbers::High, FacetNumbers::Low}) {
            bodies_[digit].keyframes.insert(0.0, sample);
            bodies_[digit].hardbodiesInitialized = true; // given, not named by a file
            bodies_[digit].target = FacetNumbers::bodyOf(mesh, digit, folder_, SORVANE_SHADERS);
            EXPECT_NE(bodies_[digit].target, nullptr);
        }
    }

    QImage draw(FacetNumbers::Digit digit, const Camera& camera, double fieldOfViewDegrees) {
        const SceneOptions bodyOnly{.showHistoryLines = false, .showGrid = false};
        return scene_.draw({{EngagementId{1}, &bodies_[digit]}}, camera, bodyOnly, fieldOfViewDegrees);
    }

private:
    EnvironmentVariable way_;
    TemporaryDirectory folder_;
    OffscreenScene scene_;
    std::array<etxyz, 2> bodies_;
};

// The share of the body's pixels that show a facet which lies behind another one, or nothing.
double wrongShare(const QImage& high, const QImage& low, const RayCaster& rays) {
    int seen = 0;
    int wrong = 0;
    for (int y = 0; y < kSide; ++y)
        for (int x = 0; x < kSide; ++x) {
            const std::optional<std::size_t> shown =
                FacetNumbers::number(qGreen(high.pixel(x, y)), qGreen(low.pixel(x, y)));
            const std::optional<std::size_t> first = rays.facetAt(x + 0.5, y + 0.5);
            seen += shown || first ? 1 : 0;
            // At an edge the middle of the pixel is on either side of it.
            bool isRight = shown == first;
            for (int i = 0; i < 9 && !isRight; ++i)
                isRight = shown == rays.facetAt(x + 0.5 + 0.1 * (i % 3 - 1), y + 0.5 + 0.1 * (i / 3 - 1));
            wrong += isRight ? 0 : 1;
        }
    EXPECT_GT(seen, kSide * kSide / 8) << "the body fills the picture";
    return static_cast<double>(wrong) / seen;
}

TEST(Depth, FacetsBehindOthersDoNotShow) {
    for (const NestedShape& shape : {NestedShape{50.0, 6, 12, 16, 8}, NestedShape{12.0, 10, 56, 70, 10}}) {
        const Mesh mesh = nestedMesh(shape);
        for (const std::string_view way : {"", "slices", "one-range"}) {
            NumberedPictures pictures(way.data(), mesh, kPlace);
            for (const double distance : {200.0, 1000.0, 2000.0, 8000.0, 20000.0}) {
                const auto along = static_cast<float>(distance);
                const Vector<float> centre(kPlace[0], kPlace[1], kPlace[2], 1.0F);
                const Camera camera =
                    cameraAt(centre + Vector<float>(0.48F * along, 0.6F * along, -0.64F * along, 0.0F), centre);
                const double fieldOfView = 2.0 * std::atan(shape.length / 2.2 / distance) * 180.0 / std::numbers::pi;
                const double wrong = wrongShare(
                    pictures.draw(FacetNumbers::High, camera, fieldOfView),
                    pictures.draw(FacetNumbers::Low, camera, fieldOfView),
                    RayCaster(mesh, {kPlace[0], kPlace[1], kPlace[2]}, camera, fieldOfView, kSide, kSide));
                // Bodies that plain depths draw rightly would prove nothing.
                const bool isPlain = way == "one-range";
                EXPECT_LE(wrong, isPlain ? 1.0 : 0.003) << shape.length << " long at " << distance << ' ' << way;
                EXPECT_GE(wrong, isPlain && distance >= 2000.0 ? 0.03 : 0.0);
            }
        }
    }
}

TEST(Depth, TheGroundEndsInACleanLineAtTheFarPlane) {
    // Seen from 3,000 units above it, the ground ends 0.03 radians under the horizon.
    constexpr float kHeight = 3000.0F;
    constexpr double kFieldOfView = 10.0;
    const double edge = kSide / 2.0 * (1.0 + kHeight / kFarDepth / std::tan(kFieldOfView * std::numbers::pi / 360.0));
    constexpr double kExtent = 150000.0;
    Mesh ground;
    ground.points = {
        {-kExtent, -kExtent, 0.0}, {kExtent, -kExtent, 0.0}, {kExtent, kExtent, 0.0}, {-kExtent, kExtent, 0.0}};
    ground.facets = {{{0, 2, 1}, {}}, {{0, 3, 2}, {}}};
    for (const char* const way : {"", "slices"}) {
        const QImage picture =
            NumberedPictures(way, ground, {})
                .draw(
                    FacetNumbers::Low, cameraAt({0.0F, 0.0F, -kHeight, 1.0F}, {-100.0F, 10.0F, -kHeight, 1.0F}),
                    kFieldOfView);
        int wrong = 0;
        for (int y = 0; y < kSide; ++y)
            for (int x = 0; x < kSide; ++x)
                if (std::abs(y + 0.5 - edge) > 0.6)
                    wrong += (picture.pixel(x, y) != qRgb(0, 0, 0)) != (y > edge) ? 1 : 0;
        EXPECT_EQ(wrong, 0) << way;
    }
}

// Paths and flares from 10 to 90,000 units away, flares on both sides of the bounds of slices among them.
void fillWithDistances(etxyz& engagement) {
    for (int i = 0; i <= 60; ++i) {
        const auto distance = static_cast<float>(10.0 * std::pow(9000.0, i / 60.0));
        keyframe sample;
        sample.time = 0.1 * i;
        sample.targetPos[0] = sample.threatPos[0] = -distance;
        sample.targetPos[1] = 0.2F * distance - 4.0F;
        sample.targetPos[2] = -0.1F * distance + 2.0F;
        sample.threatPos[1] = 0.1F * distance - 30.0F;
        for (const float away : {39.7F, 39.9F, 500.0F, 796.0F, 799.0F, 7950.0F, 50000.0F}) {
            flareKeyframe flare;
            flare.id = static_cast<int>(away * 10.0F);
            flare.pos[0] = -away;
            flare.pos[1] = -0.2F * away + 0.03F * std::fmod(away, 100.0F) / 100.0F * away;
            flare.pos[2] = 0.1F * away - 5.0F * static_cast<float>(sample.time);
            std::ranges::fill(flare.intensity, (away < 600.0F ? 0.003F : 0.0008F) * away);
            flare.scalar = 0.05F * away * away;
            sample.flares.push_back(flare);
        }
        engagement.keyframes.insert(sample.time, sample);
    }
}

TEST(Depth, LinesPatternsAndFlaresAreTheSameInSlices) {
    std::array<QImage, 2> pictures;
    for (const std::size_t number : {0U, 1U}) {
        const EnvironmentVariable way("SORVANE_DEPTH", number == 0 ? "" : "slices");
        OffscreenScene scene(400, 300);
        etxyz engagement;
        fillWithDistances(engagement);
        pictures[number] = scene.draw(
            {{EngagementId{1}, &engagement}}, cameraAt({0.0F, 0.0F, -3.0F, 1.0F}, {-100.0F, 0.0F, -3.0F, 1.0F}),
            {.showDropLines = false, .time = 6.0, .lineStyles = true});
    }
    EXPECT_GT(litPixels(pictures[0]), 1000);
    EXPECT_TRUE(pictures[0] == pictures[1]);
}
} // namespace
