// Loading rasters whose rows are padded.
#include <algorithm>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "benchfolder.h"
#include "ghead.h"
#include "loadradfile.h"
#include "loadtopofile.h"

using namespace sorvane;

namespace {
// Rows of 2,040 samples, so that every one is padded.
constexpr int kColumns = 2040;
constexpr int kRows = 2048;

std::string writePadded(const Folder& folder, const char* name, int packtype, std::size_t sampleBytes) {
    GHead header{};
    header.ncols = kColumns;
    header.nrows = kRows;
    header.packtype = packtype;
    header.zscale = 0.5F;
    const std::size_t stride = (sampleBytes * kColumns + 511) / 512 * 512;
    std::ofstream stream(folder.file(name), std::ios::binary);
    stream.write(reinterpret_cast<const char*>(&header), sizeof header);
    stream << std::string(stride * kRows, '\1');
    return folder.file(name);
}

// One fread of the whole file, and a copy of every row.
void readAndCopyRows(benchmark::State& state, int packtype, std::size_t sampleBytes) {
    const Folder folder;
    const std::string path = writePadded(folder, "a.top", packtype, sampleBytes);
    const std::size_t size = std::filesystem::file_size(path);
    const std::size_t rowBytes = sampleBytes * kColumns;
    const std::size_t stride = (rowBytes + 511) / 512 * 512;
    for (auto _ : state) {
        const std::unique_ptr<char[]> whole(new char[size]);
        const FileHandle stream = openInputFile(path);
        if (std::fread(whole.get(), 1, size, stream.get()) != size)
            state.SkipWithError("not read");
        const std::unique_ptr<char[]> rows(new char[rowBytes * kRows]);
        for (std::size_t row = 0; row < kRows; ++row)
            std::memcpy(rows.get() + row * rowBytes, whole.get() + 512 + row * stride, rowBytes);
        benchmark::DoNotOptimize(rows.get());
    }
}

void padRadiance(benchmark::State& state) {
    const Folder folder;
    const std::string path = writePadded(folder, "a.rad", 2, 4);
    const SilentOutput silent;
    for (auto _ : state) {
        const std::unique_ptr<float[]> samples(loadRadFile(path));
        if (samples == nullptr)
            state.SkipWithError("not loaded");
        benchmark::DoNotOptimize(samples.get());
    }
}
BENCHMARK(padRadiance)->Name("load padded radiance/ours")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(readAndCopyRows, radiance, 2, std::size_t{4})
    ->Name("load padded radiance/fread and row copy")
    ->Unit(benchmark::kMillisecond);

void padTopography(benchmark::State& state) {
    const Folder folder;
    const std::string path = writePadded(folder, "a.top", 1, 2);
    for (auto _ : state) {
        GHead header{};
        const std::unique_ptr<float[]> samples(loadTopoFile(path, header));
        if (samples == nullptr)
            state.SkipWithError("not loaded");
        benchmark::DoNotOptimize(samples.get());
    }
}
BENCHMARK(padTopography)->Name("load padded topography/ours")->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(readAndCopyRows, topography, 1, std::size_t{2})
    ->Name("load padded topography/fread and row copy")
    ->Unit(benchmark::kMillisecond);

// The same file with one fread, and rows turned into scaled floats.
void readAndScaleRows(benchmark::State& state) {
    const Folder folder;
    const std::string path = writePadded(folder, "a.top", 1, 2);
    const std::size_t size = std::filesystem::file_size(path);
    constexpr std::size_t kStride = (2 * kColumns + 511) / 512 * 512;
    for (auto _ : state) {
        const std::unique_ptr<char[]> whole(new char[size]);
        const FileHandle stream = openInputFile(path);
        if (std::fread(whole.get(), 1, size, stream.get()) != size)
            state.SkipWithError("not read");
        const std::unique_ptr<float[]> samples(new float[std::size_t{kColumns} * kRows]);
        for (std::size_t row = 0; row < kRows; ++row) {
            std::uint16_t stored[kColumns];
            std::memcpy(stored, whole.get() + 512 + row * kStride, sizeof stored);
            for (std::size_t column = 0; column < kColumns; ++column)
                samples[row * kColumns + column] = static_cast<float>(stored[column]) * 0.5F;
        }
        benchmark::DoNotOptimize(samples.get());
    }
}
BENCHMARK(readAndScaleRows)->Name("load padded topography/fread and scaled rows")->Unit(benchmark::kMillisecond);
} // namespace
