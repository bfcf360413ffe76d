// A radiance picture of a body adds up to its radiant intensity as its signature has it.
#include "radiancescene.h"

#include "body.h"
#include "rows.h"
#include "signaturemap.h"

using namespace sorvane;

// The jet, so much smaller where it is near that from the eye all of it is about as far: its hot end lies 8 of its 17
// metres nearer or farther than its middle.
TEST_F(RadianceFrameTest, ABodysPictureAddsUpToItsSignature) {
    constexpr double kDistances = 2000.0; // of the jet in its own size
    constexpr float kEarth = 1.9e-4F;
    constexpr float kSky = 0.65e-4F;
    place(0, {plate(1.0, 1.0)}, kPlace); // its pose
    for (const auto& [distance, pixels, azimuth, elevation] : Rows<double, int, double, double>{
             {100.0, 32, 90.0, 0.0},
             {100.0, 1024, 35.0, 20.0},
             {500.0, 64, 180.0, 5.0},
             {2000.0, 128, 0.0, -10.0},
             {5000.0, 32, 250.0, -45.0},
             {20000.0, 32, 120.0, 0.0},
             {20000.0, 1024, 300.0, 60.0}}) {
        SCOPED_TRACE(testing::Message() << distance << " units, " << pixels << " pixels");
        Body model = jet();
        for (Vec3d& point : model.mesh.points)
            point = std::min(distance / kDistances, 1.0) * point;
        const SignatureFiles files{
            folder.write("jet.brdf", reflectanceText(model)), folder.write("jet.vnl", geometryText(model)),
            folder.write("jet.rad", radianceBytes(model, 1.0)), ""};
        SignatureBody body;
        ASSERT_TRUE(body.load(files));
        const FacetShading shading(body, {kEarth, kSky, 0.0F, {}});
        const Vec3d towards = directionOf(azimuth, elevation);
        const double expected =
            SignatureSum(body, shading, 1.0, FacetVisibility::kUsualPixels).towards(towards).intensity.total();

        engagements[0].target = std::make_unique<Hardbody>();
        ASSERT_TRUE(engagements[0].target->Init(
            files.reflectance, files.geometry, files.radiance, SORVANE_SHADERS, "", true, true, false, false, false,
            0.0F, 0.0F, 0.0F, 0.0F, 0.0F, 0.0F, 3000.0F, kEarth, kSky, 0.0F));
        request.width = request.height = pixels;
        const auto at = [&, far = distance](double component, std::size_t axis) {
            return static_cast<float>(double{kPlace[axis]} + far * component);
        };
        const Vector<float> eye(at(towards.x, 0), at(towards.y, 1), at(towards.z, 2), 1.0F);
        const Vector<float> centre(kPlace[0], kPlace[1], kPlace[2], 1.0F);
        const double found = intensityAt(distance, draw(cameraAt(eye, centre)));
        EXPECT_NEAR(found / expected, 1.0, 0.01);
    }
}
