// A tile of terrain over hand-made files, in an OpenGL context without a window.
#pragma once

#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "glcontext.h"

#include "capturedoutput.h"
#include "subterrain.h"
#include "temporarydirectory.h"
#include "terrainfiles.h"
#include "terrainmesh.h"

namespace sorvane {
inline const std::string kShaders = SORVANE_SHADERS;
inline const std::string kRange = "SubTerran::loadTextures: min: 1.000000 max: 6.000000 avg: 3.500000\n";

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

    // Into a picture of the world from (100, 200) to (110, 207), which culls what doesn't face up.
    void lookAtTheTile() const {
        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(100, 110, 200, 207, -1000, 1000);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glEnable(GL_CULL_FACE);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
    }
    void drawLit() {
        tile.setDrawSecondPass(true);
        lookAtTheTile();
        outputOf([&] { tile.render(Lights()); });
    }
    std::string outputOfLoad(bool result) {
        return outputOf([&] { EXPECT_EQ(tile.load(), result); });
    }
    static TerrainMesh::Post postOf(const SubTerrain& of, int post) {
        return of.mesh()->post(post % TerrainFiles::kColumns, post / TerrainFiles::kColumns);
    }
    std::vector<float> reds() const {
        std::vector<float> values;
        for (int post = 0; post < TerrainFiles::kColumns * TerrainFiles::kRows; ++post) {
            const auto [red, green, blue] = postOf(tile, post).colour;
            values.push_back(red);
            EXPECT_EQ(green + blue, 0.0F);
        }
        return values;
    }

    static constexpr int kSize = 20; // pixels
    GlContext context{kSize, kSize};
    TemporaryDirectory directory;
    TerrainFiles files{directory};
    SubTerrain tile;
};
} // namespace sorvane
