// A tile of terrain: what loading prints and keeps, elevations, and the picture.
#include <array>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "glcontext.h"

#include "capturedoutput.h"
#include "subterrain.h"
#include "temporarydirectory.h"
#include "terrain.h"
#include "terrainfiles.h"

using testing::ElementsAre;
using testing::HasSubstr;

namespace {
const std::string kShaders = SORVANE_SHADERS;
const std::string kRange = "SubTerran::loadTextures: min: 1.000000 max: 6.000000 avg: 3.500000\n";
const std::string kNoArrays = "SubTerrain::load: could not allocate arrays\n";
constexpr int kPosts = TerrainFiles::kColumns * TerrainFiles::kRows;

// A context, a directory of files and a tile over them with the posts 5 apart in x and 7 in y from (100, 200).
class SubTerrainTest : public testing::Test {
protected:
    SubTerrainTest() {
        tile.setOriginX(100);
        tile.setOriginY(200);
        tile.setXvec(5, 0);
        tile.setYvec(0, 7);
        tile.setWidth(TerrainFiles::kColumns);
        tile.setHeight(TerrainFiles::kRows);
        const std::string stem = files.file("set_n0001");
        tile.setTopoFilePath(stem + ".le-ftop");
        tile.setRadFilePath(stem + ".rad");
        tile.setNormFilePath(stem + ".norm");
        tile.setClassFilePath(stem + ".cls");
        tile.setVertShader(kShaders + "TerrainRefl.vert");
        tile.setFragShader(kShaders + "TerrainRefl.frag");
        tile.setAtmFile(files.file("set.atm"));
        tile.setCls2MatFilePath(files.file("set.cls2mat"));
        tile.setTempFilePath(files.file("set.temp"));
        tile.setCls2AsterFilePath(files.file("set.cls2aster"));
        tile.setBandFilePath(files.file("set.band"));
        tile.setAsterDbFilePath(files.file("aster"));
    }
    void SetUp() override { ASSERT_TRUE(context.isUsable()); }
    void TearDown() override { EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR)); }

    std::string outputOfLoad(bool result) {
        return outputOf([&] { EXPECT_EQ(tile.load(), result); });
    }
    std::vector<float> reds() const {
        std::vector<float> values;
        for (int post = 0; post < kPosts; ++post) {
            values.push_back(tile.colours()[3 * post]);
            EXPECT_EQ(tile.colours()[3 * post + 1] + tile.colours()[3 * post + 2], 0.0F);
        }
        return values;
    }

    static constexpr int kSize = 20; // pixels
    GlContext context{kSize, kSize};
    TemporaryDirectory directory;
    TerrainFiles files{directory};
    SubTerrain tile;
};

// Pixel (i, j) of the picture shows the world at worldX(i), worldY(j).
float worldX(int i) {
    return 100.0F + 10.0F * (static_cast<float>(i) + 0.5F) / 20.0F;
}
float worldY(int j) {
    return 200.0F + 7.0F * (static_cast<float>(j) + 0.5F) / 20.0F;
}

void lookAtTheTile() {
    glMatrixMode(GL_PROJECTION);
    glLoadIdentity();
    glOrtho(100, 110, 200, 207, -1000, 1000);
    glMatrixMode(GL_MODELVIEW);
    glLoadIdentity();
    glEnable(GL_CULL_FACE); // the tile faces up
    glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
}

template <class Expected> void expectPicture(const GlContext& context, Expected expected) {
    const std::vector<float> pixels = context.pixels();
    for (int j = 0; j < 20; ++j)
        for (int i = 0; i < 20; ++i) {
            const auto at = static_cast<std::size_t>(4 * (20 * j + i));
            const float value = expected(worldX(i), worldY(j));
            ASSERT_NEAR(pixels[at], value, 0.01F * std::abs(value) + 1e-4F) << i << ", " << j;
            ASSERT_EQ(pixels[at], pixels[at + 2]);
        }
}

// The radiances 1 to 6 lie on a plane, and so do the heights 10 to 60.
float radianceAt(float x, float y) {
    return 1.0F + (x - 100.0F) / 5.0F + 3.0F * (y - 200.0F) / 7.0F;
}
float heightAt(float x, float y) {
    return 10.0F * radianceAt(x, y);
}
} // namespace

