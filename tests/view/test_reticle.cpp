// The seeker's reticle, and that measures see what the gyro view shows: its camera looks along the axis that angles are
// measured from, and the reticle is the edge of the field.
#include <gtest/gtest.h>

#include <cmath>

#include "camera.h"
#include "measure.h"
#include "reticle.h"
#include "rows.h"

using namespace sorvane;

namespace {
const Vector<float> kEye(10.0F, 20.0F, 30.0F, 1.0F);

TEST(Reticle, StaysFiniteWhereRightIsNotDefined) {
    for (const Vector<float>& centre : {kEye, Vector<float>(10.0F, 20.0F, 130.0F, 1.0F)}) {
        const Reticle reticle = reticleFor(kEye, centre, 2.0F);
        for (const Vector<float>& point : reticle.circle)
            for (int i = 0; i < 4; ++i)
                EXPECT_TRUE(std::isfinite(point.ElementAt(i)));
    }
}

double degreesOff(const Sample& sample, const Vector<float>& point, float fieldOfView, const char* measure) {
    Sample at = sample;
    at.targetPosition = {point.ElementAt(0), point.ElementAt(1), point.ElementAt(2)};
    SampleSeries series;
    series.add(at, {});
    return valueAt(MeasuredEngagement(series, fieldOfView), *findMeasure(measure), 0.0);
}

TEST(GyroAxis, IsWhereTheGyroViewLooks) {
    for (const auto& [roll, pitch, yaw] :
         Rows<float, float, float>{{0, 0, 0}, {0, 25, 0}, {0, -40, 0}, {0, 0, 70}, {80, 30, -150}, {-10, -75, 200}}) {
        Sample sample;
        sample.threatPosition = {5, -3, -2};
        sample.gyro = {roll, pitch, yaw};
        CameraSubject subject{.threatPosition = {5, -3, -2}, .gyroAngles = {roll, pitch, yaw}};
        Camera camera;
        camera.setMode(ViewGyro);
        camera.follow({}, subject);
        EXPECT_NEAR(degreesOff(sample, camera.centre(), 20.0F, "off-boresight"), 0.0, 1e-4) << pitch << ' ' << yaw;
        const Reticle reticle = reticleFor(camera.eye(), camera.centre(), 20.0F);
        for (const std::size_t point : {0U, 25U, 60U}) {
            EXPECT_NEAR(degreesOff(sample, reticle.circle.at(point), 20.0F, "off-boresight"), 10.0, 1e-4);
            EXPECT_EQ(degreesOff(sample, reticle.circle.at(point), 20.0F, "half-field"), 10.0);
        }
    }
}
} // namespace
