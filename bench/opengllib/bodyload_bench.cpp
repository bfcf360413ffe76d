// Loading the three files of a body of 21,000 facets, beside line-by-line reading with fgets and sscanf.
#include <array>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <list>
#include <memory>
#include <vector>

#include <benchmark/benchmark.h>
#include <unistd.h>

#include "brdffile.h"
#include "filetracker.h"
#include "inputfile.h"
#include "radfile.h"
#include "samplebody.h"
#include "vnlfile.h"

using namespace sorvane;

namespace {
constexpr int kFacets = 21000;
constexpr int kClasses = 5;

// The files on disk, and the arrays of the body.
struct Bench {
    Bench() : folder(std::filesystem::temp_directory_path() / ("sorvane.bench." + std::to_string(::getpid()))) {
        std::filesystem::create_directories(folder);
        const SampleBody body = sampleBody(kFacets, kClasses);
        for (const auto& [name, contents] :
             {std::pair{"body.vnl", body.vnl}, {"body.brdf", body.brdf}, {"body.rad", body.rad}})
            std::ofstream(folder / name, std::ios::binary) << contents;
        BrdfFile file;
        file.parse(body.brdf);
        facetCount = file.numFacets();
        const auto count = static_cast<std::size_t>(facetCount);
        facets.resize(count);
        for (auto* corners : {&positions, &normals, &radiance, &emittance})
            corners->resize(3 * count);
        centroids.resize(count);
        facetNormals.resize(count);
        sorted.resize(count);
    }
    ~Bench() { std::filesystem::remove_all(folder); }
    Bench(const Bench&) = delete;
    Bench& operator=(const Bench&) = delete;

    std::string path(const char* name) const { return (folder / name).string(); }

    std::filesystem::path folder;
    int facetCount = 0;
    std::vector<Tuple3<unsigned short>> facets;
    std::vector<Tuple3<float>> positions, normals, radiance, emittance;
    std::vector<Vector<float>> centroids, facetNormals;
    std::vector<int> sorted;
};

void ours(benchmark::State& state) {
    Bench bench;
    for (auto _ : state) {
        BrdfFile brdf;
        RadFile rad;
        VnlFile vnl;
        // Not BrdfFile::Load, which would find the file in its cache from the second time on.
        const bool isLoaded = brdf.parse(*readInputFile(bench.path("body.brdf"), SIZE_MAX)) &&
                              rad.Load(bench.path("body.rad"), brdf.numFacets()) &&
                              vnl.Load(
                                  bench.path("body.vnl"), brdf, rad, bench.facets.data(), bench.positions.data(),
                                  bench.normals.data(), bench.radiance.data(), bench.emittance.data(),
                                  bench.centroids.data(), bench.facetNormals.data(), bench.sorted.data());
        if (!isLoaded)
            state.SkipWithError("not loaded");
        cache.clear();
    }
}
BENCHMARK(ours)->Name("load a body of 21000 facets/ours")->Unit(benchmark::kMillisecond);

// The obvious way: the lines of the geometry file read with fgets into strings, kept twice (for the reader and for the
// cache of texts), and every line taken apart with sscanf.
class LineList {
public:
    explicit LineList(const std::string& path) {
        const FileHandle stream(std::fopen(path.c_str(), "r"));
        char buffer[256];
        while (std::fgets(buffer, sizeof buffer, stream.get()) != nullptr)
            lines_.emplace_back(buffer);
    }
    bool next(char* buffer) {
        if (position_ == lines_.size())
            return false;
        const std::string line = lines_[position_++];
        std::strcpy(buffer, line.c_str());
        return true;
    }

private:
    std::size_t position_ = 0;
    std::vector<std::string> lines_;
};

struct Classes {
    std::vector<BrdfClass> classes;
    std::vector<BrdfElement> ranges;
    std::vector<FacetBlock> blocks;

