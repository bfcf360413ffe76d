// The picture of a tile of terrain.
#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "rows.h"
#include "subterraintest.h"
#include "terrain.h"

using namespace sorvane;

namespace {
// Pixel (i, j) of the picture shows the world at worldX(i), worldY(j).
float worldX(int i) {
    return 100.0F + 10.0F * (static_cast<float>(i) + 0.5F) / 20.0F;
}
float worldY(int j) {
    return 200.0F + 7.0F * (static_cast<float>(j) + 0.5F) / 20.0F;
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

TEST_F(SubTerrainTest, DrawsItsRadiances) {
    files.writeRequired();
    tile.setRadScale(2);
    drawLit();
    expectPicture(context, [](float x, float y) { return 2 * radianceAt(x, y); });
}

TEST_F(SubTerrainTest, DrawsTheLightOfSunSkyAndLights) {
    files.writeRasters();
    files.writeAtmosphere();
    files.writeMaterialRoute();
    tile.setRadScale(2);
    drawLit();
    // Only the first column's material reflects; beam and sky together are 0.75.
    const auto reflectance = [](float x) {
        return std::max(0.0F, 0.25F * (1 - (x - 100) / 5));
    };
    expectPicture(context, [&](float x, float y) { return 2 * (radianceAt(x, y) + 0.75F * reflectance(x)); });

    Lights lights;
    lights.intensity[5] = 1e5F; // the ones before it are off
    const std::array<float, 3> position = {101, 203, 150};
    std::copy(position.begin(), position.end(), lights.lightPosObj.begin() + 20);
    Terrain set;
    set.setShaderDir(kShaders);
    outputOf([&] { ASSERT_TRUE(set.load(files.writeDescription(), files.folder(), 2)); });
    lookAtTheTile();
    outputOf([&] { set.Render(lights); });
    expectPicture(context, [&](float x, float y) {
        const float dx = position[0] - x;
        const float dy = position[1] - y;
        const float dz = position[2] - heightAt(x, y);
        const float squared = dx * dx + dy * dy + dz * dz;
        const float fromLight = 1e5F * (dz / std::sqrt(squared)) / squared;
        return 2 * (radianceAt(x, y) + (0.75F + fromLight) * reflectance(x));
    });
}

// 60° from the zenith, where the beam of 0.5 counts half beside the sky's 0.25.
TEST_F(SubTerrainTest, DrawsTheSunWhereItStands) {
    files.writeRasters();
    directory.write("set.atm", "1 2 3\n1 2 3 4 5 6 7 8 120 0\n1 2500 5000 0\n");
    files.writeMaterialRoute();
    tile.setRadScale(2);
    drawLit();
    expectPicture(context, [&](float x, float y) {
        return 2 * (radianceAt(x, y) + 0.5F * std::max(0.0F, 0.25F * (1 - (x - 100) / 5)));
    });
}

TEST_F(SubTerrainTest, AClassWithoutAMaterialOrWhoseReflectanceIsNoNumberReflectsNothing) {
    files.writeRasters();
    files.writeAtmosphere();
    files.writeAsterRoute();
    directory.write("aster/rock.txt", asterText("7 10\n10 80\n11 20\n")); // no point in the band
    directory.write("set.cls2aster", "1 grass\n2 rock\n3 aster::alpha\n");
    drawLit();
    EXPECT_TRUE(std::isnan(reds()[1]));
    EXPECT_EQ(reds()[2], -1.0F);
    // It falls evenly from the first column's 0.4 to the second's nothing; beam and sky together are 0.75.
    expectPicture(context, [](float x, float y) {
        return radianceAt(x, y) + 0.75F * std::max(0.0F, 0.4F * (1 - (x - 100) / 5));
    });
}

TEST_F(SubTerrainTest, InfiniteRadiancesAreWhiteAndWhatIsNoNumberIsBlack) {
    files.writeRequired();
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
    for (const auto& [sample, isWhite] : Rows<float, bool>{{kInfinity, true}, {-kInfinity, false}, {kNan, false}}) {
        writeBkg(
            files.file("set_n0001.rad"), TerrainFiles::header(),
            bytesOf(std::vector<float>{0, sample, 0, 0, sample, 0}));
        outputOfLoad(true);
        drawLit();
        const std::vector<float> pixels = context.pixels();
        for (std::size_t pixel = 0; pixel < pixels.size() / 4; ++pixel) {
            const float red = pixels[4 * pixel];
            ASSERT_FALSE(std::isnan(red)) << sample << ' ' << pixel;
            const bool isInColumn = pixel % kSize == kSize / 2 || pixel % kSize == kSize / 2 + 2; // which is filtered
            EXPECT_TRUE(!isInColumn || (red >= 1.0F) == isWhite) << sample << ' ' << pixel;
        }
    }
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
    glMatrixMode(GL_PROJECTION);
    const std::vector<GLint> before = GlContext::state();
    tile.setDrawSecondPass(true);
    tile.render(Lights());
    EXPECT_EQ(GlContext::state(), before);
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