TEST_F(SubTerrainTest, NeedsFourFilesInThisOrder) {
    const std::string begin = "SubTerrain::load\n";
    SubTerrain bare;
    const auto outputOfBare = [&] {
        return outputOf([&] { EXPECT_FALSE(bare.load()); });
    };
    files.writeRequired();
    EXPECT_EQ(outputOfBare(), begin + "SubTerrain::load: Topo File is missing\n");
    bare.setTopoFilePath(files.file("set_n0001.le-ftop"));
    EXPECT_EQ(outputOfBare(), begin + "SubTerrain::load: Radiance File is missing\n");
    bare.setRadFilePath(files.file("set_n0001.rad"));
    EXPECT_EQ(outputOfBare(), begin + "SubTerrain::load: vert shader file is missing\n");
    bare.setVertShader(kShaders + "TerrainRefl.vert");
    EXPECT_EQ(outputOfBare(), begin + "SubTerrain::load: frag shader file is missing\n");
}

TEST_F(SubTerrainTest, WithoutCompanionsIsFlatUnlitAndWithoutMaterials) {
    files.writeRequired();
    EXPECT_EQ(outputOfLoad(true), "SubTerrain::load\n" + kRange);
    EXPECT_TRUE(tile.isLoaded());
    EXPECT_FALSE(tile.isSunlit());
    EXPECT_FALSE(tile.isReflective());
    EXPECT_THAT(tile.solarDirection(), ElementsAre(0, 0, 1));
    EXPECT_THAT(reds(), testing::Each(0.0F));
    for (int post = 0; post < kPosts; ++post)
        EXPECT_EQ(tile.normals()[post].x + 2 * tile.normals()[post].y + 4 * tile.normals()[post].z, 4.0F);
}

TEST_F(SubTerrainTest, LightingNeedsItsFiles) {
    struct Row {
        bool classes, normals, atmosphere, materials;
        bool isSunlit, isReflective;
    };
    const Row rows[] = {
        {true, true, true, true, true, true},
        {false, true, true, true, false, false},
        {true, false, true, true, false, false},
        {true, true, false, true, false, true},
        {true, true, true, false, true, false}};
    for (const Row& row : rows) {
        const TemporaryDirectory own; // file checks remember what they saw
        const TerrainFiles some(own);
        some.writeRequired();
        if (row.classes)
            some.writeClasses();
        if (row.normals)
            some.writeNormals();
        if (row.atmosphere)
            some.writeAtmosphere();
        if (row.materials)
            some.writeMaterialRoute();
        Terrain terrain;
        terrain.setShaderDir(kShaders);
        outputOf([&] {
            ASSERT_TRUE(terrain.load(some.writeDescription(), some.folder(), 1));
            EXPECT_TRUE(terrain.loadAll());
        });
        EXPECT_EQ(terrain.tile(0).isSunlit(), row.isSunlit);
        EXPECT_EQ(terrain.tile(0).isReflective(), row.isReflective);
    }
}

TEST_F(SubTerrainTest, TakesReflectancesFromMaterials) {
    files.writeRequired();
    files.writeClasses();
    files.writeNormals();
    files.writeMaterialRoute();
    EXPECT_EQ(
        outputOfLoad(true), "SubTerrain::load\noutput result\n290.000000 0.500000\n300.000000 0.750000\n" + kRange);
    EXPECT_THAT(reds(), ElementsAre(0.25F, 0, 0, 0.25F, 0, 0));
}

TEST_F(SubTerrainTest, TakesReflectancesFromTheSpectralLibraryFirst) {
    files.writeRequired();
    files.writeClasses();
    files.writeNormals();
    files.writeMaterialRoute();
    files.writeAsterRoute();
    EXPECT_EQ(
        outputOfLoad(true),
        errorLine("getIndexByClass", "opengllib/cls2asterfile.cpp", "Could not find class 3.") +
            errorLine("getAsterByClass", "opengllib/cls2asterfile.cpp", "Received negative index -1.") +
            "SubTerrain::load\n" + kRange);
    EXPECT_THAT(reds(), ElementsAre(testing::FloatEq(0.4F), -1, -1, testing::FloatEq(0.4F), -1, -1));
}

TEST_F(SubTerrainTest, AReflectanceFileThatDoesNotLoadFailsTheTile) {
    files.writeRequired();
    files.writeClasses();
    files.writeNormals();
    directory.write("set.cls2mat", "1 1\n");
    directory.write("set.temp", "words\n");
    const std::string output = outputOfLoad(false);
    EXPECT_THAT(output, HasSubstr("Malformed line 1: \"words\n\". Expected 2 floats."));
    EXPECT_TRUE(output.ends_with(kNoArrays));
    EXPECT_EQ(tile.vertices(), nullptr);
    EXPECT_FALSE(tile.isLoaded());

    files.writeMaterialRoute(); // the next try finds a good one
    EXPECT_THAT(outputOfLoad(true), HasSubstr(kRange));
}

