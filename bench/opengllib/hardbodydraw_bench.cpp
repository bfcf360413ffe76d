// Drawing four bodies of 8,000 facets, beside the same OpenGL calls without the classes around them.
#include <array>
#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <memory>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>
#include <unistd.h>

#include "brdffile.h"
#include "dynamicdata.h"
#include "facetbuffers.h"
#include "filetracker.h"
#include "glcontext.h"
#include "glshaderprogram.h"
#include "hardbody.h"
#include "radfile.h"
#include "samplebody.h"
#include "vnlfile.h"

using namespace sorvane;

namespace {
constexpr int kWidth = 824;
constexpr int kHeight = 480;
constexpr int kFacets = 8000;
constexpr int kBodies = 4;
const char* const kShaders = SORVANE_SHADERS;

struct Scene {
    Scene()
        : context(kWidth, kHeight),
          folder(std::filesystem::temp_directory_path() / ("sorvane.draw." + std::to_string(::getpid()))) {
        std::filesystem::create_directories(folder);
        sample = sampleBody(kFacets, 5);
        for (const auto& [name, contents] :
             {std::pair{"body.vnl", sample.vnl}, {"body.brdf", sample.brdf}, {"body.rad", sample.rad}})
            std::ofstream(folder / name, std::ios::binary) << contents;
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glFrustum(-0.8, 0.8, -0.47, 0.47, 1.0, 100.0);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glTranslatef(0.0F, 0.0F, -20.0F);
        glEnable(GL_DEPTH_TEST);
        glEnable(GL_CULL_FACE);
    }
    ~Scene() { std::filesystem::remove_all(folder); }
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    std::string path(const char* name) const { return (folder / name).string(); }

    static Matrix<float> pose(int body, float turn) {
        return BuildTransform(
            1, 1, 1, 0, turn, 0, 6.0F * static_cast<float>(body % 2) - 3.0F, 6.0F * static_cast<float>(body / 2) - 3.0F,
            0);
    }

    GlContext context;
    std::filesystem::path folder;
    SampleBody sample;
};

const Vector<float> kSun(0.6F, 0.0F, 0.8F, 0.0F);

void ours(benchmark::State& state) {
    Scene scene;
    if (!scene.context.isUsable()) {
        state.SkipWithError("no OpenGL context");
        return;
    }
    std::array<Hardbody, kBodies> bodies;
    for (Hardbody& body : bodies)
        if (!body.Init(
                scene.path("body.brdf"), scene.path("body.vnl"), scene.path("body.rad"), kShaders, "", true, true, true,
                false, false, 0, 0, 0, 0, 0, 0, 3000.0F, 1e-5F, 1e-5F, 1e-4F))
            state.SkipWithError("not loaded");
    float turn = 0.0F;
    for (auto _ : state) {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        turn += 1.0F;
        Dynamic_Data data{kSun, 0.0F};
        for (int i = 0; i < kBodies; ++i) {
            Hardbody& body = bodies[static_cast<std::size_t>(i)];
            const Matrix<float> pose = Scene::pose(i, turn);
            body.SetWorldPosAndOrientation(pose(0, 3), pose(1, 3), pose(2, 3), 0, turn, 0);
            body.UpdateMultiFacet({0, 0, 20, 1});
            body.Render(&data);
        }
        glFinish();
    }
}
BENCHMARK(ours)->Name("four bodies of 8000 facets drawn/ours")->Unit(benchmark::kMillisecond)->UseRealTime();

// One body as OpenGL objects.
struct RawBody {
    GLuint buffers[8] = {};
    std::vector<float> multi;
};

void rawCalls(benchmark::State& state) {
    Scene scene;
    if (!scene.context.isUsable()) {
        state.SkipWithError("no OpenGL context");
        return;
    }
    GLShaderProgram program;
    const std::string base = std::string(kShaders) + "SandfordRobertson_simple";
    program.Init(base + ".vert", base + ".frag");
    program.Activate();
    glUniform1f(program.GetUniformVariable("DiffuseEarthRadiance"), 1e-5F);
    glUniform1f(program.GetUniformVariable("DiffuseSkyRadiance"), 1e-5F);
    glUniform1f(program.GetUniformVariable("SolarBeam"), 1e-4F);
    glUniform1f(program.GetUniformVariable("Brightness"), 3000.0F);
    const GLint sun = program.GetUniformVariable("SolarDirEyeCoords");
    const GLint eps = program.GetUniformVariable("eps");
    const GLint rho = program.GetUniformVariable("rho");
    const GLint b = program.GetUniformVariable("b");
    const GLint e = program.GetUniformVariable("e");
    const GLint G = program.GetUniformVariable("G");
    const GLint mode = program.GetUniformVariable("mode");
    const GLuint attributes[] = {
        static_cast<GLuint>(program.GetAttribLocation("facet_radiance_multi")),
        static_cast<GLuint>(program.GetAttribLocation("earthFormFactor")),
        static_cast<GLuint>(program.GetAttribLocation("skyFormFactor"))};

    BrdfFile brdf;
    RadFile rad;
    brdf.parse(scene.sample.brdf);
    rad.parse(scene.sample.rad, brdf.numFacets());
    const auto count = static_cast<std::size_t>(brdf.numFacets());
    std::vector<Tuple3<unsigned short>> indices(count);
    std::vector<Tuple3<float>> corners[4];
    for (auto& array : corners)
        array.resize(3 * count);
    std::vector<Vector<float>> facetVectors(count);
    std::vector<int> sorted(count);
    FileTracker lines;
    lines.addText(scene.sample.vnl);
    VnlFile().parse(
        lines, brdf, rad,
        {indices.data(), corners[0].data(), corners[1].data(), corners[2].data(), corners[3].data(),
         facetVectors.data(), facetVectors.data(), sorted.data()});
    const std::vector<float> ones(3 * count, 1.0F);
    std::array<RawBody, kBodies> bodies;
    const auto bytes = [](const auto& values) {
        return static_cast<GLsizeiptr>(values.size() * sizeof(values[0]));
    };
    for (RawBody& body : bodies) {
        glGenBuffers(8, body.buffers);
        for (std::size_t i = 0; i < 4; ++i) {
            glBindBuffer(GL_ARRAY_BUFFER, body.buffers[i]);
            glBufferData(GL_ARRAY_BUFFER, bytes(corners[i]), corners[i].data(), GL_STATIC_DRAW);
        }
        for (std::size_t i = 5; i < 7; ++i) {
            glBindBuffer(GL_ARRAY_BUFFER, body.buffers[i]);
            glBufferData(GL_ARRAY_BUFFER, bytes(ones), ones.data(), GL_STATIC_DRAW);
        }
        glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, body.buffers[7]);
        glBufferData(GL_ELEMENT_ARRAY_BUFFER, bytes(indices), indices.data(), GL_STATIC_DRAW);
        body.multi.assign(3 * count, 0.0F);
    }

