// Loading tiles of terrain, and drawing a set of them.
#include <algorithm>
#include <array>
#include <bit>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <benchmark/benchmark.h>

#include "benchfolder.h"
#include "glcontext.h"

#include "bkgheader.h"
#include "glshaderprogram.h"
#include "terrain.h"
#include "terrainmesh.h"

using namespace sorvane;

namespace {
const std::string kShaders = SORVANE_SHADERS;

template <class T>
void writeRaster(const std::string& path, int size, const char* signature, const std::vector<T>& values) {
    BKG_header header{};
    std::memcpy(header.headerSignature, signature, std::strlen(signature));
    header.sizeX = header.sizeY = size;
    const FileHandle stream = BeginBKGFile(path, header);
    std::fwrite(values.data(), sizeof(T), values.size(), stream.get());
}

// A tile of size × size posts with every companion of the material route.
void writeTile(const Folder& folder, const std::string& stem, int size) {
    const std::size_t posts = static_cast<std::size_t>(size) * static_cast<std::size_t>(size);
    std::vector<float> heights(posts);
    std::vector<unsigned char> classes(posts);
    std::vector<float> normals(3 * posts);
    for (std::size_t i = 0; i < posts; ++i) {
        heights[i] = static_cast<float>((i * 37) % 97) * 0.01F;
        classes[i] = static_cast<unsigned char>(1 + i % 3);
        normals[3 * i + 2] = 1.0F;
    }
    writeRaster(folder.file(stem + ".le-ftop"), size, "TOP", heights);
    writeRaster(folder.file(stem + ".rad"), size, "RAD", heights);
    writeRaster(folder.file(stem + ".norm"), size, "NORM", normals);
    writeRaster(folder.file(stem + ".cls"), size, "CLS", classes);
}

void writeShared(const Folder& folder) {
    std::ofstream(folder.file("set.cls2mat")) << "1 1\n2 2\n3 3\n";
    std::ofstream(folder.file("set.temp")) << "290 0.9\n291 0.8\n292 0.7\n";
    std::ofstream(folder.file("set.atm")) << "1 2 3\n1 2 3 4 5 6 7 8 130 40\n1 2500 5000 0\n";
}

std::string writeSet(const Folder& folder, int tilesPerSide, int size) {
    writeShared(folder);
    std::string xml = "<t><base>set</base><subs>";
    for (int n = 0; n < tilesPerSide * tilesPerSide; ++n) {
        char stem[32];
        std::snprintf(stem, sizeof stem, "set_n%04d", n);
        writeTile(folder, stem, size);
        const std::string number = std::to_string(n);
        const std::string count = std::to_string(size);
        xml += "<subterrain n='" + number + "'><origin_x>" + std::to_string(n % tilesPerSide * (size - 1)) +
               "</origin_x><origin_y>" + std::to_string(n / tilesPerSide * (size - 1)) + "</origin_y><width>" + count +
               "</width><height>" + count + "</height></subterrain>";
    }
    std::ofstream(folder.file("set.xml")) << xml << "</subs></t>";
    return folder.file("set.xml");
}

// The same uploads as a tile's, from arrays that are there already.
struct BareTile {
    void upload(int size) {
        const std::size_t posts = static_cast<std::size_t>(size) * static_cast<std::size_t>(size);
        if (values.size() != 3 * posts) {
            values.assign(3 * posts, 0.5F);
            indices.clear();
            for (std::uint32_t row = 0; row + 1 < static_cast<std::uint32_t>(size); ++row)
                for (std::uint32_t column = 0; column < static_cast<std::uint32_t>(size); ++column) {
                    indices.push_back((row + 1) * static_cast<std::uint32_t>(size) + column);
                    indices.push_back(row * static_cast<std::uint32_t>(size) + column);
                }
        }
        glGenBuffers(4, buffers.data());
        for (int i = 0; i < 3; ++i) {
            glBindBuffer(GL_ARRAY_BUFFER, buffers[static_cast<std::size_t>(i)]);
            glBufferData(
                GL_ARRAY_BUFFER, static_cast<GLsizeiptr>(values.size() * sizeof(float)), values.data(), GL_STATIC_DRAW);
        }
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, buffers[3]);
        glBufferData(
            GL_ELEMENT_ARRAY_BUFFER, static_cast<GLsizeiptr>(indices.size() * sizeof(std::uint32_t)), indices.data(),
            GL_STATIC_DRAW);
        glGenTextures(1, &texture);
        glBindTexture(GL_TEXTURE_2D, texture);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_GENERATE_MIPMAP, GL_TRUE);
        glTexImage2D(GL_TEXTURE_2D, 0, GL_LUMINANCE32F_ARB, size, size, 0, GL_LUMINANCE, GL_FLOAT, values.data());
        glFinish();
    }
    void release() {
        glDeleteBuffers(4, buffers.data());
        glDeleteTextures(1, &texture);
    }

    std::vector<float> values;
    std::vector<std::uint32_t> indices;
    std::array<GLuint, 4> buffers{};
    GLuint texture = 0;
};