TEST_F(SubTerrainTest, AnAtmosphereThatDoesNotLoadFailsTheTile) {
    files.writeRequired();
    files.writeClasses();
    files.writeNormals();
    directory.write("set.atm", "1 2\n");
    const std::string output = outputOfLoad(false);
    EXPECT_TRUE(output.ends_with("SubTerrain::load\nSubTerrain::load: could not load atm file\n")) << output;
}

TEST_F(SubTerrainTest, RastersOfAnotherSizeCountAsMissing) {
    files.writeRequired();
    files.writeClasses();
    files.writeNormals();
    files.writeMaterialRoute();
    const std::string small = writeBkg(directory.file("small.norm"), bkgHeader(3, 1, "NORM"), std::string(36, '\0'));
    const std::string line = "SubTerrain::load: " + small + " has 3 x 1 samples, the tile has 3 x 2\n";
    const std::string begin = "SubTerrain::load\n";
    tile.setNormFilePath(small);
    EXPECT_EQ(outputOfLoad(true), begin + line + kRange);
    EXPECT_FALSE(tile.isReflective());
    tile.setNormFilePath(files.file("set_n0001.norm"));
    tile.setClassFilePath(small);
    EXPECT_EQ(outputOfLoad(true), begin + line + kRange);
    EXPECT_FALSE(tile.isReflective());
    tile.setRadFilePath(small);
    EXPECT_EQ(outputOfLoad(false), begin + line);
    tile.setRadFilePath(files.file("set_n0001.rad"));
    const std::string top = writeBkg(directory.file("small.le-ftop"), bkgHeader(1, 2), std::string(8, '\0'));
    tile.setTopoFilePath(top);
    EXPECT_EQ(outputOfLoad(false), begin + "SubTerrain::load: " + top + " has 1 x 2 samples, the tile has 3 x 2\n");
}

TEST_F(SubTerrainTest, ATileWithoutPostsDoesNotLoad) {
    files.writeRequired();
    const std::string none = writeBkg(directory.file("none.le-ftop"), bkgHeader(0, 0), "");
    tile.setTopoFilePath(none);
    tile.setRadFilePath(none);
    tile.setWidth(0);
    tile.setHeight(0);
    EXPECT_EQ(outputOfLoad(false), "SubTerrain::load\n" + kNoArrays);
}

TEST_F(SubTerrainTest, AShaderThatDoesNotCompileFailsTheTile) {
    files.writeRequired();
    tile.setFragShader(directory.write("bad.frag", "void main() { nonsense }"));
    const std::string output = outputOfLoad(false);
    EXPECT_THAT(output, HasSubstr("Fragment shader compilation failed."));
    EXPECT_TRUE(output.ends_with("SubTerrain::loadShader: could not init shader\n" + kNoArrays));
}

TEST_F(SubTerrainTest, WithoutAReadableRadianceMapIsStillDrawn) {
    files.writeRequired();
    directory.write("set_n0001.rad", bytesOf(torvaleHeader(3, 2, 7)) + "more than six bytes");
    EXPECT_EQ(
        outputOfLoad(true), "SubTerrain::load\nLoadRadMap::isOldRadMap: using old fortran style\n"
                            "SubTerrain::loadTextures: error reading rad file\n");
}

TEST_F(SubTerrainTest, ColumnsMustRunEast) {
    files.writeRequired();
    for (const float a1 : {-1.0F, 0.0F, NAN}) {
        tile.setXvec(a1, 0);
        EXPECT_EQ(
            outputOfLoad(false), "SubTerrain::load\n" + kRange +
                                     "SubTerrain::SetupBuffers: x-direction vector points west\n"
                                     "\tThis logic needs to be added. Sorry :(\n" +
                                     kNoArrays);
    }
}

