// The bodies of the demonstration, through the readers that the viewer loads them with.
#include <algorithm>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "body.h"
#include "bodyfolders.h"
#include "brdffile.h"
#include "datatree.h"
#include "facetarrays.h"
#include "loft.h"
#include "matrix.h"
#include "meshchecks.h"
#include "outputfile.h"
#include "radfile.h"
#include "rotor.h"
#include "temporarydirectory.h"
#include "vnlfile.h"

using namespace sorvane;

namespace {
// The files of one body in one band, below the data root, and what is expected of it.
struct Expectation {
    std::string geometry;
    std::string reflectance;
    std::string radiance;
    int minimumFacets;
    int maximumFacets;
    float length; // metres
    std::size_t classes;
};

std::vector<Expectation> expectations() {
    std::vector<Expectation> all = {
        {kTargetGeometry, kTargetReflectance, kTargetSignature, 3000, 8000, 18.4F, 4},
        {kHelicopterGeometry, kHelicopterReflectance, kHelicopterSignature, 3000, 8000, 14.236F, 5},
    };
    for (const std::string band : {"1", "4", "6"}) {
        const std::string missile = "tgt0450/tgt0450_b000" + band;
        const std::string bullet = "tgt0451/tgt0451_b000" + band;
        all.push_back({"tgt0450/tgt0450.vnl", missile + ".brdf", missile + ".rad", 500, 2000, 2.785F, 4});
        all.push_back({"tgt0451/tgt0451.vnl", bullet + ".brdf", bullet + ".rad", 100, 500, 0.195F, 3});
    }
    return all;
}

// The files of all bodies, written once for all tests.
const TemporaryDirectory& dataRoot() {
    static const TemporaryDirectory directory;
    static const bool isWritten = [] {
        return std::ranges::all_of(bodyFiles(), [](const DemonstrationFile& file) {
            return writeOutputFile(directory.path() / file.name, file.contents) == std::nullopt;
        });
    }();
    EXPECT_TRUE(isWritten);
    return directory;
}

struct LoadedBody {
    explicit LoadedBody(const Expectation& expectation) {
        testing::internal::CaptureStderr();
        EXPECT_TRUE(load(expectation, dataRoot().file("")));
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    }

    bool load(const Expectation& expectation, const std::string& root) {
        if (!brdf.Load(root + expectation.reflectance) || !arrays.allocate(brdf.numFacets()) ||
            !rad.Load(root + expectation.radiance, brdf.numFacets()))
            return false;
        return vnl.Load(
            root + expectation.geometry, brdf, rad, arrays.indices_.get(), arrays.vertices_.get(),
            arrays.normals_.get(), arrays.primaryColors_.get(), arrays.secondaryColors_.get(),
            arrays.facetCentroids_.get(), arrays.facetNormals_.get(), arrays.facetMap_.get());
    }

    BrdfFile brdf;
    RadFile rad;
    VnlFile vnl;
    FacetArrays arrays;
};
} // namespace

TEST(Bodies, LoadWithThePlausibleSizeClassesAndGreysOfTheirKind) {
    for (const Expectation& expected : expectations()) {
        SCOPED_TRACE(expected.radiance);
        const LoadedBody body(expected);
        const int facets = body.brdf.numFacets();
        EXPECT_TRUE(facets >= expected.minimumFacets && facets <= expected.maximumFacets) << facets;
        const auto& box = body.vnl.boundingBox();
        EXPECT_NEAR(box[6].ElementAt(0) - box[0].ElementAt(0), expected.length, 0.01F);
        EXPECT_NEAR(box[6].ElementAt(1), -box[0].ElementAt(1), 0.2F) << "the left is as wide as the right";
        const auto used =
            std::ranges::count_if(body.brdf.blocks(), [](const FacetBlock& block) { return block.facetCount_ > 0; });
        EXPECT_GE(static_cast<std::size_t>(used), expected.classes);
        for (const BrdfClass& brdfClass : body.brdf.classes())
            EXPECT_LT(brdfClass.rho_d + brdfClass.epsilon, brdfClass.G) << "something is left to reflect specularly";

        const auto [coldest, hottest] = std::minmax_element(body.rad.rad(), body.rad.rad() + facets);
        EXPECT_GE(*coldest, 1e-5F);
        EXPECT_LE(*hottest, 1e-3F);
        EXPECT_GT(*hottest, 5.0F * *coldest) << "hot parts";
        for (int facet = 0; facet < facets; ++facet)
            ASSERT_LT(body.rad.rad()[facet], body.rad.bbe()[facet]) << "no more than a blackbody";
    }
}

