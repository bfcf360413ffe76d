// The reflections between facets against the sum written out pair by pair, and against what energy allows.
#include "multifacet.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <random>

#include "bodyfiles.h"
#include "brdffile.h"
#include "filetracker.h"
#include "plainbrdf.h"
#include "rows.h"
#include "subfacetfile.h"

using namespace sorvane;

namespace {
// What the emission of a class leaves to be reflected towards an eye.
double reflectanceTowards(const BrdfClass& surface, double cosine) {
    const double b2 = static_cast<double>(surface.b) * static_cast<double>(surface.b);
    const double directional = 1.0 / ((1.0 / (cosine * cosine) - 1.0) * b2 + 1.0);
    return std::max(0.0, 1.0 - static_cast<double>(surface.epsilon / surface.G) * directional);
}

Vector<float> times(const Vector<float>& v, double factor) {
    return v / static_cast<float>(1.0 / factor);
}

// The model between two unit directions.
double reflection(
    const BrdfClass& surface, const Vector<float>& normal, const Vector<float>& source, const Vector<float>& eye) {
    const Vector<float> between = source + eye;
    return static_cast<double>(plainBrdf(
        surface.mode, normal, source, eye, surface.b, surface.e, surface.rho_d, surface.epsilon, surface.G,
        between / Length(between)));
}

// What a class reflects towards an eye of all that shines evenly on it, by the model: π times the mean of its
// distribution over directions that are as frequent as their cosine.
double hemisphereIntegral(const BrdfClass& surface, double cosine) {
    constexpr int kSteps = 200;
    const Vector<float> normal(0, 0, 1, 0);
    const Vector<float> eye(static_cast<float>(std::sqrt(1.0 - cosine * cosine)), 0, static_cast<float>(cosine), 0);
    double sum = 0.0;
    for (int i = 0; i < kSteps; ++i)
        for (int j = 0; j < kSteps; ++j) {
            const double squaredSine = (i + 0.5) / kSteps;
            const double angle = (j + 0.5) / kSteps * std::numbers::pi;
            const auto sine = static_cast<float>(std::sqrt(squaredSine));
            const Vector<float> source(
                sine * static_cast<float>(std::cos(angle)), sine * static_cast<float>(std::sin(angle)),
                static_cast<float>(std::sqrt(1.0 - squaredSine)), 0);
            sum += reflection(surface, normal, source, eye);
        }
    return std::numbers::pi * sum / (kSteps * kSteps);
}

// Facets and what they see of each other.
struct Body {
    void add(const Vector<float>& centroid, const Vector<float>& normal, float radiance) {
        centroids.push_back(centroid);
        normals.push_back(normal);
        radiances.push_back(radiance);
        visible.emplace_back();
    }
    void addSight(std::size_t facet, std::size_t other, double formFactor) {
        visible[facet].push_back(std::to_string(other + 1) + " " + std::to_string(formFactor * 1e6) + "e-6\n");
    }
    // Each facet is in the class of its number modulo the number of classes.
    void finish(const std::vector<std::string>& classes) {
        std::string reflectance = "BRDF\n" + std::to_string(classes.size()) + "\n";
        for (const std::string& line : classes)
            reflectance += line + " x\n";
        std::string sights = std::to_string(centroids.size()) + "\n";
        for (std::size_t k = 0; k < centroids.size(); ++k) {
            const std::string number = std::to_string(k + 1);
            reflectance += number + " " + number + " " + std::to_string(k % classes.size() + 1) + " x\n";
            sights += number + " 0 0 " + std::to_string(visible[k].size()) + "\n";
            for (const std::string& line : visible[k])
                sights += line;
        }
        ASSERT_TRUE(brdf.parse(reflectance));
        FileTracker lines;
        lines.addText(sights);
        ASSERT_TRUE(subfacets.parse(lines));
        initialise();
    }
    void initialise() {
        ASSERT_TRUE(subfacets.Init(normals));
        sum.init(subfacets, brdf, normals, centroids, radiances);
    }

    const BrdfClass& surfaceOf(std::size_t facet) const {
        return brdf.classes()[static_cast<std::size_t>(brdf.FacetIndxToBrdfClass(static_cast<int>(facet)))];
    }
    std::vector<float> reflected(const Vector<float>& eye) const {
        std::vector<float> result(centroids.size(), -1.0F);
        sum.update(eye, result);
        return result;
    }
    Vector<float> towards(std::size_t facet, const Vector<float>& point) const {
        return (point - centroids[facet]) / Length(point - centroids[facet]);
    }
    // The sum for a facet as it is defined.
    double expected(std::size_t k, const Vector<float>& eye) const {
        const Vector<float> toViewer = towards(k, eye);
        double weights = 0.0;
        double total = 0.0;
        for (const SubfacetFile::Visible& seen : subfacets.visibleFrom(k)) {
            const auto other = static_cast<std::size_t>(seen.facet);
            const double weight = std::numbers::pi * static_cast<double>(seen.formFactor) *
                                  reflection(surfaceOf(k), normals[k], towards(k, centroids[other]), toViewer);
            weights += weight;
            total += weight * static_cast<double>(radiances[other]);
        }
        const double limit = reflectanceTowards(surfaceOf(k), static_cast<double>(plainDot(normals[k], toViewer)));
        return weights > limit ? total * limit / weights : total;
    }

