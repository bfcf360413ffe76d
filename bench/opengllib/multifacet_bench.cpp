// Reflections between the facets of a body for a moving eye, beside the plain sum over all pairs.
#include <cmath>
#include <numbers>
#include <random>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "brdffile.h"
#include "filetracker.h"
#include "multifacet.h"
#include "radfile.h"
#include "samplebody.h"
#include "sandfordrobertson.h"
#include "subfacetfile.h"
#include "vnlfile.h"

using namespace sorvane;

namespace {
constexpr int kFacets = 8000;
constexpr int kPairs = 20;

// The inside of a ball, whose facets all see each other, and an eye in it, which sees them all.
struct Ball {
    Ball() {
        const SampleBody body = sampleBody(kFacets, 5, true);
        brdf.parse(body.brdf);
        const auto count = static_cast<std::size_t>(brdf.numFacets());
        rad.parse(body.rad, brdf.numFacets());
        centroids.resize(count);
        normals.resize(count);
        std::vector<Tuple3<unsigned short>> facets(count);
        std::vector<Tuple3<float>> corners(3 * count);
        std::vector<int> sorted(count);
        FileTracker lines;
        lines.addText(body.vnl);
        VnlFile().parse(
            lines, brdf, rad,
            {facets.data(), corners.data(), corners.data(), corners.data(), corners.data(), centroids.data(),
             normals.data(), sorted.data()});

        std::mt19937 random(5);
        std::uniform_int_distribution<int> other(1, brdf.numFacets());
        std::string text = std::to_string(count) + "\n";
        for (int k = 1; k <= brdf.numFacets(); ++k) {
            text += std::to_string(k) + " 0 0 " + std::to_string(kPairs) + "\n";
            for (int i = 0; i < kPairs; ++i) {
                int j = other(random);
                while (j == k)
                    j = other(random);
                text += std::to_string(j) + " 0.01\n";
            }
        }
        FileTracker pairs;
        pairs.addText(text);
        subfacets.parse(pairs);
        subfacets.Init(normals);
        reflected.resize(count);
    }

    Vector<float> nextEye() {
        angle += 0.01F;
        return {std::cos(angle), std::sin(angle), 0.5F, 1.0F};
    }

    BrdfFile brdf;
    RadFile rad;
    SubfacetFile subfacets;
    std::vector<Vector<float>> centroids, normals;
    std::vector<float> reflected;
    float angle = 0.0F;
};

void ours(benchmark::State& state) {
    Ball ball;
    MultiFacet multiFacet;
    multiFacet.init(
        ball.subfacets, ball.brdf, ball.normals, ball.centroids, std::span(ball.rad.rad(), ball.centroids.size()));
    for (auto _ : state) {
        multiFacet.update(ball.nextEye(), ball.reflected);
        benchmark::DoNotOptimize(ball.reflected.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(ours)->Name("reflections of 8000 facets x 20/ours")->Unit(benchmark::kMillisecond);

float mostReflected(const BrdfClass& surface, const Vector<float>& normal, const Vector<float>& toViewer) {
    float cosine = 0.0F;
    for (int axis = 0; axis < 3; ++axis)
        cosine += normal.ElementAt(axis) * toViewer.ElementAt(axis);
    const float cosine2 = cosine * cosine;
    return 1.0F - surface.epsilon / surface.G / ((1.0F - cosine2) * surface.b * surface.b / cosine2 + 1.0F);
}

void pairByPair(benchmark::State& state) {
    Ball ball;
    const float* const radiance = ball.rad.rad();
    for (auto _ : state) {
        const Vector<float> eye = ball.nextEye();
        for (std::size_t k = 0; k < ball.centroids.size(); ++k) {
            const int brdfClass = ball.brdf.FacetIndxToBrdfClass(static_cast<int>(k));
            const BrdfClass& surface = ball.brdf.classes()[static_cast<std::size_t>(brdfClass)];
            const Vector<float> eyeward = eye - ball.centroids[k];
            const Vector<float> toViewer = eyeward / Length(eyeward);
            float sum = 0.0F;
            float weights = 0.0F;
            for (const SubfacetFile::Visible& visible : ball.subfacets.visibleFrom(k)) {
                const auto j = static_cast<std::size_t>(visible.facet);
                const Vector<float> apart = ball.centroids[j] - ball.centroids[k];
                const Vector<float> toSource = apart / Length(apart);
                const Vector<float> between = toSource + toViewer;
                const float weight = sr_brdf_internal(
                                         surface.mode, ball.normals[k], toSource, toViewer, surface.b, surface.e,
                                         surface.rho_d, surface.epsilon, surface.G, between / Length(between)) *
                                     std::numbers::pi_v<float> * visible.formFactor;
                weights += weight;
                sum += weight * radiance[j];
            }
            const float limit = mostReflected(surface, ball.normals[k], toViewer);
            ball.reflected[k] = weights > limit ? sum * limit / weights : sum;
        }
        benchmark::DoNotOptimize(ball.reflected.data());
        benchmark::ClobberMemory();
    }
}
BENCHMARK(pairByPair)->Name("reflections of 8000 facets x 20/pair by pair")->Unit(benchmark::kMillisecond);
} // namespace
