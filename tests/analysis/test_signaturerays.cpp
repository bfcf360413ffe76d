// Signatures of the demonstration's bodies against rays: a million for each direction, in double precision, with the
// reflection at each point that they meet.
#include <algorithm>
#include <cmath>
#include <limits>
#include <numbers>
#include <random>

#include <gtest/gtest.h>

#include "body.h"
#include "bvh.h"
#include "formfactors.h"
#include "signaturemap.h"
#include "temporarydirectory.h"

namespace sorvane {
namespace {
constexpr int kRaysToASide = 1000;

Vector<float> vectorOf(const Vec3d& v) {
    return {static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z), 0.0F};
}

class RayTest : public testing::Test {
protected:
    void load(const Body& source, const std::string& formFactors = {}) {
        SignatureFiles files;
        files.geometry = folder_.write("body.vnl", geometryText(source));
        files.reflectance = folder_.write("body.brdf", reflectanceText(source));
        files.radiance = folder_.write("body.rad", radianceBytes(source, 1.0));
        if (!formFactors.empty())
            folder_.write("body.sff-txt", formFactors);
        ASSERT_TRUE(body_.load(files));
    }

    // What the rays bring home, W/sr, and the area on which they fall.
    SignaturePoint cast(const SignatureLight& light, const Vec3d& towards) const {
        const Vec3d right = unit(cross({0.3, 0.1, 1.0}, towards));
        const Vec3d up = cross(towards, right);
        Mesh facing;
        std::vector<std::size_t> numbers;
        double low[2] = {1e9, 1e9};
        double high[2] = {-1e9, -1e9};
        for (std::size_t k = 0; k < body_.facets().size(); ++k) {
            const SignatureBody::Facet& facet = body_.facets()[k];
            if (!(dot(facet.area, towards) > 0.0))
                continue;
            const std::size_t first = facing.points.size();
            facing.facets.push_back({{first, first + 1, first + 2}, {}});
            numbers.push_back(k);
            for (const Vec3d& corner : facet.corners) {
                facing.points.push_back(corner);
                const double at[2] = {dot(corner, right), dot(corner, up)};
                for (std::size_t i = 0; i < 2; ++i) {
                    low[i] = std::min(low[i], at[i]);
                    high[i] = std::max(high[i], at[i]);
                }
            }
        }
        const Bvh tree(facing);
        std::mt19937 random(7);
        std::uniform_real_distribution<double> part(0.0, 1.0);
        const double area = (high[0] - low[0]) * (high[1] - low[1]) / (double{kRaysToASide} * kRaysToASide);
        SignaturePoint sum;
        for (int i = 0; i < kRaysToASide * kRaysToASide; ++i) {
            const auto along = [&](std::size_t axis, int step) {
                return low[axis] + (high[axis] - low[axis]) * (step + part(random)) / kRaysToASide;
            };
            const double x = along(0, i % kRaysToASide);
            const double y = along(1, i / kRaysToASide);
            const Vec3d from = x * right + y * up + 1e3 * towards;
            const auto hit = tree.closestHit({from, -1.0 * towards}, std::numeric_limits<std::size_t>::max());
            if (!hit)
                continue;
            const SignatureParts parts = radianceAt(numbers[*hit], from, towards, light);
            sum.projectedArea += area;
            sum.intensity.own += 1e4 * area * parts.own;
            sum.intensity.sun += 1e4 * area * parts.sun;
            sum.intensity.skyAndEarth += 1e4 * area * parts.skyAndEarth;
            sum.intensity.otherFacets += 1e4 * area * parts.otherFacets;
        }
        return sum;
    }

