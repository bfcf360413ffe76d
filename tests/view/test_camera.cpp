// The camera's modes and its moves, with values worked out by hand.
#include <gtest/gtest.h>

#include <array>
#include <cmath>
#include <string>

#include "camera.h"
#include "rows.h"

using namespace sorvane;

namespace {
using Point = std::array<double, 3>;

void expectAt(const Vector<float>& actual, const Point& expected, double tolerance = 1e-3) {
    for (int i = 0; i < 3; ++i)
        EXPECT_NEAR(actual.ElementAt(i), expected.at(static_cast<std::size_t>(i)), tolerance);
    EXPECT_EQ(actual.ElementAt(3), 1.0F) << "a position keeps w = 1";
}

CameraSubject subject() {
    return {.threatPosition = {1.0F, 2.0F, 3.0F}, .targetPosition = {10.0F, 20.0F, 30.0F}, .gyroAngles = {0, 0, 90.0F}};
}

TEST(Camera, ResetPlacesItForItsMode) {
    for (const auto& [mode, eye, centre] : Rows<ViewMode, Point, Point>{
             {ViewThreat, {11, 2, 3}, {1, 2, 3}},
             {ViewTarget, {60, 20, 30}, {10, 20, 30}},
             {ViewGyro, {100, 0, 0}, {0, 0, 0}},
             {ViewFree, {100, 0, 0}, {0, 0, 0}}}) {
        SCOPED_TRACE("mode " + std::to_string(mode));
        Camera camera;
        camera.setMode(mode);
        camera.reset(subject());
        expectAt(camera.eye(), eye);
        expectAt(camera.centre(), centre);
    }
}

TEST(Camera, FollowsTheBodyOfItsModeAndKeepsTheUsersView) {
    CameraSubject before = subject();
    CameraSubject now = subject();
    now.threatPosition[0] += 5.0F;
    now.targetPosition[1] += 7.0F;
    for (const auto& [mode, eye, centre] : Rows<ViewMode, Point, Point>{
             {ViewThreat, {105, 0, 0}, {5, 0, 0}},
             {ViewTarget, {100, 7, 0}, {0, 7, 0}},
             {ViewFree, {100, 0, 0}, {0, 0, 0}},
             // On the threat, looking 100 units along a gyro turned by 90 degrees about z.
             {ViewGyro, {6, 2, 3}, {6, 102, 3}}}) {
        SCOPED_TRACE("mode " + std::to_string(mode));
        Camera camera;
        camera.setMode(mode);
        camera.follow(before, now);
        expectAt(camera.eye(), eye);
        expectAt(camera.centre(), centre);
    }
}

TEST(Camera, APositiveGyroPitchLooksUp) {
    Camera camera;
    camera.setMode(ViewGyro);
    CameraSubject now;
    now.gyroAngles[1] = 30.0F;
    camera.follow({}, now);
    // World z points down.
    expectAt(camera.centre(), {100.0 * std::cos(M_PI / 6.0), 0.0, -50.0});
}

TEST(Camera, AWheelNotchScalesTheDistanceToTheCentre) {
    for (const auto& [delta, distance] : Rows<double, double>{{120, 88.69204}, {-120, 112.74969}, {0, 100.0}}) {
        Camera camera;
        camera.zoom(delta);
        expectAt(camera.eye(), {distance, 0.0, 0.0});
        expectAt(camera.centre(), {0.0, 0.0, 0.0});
    }
}

TEST(Camera, DraggingTurnsTheEyeAboutTheCentreAsBothWereAtThePress) {
    for (const auto& [to, eye] : Rows<ViewPoint, Point>{
             {{900.0, 0.0}, {1.0, 102.0, 3.0}}, // 90 degrees about world z
             {{-900.0, 0.0}, {1.0, -98.0, 3.0}},
             {{0.0, 900.0}, {1.0, 2.0, -97.0}}, // 90 degrees about world y
             {{0.0, 0.0}, {101.0, 2.0, 3.0}}}) {
        Camera camera;
        camera.place({101.0F, 2.0F, 3.0F, 1.0F}, {1.0F, 2.0F, 3.0F, 1.0F});
        camera.press({0.0, 0.0});
        camera.dragRotate({333.0, -50.0}); // on the way; a drag does not add up
        camera.dragRotate(to);
        expectAt(camera.eye(), eye, 1e-2);
        expectAt(camera.centre(), {1.0, 2.0, 3.0});
    }
}

TEST(Camera, ADragThatPannedTurnsAboutTheCentreAtThePressAllTheSame) {
    Camera camera;
    camera.press({0.0, 0.0});
    camera.dragPan({100.0, 0.0});
    camera.dragRotate({900.0, 0.0});
    expectAt(camera.eye(), {0.0, 100.0, 0.0});
    expectAt(camera.centre(), {0.0, 10.0, 0.0});
}

TEST(Camera, PanningSlidesEyeAndCentreByAThousandthOfTheirDistancePerPixel) {
    Camera camera;
    camera.press({5.0, 5.0});
    camera.dragPan({15.0, 25.0});
    // Looking along −x with z down, +y is on the left: the scene goes where the mouse goes, the eye the other way.
    expectAt(camera.eye(), {100.0, 1.0, -2.0});
    expectAt(camera.centre(), {0.0, 1.0, -2.0});
}

TEST(Camera, PanningWithEyeAndCentreInOnePlaceStaysFinite) {
    Camera camera;
    camera.place({1.0F, 1.0F, 1.0F, 1.0F}, {1.0F, 1.0F, 1.0F, 1.0F});
    camera.press({0.0, 0.0});
    camera.dragPan({10.0, 10.0});
    expectAt(camera.eye(), {1.0, 1.0, 1.0});
}

TEST(Camera, ResetForgetsThePress) {
    Camera camera;
    camera.setMode(ViewFree);
    camera.press({0.0, 0.0});
    camera.reset(subject());
    camera.dragRotate({0.0, 0.0});
    // The copies are at the origin now, so a drag that goes on after a double click starts from there.
    expectAt(camera.eye(), {0.0, 0.0, 0.0});
}
} // namespace