    float turn = 0.0F;
    for (auto _ : state) {
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        turn += 1.0F;
        for (int i = 0; i < kBodies; ++i) {
            const RawBody& body = bodies[static_cast<std::size_t>(i)];
            glPushMatrix();
            glMultMatrixf(Scene::pose(i, turn).data());
            glBindBuffer(GL_ARRAY_BUFFER, body.buffers[4]);
            glBufferData(GL_ARRAY_BUFFER, bytes(body.multi), body.multi.data(), GL_DYNAMIC_DRAW);
            glEnableClientState(GL_VERTEX_ARRAY);
            glEnableClientState(GL_NORMAL_ARRAY);
            glEnableClientState(GL_COLOR_ARRAY);
            glEnableClientState(GL_SECONDARY_COLOR_ARRAY);
            glBindBuffer(GL_ARRAY_BUFFER, body.buffers[0]);
            glVertexPointer(3, GL_FLOAT, 0, nullptr);
            glBindBuffer(GL_ARRAY_BUFFER, body.buffers[1]);
            glNormalPointer(GL_FLOAT, 0, nullptr);
            glBindBuffer(GL_ARRAY_BUFFER, body.buffers[2]);
            glColorPointer(3, GL_FLOAT, 0, nullptr);
            glBindBuffer(GL_ARRAY_BUFFER, body.buffers[3]);
            glSecondaryColorPointer(3, GL_FLOAT, 0, nullptr);
            for (std::size_t a = 0; a < 3; ++a) {
                glBindBuffer(GL_ARRAY_BUFFER, body.buffers[4 + a]);
                glEnableVertexAttribArray(attributes[a]);
                glVertexAttribPointer(attributes[a], 1, GL_FLOAT, GL_FALSE, 0, nullptr);
            }
            glBindBuffer(GL_ELEMENT_ARRAY_BUFFER, body.buffers[7]);
            glUniform3f(sun, kSun.ElementAt(0), kSun.ElementAt(1), kSun.ElementAt(2));
            for (std::size_t c = 0; c < brdf.classes().size(); ++c) {
                const BrdfClass& surface = brdf.classes()[c];
                glUniform1f(eps, surface.epsilon);
                glUniform1f(rho, surface.rho_d);
                glUniform1f(b, surface.b);
                glUniform1f(e, surface.e);
                glUniform1f(G, surface.G);
                glUniform1i(mode, surface.mode);
                glDrawElements(
                    GL_TRIANGLES, 3 * brdf.blocks()[c].facetCount_, GL_UNSIGNED_SHORT,
                    reinterpret_cast<const void*>(6 * static_cast<std::uintptr_t>(brdf.blocks()[c].startIndex_)));
            }
            glPopMatrix();
        }
        glFinish();
    }
    for (RawBody& body : bodies)
        glDeleteBuffers(8, body.buffers);
}
BENCHMARK(rawCalls)->Name("four bodies of 8000 facets drawn/raw calls")->Unit(benchmark::kMillisecond)->UseRealTime();
} // namespace