    BrdfFile brdf;
    std::vector<Vector<float>> normals, centroids;
    std::vector<float> radiances;
    std::vector<std::vector<std::string>> visible;
    SubfacetFile subfacets;
    MultiFacet sum;
};

const std::vector<std::string> kAllModes = {".1 .6 .25 .2 0", ".2 .5 0 .4 0",  ".3 .3 .6 .3 2",
                                            ".2 .4 .5 .3 3",  ".9 .3 .3 .1 0", ".1 .2 2 0 0"};
const std::vector<std::string> kDemonstration = {".10 .78 .15 .30 0", ".10 .45 .00 .25 0", ".02 .82 .10 .12 0",
                                                 ".08 .86 .00 .50 0", ".14 .76 .10 .40 0", ".04 .92 .00 .60 0"};

// Facets strewn about a ball; each sees some of the others, which take up to `share` of its hemisphere.
Body strewn(unsigned int seed, std::size_t facets, double share, const std::vector<std::string>& classes) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<float> coordinate(-1.0F, 1.0F);
    const auto triple = [&](float w) {
        const float x = coordinate(random);
        const float y = coordinate(random);
        return Vector<float>(x, y, coordinate(random), w);
    };
    Body body;
    for (std::size_t k = 0; k < facets; ++k) {
        const Vector<float> outward = triple(0.0F);
        body.add(triple(1.0F), outward / Length(outward), 1e-5F * (coordinate(random) + 1.0F));
        const std::size_t seen = k % 13;
        for (std::size_t i = 1; i <= seen; ++i)
            body.addSight(
                k, (k + 3 * i) % facets, 2.0 * share * static_cast<double>(i) / static_cast<double>(seen * (seen + 1)));
    }
    body.finish(classes);
    return body;
}

std::vector<Vector<float>> strewnEyes() {
    return {{3, 4, 5, 1}, {-100, 2, -30, 1}, {0, 0, 0, 1}, {0, -9, 0, 1}};
}
} // namespace

TEST(MultiFacet, SumsTheReflectionsOfAllVisibleFacets) {
    int lit = 0;
    for (const double share : {0.05, 1.0}) {
        const Body body = strewn(3, 60, share, kAllModes);
        for (const Vector<float>& eye : strewnEyes()) {
            const std::vector<float> reflected = body.reflected(eye);
            for (std::size_t k = 0; k < reflected.size(); ++k) {
                const double expected = body.expected(k, eye);
                EXPECT_NEAR(static_cast<double>(reflected[k]), expected, 1e-4 * expected) << k;
                lit += expected > 0.0 ? 1 : 0;
            }
        }
    }
    EXPECT_GT(lit, 120);
}

TEST(MultiFacet, AFacetWithoutAreaReflectsNothing) {
    Body body = strewn(3, 60, 0.5, kAllModes);
    for (int i = 0; i < 3; ++i)
        body.normals[12].ElementAt(i) = std::nanf("");
    body.initialise();
    const std::vector<float> reflected = body.reflected({3, 4, 5, 1});
    EXPECT_EQ(reflected[12], 0.0F);
    for (const float value : reflected)
        EXPECT_TRUE(std::isfinite(value));
}

// A mirror so sharp that its lobe is as large as it can be, and seen where it is, by far too much of what it mirrors.
TEST(MultiFacet, AMirrorReflectsItsSource) {
    Body body;
    body.add({0, 0, 0, 1}, {0, 0, 1, 0}, 0.0F);
    for (std::size_t i = 1; i <= 16; ++i) {
        body.add({0, 0, 4, 1}, {0, 0, -1, 0}, 7.0F);
        body.addSight(0, i, 20.0);
    }
    body.finish({".1 .1 0 1e-30 0"});
    EXPECT_NEAR(body.reflected({0, 0, 9, 1})[0], 7.0 * reflectanceTowards(body.surfaceOf(0), 1.0), 1e-5);
}