TEST(Bodies, FaceOutwardsWithCornersCounterClockwise) {
    for (const Expectation& expected : expectations()) {
        SCOPED_TRACE(expected.radiance);
        const LoadedBody body(expected);
        double volume = 0.0;
        for (std::size_t slot = 0; slot < static_cast<std::size_t>(body.brdf.numFacets()); ++slot) {
            const auto corner = [&](const auto& array, std::size_t i) {
                const Tuple3<float>& value = array[3 * slot + i];
                return Vec3d{value.x, value.y, value.z};
            };
            const Vec3d a = corner(body.arrays.vertices_, 0);
            const Vec3d area = cross(corner(body.arrays.vertices_, 1) - a, corner(body.arrays.vertices_, 2) - a);
            ASSERT_GT(length(area), 0.0) << slot;
            volume += dot(a, area);
            for (std::size_t i = 0; i < 3; ++i)
                ASSERT_GT(dot(corner(body.arrays.normals_, i), area), 0.0) << "vertex normal of slot " << slot;
        }
        EXPECT_GT(volume, 0.0);
    }
}

TEST(Bodies, AreClosedSurfaces) {
    for (const Body& body : {jet(), missile(), bullet(), helicopter()})
        EXPECT_TRUE(isClosed(body.mesh));
}

TEST(Bodies, SpinTheHelicoptersRotorsAboutTheirHubs) {
    const Rotor rotor(dataRoot().file(kHelicopterRotors).c_str());
    const Body body = helicopter();
    ASSERT_EQ(rotor.getRotorCount(), 2);
    EXPECT_EQ(rotor.getRotorEnd(1) + 1, rotor.getRotorStart(2));
    EXPECT_EQ(static_cast<std::size_t>(rotor.getRotorEnd(2)), body.mesh.facets.size());
    for (int number = 1; number <= 2; ++number) {
        const SpinningPart& part = body.spinningParts.at(static_cast<std::size_t>(number - 1));
        std::array<float, 16> matrix{};
        rotor.getRotorMatrix(number, 0.013F, matrix.data());
        const std::array<float, 3> hub = {
            static_cast<float>(part.hub.x), static_cast<float>(part.hub.y), static_cast<float>(part.hub.z)};
        std::array<float, 3> turnedHub{};
        mat_vtransform_(matrix.data(), hub.data(), turnedHub.data());
        for (std::size_t i = 0; i < 3; ++i)
            EXPECT_NEAR(turnedHub[i], hub[i], 1e-5F) << "the hub stays";
        // The mean of the blades is on the axis, so that nothing wobbles.
        Vec3d sum;
        for (int facet = rotor.getRotorStart(number) - 1; facet < rotor.getRotorEnd(number); ++facet)
            sum = sum + centroid(body.mesh, body.mesh.facets.at(static_cast<std::size_t>(facet)));
        const Vec3d offset = 1.0 / static_cast<double>(part.facetCount) * sum - part.hub;
        EXPECT_LT(length(offset - dot(offset, part.axis) * part.axis), 0.02);
    }
}

TEST(Loft, SpansACylinderWhicheverWayItsRingsRun) {
    // An approximated circle of 64 points encloses 32 sin(pi / 32) of the squared radius.
    for (const double length : {2.0, -2.0}) {
        const std::vector<Oval> ovals = {{0.0, 0.5, 0.5, {}, 2.0, {}}, {length, 0.5, 0.5, {}, 2.0, {}}};
        const Mesh mesh = loft({}, {}, ovalSections(ovals, 64), {length, 0.0, 0.0});
        EXPECT_TRUE(isClosed(mesh));
        EXPECT_EQ(mesh.facets.size(), 256U);
        EXPECT_NEAR(signedVolume(mesh), 2.0 * 0.25 * 3.1365484905, 1e-9);
        EXPECT_NEAR(signedVolume(mirrored(mesh)), signedVolume(mesh), 1e-12);
    }
}

TEST(Loft, MakesAWingAsThickAsItsEndsSay) {
    const Mesh mesh = wing(
        {{0.0, 0.0, 0.0}, 2.0, 0.1}, {{-1.0, 3.0, 0.0}, 1.0, 0.05}, 6, 40, {0.0, 0.0, 1.0}, {Material::Metal, 1.0});
    EXPECT_TRUE(isClosed(mesh));
    EXPECT_GT(signedVolume(mesh), 0.0);
    const auto highest = std::max_element(
        mesh.points.begin(), mesh.points.end(), [](const Vec3d& a, const Vec3d& b) { return a.z < b.z; });
    EXPECT_NEAR(highest->z, 0.1, 2e-4) << "half of 10 per cent of a chord of 2";
    EXPECT_NEAR(highest->x, -0.6, 0.05) << "at 30 per cent of the chord";
}
