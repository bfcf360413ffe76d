// The demonstration's terrain, as the viewer takes it: what is loaded and printed, and what flies over it.
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <span>
#include <sstream>
#include <string>
#include <vector>

#include <GL/glew.h>

#include <gtest/gtest.h>

#include "aster.h"
#include "bkgheader.h"
#include "glcontext.h"
#include "groundclass.h"
#include "makedemonstration.h"
#include "rasterfile.h"
#include "rastersize.h"
#include "readtrajectory.h"
#include "spectrum.h"
#include "temporarydirectory.h"
#include "terrain.h"
#include "terrainmesh.h"
#include "uncompressed.h"

using namespace sorvane;

namespace {
struct Kind {
    const char* name;
    std::vector<const char*> engagements;
    std::size_t tiles;
    float launchHeight;
    float start; // of the box, x and y alike
    float end;
    float depth; // of the box below the valley floor
    std::string printedFirst;
    std::string printedPerTile; // without the range of its radiances
};
std::string printedOfSet(const std::string& tiles) {
    return "total of " + tiles +
           " subterrains\nterrain::load: dynamic sunlight reflections: ON\n"
           "terrain::load: dynamic light reflections: ON\n";
}
const std::string kMaterials =
    "SubTerrain::load\noutput result\n291.000000 0.980000\n300.000000 0.950000\n296.000000 0.970000\n303.000000 "
    "0.920000\n308.000000 0.880000\n306.000000 0.860000\n315.000000 0.940000\n";
// Of the wide tile, 77 cells lie east of the square's corner.
const Kind kStock = {
    "stock",
    {"ETXYZ.OUT.turn", "ETXYZ.OUT.vague", "ETXYZ.OUT.veer"},
    2,
    300.0F,
    -44 * 203.2F,
    77 * 203.2F,
    50.0F,
    printedOfSet("2"),
    kMaterials};
const Kind kSpectra = {"with spectra",     {"ETXYZ.OUT.weave.Z"}, 10, 350.0F, -44 * 202.5F, 77 * 202.5F, 50.0F,
                       printedOfSet("10"), "SubTerrain::load\n"};
const Kind kOldStyle = {
    "old style",
    {},
    1,
    300.0F,
    0.0F,
    128 * 51.2F,
    0.0F,
    "",
    kMaterials + "LoadRadMap::isOldRadMap: using old "
                 "fortran style\n"};
const Kind kKinds[] = {kStock, kSpectra, kOldStyle};

// The demonstration in a folder whose name XML would take for markup.
class DemonstrationTerrain : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_TRUE(context.isUsable());
        ASSERT_EQ(makeDemonstration(root()), std::nullopt);
    }

    std::filesystem::path root() const { return directory_.path() / "a & <b>"; }

    ReadTrajectory trajectory(const std::string& name) const {
        const std::string path = (root() / name).string();
        return ReadTrajectory(name.ends_with(".Z") ? uncompressed("uncompress", path) : readWholeFile(path));
    }

    // As the first of the kind's engagements names it; the other ones fall back to it. The rasters of the old style are
    // those of the stock terrain without its description.
    void init(const Kind& kind, Terrain& terrain) const {
        std::vector<std::string> header =
            trajectory(kind.engagements.empty() ? "ETXYZ.OUT.turn" : kind.engagements.front()).header;
        if (kind.engagements.empty()) {
            std::filesystem::create_directory(root() / "single");
            std::filesystem::copy(root() / "data/ter0010", root() / "single/ter0010");
            std::filesystem::remove(root() / "single/ter0010/ter0010.xml");
            for (const std::size_t line : {0U, 1U})
                header[line].replace(header[line].find("/data/"), 6, "/single/");
        }
        float lowest = 1.0F;
        ASSERT_TRUE(
            terrain.Init(header.at(0), header.at(1), SORVANE_SHADERS, lowest, 3000.0F, 1.0F, 1.0F, 1.0F, 0, 0, 0));
        EXPECT_NEAR(lowest, -kind.launchHeight - kind.depth, 0.02F);
    }

    // Metres of a position above the ground under it, which is NaN where there is none: half a turn about x, and height
    // 0 at the threat's first z.
    static double heightAbove(const Terrain& terrain, double firstZ, const Vec3d& position) {
        const float ground = terrain.GetElevation(static_cast<float>(position.x), static_cast<float>(-position.y));
        return ground == 0.0F ? std::nan("") : firstZ - double{ground} - position.z;
    }

    static constexpr double kDegreesPerRadian = 57.29577951308232;
    const GlContext context{8, 8};

