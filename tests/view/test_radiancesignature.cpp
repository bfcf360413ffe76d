// A radiance picture of a body adds up to its radiant intensity as its signature has it.
#include "radiancescene.h"

#include "atmosphere.h"
#include "body.h"
#include "rows.h"
#include "signaturebodies.h"
#include "signaturemap.h"

using namespace sorvane;

namespace {
// A body as signatures and pictures have it, in the sun and under the sky.
struct RadianceSignatureTest : RadianceFrameTest {
    static constexpr float kEarth = 1.9e-4F;
    static constexpr float kSky = 0.65e-4F;
    static constexpr float kSun = 1.7e-4F;

    SignatureBody body;
    SignatureLight light;

    static SignatureFiles write(const TemporaryDirectory& folder, const std::string& name, const Body& source) {
        return {
            folder.write(name + ".brdf", reflectanceText(source)), folder.write(name + ".vnl", geometryText(source)),
            folder.write(name + ".rad", radianceBytes(source, 1.0)), ""};
    }

    void show(const SignatureFiles& files) {
        place(0, {plate(1.0, 1.0)}, kPlace); // its pose
        engagements[0].target = std::make_unique<Hardbody>();
        ASSERT_TRUE(engagements[0].target->Init(
            files.reflectance, files.geometry, files.radiance, SORVANE_SHADERS, "", true, true, false, false, false,
            0.0F, 0.0F, 0.0F, 0.0F, 0.0F, 0.0F, 3000.0F, kEarth, kSky, kSun));
        auto atmosphere = std::make_unique<AtmFile>();
        ASSERT_TRUE(atmosphere->parse(atmosphereText({130.0, 235.0, 1.9, 0.65, 1.7, 0.0})));
        const Vector<float> sun = atmosphere->SolarDirWorld();
        light = {kEarth, kSky, kSun, {sun.ElementAt(0), sun.ElementAt(1), sun.ElementAt(2)}};
        engagements[0].atm = std::move(atmosphere);
        ASSERT_TRUE(body.load(files));
    }

    // From a camera so far away in a direction of the body.
    Camera cameraFrom(const Vec3d& towards, double distance) const {
        const auto at = [&](double component, std::size_t axis) {
            return static_cast<float>(double{kPlace[axis]} + distance * component);
        };
        return cameraAt(
            {at(towards.x, 0), at(towards.y, 1), at(towards.z, 2), 1.0F}, {kPlace[0], kPlace[1], kPlace[2], 1.0F});
    }

    double pictured(const Vec3d& towards, double distance, int pixels) {
        request.width = request.height = pixels;
        return intensityAt(distance, draw(cameraFrom(towards, distance)));
    }

    // What comes along rays from an eye that is near, as if all came from the middle of the body, W/sr.
    double castFrom(const Vec3d& towards, double distance, double radius) const {
        constexpr int kRaysToASide = 700;
        Mesh mesh;
        for (const SignatureBody::Facet& facet : body.facets()) {
            const std::size_t first = mesh.points.size();
            mesh.points.insert(mesh.points.end(), facet.corners.begin(), facet.corners.end());
            mesh.facets.push_back({{first, first + 1, first + 2}, {}});
        }
        const double fieldOfView = 2.0 * std::asin(radius / distance) * 180.0 / std::numbers::pi;
        const RayCaster rays(
            mesh, {kPlace[0], kPlace[1], kPlace[2]}, cameraFrom(towards, distance), fieldOfView, kRaysToASide,
            kRaysToASide);
        const PixelPlane plane(fieldOfView, kRaysToASide, kRaysToASide);
        const FacetShading shading(body, light);
        double sum = 0.0;
        for (int row = 0; row < kRaysToASide; ++row)
            for (int column = 0; column < kRaysToASide; ++column)
                if (const auto facet = rays.facetAt(column + 0.5, row + 0.5)) {
                    const Vec3d away = rays.directionAt(column + 0.5, row + 0.5);
                    const Vec3f toEye{
                        static_cast<float>(-away.x), static_cast<float>(-away.y), static_cast<float>(-away.z)};
                    sum += shading.towards(*facet, toEye).total() * plane.solidAngleOf(column, row);
                }
        return sum * std::pow(100.0 * distance, 2);
    }
};

struct Sight {
    double distance;
    int pixels;
    double azimuth;
    double elevation;
};

TEST_F(RadianceSignatureTest, ABodysPictureAddsUpToItsSignature) {
    const SignatureFiles boxFiles = writeBody(
        folder, "box", boxFacets({0.8, 0.6, 0.5}, {1e-4F, 2e-4F, 3e-4F, 4e-4F, 5e-4F, 6e-4F}),
        "0.2 0.5 0.3 0.3 0 paint");
    for (const auto& [files, sights] : Rows<SignatureFiles, std::vector<Sight>>{
             {boxFiles, {{100.0, 32, 30.0, 20.0}, {100.0, 1024, 200.0, -50.0}, {20000.0, 64, 270.0, 5.0}}},
             {write(folder, "missile", missile()), {{100.0, 256, 80.0, 10.0}, {900.0, 32, 200.0, -30.0}}},
             {write(folder, "helicopter", helicopter()), {{100.0, 128, 90.0, 0.0}, {300.0, 64, 45.0, 30.0}}},
             {write(folder, "jet", jet()),
              {{100.0, 32, 0.0, 0.0},
               {100.0, 128, 90.0, 0.0},
               {100.0, 1024, 200.0, -30.0},
               {2000.0, 128, 90.0, -10.0},
               {5000.0, 32, 250.0, -45.0},
               {20000.0, 32, 120.0, 0.0},
               {20000.0, 1024, 300.0, 60.0}}}}) {
        show(files);
        const FacetShading shading(body, light);
        SignatureSum signature(body, shading, 1.0, FacetVisibility::kUsualPixels);
        for (const auto& [distance, pixels, azimuth, elevation] : sights) {
            SCOPED_TRACE(testing::Message() << files.geometry << ", " << distance << " units, " << pixels << " pixels");
            const Vec3d towards = directionOf(azimuth, elevation);
            const double apparent = signature.towards({towards, distance}).intensity.total();
            EXPECT_NEAR(pictured(towards, distance, pixels) / apparent, 1.0, 0.01);
            if (distance >= 2000.0) {
                EXPECT_NEAR(signature.towards({towards}).intensity.total() / apparent, 1.0, 0.01);
            }
        }
    }
}

// From near, the parts that are nearer are the larger; picture and signature have it as rays from the eye do.
TEST_F(RadianceSignatureTest, ANearBodysPictureAddsUpToWhatRaysBring) {
    show(write(folder, "jet", jet()));
    const FacetShading shading(body, light);
    SignatureSum signature(body, shading, 1.0, FacetVisibility::kUsualPixels);
    for (const auto& [distance, pixels, azimuth, elevation] :
         {Sight{100.0, 32, 90.0, 0.0}, Sight{100.0, 1024, 35.0, 20.0}, Sight{500.0, 64, 180.0, 5.0}}) {
        SCOPED_TRACE(testing::Message() << distance << " units, " << pixels << " pixels");
        const Vec3d towards = directionOf(azimuth, elevation);
        const double cast = castFrom(towards, distance, 11.0);
        EXPECT_NEAR(pictured(towards, distance, pixels) / cast, 1.0, 0.01);
        EXPECT_NEAR(signature.towards({towards, distance}).intensity.total() / cast, 1.0, 0.005);
    }
}
} // namespace