    explicit Classes(const std::string& path) {
        const FileHandle stream(std::fopen(path.c_str(), "r"));
        char line[256];
        char word[256];
        int count = 0;
        std::fgets(line, sizeof line, stream.get());
        std::sscanf(line, "%255s", word);
        std::fgets(line, sizeof line, stream.get());
        std::sscanf(line, "%d", &count);
        for (int i = 0; i < count; ++i) {
            std::fgets(line, sizeof line, stream.get());
            BrdfClass one{};
            std::sscanf(line, "%f %f %f %f %d %*s", &one.rho_d, &one.epsilon, &one.b, &one.e, &one.mode);
            classes.push_back(one);
        }
        blocks.resize(classes.size());
        while (std::fgets(line, sizeof line, stream.get()) != nullptr) {
            BrdfElement range{};
            std::sscanf(line, "%d %d %d %*s", &range.start, &range.end, &range.brdfClass);
            blocks[static_cast<std::size_t>(range.brdfClass - 1)].facetCount_ += range.end - range.start + 1;
            ranges.push_back({range.start - 1, range.end - 1, range.brdfClass - 1});
        }
        for (std::size_t i = 1; i < blocks.size(); ++i)
            blocks[i].startIndex_ = blocks[i].next = blocks[i - 1].startIndex_ + blocks[i - 1].facetCount_;
    }
    int slot(int facet) {
        int low = 0;
        int high = static_cast<int>(ranges.size()) - 1;
        while (low <= high) {
            const int middle = (low + high) / 2;
            const BrdfElement& range = ranges[static_cast<std::size_t>(middle)];
            if (range.start > facet)
                high = middle - 1;
            else if (range.end >= facet)
                return blocks[static_cast<std::size_t>(range.brdfClass)].next++;
            else
                low = middle + 1;
        }
        return -1;
    }
};

void fgetsAndSscanf(benchmark::State& state) {
    Bench bench;
    for (auto _ : state) {
        Classes brdf(bench.path("body.brdf"));

        const FileHandle stream(std::fopen(bench.path("body.rad").c_str(), "rb"));
        std::array<std::int32_t, 19> header{};
        std::fread(header.data(), 4, header.size(), stream.get());
        const auto count = static_cast<std::size_t>(header[10]);
        std::vector<float> rad(count);
        std::vector<float> bbe(count);
        std::fread(rad.data(), 4, count, stream.get());
        std::fseek(stream.get(), 8, SEEK_CUR);
        std::fread(bbe.data(), 4, count, stream.get());
        for (std::size_t k = 0; k < count; ++k) {
            rad[k] *= 1e-6F;
            bbe[k] *= 1e-6F;
        }

        LineList lines(bench.path("body.vnl"));
        const LineList kept(lines); // the second copy
        char line[256];
        char word[256];
        int vertices = 0;
        int facets = 0;
        float box[6];
        lines.next(line);
        std::sscanf(line, "%d %d", &vertices, &facets);
        lines.next(line);
        std::sscanf(line, "%f %f %f %f %f %f", &box[0], &box[1], &box[2], &box[3], &box[4], &box[5]);
        std::vector<Tuple3<float>> vertex(static_cast<std::size_t>(vertices));
        std::vector<Tuple3<float>> normal(static_cast<std::size_t>(vertices));
        for (std::size_t i = 0; i < vertex.size(); ++i) {
            lines.next(line);
            std::sscanf(
                line, "%f %f %f %f %f %f %255s", &vertex[i].x, &vertex[i].y, &vertex[i].z, &normal[i].x, &normal[i].y,
                &normal[i].z, word);
        }
        for (std::size_t k = 0; k < static_cast<std::size_t>(facets); ++k) {
            int number = 0;
            int named[3];
            lines.next(line);
            std::sscanf(line, "%d %d %d %d %255s", &number, &named[0], &named[1], &named[2], word);
            const int slot = brdf.slot(static_cast<int>(k));
            const std::size_t corner = 3 * static_cast<std::size_t>(slot);
            Vector<float> p[3];
            for (std::size_t c = 0; c < 3; ++c) {
                const auto index = static_cast<std::size_t>(named[c] - 1);
                bench.positions[corner + c] = vertex[index];
                bench.normals[corner + c] = normal[index];
                bench.radiance[corner + c] = {rad[k], rad[k], rad[k]};
                bench.emittance[corner + c] = {bbe[k], bbe[k], bbe[k]};
                p[c] = {vertex[index].x, vertex[index].y, vertex[index].z, 1.0F};
            }
            bench.facets[static_cast<std::size_t>(slot)] = {
                static_cast<unsigned short>(corner), static_cast<unsigned short>(corner + 1),
                static_cast<unsigned short>(corner + 2)};
            const Vector<float> sum = p[0] + p[1] + p[2];
            bench.centroids[k] = {
                sum.ElementAt(0) * 0.3333333F, sum.ElementAt(1) * 0.3333333F, sum.ElementAt(2) * 0.3333333F, 1.0F};
            const Vector<float> cross = Cross(p[1] - p[0], p[2] - p[0]);
            bench.facetNormals[k] = cross / Length(cross);
            bench.sorted[k] = slot;
        }
        benchmark::DoNotOptimize(kept);
    }
}
BENCHMARK(fgetsAndSscanf)->Name("load a body of 21000 facets/fgets and sscanf")->Unit(benchmark::kMillisecond);
} // namespace
