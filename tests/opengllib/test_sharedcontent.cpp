// Bodies and tiles that are made of the same files share what they are made of, and nothing else.
#include <array>
#include <functional>
#include <memory>

#include <gmock/gmock.h>

#include "bodyfiles.h"
#include "capturedoutput.h"
#include "dynamicdata.h"
#include "filecaches.h"
#include "glcontext.h"
#include "hardbody.h"
#include "rows.h"
#include "temporarydirectory.h"
#include "terrain.h"
#include "terrainfiles.h"
#include "terrainmesh.h"

using namespace sorvane;

namespace {
constexpr int kSize = 32;

void writeBody(const TemporaryDirectory& folder, float radianceOfWall = 5e5F) {
    folder.write("body.vnl", floorAndWall().text());
    folder.write("body.brdf", "BRDF\n1\n.2 .75 0 .3 0 x\n1 3 1 x\n");
    folder.write("body.rad", radBytes({1e5F, 1e5F, radianceOfWall}, {0, 0, 0}));
    folder.write("body.sff-txt", "3\n1 .5 0 0\n2 1 0 1\n3 .125\n3 0 0 0\n");
}

struct SharedBodies : testing::Test {
    const GlContext context{kSize, kSize};
    const TemporaryDirectory folder;

    static std::unique_ptr<Hardbody> load(const TemporaryDirectory& from, float sky = 0.0F) {
        auto body = std::make_unique<Hardbody>();
        body->Init(
            from.file("body.brdf"), from.file("body.vnl"), from.file("body.rad"), SORVANE_SHADERS, "", true, true, true,
            false, false, 0, 0, 0, 0, 0, 0, 2.0F, 0.0F, sky, 0.0F);
        return body;
    }
    // Seen from 1000 above.
    std::vector<float> picture(Hardbody& body) const {
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glFrustum(-2e-3, 2e-3, -2e-3, 2e-3, 1.0, 2000.0);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glTranslatef(0.0F, 0.0F, -1000.0F);
        glEnable(GL_DEPTH_TEST);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        Dynamic_Data data{{0, 0, 1, 0}};
        body.Render(&data);
        EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
        return context.pixels();
    }
};
} // namespace

TEST_F(SharedBodies, DrawWhatBodiesOfTheirOwnDrawAndEndInAnyOrder) {
    const TemporaryDirectory elsewhere;
    const TemporaryDirectory nowhereNear;
    for (const TemporaryDirectory* const each : {&folder, &elsewhere, &nowhereNear})
        writeBody(*each);
    for (const std::size_t first : {0U, 1U}) {
        std::array shared{load(folder), load(folder)};
        std::array own{load(elsewhere), load(nowhereNear)};
        ASSERT_EQ(shared[0]->model(), shared[1]->model());
        EXPECT_NE(own[0]->model(), own[1]->model());
        EXPECT_NE(shared[0]->model(), load(folder, 0.5F)->model()) << "in another light";
        for (const auto& bodies : {std::cref(shared), std::cref(own)}) {
            bodies.get()[0]->UpdateMultiFacet({0, 0, 1000, 1});
            bodies.get()[1]->SetWorldPosAndOrientation(0.5F, 0, 0, 0, 0, 90);
            bodies.get()[1]->UpdateMultiFacet({700, 0, 1000, 1});
        }
        for (const std::size_t body : {1U, 0U, 1U}) {
            EXPECT_EQ(picture(*shared[body]), picture(*own[body])) << body;
            EXPECT_EQ(shared[body]->multiFacetRadiances()[1], own[body]->multiFacetRadiances()[1]);
        }
        EXPECT_NE(shared[0]->multiFacetRadiances()[1], own[1]->multiFacetRadiances()[1]);
        shared[first].reset();
        EXPECT_EQ(picture(*shared[1 - first]), picture(*own[1 - first]));
    }
}

TEST_F(SharedBodies, AChangedOrForgottenFileIsReadAnewWhileOthersKeepTheOldOne) {
    writeBody(folder);
    const auto first = load(folder);
    const float grey = first->grey();
    // Area by area: the floor's two halves of 2 and the wall of 1/2, which radiate 0.1 and 0.5, twice as bright.
    EXPECT_NEAR(grey, 2.0F * (4 * 0.1F + 0.5F * 0.5F) / 4.5F, 1e-6F);
    EXPECT_NEAR(load(folder, 0.5F)->grey(), grey, 1e-6F) << "no facet sees the sky";
    writeBody(folder, 9e5F);
    const auto second = load(folder);
    EXPECT_GT(second->grey(), grey);
    EXPECT_EQ(first->grey(), grey);
    EXPECT_EQ(load(folder)->model(), second->model());
    for (const char* const name : {"body.vnl", "body.sff-txt"}) {
        const auto before = load(folder);
        forgetFile(folder.path().string() + "/./" + name);
        EXPECT_NE(load(folder)->model(), before->model()) << name;
    }
}

