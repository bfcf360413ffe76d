// A radiance picture of a body adds up to its radiant intensity as its signature has it.
#include "radiancescene.h"

#include "body.h"
#include "rows.h"
#include "signaturemap.h"

using namespace sorvane;

TEST_F(RadianceFrameTest, ABodysPictureAddsUpToItsSignature) {
    const Body jetBody = jet();
    const SignatureFiles files{
        folder.write("jet.brdf", reflectanceText(jetBody)), folder.write("jet.vnl", geometryText(jetBody)),
        folder.write("jet.rad", radianceBytes(jetBody, 1.0)), ""};
    constexpr float kEarth = 1.9e-4F;
    constexpr float kSky = 0.65e-4F;
    SignatureBody body;
    ASSERT_TRUE(body.load(files));
    const FacetShading shading(body, {kEarth, kSky, 0.0F, {}});
    SignatureSum signature(body, shading, 1.0, FacetVisibility::kUsualPixels);

    place(0, {plate(1.0, 1.0)}, kPlace); // its pose
    engagements[0].target = std::make_unique<Hardbody>();
    ASSERT_TRUE(engagements[0].target->Init(
        files.reflectance, files.geometry, files.radiance, SORVANE_SHADERS, "", true, true, false, false, false, 0.0F,
        0.0F, 0.0F, 0.0F, 0.0F, 0.0F, 3000.0F, kEarth, kSky, 0.0F));
    for (const auto& [distance, pixels, azimuth, elevation] : Rows<double, int, double, double>{
             {100.0, 32, 90.0, 0.0},
             {100.0, 1024, 35.0, 20.0},
             {500.0, 64, 180.0, 5.0},
             {2000.0, 128, 0.0, -10.0},
             {5000.0, 32, 250.0, -45.0},
             {20000.0, 32, 120.0, 0.0},
             {20000.0, 1024, 300.0, 60.0}}) {
        SCOPED_TRACE(testing::Message() << distance << " units, " << pixels << " pixels");
        request.width = request.height = pixels;
        const Vec3d towards = directionOf(azimuth, elevation);
        const auto at = [&, far = distance](double component, std::size_t axis) {
            return static_cast<float>(double{kPlace[axis]} + far * component);
        };
        const Vector<float> eye(at(towards.x, 0), at(towards.y, 1), at(towards.z, 2), 1.0F);
        const Vector<float> centre(kPlace[0], kPlace[1], kPlace[2], 1.0F);
        const double expected = signature.towards(towards).intensity.total();
        EXPECT_NEAR(intensityAt(distance, draw(cameraAt(eye, centre))) / expected, 1.0, 0.01);
    }
}
