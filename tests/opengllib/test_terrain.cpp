// The set of tiles: described sets, single rasters, shared files, messages. Nothing here draws.
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "capturedoutput.h"
#include "rows.h"
#include "temporarydirectory.h"
#include "terrain.h"
#include "terrainfiles.h"

using namespace sorvane;

namespace {
bool init(Terrain& terrain, const std::string& topo, const std::string& rad, float& lowest) {
    return terrain.Init(topo, rad, "/shaders", lowest, 3000, 2, 3, 4, 10, 20, 30);
}
const std::string kNoLight = "terrain::load: dynamic sunlight reflections: OFF\n";
const std::string kSun = "terrain::load: dynamic sunlight reflections: ON\n";
const std::string kOff = "terrain::load: dynamic light reflections: OFF\n";
const std::string kOn = "terrain::load: dynamic light reflections: ON\n";
const std::string kPart = "Terrain::load: missing some class to material data\n";
} // namespace

TEST(Terrain, WithoutTilesAnswersNothing) {
    Terrain terrain;
    EXPECT_EQ(
        outputOf([&] { EXPECT_EQ(terrain.GetElevation(1, 2), 0.0F); }), "Terrain::GetElevation: No terrains loaded\n");
    EXPECT_EQ(outputOf([&] { terrain.print(); }), "Terrain::print:\n");
    EXPECT_EQ(terrain.xCellSize() + terrain.yCellSize() + terrain.BBox().maximum[0], 0.0F);
    terrain.Render(true);
    EXPECT_TRUE(terrain.loadAll());
    const TemporaryDirectory directory;
    const std::string empty = directory.write("empty.xml", "<t/>");
    EXPECT_EQ(outputOf([&] { EXPECT_FALSE(terrain.load(empty, "", 1)); }), "total of 0 subterrains\n");
}

TEST(Terrain, SaysWhatWillBeLit) {
    using Names = std::vector<std::string>;
    for (const auto& [names, printed] : Rows<Names, std::string>{
             {Names{}, kNoLight + kOff},
             {Names{"set.atm"}, kSun + kOff},
             {Names{"set.cls2mat", "set.temp"}, kNoLight + kOn},
             {Names{"set.temp", "set.atm"}, kSun + kPart + kOff},
             {Names{"set.cls2aster", "set.band"}, kNoLight + kPart + kOff},
             {Names{"set.cls2aster", "set.band", "aster/a.txt"}, kNoLight + kOn},
             {Names{"set.cls2mat", "set.temp", "set.band"}, kNoLight + kOn}}) {
        const TemporaryDirectory directory; // file checks remember what they saw
        const TerrainFiles files(directory);
        for (const std::string& name : names)
            directory.write(name, "x");
        Terrain terrain;
        const std::string description = files.writeDescription();
        EXPECT_EQ(
            outputOf([&] { EXPECT_TRUE(terrain.load(description, files.folder(), 1)); }),
            "total of 1 subterrains\n" + printed)
            << testing::PrintToString(names);
    }
}

TEST(Terrain, InitTakesADescriptionByNameOrBesideTheRaster) {
    const TemporaryDirectory directory;
    const TerrainFiles files(directory);
    const std::string description = files.writeDescription();
    const std::string beside = directory.write("set.top", "x");
    const std::string rad = directory.write("any.rad", "x");
    for (const std::string& topo : {description, beside}) {
        Terrain terrain;
        float lowest = 0;
        ASSERT_TRUE(init(terrain, topo, rad, lowest));
        ASSERT_EQ(terrain.tileCount(), 1U);
        SubTerrain& tile = terrain.tile(0);
        EXPECT_EQ(tile.getTopoFilePath(), directory.file("set_n0001.le-ftop"));
        EXPECT_EQ(tile.getOriginX(), 110.0F);
        EXPECT_EQ(tile.getOriginY(), 220.0F);
        EXPECT_EQ(tile.getOriginZ(), 30.0F);
        float range = 0;
        tile.getRadScale(range);
        EXPECT_EQ(range, 3000.0F);
        EXPECT_EQ(lowest, 10.0F);
        EXPECT_EQ(terrain.xCellSize(), 10.0F);
        EXPECT_EQ(terrain.yCellSize(), 21.0F);
        // 3 columns of 5 scaled by 2, 2 rows of 7 scaled by 3, heights scaled by 4.
        const SubTerrain::Bounds box = terrain.BBox();
        EXPECT_THAT(box.minimum, testing::ElementsAre(110, 220, 70));
        EXPECT_THAT(box.maximum, testing::ElementsAre(140, 262, 270));
        EXPECT_EQ(outputOf([&] { terrain.print(); }), "Terrain::print:\nTerrain::print: 0 not loaded\n");
        EXPECT_EQ(
            outputOf([&] { EXPECT_EQ(terrain.GetElevation(115, 225), 0.0F); }),
            "SubTerrain::getElevation: not loaded\n");
        terrain.CleanUp();
        EXPECT_EQ(terrain.tileCount(), 0U);
    }
}