TEST_F(SharedBodies, EachIsToldOfAFaultAndOneThatFailsIsNotShared) {
    writeBody(folder);
    folder.write("body.sff-txt", "broken");
    std::vector<std::unique_ptr<Hardbody>> bodies;
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(
            reportOf([&] { bodies.push_back(load(folder)); }),
            "subfacetfile Load: Malformed line 1. Expected a number of facets, but received \"broken\".");
    EXPECT_EQ(bodies[0]->model(), bodies[1]->model());
    EXPECT_FALSE(bodies[1]->isWhole());
    folder.write("body.rad", "");
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(
            reportOf([&] { EXPECT_FALSE(load(folder)->isUsable()); }),
            "radfile Load: Unexpected EOF while trying to read header.");
}

TEST_F(SharedBodies, ContextsShareBodiesOnlyWhenTheyShareObjects) {
    writeBody(folder);
    auto first = load(folder);
    const std::vector<float> before = picture(*first);
    for (const bool areSharing : {false, true}) {
        {
            const GlContext other(kSize, kSize, areSharing ? &context : nullptr);
            ASSERT_TRUE(other.isUsable());
            // Buffers of the same names and sizes don't make it the same context.
            std::array<GLuint, 64> buffers{};
            glGenBuffers(static_cast<GLsizei>(buffers.size()), buffers.data());
            for (const GLuint buffer : buffers) {
                glBindBuffer(GL_ARRAY_BUFFER, buffer);
                glBufferData(GL_ARRAY_BUFFER, sizeof(std::uint64_t), nullptr, GL_STATIC_DRAW);
            }
            glBindBuffer(GL_ARRAY_BUFFER, 0);
            const auto second = load(folder);
            EXPECT_EQ(second->model() == first->model(), areSharing);
            if (areSharing)
                first.reset(); // in another context than it was made in
        }
        context.makeCurrent();
    }
    first = load(folder);
    EXPECT_EQ(picture(*first), before);
}

TEST(SharedTiles, AreThoseOfTheSameFilesAtTheSamePlace) {
    const GlContext context(8, 8);
    const TemporaryDirectory directory;
    const TerrainFiles files(directory);
    files.writeRasters();
    files.writeMaterialRoute();
    const std::string description = files.writeDescription();
    const auto load = [&](float scale = 1.0F) {
        auto terrain = std::make_unique<Terrain>();
        terrain->setShaderDir(SORVANE_SHADERS);
        EXPECT_TRUE(terrain->load(description, files.folder(), scale));
        EXPECT_TRUE(terrain->loadAll());
        return terrain;
    };
    std::unique_ptr<Terrain> first;
    std::unique_ptr<Terrain> second;
    const std::string said = outputOf([&] { first = load(); });
    EXPECT_EQ(outputOf([&] { second = load(); }), said);
    outputOf([&] {
        const TileContent* const shared = first->tile(0).content();
        EXPECT_EQ(second->tile(0).content(), shared);
        EXPECT_NE(load(2.0F)->tile(0).content(), shared) << "brighter";
        first.reset();
        EXPECT_TRUE(second->tile(0).isReflective());
        EXPECT_EQ(second->GetElevation(106, 208), 50.0F);
        EXPECT_EQ(second->tile(0).meshBounds().maximum[2], 60.0F);

        first = load();
        EXPECT_FALSE(first->tile(0).loadReflectances()) << "a step by itself changes nobody else's tile";
        EXPECT_NE(first->tile(0).content(), shared);
        EXPECT_NE(second->tile(0).mesh(), nullptr);
        first = load();
        EXPECT_EQ(first->tile(0).content(), shared);

        directory.write("set.temp", "290 0.5\n300 0.25\n");
        EXPECT_NE(load()->tile(0).mesh()->post(0, 0).colour, second->tile(0).mesh()->post(0, 0).colour);
        first = load();
        forgetFile(files.file("set_n0001.norm"));
        EXPECT_NE(load()->tile(0).content(), first->tile(0).content());
    });
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}