private:
    TemporaryDirectory directory_;
};

// Standard output without the lines that hold the range of the radiances.
std::string withoutRanges(const std::string& printed) {
    std::istringstream lines(printed);
    std::string result;
    for (std::string line; std::getline(lines, line);)
        if (!line.starts_with("SubTerran::loadTextures: min: "))
            result += line + '\n';
    return result;
}

std::string repeated(const std::string& text, std::size_t times) {
    std::string result;
    for (std::size_t i = 0; i < times; ++i)
        result += text;
    return result;
}
} // namespace

TEST_F(DemonstrationTerrain, LoadsWholeLitAndWithoutAComplaint) {
    for (const Kind& kind : kKinds) {
        SCOPED_TRACE(kind.name);
        testing::internal::CaptureStdout();
        testing::internal::CaptureStderr();
        Terrain terrain;
        init(kind, terrain);
        EXPECT_TRUE(terrain.loadAll());
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
        EXPECT_EQ(
            withoutRanges(testing::internal::GetCapturedStdout()),
            kind.printedFirst + repeated(kind.printedPerTile, kind.tiles));

        ASSERT_EQ(terrain.tileCount(), kind.tiles);
        const SubTerrain::Bounds box = terrain.BBox();
        for (std::size_t i = 0; i < kind.tiles; ++i) {
            const SubTerrain& tile = terrain.tile(i);
            const RasterSize size{tile.getWidth(), tile.getHeight()};
            EXPECT_LE(std::max(size.columns, size.rows), 128);
            EXPECT_EQ(readTopographySize(tile.getTopoFilePath()), size);
            for (const std::string& path : {tile.getRadFilePath(), tile.getNormFilePath(), tile.getClassFilePath()})
                EXPECT_EQ(readRasterSize(path), size) << path;
            EXPECT_TRUE(tile.isSunlit() && tile.isReflective());
            EXPECT_GT(tile.solarDirection()[2], 0.5F) << "the sun is up";
            const float middle = tile.mesh()->post(size.columns / 2, size.rows / 2).position[2];
            EXPECT_TRUE(middle >= box.minimum[2] && middle <= box.maximum[2]) << middle;
        }
        for (const std::size_t axis : {0U, 1U}) {
            EXPECT_NEAR(box.minimum[axis], kind.start, 0.01F);
            EXPECT_NEAR(box.maximum[axis], kind.end, 0.01F);
        }
        EXPECT_NEAR(box.minimum[2], -kind.launchHeight - kind.depth, 0.02F);
        EXPECT_TRUE(box.maximum[2] <= 0.0F && box.maximum[2] > -20.0F) << box.maximum[2];
    }
}

TEST_F(DemonstrationTerrain, LiesUnderTheEngagementsNearTheirLaunchesAndAsFarAsTheySee) {
    for (const Kind& kind : kKinds) {
        Terrain terrain;
        init(kind, terrain);
        ASSERT_TRUE(terrain.loadAll());
        for (const char* const name : kind.engagements) {
            SCOPED_TRACE(name);
            const std::vector<ReadSample> samples = trajectory(name).samples;
            const double firstZ = samples.front().threatPosition().z;
            EXPECT_LT(heightAbove(terrain, firstZ, samples.front().threatPosition()), 60.0) << "launched from a top";
            for (const ReadSample& sample : samples) {
                ASSERT_GT(heightAbove(terrain, firstZ, sample.targetPosition()), 100.0);
                ASSERT_GT(heightAbove(terrain, firstZ, sample.threatPosition()), 0.0);
            }
            // Whichever way a camera at the target or the threat looks, from 12 degrees below the horizon on it sees
            // ground.
            const double slope = std::tan(12.0 / kDegreesPerRadian);
            for (std::size_t i = 0; i < samples.size(); i += samples.size() / 8)
                for (const Vec3d& eye : {samples[i].targetPosition(), samples[i].threatPosition()})
                    for (int bearing = 0; bearing < 360; bearing += 15) {
                        const Vec3d along = {
                            std::cos(bearing / kDegreesPerRadian), std::sin(bearing / kDegreesPerRadian), slope};
                        double above = 1.0;
                        for (double far = 0.0; above > 0.0; far += 50.0)
                            above = heightAbove(terrain, firstZ, eye + far * along);
                        ASSERT_LE(above, 0.0) << bearing << " degrees at " << samples[i].time() << " s";
                    }
        }
    }
}