constexpr int kTile = 2048;

void loadTile(benchmark::State& state) {
    const GlContext context(64, 64);
    const Folder folder;
    const std::string description = writeSet(folder, 1, kTile);
    const SilentOutput silent;
    for (auto _ : state) {
        Terrain terrain;
        terrain.setShaderDir(kShaders);
        if (!terrain.load(description, folder.path.string(), 1) || !terrain.loadAll() ||
            !terrain.tile(0).isReflective())
            state.SkipWithError("not loaded");
        glFinish();
        state.PauseTiming();
        terrain.CleanUp();
        state.ResumeTiming();
    }
}
BENCHMARK(loadTile)->Name("load a tile of 2048 x 2048/ours")->Unit(benchmark::kMillisecond)->UseRealTime();

void catAndUpload(benchmark::State& state) {
    const GlContext context(64, 64);
    const Folder folder;
    writeSet(folder, 1, kTile);
    const std::string command = "cat " + folder.path.string() + "/* >/dev/null";
    BareTile tile;
    tile.upload(kTile);
    tile.release();
    for (auto _ : state) {
        if (std::system(command.c_str()) != 0)
            state.SkipWithError("not read");
        tile.upload(kTile);
        state.PauseTiming();
        tile.release();
        state.ResumeTiming();
    }
}
BENCHMARK(catAndUpload)
    ->Name("load a tile of 2048 x 2048/cat and uploads")
    ->Unit(benchmark::kMillisecond)
    ->UseRealTime();

// The peak of what our own code holds while it loads the tile, as a multiple of the arrays that a tile consists of
// (heights, normals, colours and vertices per post, two indices per post and strip) and one raster.
void peakMemory(benchmark::State& state) {
    const Folder folder;
    const std::string description = writeSet(folder, 1, kTile);
    const std::string command =
        std::string(SORVANE_TILEMEMORY) + " " + description + " " + kShaders + " 2>&1 >/dev/null";
    for (auto _ : state) {
        long long peak = 0;
        std::FILE* const output = ::popen(command.c_str(), "r");
        if (output == nullptr || std::fscanf(output, "%lld", &peak) != 1)
            state.SkipWithError("the loading process failed");
        if (output != nullptr)
            ::pclose(output);
        constexpr double kPosts = double{kTile} * kTile;
        constexpr double kArrays = kPosts * (4 + 3 * 12) + kPosts / kTile * (kTile - 1) * 8;
        constexpr double kRaster = kPosts * 4;
        state.counters["peak_MB"] = static_cast<double>(peak) * 1.0e-6;
        state.counters["peak/(arrays and a raster)"] = static_cast<double>(peak) / (kArrays + kRaster);
    }
}
BENCHMARK(peakMemory)->Name("peak memory of a tile")->Unit(benchmark::kMillisecond)->UseRealTime()->Iterations(1);

constexpr int kSide = 3;
constexpr int kSmall = 512;

void lookDown() {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(0, kSide * kSmall, 0, kSide * kSmall, -1000, 1000);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glEnable(GL_DEPTH_TEST);
}

void drawSet(benchmark::State& state) {
    const GlContext context(824, 480);
    const Folder folder;
    const std::string description = writeSet(folder, kSide, kSmall);
    Terrain terrain;
    terrain.setShaderDir(kShaders);
    {
        const SilentOutput silent;
        if (!terrain.load(description, folder.path.string(), 1) || !terrain.loadAll())
            state.SkipWithError("not loaded");
    }
    lookDown();
    for (auto _ : state) {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        terrain.Render(true);
        glFinish();
    }
}
BENCHMARK(drawSet)->Name("draw 3 x 3 tiles of 512 x 512/ours")->Unit(benchmark::kMillisecond)->UseRealTime();

// Positions, normals and colours of a tile's posts, and a strip between each two rows.
struct Arrays {
    std::array<std::vector<float>, 3> floats;
    std::vector<std::uint32_t> indices;
};
Arrays arraysOf(const SubTerrain& tile) {
    Arrays arrays;
    for (int row = 0; row < kSmall; ++row)
        for (int column = 0; column < kSmall; ++column) {
            const TerrainMesh::Post post = tile.mesh()->post(column, row);
            std::ranges::copy(post.position, std::back_inserter(arrays.floats[0]));
            std::ranges::copy(post.normal, std::back_inserter(arrays.floats[1]));
            std::ranges::copy(post.colour, std::back_inserter(arrays.floats[2]));
            if (row + 1 < kSmall)
                for (const int next : {row + 1, row})
                    arrays.indices.push_back(static_cast<std::uint32_t>(next * kSmall + column));
        }
    return arrays;
}