    void compare(const SignatureLight& light, std::initializer_list<std::array<double, 2>> directions) {
        const FacetShading shading(body_, light);
        SignatureSum sum(body_, shading, 1.0, FacetVisibility::kUsualPixels);
        for (const auto& [azimuth, elevation] : directions) {
            SCOPED_TRACE(std::to_string(azimuth) + " " + std::to_string(elevation));
            const SignaturePoint ours = sum.towards({directionOf(azimuth, elevation)});
            const SignaturePoint rays = cast(light, directionOf(azimuth, elevation));
            const double total = rays.intensity.total();
            EXPECT_NEAR(ours.projectedArea, rays.projectedArea, 0.005 * rays.projectedArea);
            EXPECT_NEAR(ours.intensity.total(), total, 0.005 * total);
            EXPECT_NEAR(ours.intensity.own, rays.intensity.own, 0.005 * total);
            EXPECT_NEAR(ours.intensity.sun, rays.intensity.sun, 0.005 * total);
            EXPECT_NEAR(ours.intensity.skyAndEarth, rays.intensity.skyAndEarth, 0.005 * total);
            EXPECT_NEAR(ours.intensity.otherFacets, rays.intensity.otherFacets, 0.005 * total);
        }
    }

    SignatureBody body_;

private:
    // Where the line from a point meets the facet, the normal is that of the corners by its part of the facet.
    SignatureParts
    radianceAt(std::size_t k, const Vec3d& from, const Vec3d& towards, const SignatureLight& light) const {
        const SignatureBody::Facet& facet = body_.facets()[k];
        const double depth = dot(from - facet.corners[0], facet.area) / dot(towards, facet.area);
        const Vec3d point = from - depth * towards;
        Vec3d normal{};
        for (std::size_t i = 0; i < 3; ++i) {
            const Vec3d opposite = cross(facet.corners[(i + 1) % 3] - point, facet.corners[(i + 2) % 3] - point);
            const double part = 0.5 * dot(opposite, facet.area) / dot(facet.area, facet.area);
            const Vec3f& corner = facet.normals[i];
            normal = normal + part * Vec3d{corner.x, corner.y, corner.z};
        }
        normal = unit(normal);
        const BrdfClass& c = body_.surfaceOf(facet);
        const float brdf = sr_brdf_internal(
            c.mode, vectorOf(normal), vectorOf(light.toSun), vectorOf(towards), c.b, c.e, c.rho_d, c.epsilon, c.G,
            vectorOf(unit(light.toSun + towards)));
        const double cosViewer = std::max(dot(normal, towards), 1e-5);
        const double slant = c.b * c.b * (1.0 - cosViewer * cosViewer) / (cosViewer * cosViewer);
        SignatureParts parts;
        parts.own = facet.radiance;
        parts.sun = std::numbers::pi * brdf * std::max(dot(normal, light.toSun), 0.0) * light.solarBeam;
        parts.skyAndEarth = (facet.earthFormFactor * light.earthRadiance + facet.skyFormFactor * light.skyRadiance) *
                            std::max(1.0 - c.epsilon / (1.0 + slant) / c.G, 0.0);
        if (body_.multiFacet() != nullptr)
            parts.otherFacets = body_.multiFacet()->reflectedTowards(k, vectorOf(towards));
        return parts;
    }

    TemporaryDirectory folder_;
};

const SignatureLight kAfternoon{1.9e-4F, 0.65e-4F, 1.7e-4F, directionOf(140.0, 40.0)};

TEST_F(RayTest, Jet) {
    load(jet());
    compare(kAfternoon, {{35.0, 10.0}, {0.0, 0.0}});
}

TEST_F(RayTest, MissileWithWhatItsFacetsReflectOfEachOther) {
    const Body source = missile();
    load(source, formFactorText(formFactors(source.mesh, 16)));
    compare(kAfternoon, {{20.0, 5.0}, {150.0, 35.0}});
}

TEST_F(RayTest, Helicopter) {
    load(helicopter());
    compare(kAfternoon, {{75.0, 15.0}, {180.0, 0.0}});
}

TEST_F(RayTest, Bullet) {
    load(bullet());
    compare(kAfternoon, {{90.0, 0.0}, {185.0, 60.0}});
}
} // namespace
} // namespace sorvane