// However bright a lobe is in the direction of a source, no facet outshines the brightest that it sees.
TEST(MultiFacet, ReflectsNoMoreThanItsEmissionLeaves) {
    std::mt19937 random(8);
    std::uniform_real_distribution<float> part(0.0F, 1.0F);
    int atTheLimit = 0;
    for (unsigned int seed = 0; seed < 40; ++seed) {
        std::vector<std::string> classes = {"0 0 0 0 0", "0 1 0 .2 0"};
        while (classes.size() < 11) {
            std::string line;
            for (const float most : {0.5F, 0.8F, 1.5F, 0.6F})
                line += std::to_string(most * part(random)) + " ";
            classes.push_back(line + std::to_string(seed % 4));
        }
        const Body body = strewn(seed, 100, 1.0, classes);
        const float brightest = *std::max_element(body.radiances.begin(), body.radiances.end());
        for (const Vector<float>& eye : strewnEyes()) {
            const std::vector<float> reflected = body.reflected(eye);
            for (std::size_t k = 0; k < reflected.size(); ++k) {
                const auto cosine = static_cast<double>(plainDot(body.normals[k], body.towards(k, eye)));
                const double limit = reflectanceTowards(body.surfaceOf(k), cosine) * static_cast<double>(brightest);
                EXPECT_GE(reflected[k], 0.0F);
                EXPECT_LE(static_cast<double>(reflected[k]), 1.00001 * limit) << seed << ' ' << k;
                atTheLimit += static_cast<double>(reflected[k]) > 0.3 * limit ? 1 : 0;
            }
        }
    }
    EXPECT_GT(atTheLimit, 500) << "the limit matters";
}

// In a cube whose six sides are equally bright.
TEST(MultiFacet, ADiffuseEnclosureReflectsAllThatItDoesNotEmit) {
    constexpr float kRadiance = 2e-5F;
    for (const auto& [surface, reflectance] :
         Rows<const char*, float>{{".3 .7 0 .5 2", 0.3F}, {".3 .7 0 .5 0", 0.3F}, {".3 .6 0 .5 2", 0.3F}}) {
        Body cube;
        for (std::size_t side = 0; side < 6; ++side) {
            Vector<float> normal;
            normal.ElementAt(static_cast<int>(side / 2)) = side % 2 == 0 ? 1.0F : -1.0F;
            cube.add(Vector<float>(0, 0, 0, 1) - normal, normal, kRadiance);
            for (std::size_t other = 0; other < 6; ++other)
                if (other != side)
                    cube.addSight(side, other, 0.2);
        }
        cube.finish({surface});
        for (const float value : cube.reflected({0.3F, -0.5F, 0.1F, 1.0F}))
            EXPECT_NEAR(value, reflectance * kRadiance, 1e-6F * reflectance * kRadiance) << surface;
    }
}

// The inside of a ball of uniform radiance, where a facet sees every other one under the same form factor: what is
// reflected is the model's integral over the hemisphere, or what the emission leaves where that is less.
TEST(MultiFacet, AnEnclosureOfManyFacetsReflectsWhatTheClassDoes) {
    constexpr std::size_t kFacets = 20000;
    constexpr double kRadiance = 2e-5;
    const std::size_t classes = kDemonstration.size();
    Body ball;
    for (std::size_t i = 0; i < kFacets; ++i) {
        const double z = 1.0 - (2.0 * static_cast<double>(i) + 1.0) / kFacets;
        const double angle = static_cast<double>(i) * std::numbers::pi * (3.0 - std::sqrt(5.0));
        const double radius = std::sqrt(1.0 - z * z);
        const Vector<float> outward(
            static_cast<float>(radius * std::cos(angle)), static_cast<float>(radius * std::sin(angle)),
            static_cast<float>(z), 0.0F);
        ball.add(outward + Vector<float>(0, 0, 0, 1), Vector<float>() - outward, static_cast<float>(kRadiance));
    }
    const std::size_t first = kFacets / 2 / classes * classes;
    for (std::size_t k = first; k < first + classes; ++k)
        for (std::size_t other = 0; other < kFacets; ++other)
            if (other != k)
                ball.addSight(k, other, 1.0 / (kFacets - 1));
    ball.finish(kDemonstration);

    for (std::size_t k = first; k < first + classes; ++k) {
        const Vector<float>& normal = ball.normals[k];
        const Vector<float> along = Vector<float>(0, 0, 1, 0) - times(normal, static_cast<double>(normal.ElementAt(2)));
        const Vector<float> across = along / Length(along);
        const BrdfClass& surface = ball.surfaceOf(k);
        for (const int degrees : {0, 20, 40, 60, 75}) {
            const double angle = degrees * std::numbers::pi / 180.0;
            const Vector<float> toEye =
                times(normal, 0.1 * std::cos(angle)) + times(across, 0.1 * std::sin(angle) + 1e-9);
            const double value = static_cast<double>(ball.reflected(ball.centroids[k] + toEye)[k]) / kRadiance;
            const double limit = reflectanceTowards(surface, std::cos(angle));
            const double expected = std::min(limit, hemisphereIntegral(surface, std::cos(angle)));
            EXPECT_NEAR(value, expected, 0.03 * expected) << kDemonstration[k % classes] << " at " << degrees;
            EXPECT_LE(value, 1.0001 * limit) << kDemonstration[k % classes] << " at " << degrees;
        }
    }
}
