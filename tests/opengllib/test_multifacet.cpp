// The reflections between facets against the sum written out pair by pair.
#include "multifacet.h"

#include <cmath>
#include <random>

#include "bodyfiles.h"
#include "brdffile.h"
#include "filetracker.h"
#include "sandfordrobertson.h"
#include "subfacetfile.h"

using namespace sorvane;

namespace {
// Facets strewn about a ball with all reflectance modes; each sees some of the others.
struct Scene {
    static constexpr int kFacets = 60;

    Scene() {
        EXPECT_TRUE(brdf.parse("BRDF\n6\n.1 .6 .25 .2 0 x\n.2 .5 0 .4 0 x\n.3 .3 .6 .3 2 x\n.2 .4 .5 .3 3 x\n"
                               ".9 .3 .3 .1 0 x\n.1 .2 2 0 0 x\n"
                               "1 10 1 x\n11 20 2 x\n21 30 3 x\n31 40 4 x\n41 50 5 x\n51 60 6 x\n"));
        std::mt19937 random(3);
        std::uniform_real_distribution<float> coordinate(-1.0F, 1.0F);
        std::string text = std::to_string(kFacets) + "\n";
        for (int k = 0; k < kFacets; ++k) {
            centroids.emplace_back(coordinate(random), coordinate(random), coordinate(random), 1.0F);
            const Vector<float> outward(coordinate(random), coordinate(random), coordinate(random), 0.0F);
            normals.push_back(outward / Length(outward));
            radiances.push_back(1e-5F * (coordinate(random) + 1.0F));
            const int visible = k % 13;
            text += std::to_string(k + 1) + " 1 1 " + std::to_string(visible) + "\n";
            for (int i = 1; i <= visible; ++i)
                text += std::to_string((k + 3 * i) % kFacets + 1) + " " +
                        std::to_string(0.01F * static_cast<float>(i)) + "\n";
        }
        FileTracker lines;
        lines.addText(text);
        EXPECT_TRUE(subfacets.parse(lines));
        EXPECT_TRUE(subfacets.Init(normals));
        sum.init(subfacets, brdf, normals, centroids, radiances);
    }

    // The sum for facet k as it is defined.
    double expected(int k, const Vector<float>& eye) const {
        const auto facet = static_cast<std::size_t>(k);
        const BrdfClass& surface = brdf.classes()[static_cast<std::size_t>(brdf.FacetIndxToBrdfClass(k))];
        const Vector<float> toViewer = (eye - centroids[facet]) / Length(eye - centroids[facet]);
        double total = 0.0;
        for (const SubfacetFile::Visible& visible : subfacets.visibleFrom(facet)) {
            const auto other = static_cast<std::size_t>(visible.facet);
            const Vector<float> apart = centroids[other] - centroids[facet];
            const Vector<float> toSource = apart / Length(apart);
            const Vector<float> between = toSource + toViewer;
            total += static_cast<double>(
                sr_brdf_internal(
                    surface.mode, normals[facet], toSource, toViewer, surface.b, surface.e, surface.rho_d,
                    surface.epsilon, surface.G, between / Length(between)) *
                3.1415927F * visible.formFactor * radiances[other]);
        }
        return total;
    }

    BrdfFile brdf;
    std::vector<Vector<float>> normals, centroids;
    std::vector<float> radiances;
    SubfacetFile subfacets;
    MultiFacet sum;
};
} // namespace

TEST(MultiFacet, SumsTheReflectionsOfAllVisibleFacets) {
    const Scene scene;
    int lit = 0;
    for (const Vector<float>& eye :
         {Vector<float>(3, 4, 5, 1), Vector<float>(-100, 2, -30, 1), Vector<float>(0, 0, 0, 1),
          Vector<float>(0, -9, 0, 1)}) {
        std::vector<float> reflected(Scene::kFacets, -1.0F);
        scene.sum.update(eye, reflected);
        for (int k = 0; k < Scene::kFacets; ++k) {
            const double expected = scene.expected(k, eye);
            EXPECT_NEAR(static_cast<double>(reflected[static_cast<std::size_t>(k)]), expected, 1e-4 * expected) << k;
            lit += expected > 0.0 ? 1 : 0;
        }
    }
    EXPECT_GT(lit, 60);
}

TEST(MultiFacet, AFacetWithoutAreaReflectsNothing) {
    Scene scene;
    for (int i = 0; i < 3; ++i)
        scene.normals[12].ElementAt(i) = std::nanf("");
    ASSERT_TRUE(scene.subfacets.Init(scene.normals));
    scene.sum.init(scene.subfacets, scene.brdf, scene.normals, scene.centroids, scene.radiances);
    std::vector<float> reflected(Scene::kFacets);
    scene.sum.update({3, 4, 5, 1}, reflected);
    EXPECT_EQ(reflected[12], 0.0F);
    for (const float value : reflected)
        EXPECT_TRUE(std::isfinite(value));
}