TEST_F(DemonstrationTerrain, HasNoGapBetweenItsTiles) {
    Terrain terrain;
    init(kSpectra, terrain);
    ASSERT_TRUE(terrain.loadAll());
    const auto post = [&terrain](std::size_t tile, int column, int row) {
        return terrain.tile(tile).mesh()->post(column, row).position;
    };
    for (int i = 0; i < 97; ++i) {
        EXPECT_EQ(post(3, 96, i), post(4, 0, i)) << "west and east, row " << i;
        EXPECT_EQ(post(4, i, 96), post(7, i, 0)) << "south and north, column " << i;
    }
    // The wide tile joins the others at the square's edge and lies beneath them within it. Half a cell of the finer
    // tiles beyond a post no rounding leads to the one before.
    const SubTerrain& wide = terrain.tile(9);
    for (int row = 44; row < 76; ++row)
        for (int column = 44; column < 76; ++column) {
            const float fine = terrain.GetElevation(
                202.5F * static_cast<float>(column - 44) + 11.0F, 202.5F * static_cast<float>(row - 44) + 11.0F);
            const float above = wide.mesh()->post(column, row).position[2] - fine;
            ASSERT_TRUE(row == 44 || column == 44 ? above == 0.0F : above < -40.0F) << column << ' ' << row;
        }
}

TEST(Spectrum, HasItsMeanInTheBandInBothOrders) {
    for (const GroundCover& cover : kGroundCovers)
        EXPECT_NEAR(Aster::bandMean(spectrumText(cover), 3.0F, 5.0F), cover.percentReflectance / 100.0, 1e-4)
            << cover.name;
}

TEST(RasterFile, OfTheBkgFamilyHasAHeaderThatNeverChanges) {
    const TemporaryDirectory directory;
    const std::vector<float> values = {1.0F, 2.0F, 6.0F, 7.0F, 3.0F, 5.0F};
    const GHead torvale = rasterHeader(3, 2, 22.5, "NORM", values);
    const std::string path = directory.write("a.norm", bkgFile(torvale, std::as_bytes(std::span(values))));
    EXPECT_EQ(std::filesystem::file_size(path), 512U + 24U);
    EXPECT_TRUE(CheckMORLAN(path));
    BKG_header header{};
    ReadHeaderOnly(path, header);
    EXPECT_EQ(std::string(header.fileCreationDate, 6), "010621");
    EXPECT_STREQ(header.headerSignature, "NORM");
    EXPECT_EQ(header.xStepSize, 22.5F);
    EXPECT_EQ(header.databaseMaximum, 7.0F);
    EXPECT_EQ(header.databaseMean, 4.0F);
}

TEST(RasterFile, OfTheTorvaleFamilyFillsItsRowsUpToRecords) {
    const std::vector<float> values(std::size_t{130} * 2, 1.0F);
    const GHead header = rasterHeader(130, 2, 1.0, "RADIANCE", values);
    const auto bytes = std::as_bytes(std::span(values));
    EXPECT_EQ(torvaleFile(header, bytes, Rows::Contiguous).size(), 512U + 2 * 520U);
    const std::string padded = torvaleFile(header, bytes, Rows::Records);
    ASSERT_EQ(padded.size(), 512U + 2 * 1024U);
    EXPECT_EQ(padded.substr(512 + 1024, 520), std::string(reinterpret_cast<const char*>(bytes.data()), 520));
    EXPECT_EQ(padded.back(), '\0');
}
