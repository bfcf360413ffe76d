// The reflectance model, all terms, beside its formulas written down one after the other.
#include <cmath>
#include <random>
#include <vector>

#include <benchmark/benchmark.h>

#include "sandfordrobertson.h"

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

float plainDot(const Vector<float>& a, const Vector<float>& b) {
    return a.ElementAt(0) * b.ElementAt(0) + a.ElementAt(1) * b.ElementAt(1) + a.ElementAt(2) * b.ElementAt(2);
}

float plainBigH(float a, float c, float c2) {
    if (2.0F * a == 0.0F)
        return 1.0F;
    const float m = (1.0F - a) * (1.0F - a) * c2 + 2.0F * a;
    const float x = m + 2.0F * a;
    if (!(x > 0.0F))
        return 1.0F;
    return ((1.0F - a) * c + m / std::sqrt(x)) / (2.0F * a);
}

float plainHcal(float x, float a) {
    const float d = (a - 1.0F) * x + 1.0F;
    if (!(d > 0.0F))
        return 1.7e38F;
    const float h = (1.0F / d) * (1.0F / d);
    return h < 1.7e38F ? h : 1.7e38F;
}

// One formula after the other.
[[gnu::noinline]] float plainBrdf(
    int mode, const Vector<float>& normal, const Vector<float>& toSource, const Vector<float>& toViewer, float b,
    float e, float rho_d, float epsilon, float G, const Vector<float>& glint) {
    if (normal.ElementAt(3) != 0.0F || glint.ElementAt(3) != 0.0F)
        return -1.0F;
    const float cS = plainDot(normal, toSource);
    const float cV = plainDot(normal, toViewer);
    if (cS <= 1e-5F || cV <= 1e-5F)
        return 0.0F;
    float q = 1.0F;
    if (b > 0.0F) {
        const float gS = 1.0F / ((1.0F - cS * cS) * (b * b) / (cS * cS) + 1.0F);
        q = gS / G;
    }
    float rhoS = 1.0F - epsilon * q - rho_d * q;
    if (rhoS < 1e-5F)
        rhoS = 0.0F;
    if (mode == 3)
        return rhoS;
    float gV = 1.0F;
    float diffuse = rho_d * 0.31830987F;
    if (b > 0.0F) {
        gV = 1.0F / ((1.0F - cV * cV) * (b * b) / (cV * cV) + 1.0F);
        diffuse = rho_d * q / (G * 3.1415927F) * gV;
    }
    if (mode == 2)
        return diffuse;
    const float s = rhoS * 0.07957747F;
    if (!(s > 1e-5F))
        return diffuse + s;
    const float H = plainBigH(e * e, cS, cS * cS);
    float x = plainDot(normal, glint) * plainDot(normal, glint);
    if (x > 1.0F)
        x = 1.0F;
    const float h = plainHcal(x, e * e);
    float specular = s / (H * cV) * h;
    if (cV < 0.1736481F && b > 0.0F)
        specular = specular * gV * (b * b * 32.163437F + 1.0F);
    return diffuse + specular;
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