// The same arrays and program, bound and drawn without anything around it.
void drawBare(benchmark::State& state) {
    const GlContext context(824, 480);
    const Folder folder;
    const std::string description = writeSet(folder, kSide, kSmall);
    Terrain terrain;
    terrain.setShaderDir(kShaders);
    {
        const SilentOutput silent;
        if (!terrain.load(description, folder.path.string(), 1) || !terrain.loadAll())
            state.SkipWithError("not loaded");
    }
    struct Bare {
        GLuint buffers[4];
        GLuint texture;
        GLShaderProgram program;
    };
    std::vector<std::unique_ptr<Bare>> tiles;
    const GLsizeiptr bytes = GLsizeiptr{kSmall} * kSmall * 12;
    for (std::size_t i = 0; i < terrain.tileCount(); ++i) {
        const SubTerrain& tile = terrain.tile(i);
        auto& bare = *tiles.emplace_back(std::make_unique<Bare>());
        glGenBuffers(4, bare.buffers);
        const Arrays arrays = arraysOf(tile);
        for (int a = 0; a < 3; ++a) {
            glBindBuffer(GL_ARRAY_BUFFER, bare.buffers[a]);
            glBufferData(GL_ARRAY_BUFFER, bytes, arrays.floats[static_cast<std::size_t>(a)].data(), GL_STATIC_DRAW);
        }
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, bare.buffers[3]);
        glBufferData(
            GL_ELEMENT_ARRAY_BUFFER, GLsizeiptr{kSmall} * (kSmall - 1) * 8, arrays.indices.data(), GL_STATIC_DRAW);
        const std::vector<float> radiances(std::size_t{kSmall} * kSmall, 0.5F);
        glGenTextures(1, &bare.texture);
        glBindTexture(GL_TEXTURE_2D, bare.texture);
        glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_MIN_FILTER, GL_LINEAR_MIPMAP_LINEAR);
        glTexParameteri(GL_TEXTURE_2D, GL_GENERATE_MIPMAP, GL_TRUE);
        glTexImage2D(
            GL_TEXTURE_2D, 0, GL_LUMINANCE32F_ARB, kSmall, kSmall, 0, GL_LUMINANCE, GL_FLOAT, radiances.data());
        bare.program.Init(kShaders + "TerrainRefl.vert", kShaders + "TerrainRefl.frag");
        bare.program.Activate();
        const std::pair<const char*, float> values[] = {{"LightBrightness", 1.0F}, {"Brightness", 1.0F},
                                                        {"SolarZ", 1.0F},          {"sunVisible", 1.0F},
                                                        {"SolarBeam", 0.5F},       {"DiffuseSkyRadiance", 0.25F},
                                                        {"a0", tile.getOriginX()}, {"a1", 1.0F},
                                                        {"b0", tile.getOriginY()}, {"b2", 1.0F},
                                                        {"width", float{kSmall}},  {"height", float{kSmall}}};
        for (const auto& [name, value] : values)
            glUniform1f(bare.program.GetUniformVariable(name), value);
    }
    const std::vector<GLsizei> counts(kSmall - 1, 2 * kSmall);
    std::vector<const void*> firsts;
    for (std::uintptr_t strip = 0; strip + 1 < kSmall; ++strip)
        firsts.push_back(std::bit_cast<const void*>(strip * kSmall * 8));
    lookDown();
    glEnableClientState(GL_VERTEX_ARRAY);
    glEnableClientState(GL_NORMAL_ARRAY);
    glEnableClientState(GL_COLOR_ARRAY);
    for (auto _ : state) {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        for (const auto& tile : tiles) {
            tile->program.Activate();
            glBindTexture(GL_TEXTURE_2D, tile->texture);
            glBindBuffer(GL_ARRAY_BUFFER, tile->buffers[0]);
            glVertexPointer(3, GL_FLOAT, 0, nullptr);
            glBindBuffer(GL_ARRAY_BUFFER, tile->buffers[1]);
            glNormalPointer(GL_FLOAT, 0, nullptr);
            glBindBuffer(GL_ARRAY_BUFFER, tile->buffers[2]);
            glColorPointer(3, GL_FLOAT, 0, nullptr);
            glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, tile->buffers[3]);
            glMultiDrawElements(
                GL_TRIANGLE_STRIP, counts.data(), GL_UNSIGNED_INT, firsts.data(), static_cast<GLsizei>(counts.size()));
        }
        glFinish();
    }
}
BENCHMARK(drawBare)->Name("draw 3 x 3 tiles of 512 x 512/bare calls")->Unit(benchmark::kMillisecond)->UseRealTime();
} // namespace
