// A tile of terrain: what loading prints and keeps, and elevations.
#include <cmath>
#include <string>
#include <vector>

#include "rows.h"
#include "subterraintest.h"
#include "terrain.h"

using namespace sorvane;

using testing::ElementsAre;
using testing::HasSubstr;

namespace {
const std::string kNoArrays = "SubTerrain::load: could not allocate arrays\n";
constexpr int kPosts = TerrainFiles::kColumns * TerrainFiles::kRows;
} // namespace

TEST_F(SubTerrainTest, NeedsFourFilesInThisOrder) {
    SubTerrain bare;
    const auto expectMissing = [&bare](const std::string& file) {
        EXPECT_EQ(
            outputOf([&] { EXPECT_FALSE(bare.load()); }),
            "SubTerrain::load\nSubTerrain::load: " + file + " is missing\n");
    };
    files.writeRequired();
    expectMissing("Topo File");
    bare.setTopoFilePath(files.file("set_n0001.le-ftop"));
    expectMissing("Radiance File");
    bare.setRadFilePath(files.file("set_n0001.rad"));
    expectMissing("vert shader file");
    bare.setVertShader(kShaders + "TerrainRefl.vert");
    expectMissing("frag shader file");
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
        EXPECT_THAT(postOf(tile, post).normal, ElementsAre(0, 0, 1));
}

TEST_F(SubTerrainTest, LightingNeedsItsFiles) {
    using Write = void (TerrainFiles::*)() const;
    const Write companions[] = {
        &TerrainFiles::writeClasses, &TerrainFiles::writeNormals, &TerrainFiles::writeAtmosphere,
        &TerrainFiles::writeMaterialRoute};
    for (const auto& [missing, isSunlit, isReflective] : Rows<Write, bool, bool>{
             {nullptr, true, true},
             {&TerrainFiles::writeClasses, false, false},
             {&TerrainFiles::writeNormals, false, false},
             {&TerrainFiles::writeAtmosphere, false, true},
             {&TerrainFiles::writeMaterialRoute, true, false}}) {
        const TemporaryDirectory own; // file checks remember what they saw
        const TerrainFiles some(own);
        some.writeRequired();
        for (const Write write : companions)
            if (write != missing)
                (some.*write)();
        Terrain terrain;
        terrain.setShaderDir(kShaders);
        outputOf([&] {
            ASSERT_TRUE(terrain.load(some.writeDescription(), some.folder(), 1));
            EXPECT_TRUE(terrain.loadAll());
        });
        EXPECT_EQ(terrain.tile(0).isSunlit(), isSunlit);
        EXPECT_EQ(terrain.tile(0).isReflective(), isReflective);
    }
}

TEST_F(SubTerrainTest, TakesReflectancesFromMaterials) {
    files.writeRasters();
    files.writeMaterialRoute();
    EXPECT_EQ(
        outputOfLoad(true), "SubTerrain::load\noutput result\n290.000000 0.500000\n300.000000 0.750000\n" + kRange);
    EXPECT_THAT(reds(), ElementsAre(0.25F, 0, 0, 0.25F, 0, 0));
}

TEST_F(SubTerrainTest, TakesReflectancesFromTheSpectralLibraryFirst) {
    files.writeRasters();
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
    files.writeRasters();
    directory.write("set.cls2mat", "1 1\n");
    directory.write("set.temp", "words\n");
    const std::string output = outputOfLoad(false);
    EXPECT_THAT(output, HasSubstr("Malformed line 1: \"words\n\". Expected 2 floats."));
    EXPECT_TRUE(output.ends_with(kNoArrays));
    EXPECT_EQ(tile.mesh(), nullptr);
    EXPECT_FALSE(tile.isLoaded());

    files.writeMaterialRoute(); // the next try finds a good one
    EXPECT_THAT(outputOfLoad(true), HasSubstr(kRange));
}