TEST(Terrain, FilesThatWereNamedComeBeforeThoseBeside) {
    const TemporaryDirectory directory;
    const TerrainFiles files(directory);
    files.writeMaterialRoute();
    const std::string named = directory.write("named.temp", "x");
    Terrain terrain;
    terrain.setTempFilePath(named);
    terrain.setCls2MatFilePath(directory.file("missing.cls2mat"));
    outputOf([&] { EXPECT_TRUE(terrain.load(files.writeDescription(), files.folder(), 1)); });
    EXPECT_EQ(terrain.tile(0).getTempFilePath(), named);
    EXPECT_EQ(terrain.tile(0).getCls2MatFilePath(), directory.file("set.cls2mat"));
}

TEST(Terrain, TheLowestTileCountsWhereverItStandsAndCellsOfRowsThatRunSouthAreAsHigh) {
    const TemporaryDirectory directory;
    const std::string path = directory.write(
        "set.xml", "<t><base>b</base><subs><subterrain n='1'><minZ>-5</minZ><vec dir='y'><j>-7</j></vec></subterrain>"
                   "<subterrain n='2'><minZ>7</minZ></subterrain></subs></t>");
    Terrain terrain;
    float lowest = 99;
    outputOf([&] { EXPECT_TRUE(init(terrain, path, directory.write("any.rad", "x"), lowest)); });
    EXPECT_EQ(lowest, -5.0F);
    EXPECT_EQ(terrain.yCellSize(), 3 * 7.0F);
}

TEST(Terrain, InitTakesASingleRasterOfEitherFamily) {
    const TemporaryDirectory directory;
    GHead torvale = torvaleHeader(5, 4, 1);
    torvale.xCellSize = 6.5F;
    torvale.yCellSize = 7.5F;
    torvale.MinVals[0] = -3.0F;
    torvale.MaxVals[0] = 9.0F;
    BKG_header bkg = bkgHeader(5, 4);
    bkg.xStepSize = 6.5F;
    bkg.yStepSize = 7.5F;
    bkg.databaseMinimum = -3.0F;
    bkg.databaseMaximum = 9.0F;
    const std::string rad = directory.write("other.rad", "x");
    for (const std::string& topo :
         {directory.write("old.top", bytesOf(torvale)), writeBkg(directory.file("new.le-ftop"), bkg, "")}) {
        Terrain terrain;
        float lowest = 99;
        EXPECT_EQ(outputOf([&] { EXPECT_TRUE(init(terrain, topo, rad, lowest)); }), "");
        ASSERT_EQ(terrain.tileCount(), 1U);
        const SubTerrain& tile = terrain.tile(0);
        EXPECT_EQ(lowest, -3.0F);
        EXPECT_EQ(tile.getMaxZ(), 9.0F);
        EXPECT_EQ(tile.getWidth() * 10 + tile.getHeight(), 54);
        EXPECT_EQ(terrain.xCellSize(), 13.0F);
        EXPECT_EQ(terrain.yCellSize(), 22.5F);
        EXPECT_EQ(tile.getTopoFilePath(), topo);
        EXPECT_EQ(tile.getRadFilePath(), rad);
        EXPECT_EQ(tile.getNormFilePath(), topo.substr(0, topo.rfind('.')) + ".norm");
    }
}

TEST(Terrain, InitReportsMissingRasters) {
    const TemporaryDirectory directory;
    const std::string there = directory.write("a.top", "x");
    Terrain terrain;
    float lowest = 5;
    EXPECT_EQ(
        outputOf([&] { EXPECT_FALSE(init(terrain, directory.file("missing.top"), there, lowest)); }),
        "Terrain::Init: Cant find old topo file\n");
    EXPECT_EQ(
        outputOf([&] { EXPECT_FALSE(init(terrain, there, directory.file("missing.rad"), lowest)); }),
        "Terrain::Init: Cant find rad map\n");
    EXPECT_EQ(lowest, 5.0F);
}