TEST_F(SubTerrainTest, TrianglesFaceUpWhicheverWayRowsRun) {
    files.writeRequired();
    outputOfLoad(true);
    EXPECT_EQ(
        std::vector<std::uint32_t>(tile.indices(), tile.indices() + 6), (std::vector<std::uint32_t>{3, 0, 4, 1, 5, 2}));
    tile.setYvec(0, -7);
    outputOfLoad(true);
    EXPECT_EQ(
        std::vector<std::uint32_t>(tile.indices(), tile.indices() + 6), (std::vector<std::uint32_t>{0, 3, 1, 4, 2, 5}));
}

TEST_F(SubTerrainTest, ScalesHeightsTwiceInTheMeshAndOnceInElevations) {
    files.writeRequired();
    tile.setScale(10, 100, 2);
    tile.setOriginZ(1000);
    tile.setXvec(5, 0.25F);
    tile.setYvec(0.5F, 7);
    outputOfLoad(true);
    const float* const last = tile.vertices() + 3 * 5; // column 2, row 1
    EXPECT_EQ(last[0], (5 * 2 + 0.25F * 1) * 10 + 100);
    EXPECT_EQ(last[1], (0.5F * 2 + 7 * 1) * 100 + 200);
    EXPECT_EQ(last[2], 60 * 2 * 2 + 1000);
    EXPECT_EQ(tile.vertices()[2], 1040.0F);
    float z = 0;
    EXPECT_TRUE(tile.getElevation(100, 200, z));
    EXPECT_EQ(z, 20.0F);
}

TEST_F(SubTerrainTest, AnswersTheHeightOfThePostBefore) {
    files.writeRequired();
    float z = 5;
    EXPECT_EQ(
        outputOf([&] { EXPECT_FALSE(tile.getElevation(100, 200, z)); }), "SubTerrain::getElevation: not loaded\n");
    EXPECT_EQ(z, 0.0F);
    outputOfLoad(true);
    struct Row {
        float x, y;
        bool isInside;
        float z;
    };
    const Row rows[] = {{100, 200, true, 10}, {104.9F, 206.9F, true, 10}, {105, 200, true, 20},
                        {112, 208, true, 60}, {114.9F, 213.9F, true, 60}, {115, 200, false, 0},
                        {100, 214, false, 0}, {99.9F, 200, false, 0},     {100, 199.9F, false, 0},
                        {NAN, 200, false, 0}};
    for (const Row& row : rows) {
        EXPECT_EQ(tile.getElevation(row.x, row.y, z), row.isInside) << row.x << ", " << row.y;
        EXPECT_EQ(z, row.z) << row.x << ", " << row.y;
    }
}

TEST_F(SubTerrainTest, KeepsItsBoundsUntilItIsMoved) {
    tile.setMinZ(10);
    tile.setMaxZ(60);
    EXPECT_TRUE(tile.isVisible(0, 0, 0, 0, 0, 0, 0, 0, 0));
    EXPECT_THAT(tile.bounds().minimum, ElementsAre(100, 200, 10));
    EXPECT_THAT(tile.bounds().maximum, ElementsAre(115, 214, 60));
    tile.setScale(2, 2, 2);
    EXPECT_THAT(tile.bounds().maximum, ElementsAre(115, 214, 60)) << "scaling alone is not noticed";
    tile.setYvec(0, -7);
    EXPECT_THAT(tile.bounds().minimum, ElementsAre(100, 172, 20));
    EXPECT_THAT(tile.bounds().maximum, ElementsAre(130, 200, 120));
}

TEST_F(SubTerrainTest, DrawsItsRadiances) {
    files.writeRequired();
    tile.setRadScale(2);
    tile.setDrawSecondPass(true);
    lookAtTheTile();
    outputOf([&] { tile.render(Lights()); });
    expectPicture(context, [](float x, float y) { return 2 * radianceAt(x, y); });
}

TEST_F(SubTerrainTest, DrawsTheLightOfSunSkyAndLights) {
    files.writeRequired();
    files.writeClasses();
    files.writeNormals();
    files.writeAtmosphere();
    files.writeMaterialRoute();
    tile.setRadScale(2);
    tile.setDrawSecondPass(true);
    lookAtTheTile();
    outputOf([&] { tile.render(Lights()); });
    // Only the first column's material reflects; beam and sky together are 0.75.
    const auto reflectance = [](float x) {
        return std::max(0.0F, 0.25F * (1 - (x - 100) / 5));
    };
    expectPicture(context, [&](float x, float y) { return 2 * (radianceAt(x, y) + 0.75F * reflectance(x)); });

    Lights lights;
    lights.intensity[5] = 1e5F; // the ones before it are off
    const std::array<float, 3> position = {101, 203, 150};
    std::copy(position.begin(), position.end(), lights.lightPosObj.begin() + 20);
    lookAtTheTile();
    outputOf([&] { tile.render(lights); });
    expectPicture(context, [&](float x, float y) {
        const float dx = position[0] - x;
        const float dy = position[1] - y;
        const float dz = position[2] - heightAt(x, y);
        const float squared = dx * dx + dy * dy + dz * dz;
        const float fromLight = 1e5F * (dz / std::sqrt(squared)) / squared;
        return 2 * (radianceAt(x, y) + (0.75F + fromLight) * reflectance(x));
    });
}

