// The reflectance model, all terms, beside its formulas written down one after the other.
#include <cmath>
#include <random>
#include <vector>

#include <benchmark/benchmark.h>

#include "plainbrdf.h"
#include "sandfordrobertson.h"

using namespace sorvane;

namespace {
struct Case {
    Vector<float> toSource, toViewer, glint;
    float b, e, rho_d, epsilon, G;
};

Vector<float> randomDirection(std::mt19937& random) {
    std::uniform_real_distribution<float> angle(0.0F, 1.4F);
    std::uniform_real_distribution<float> azimuth(0.0F, 6.28F);
    const float a = angle(random);
    const float p = azimuth(random);
    return {std::sin(a) * std::cos(p), std::sin(a) * std::sin(p), std::cos(a), 0.0F};
}

std::vector<Case> cases() {
    std::mt19937 random(7);
    std::vector<Case> all(4096);
    for (Case& one : all) {
        one.toSource = randomDirection(random);
        one.toViewer = randomDirection(random);
        const Vector<float> sum = one.toSource + one.toViewer;
        one.glint = sum / Length(sum);
        one.b = 0.25F;
        one.e = 0.3F;
        one.rho_d = 0.1F;
        one.epsilon = 0.6F;
        one.G = 0.8695048F;
    }
    return all;
}

template <class Brdf> void evaluate(benchmark::State& state, Brdf brdf) {
    const std::vector<Case> all = cases();
    const Vector<float> normal(0, 0, 1, 0);
    for (auto _ : state) {
        float sum = 0.0F;
        for (const Case& one : all)
            sum += brdf(0, normal, one.toSource, one.toViewer, one.b, one.e, one.rho_d, one.epsilon, one.G, one.glint);
        benchmark::DoNotOptimize(sum);
    }
}

void ours(benchmark::State& state) {
    evaluate(state, sr_brdf_internal);
}
BENCHMARK(ours)->Name("4096 reflectances/ours")->Unit(benchmark::kMicrosecond);

void plain(benchmark::State& state) {
    evaluate(state, plainBrdf);
}
BENCHMARK(plain)->Name("4096 reflectances/plain formulas")->Unit(benchmark::kMicrosecond);
} // namespace