TEST_F(SubTerrainTest, AnAtmosphereThatDoesNotLoadFailsTheTile) {
    files.writeRasters();
    directory.write("set.atm", "1 2\n");
    const std::string output = outputOfLoad(false);
    EXPECT_TRUE(output.ends_with("SubTerrain::load\nSubTerrain::load: could not load atm file\n")) << output;
}

TEST_F(SubTerrainTest, RastersOfAnotherSizeCountAsMissing) {
    files.writeRasters();
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

TEST_F(SubTerrainTest, StepsTakenAloneRefuseWhatDoesNotFit) {
    EXPECT_FALSE(tile.loadReflectances()); // without arrays
    EXPECT_FALSE(tile.setupBuffers());
    files.writeRasters();
    outputOfLoad(true);
    float z = 1.0F;
    tile.setHeight(3); // than the arrays have
    EXPECT_FALSE(tile.setupBuffers());
    EXPECT_EQ(
        outputOf([&] { EXPECT_FALSE(tile.getElevation(101, 201, z)); }), "SubTerrain::getElevation: not loaded\n");
    EXPECT_THAT(outputOf([&] { EXPECT_FALSE(tile.allocateArrays()); }), HasSubstr("the tile has 3 x 3\n"));
}

TEST_F(SubTerrainTest, ARadianceMapWiderThanATextureIsTold) {
    GLint largest = 0;
    glGetIntegerv(GL_MAX_TEXTURE_SIZE, &largest);
    const auto floats = [largest](int count) {
        return std::string(
            static_cast<std::size_t>(largest + 1) * sizeof(float) * static_cast<std::size_t>(count), '\0');
    };
    const BKG_header header = bkgHeader(largest + 1, 2);
    const std::string wide = writeBkg(directory.file("wide.le-ftop"), header, floats(2));
    tile.setTopoFilePath(wide);
    tile.setRadFilePath(wide);
    tile.setWidth(largest + 1);
    const std::string limit = std::to_string(largest);
    EXPECT_EQ(
        outputOfLoad(true), "SubTerrain::load\nSubTerrain::loadTextures: " + wide + " has " +
                                std::to_string(largest + 1) + " x 2 samples, a texture has at most " + limit + " x " +
                                limit + " here\n");
}

TEST_F(SubTerrainTest, AShaderThatDoesNotCompileOrATileWithoutPostsDoesNotLoad) {
    files.writeRequired();
    tile.setFragShader(directory.write("bad.frag", "void main() { nonsense }"));
    const std::string output = outputOfLoad(false);
    EXPECT_THAT(output, HasSubstr("Fragment shader compilation failed."));
    EXPECT_TRUE(output.ends_with("SubTerrain::loadShader: could not init shader\n" + kNoArrays));
    const std::string none = writeBkg(directory.file("none.le-ftop"), bkgHeader(0, 0), "");
    tile.setTopoFilePath(none);
    tile.setRadFilePath(none);
    tile.setWidth(0);
    tile.setHeight(0);
    EXPECT_EQ(outputOfLoad(false), "SubTerrain::load\n" + kNoArrays);
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

TEST(StripIndices, GoThroughAllRowsAndFaceUpWhicheverWayTheyRun) {
    for (const auto& [rows, isNorthward, indices] : Rows<int, bool, std::vector<std::uint16_t>>{
             {1, true, {}},
             {2, true, {3, 0, 4, 1, 5, 2}},
             {2, false, {0, 3, 1, 4, 2, 5}},
             {3, false, {0, 3, 1, 4, 2, 5, 5, 3, 3, 6, 4, 7, 5, 8}}}) {
        EXPECT_EQ(stripIndices(3, rows, isNorthward), indices);
        EXPECT_EQ(stripLength(3, rows), indices.size());
    }
}

TEST_F(SubTerrainTest, ScalesHeightsTwiceInTheMeshAndOnceInElevations) {
    files.writeRequired();
    tile.setScale(10, 100, 2);
    tile.setOriginZ(1000);
    tile.setXvec(5, 0.25F);
    tile.setYvec(0.5F, 7);
    outputOfLoad(true);
    const std::array<float, 3> last = tile.mesh()->post(2, 1).position;
    EXPECT_EQ(last[0], (5 * 2 + 0.25F * 1) * 10 + 100);
    EXPECT_EQ(last[1], (0.5F * 2 + 7 * 1) * 100 + 200);
    EXPECT_EQ(last[2], 60 * 2 * 2 + 1000);
    EXPECT_EQ(tile.mesh()->post(0, 0).position[2], 1040.0F);
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
    for (const auto& [x, y, isInside, height] : Rows<float, float, bool, float>{
             {104.9F, 206.9F, true, 10},
             {105, 200, true, 20},
             {114.9F, 213.9F, true, 60},
             {115, 200, false, 0},
             {100, 214, false, 0},
             {99.9F, 200, false, 0},
             {100, 199.9F, false, 0},
             {NAN, 200, false, 0}}) {
        EXPECT_EQ(tile.getElevation(x, y, z), isInside) << x << ", " << y;
        EXPECT_EQ(z, height) << x << ", " << y;
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
    tile.setXvec(6, 0);
    EXPECT_EQ(tile.bounds().maximum[0], 136.0F);
}

TEST(TilePlacement, FindsPostsOfSkewedGridsWithXInThePlaceOfYForTheColumn) {
    // By hand, for 3 × 3 posts at (10, 20): the column is (b2 · sy · (x - 10) - b1 · sy · (x - 20)) / det, the row
    // (a1 · sx · (y - 20) - a2 · sx · (x - 10)) / det, det = (a1 · b2 - a2 · b1) · sx · sy.
    using Pair = std::array<float, 2>;
    for (const auto& [xvec, yvec, scaleX, scaleY, x, y, post] :
         Rows<Pair, Pair, float, float, float, float, std::size_t>{
             {{4, 0}, {2, 5}, 1, 1, 18, 32, 8},    // column 2.2, row 2.4
             {{4, 1}, {0, 5}, 1, 1, 18, 30, 5},    // 2, 1.6
             {{4, 1}, {2, 5}, 2, 3, 34, 40, 5}}) { // 2.56, 1.04
        const sorvane::TilePlacement placement{{10, 20, 0}, xvec, yvec, {scaleX, scaleY, 1}, 3, 3};
        EXPECT_EQ(placement.postAt(x, y), post) << x;
    }
}

// The first of the two has no rasters, and the point lies on the second one.
TEST_F(SubTerrainTest, ATerrainLoadsEveryTileThatItCanAndAsksAllForElevations) {
    files.writeRequired();
    const auto place = [](const std::string& originX) {
        return "<origin_x>" + originX +
               "</origin_x><origin_y>200</origin_y><width>3</width><height>2</height><vec "
               "dir='x'><i>5</i><j>0</j></vec>"
               "<vec dir='y'><i>0</i><j>7</j></vec></subterrain>";
    };
    const std::string description = directory.write(
        "two.xml", "<t><base>set</base><subs><subterrain n='2'>" + place("70") + "<subterrain n='1'>" + place("100") +
                       "</subs></t>");
    Terrain terrain;
    terrain.setShaderDir(kShaders);
    outputOf([&] {
        ASSERT_TRUE(terrain.load(description, files.folder(), 1));
        EXPECT_FALSE(terrain.loadAll());
        EXPECT_FALSE(terrain.tile(0).isLoaded());
        EXPECT_TRUE(terrain.tile(1).isLoaded());
        EXPECT_EQ(terrain.GetElevation(106, 208), 50.0F);
        EXPECT_EQ(terrain.BBox().minimum[0], 70.0F) << "the first tile reaches further west";
    });
}