TEST_F(SubTerrainTest, DoesNotReflectWithoutAMaterial) {
    files.writeRequired();
    files.writeClasses();
    files.writeNormals();
    files.writeAtmosphere();
    files.writeAsterRoute();
    directory.write("set.cls2aster", "1 aster::alpha\n2 aster::alpha\n3 aster::alpha\n");
    tile.setDrawSecondPass(true);
    lookAtTheTile();
    outputOf([&] { tile.render(Lights()); });
    EXPECT_THAT(reds(), testing::Each(-1.0F));
    expectPicture(context, radianceAt);
}

TEST_F(SubTerrainTest, DrawsTheFirstPassInGreyOnceLoaded) {
    files.writeRequired();
    lookAtTheTile();
    EXPECT_EQ(outputOf([&] { tile.render(Lights()); }), "") << "nothing is loaded for it";
    expectPicture(context, [](float, float) { return 0.0F; });
    outputOfLoad(true);
    tile.setSkipFirstPass(true);
    tile.render(Lights());
    expectPicture(context, [](float, float) { return 0.0F; });
    tile.render(Lights());
    expectPicture(context, [](float, float) { return 0.5F; });
}

TEST_F(SubTerrainTest, GivesTheStateOfOpenGlBack) {
    files.writeRequired();
    outputOfLoad(true);
    const auto state = [] {
        std::vector<int> values;
        for (const GLenum name :
             {GL_ATTRIB_STACK_DEPTH, GL_CLIENT_ATTRIB_STACK_DEPTH, GL_MODELVIEW_STACK_DEPTH, GL_MATRIX_MODE,
              GL_CURRENT_PROGRAM, GL_ARRAY_BUFFER_BINDING, GL_ELEMENT_ARRAY_BUFFER_BINDING, GL_TEXTURE_BINDING_2D,
              GL_VERTEX_ARRAY, GL_COLOR_ARRAY, GL_NORMAL_ARRAY}) {
            GLint value = 0;
            glGetIntegerv(name, &value);
            values.push_back(value);
        }
        return values;
    };
    glMatrixMode(GL_PROJECTION);
    const auto before = state();
    tile.setDrawSecondPass(true);
    tile.render(Lights());
    EXPECT_EQ(state(), before);
}

TEST_F(SubTerrainTest, ATileThatFailsIsTriedAgainAndNothingOfItIsKept) {
    tile.setDrawSecondPass(true);
    EXPECT_THAT(outputOf([&] { tile.render(Lights()); }), HasSubstr("Topo File is missing"));
    EXPECT_THAT(outputOf([&] { tile.render(Lights()); }), HasSubstr("Topo File is missing"));
}

TEST_F(SubTerrainTest, ASetDrawsItsTilesInEitherPass) {
    files.writeRequired();
    Terrain terrain;
    terrain.setShaderDir(kShaders);
    outputOf([&] { ASSERT_TRUE(terrain.load(files.writeDescription(), files.folder(), 3)); });
    lookAtTheTile();
    EXPECT_EQ(outputOf([&] { terrain.Render(false); }), "");
    expectPicture(context, [](float, float) { return 0.0F; });
    EXPECT_EQ(outputOf([&] { terrain.Render(true); }), "SubTerrain::load\n" + kRange);
    expectPicture(context, [](float x, float y) { return 3 * radianceAt(x, y); });
    terrain.Render(false);
    expectPicture(context, [](float, float) { return 0.5F; });
    EXPECT_EQ(terrain.GetElevation(112, 208), 60.0F);
    EXPECT_EQ(terrain.GetElevation(99, 208), 0.0F);
    EXPECT_THAT(
        outputOf([&] { terrain.print(); }), testing::StartsWith("Terrain::print:\nSubterrain:\n\tOrigin: (100."));
    terrain.CleanUp();
}
