// A body and the terrain under the same sun and sky.
#include <array>
#include <cmath>
#include <string>
#include <vector>

#include "atmfile.h"
#include "bodyfiles.h"
#include "dynamicdata.h"
#include "hardbody.h"
#include "rows.h"
#include "subterraintest.h"

using namespace sorvane;

namespace {
constexpr float kReflectance = 0.5F;
constexpr float kBrightness = 1.0F;
constexpr float kSlope = 0.5F; // height over x

// The tile rises towards x; a plate as steep floats above its right half. Both reflect half of what they get, to all
// sides alike, and emit nothing.
class IlluminationTest : public SubTerrainTest {
protected:
    void SetUp() override {
        SubTerrainTest::SetUp();
        constexpr int kPosts = TerrainFiles::kColumns * TerrainFiles::kRows;
        const auto write = [this](const char* name, const BKG_header& header, const std::string& samples) {
            writeBkg(files.file(name), header, samples);
        };
        const float rise = 5.0F * kSlope;
        write(
            "set_n0001.le-ftop", TerrainFiles::header(),
            bytesOf(std::vector<float>{0, rise, 2 * rise, 0, rise, 2 * rise}));
        write("set_n0001.rad", TerrainFiles::header(), bytesOf(std::vector<float>(kPosts, 0.0F)));
        write("set_n0001.cls", TerrainFiles::header(), std::string(kPosts, '\1'));
        const float length = std::sqrt(1.0F + kSlope * kSlope);
        std::vector<float> normals;
        for (int post = 0; post < kPosts; ++post)
            normals.insert(normals.end(), {-kSlope / length, 0.0F, 1.0F / length});
        write("set_n0001.norm", TerrainFiles::header("NORM"), bytesOf(normals));
        directory.write("set.cls2mat", "1 1\n");
        directory.write("set.temp", "290 " + std::to_string(1.0F - kReflectance) + "\n");

        std::string vertices;
        for (const auto& [x, y] : {std::pair{105.0F, 200.0F}, {110.0F, 200.0F}, {110.0F, 207.0F}, {105.0F, 207.0F}})
            vertices += std::to_string(x) + " " + std::to_string(y) + " " +
                        std::to_string(kSlope * (x - 100.0F) + 1.0F) + " " + std::to_string(-kSlope / length) + " 0 " +
                        std::to_string(1.0F / length) + " v\n";
        directory.write("body.vnl", "4 2\n105 110 200 207 0 9\n" + vertices + "1 1 2 3 f\n2 1 3 4 f\n");
        directory.write(
            "body.brdf", "BRDF\n1\n" + std::to_string(kReflectance) + " " + std::to_string(1.0F - kReflectance) +
                             " 0 0.3 2 white\n1 2 1 white\n");
        directory.write("body.rad", radBytes({0, 0}, {0, 0}));
    }

    // The red of every pixel with the tile and the plate drawn under an atmosphere.
    std::vector<float> draw(const std::string& atmosphere) {
        AtmFile light;
        EXPECT_TRUE(light.Load(atmosphere));
        tile.setAtmFile(atmosphere);
        tile.setRadScale(kBrightness);
        tile.setDrawSecondPass(true);
        tile.setSkipFirstPass(true); // it would take the places of the second in the depth buffer
        outputOfLoad(true);
        Hardbody plate;
        EXPECT_TRUE(plate.Init(
            directory.file("body.brdf"), directory.file("body.vnl"), directory.file("body.rad"), kShaders, "", true,
            true, true, false, false, 0, 0, 0, 0, 0, 0, kBrightness, light.diffuseEarthRadiance(),
            light.diffuseSkyRadiance(), light.directSolarRadiance()));

        glMatrixMode(GL_PROJECTION);
        glLoadIdentity();
        glOrtho(100, 110, 200, 207, 0, 1000);
        glMatrixMode(GL_MODELVIEW);
        glLoadIdentity();
        glTranslatef(0.0F, 0.0F, -500.0F);
        glEnable(GL_DEPTH_TEST);
        glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
        tile.render(Lights());
        Dynamic_Data frame{light.SolarDirWorld(), 0.0F, {}};
        plate.Render(&frame);
        const std::vector<float> pixels = context.pixels();
        std::vector<float> red;
        for (std::size_t i = 0; i < pixels.size(); i += 4)
            red.push_back(pixels[i]);
        return red;
    }
};

// The sun stands in the west-south-west, 40 degrees high: cos(zenith) and sin(zenith) · sin(azimuth) turned to the
// slope.
TEST_F(IlluminationTest, ABodyIsAsBrightAsTheTerrain) {
    const double degree = std::acos(-1.0) / 180.0;
    const double cosine =
        (std::cos(50.0 * degree) - static_cast<double>(kSlope) * std::sin(50.0 * degree) * std::sin(250.0 * degree)) /
        std::sqrt(1.0 + static_cast<double>(kSlope * kSlope));
    const float fromSun = 1.2F * kReflectance * static_cast<float>(cosine);
    const float fromSky = 0.6F * kReflectance;
    for (const auto& [name, radiances, expected] : Rows<const char*, const char*, float>{
             {"sun.atm", "0 0 12000 0\n", fromSun},
             {"sky.atm", "0 6000 0 0\n", fromSky},
             {"both.atm", "0 6000 12000 0\n", fromSun + fromSky}}) {
        const std::vector<float> picture =
            draw(directory.write(name, std::string("1 2 3\n1 2 3 4 5 6 7 8 130 250\n") + radiances));
        for (std::size_t pixel = 0; pixel < picture.size(); ++pixel)
            ASSERT_NEAR(picture[pixel], expected, 1.0F / 255.0F)
                << name << (pixel % kSize < kSize / 2 ? ", terrain " : ", body ") << pixel;
    }
}
} // namespace
