// A body's intensity in one direction, and in all of them, against a ray from each facet that tries all the others.
#include <benchmark/benchmark.h>

#include <filesystem>
#include <fstream>

#include "body.h"
#include "signaturemap.h"

using namespace sorvane;

namespace {
const SignatureLight kAfternoon{1.9e-4F, 0.65e-4F, 1.7e-4F, directionOf(140.0, 40.0)};

// The demonstration's jet of 6,856 facets.
const SignatureBody& jetBody() {
    static const SignatureBody body = [] {
        const std::filesystem::path folder = std::filesystem::temp_directory_path() / "sorvane-bench-signature";
        std::filesystem::create_directories(folder);
        const auto write = [&folder](const char* name, const std::string& contents) {
            std::ofstream(folder / name, std::ios::binary) << contents;
            return (folder / name).string();
        };
        const Body source = jet();
        SignatureBody made;
        if (!made.load(
                {write("jet.brdf", reflectanceText(source)), write("jet.vnl", geometryText(source)),
                 write("jet.rad", radianceBytes(source, 1.0)), ""}))
            std::abort();
        std::filesystem::remove_all(folder);
        return made;
    }();
    return body;
}

bool hits(const SignatureBody::Facet& facet, const Vec3d& from, const Vec3d& towards) {
    const Vec3d e1 = facet.corners[1] - facet.corners[0];
    const Vec3d e2 = facet.corners[2] - facet.corners[0];
    const Vec3d p = cross(towards, e2);
    const double determinant = dot(e1, p);
    if (!(std::abs(determinant) > 0.0))
        return false;
    const Vec3d s = from - facet.corners[0];
    const double u = dot(s, p) / determinant;
    if (u < 0.0 || u > 1.0)
        return false;
    const Vec3d q = cross(s, e1);
    const double v = dot(towards, q) / determinant;
    return v >= 0.0 && u + v <= 1.0 && dot(e2, q) / determinant > 1e-6;
}

// Each facet is seen or not, by whether a ray from its middle meets another one.
double plainTowards(const SignatureBody& body, const FacetShading& shading, const Vec3d& towards) {
    const Vec3f viewer{static_cast<float>(towards.x), static_cast<float>(towards.y), static_cast<float>(towards.z)};
    const auto facets = body.facets();
    double sum = 0.0;
    for (std::size_t k = 0; k < facets.size(); ++k) {
        const double area = dot(facets[k].area, towards);
        if (!(area > 0.0))
            continue;
        const Vec3d middle = 1.0 / 3.0 * (facets[k].corners[0] + facets[k].corners[1] + facets[k].corners[2]);
        bool isHidden = false;
        for (std::size_t other = 0; other < facets.size() && !isHidden; ++other)
            isHidden = other != k && dot(facets[other].area, towards) > 0.0 && hits(facets[other], middle, towards);
        if (!isHidden)
            sum += 1e4 * area * shading.towards(k, viewer).total();
    }
    return sum;
}

void oneDirection(benchmark::State& state) {
    const FacetShading shading(jetBody(), kAfternoon);
    SignatureSum sum(jetBody(), shading, 1.0, FacetVisibility::kUsualPixels);
    for (auto _ : state)
        benchmark::DoNotOptimize(sum.towards({directionOf(35.0, 10.0)}).intensity.own);
}

void oneDirectionByRays(benchmark::State& state) {
    const FacetShading shading(jetBody(), kAfternoon);
    for (auto _ : state)
        benchmark::DoNotOptimize(plainTowards(jetBody(), shading, directionOf(35.0, 10.0)));
}

void wholeMap(benchmark::State& state) {
    for (auto _ : state)
        benchmark::DoNotOptimize(signatureOf(jetBody(), kAfternoon, SignatureGrid(), 1.0).points.data());
}

BENCHMARK(oneDirection)->Name("signature_direction/ours")->Unit(benchmark::kMillisecond);
BENCHMARK(oneDirectionByRays)->Name("signature_direction/rays_from_facets")->Unit(benchmark::kMillisecond);
BENCHMARK(wholeMap)->Name("signature_map/ours")->Unit(benchmark::kMillisecond)->UseRealTime();
} // namespace
