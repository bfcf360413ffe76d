// Loading a tile of several blocks in pieces, for who must not wait.
#include <cmath>
#include <cstring>
#include <memory>
#include <thread>

#include "subterraintest.h"

using namespace sorvane;

namespace {
constexpr int kColumns = 300; // three blocks
constexpr int kRows = 140;    // two

std::size_t at(int column, int row) {
    return static_cast<std::size_t>(row) * kColumns + static_cast<std::size_t>(column);
}

struct TileLoadingTest : SubTerrainTest {
    TileLoadingTest() {
        std::vector<float> heights;
        std::vector<float> radiances;
        std::vector<float> normals;
        std::string classes;
        for (int i = 0; i < kColumns * kRows; ++i) {
            heights.push_back(static_cast<float>((i * 37) % 97));
            radiances.push_back(static_cast<float>((i * 13) % 11) * 0.05F);
            const float tilt = static_cast<float>(i % 7) * 0.1F;
            normals.insert(normals.end(), {tilt, 0.0F, std::sqrt(1.0F - tilt * tilt)});
            classes += static_cast<char>(1 + i % 3);
        }
        const auto write = [&](const char* ending, const char* signature, const std::string& samples) {
            writeBkg(files.file("set_n0001") + ending, bkgHeader(kColumns, kRows, signature), samples);
        };
        write(".le-ftop", "", bytesOf(heights));
        write(".rad", "", bytesOf(radiances));
        write(".norm", "NORM", bytesOf(normals));
        write(".cls", "", classes);
        files.writeMaterialRoute();
        files.writeAtmosphere();
        place(tile);
    }

    void place(SubTerrain& placed) const {
        placed.setOriginX(100);
        placed.setOriginY(200);
        placed.setXvec(10.0F / (kColumns - 1), 0);
        placed.setYvec(0, 7.0F / (kRows - 1));
        placed.setWidth(kColumns);
        placed.setHeight(kRows);
        placed.setTopoFilePath(tile.getTopoFilePath());
        placed.setRadFilePath(tile.getRadFilePath());
        placed.setNormFilePath(tile.getNormFilePath());
        placed.setClassFilePath(tile.getClassFilePath());
        placed.setVertShader(kShaders + "TerrainRefl.vert");
        placed.setFragShader(kShaders + "TerrainRefl.frag");
        placed.setAtmFile(tile.getAtmFile());
        placed.setCls2MatFilePath(tile.getCls2MatFilePath());
        placed.setTempFilePath(tile.getTempFilePath());
        placed.setCls2AsterFilePath(tile.getCls2AsterFilePath());
        placed.setBandFilePath(tile.getBandFilePath());
        placed.setAsterDbFilePath(tile.getAsterDbFilePath());
    }
    std::unique_ptr<SubTerrain> another() const {
        auto made = std::make_unique<SubTerrain>();
        place(*made);
        return made;
    }
    // The least that a call does.
    static bool goOn(SubTerrain& loading) { return loading.loadUntil(std::chrono::steady_clock::now()); }
    // Waits until there is something to do; false after ten seconds.
    static bool loadInPieces(SubTerrain& loading) {
        for (int i = 0; i < 10000; ++i) {
            if (goOn(loading))
                return true;
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
        return false;
    }
    std::vector<float> pictureOf(SubTerrain& drawn) const {
        lookAtTheTile();
        drawn.setDrawSecondPass(true);
        drawn.setSkipFirstPass(true);
        drawn.render(Lights());
        return context.pixels();
    }
};

TEST_F(TileLoadingTest, EndsWithTheSameLinesAndTheSamePictureToTheBit) {
    std::vector<float> whole;
    {
        const std::string said = outputOfLoad(true);
        whole = pictureOf(tile);
        tile.unallocateArrays(); // so that nothing is shared
        double share = 0.0;
        EXPECT_EQ(
            outputOf([&] {
                for (int i = 0; i < 10000 && !goOn(tile); ++i) {
                    EXPECT_GE(tile.loadedShare(), share);
                    share = tile.loadedShare();
                    EXPECT_TRUE(tile.isLoading());
                    EXPECT_FALSE(tile.isLoaded());
                    std::this_thread::sleep_for(std::chrono::milliseconds(1));
                }
            }),
            said);
        EXPECT_GT(share, 0.5);
    }
    EXPECT_TRUE(tile.isWhole());
    const std::vector<float> inPieces = pictureOf(tile);
    EXPECT_GT(*std::ranges::max_element(whole), 0.1F);
    EXPECT_EQ(std::memcmp(inPieces.data(), whole.data(), whole.size() * sizeof(float)), 0);
}

TEST_F(TileLoadingTest, HasEveryPostWithItsNormalAndReflectanceInEachBlockThatHasIt) {
    outputOfLoad(true);
    const TerrainMesh& mesh = *tile.mesh();
    EXPECT_EQ(mesh.blockCount(), 6U);
    for (const int row : {0, 1, 127, 128, 129, kRows - 1})
        for (const int column : {0, 127, 128, 129, 256, 257, kColumns - 1}) {
            const std::size_t post = at(column, row);
            const auto [position, normal, colour] = mesh.post(column, row);
            EXPECT_EQ(position[2], static_cast<float>((post * 37) % 97)) << column << ' ' << row;
            EXPECT_EQ(normal[0], static_cast<float>(post % 7) * 0.1F) << column << ' ' << row;
            EXPECT_EQ(colour[0], post % 3 == 0 ? 0.25F : 0.0F) << column << ' ' << row;
        }
    EXPECT_EQ(mesh.bounds().maximum[2], 96.0F);
    EXPECT_FLOAT_EQ(mesh.bounds().maximum[0], 110.0F);
    const BlockGrid grid({kColumns, kRows});
    for (std::size_t number = 0; number < grid.count(); ++number) {
        const TerrainBlock block = grid.block(number);
        const bool isLast = number % 3 == 2;
        EXPECT_EQ(block.firstColumn + block.columns, isLast ? kColumns : grid.block(number + 1).firstColumn + 1);
        EXPECT_EQ(block.firstRow + block.rows, number >= 3 ? kRows : grid.block(number + 3).firstRow + 1);
    }
}

// Normals go as blocks are made, but for the row that the blocks beyond have in common with them.
TEST(TerrainBlocks, HaveAllTheirNormals) {
    constexpr int kSide = 600; // five bands, each of many pages
    TilePlacement placement;
    placement.columns = placement.rows = kSide;
    TileRasters rasters{{kSide, kSide}, nullptr, nullptr, nullptr, {}};
    rasters.heights = std::make_unique<float[]>(kSide * kSide);
    rasters.normals = std::make_unique<Vertex3[]>(kSide * kSide);
    std::fill_n(rasters.normals.get(), kSide * kSide, Vertex3{0.0F, 0.0F, 1.0F});
    const VertexLayout layout{true, false};
    std::size_t posts = 0;
    for (std::size_t first = 0; first < BlockGrid(rasters.size).count(); first += 4)
        for (const TerrainBlock& block : makeBlocks(placement, rasters, layout, first, 4))
            for (std::size_t post = 0; post < block.vertices.size(); post += 6, ++posts)
                ASSERT_EQ(block.vertices[post + 5], 1.0F) << first << ' ' << post;
    EXPECT_EQ(posts, 604U * 604U) << "edges of blocks twice";
}

TEST_F(TileLoadingTest, LeavesOutTheBlocksThatNobodyWants) {
    outputOfLoad(true);
    const std::vector<float> whole = pictureOf(tile);
    tile.setSkipFirstPass(true);
    lookAtTheTile();
    int asked = 0;
    tile.render(Lights(), [&](const SubTerrain::Bounds& block) {
        ++asked;
        return block.minimum[0] < 101.0F; // the blocks in the west
    });
    EXPECT_EQ(asked, 6);
    const std::vector<float> part = context.pixels();
    EXPECT_EQ(part[0], whole[0]);
    EXPECT_EQ(part[4 * (kSize - 1)], 0.0F);
    EXPECT_GT(whole[4 * (kSize - 1)], 0.0F);
}

// After each number of pieces.
TEST_F(TileLoadingTest, CanBeEndedOrMadeToWaitAnywhere) {
    outputOfLoad(true);
    const std::vector<float> whole = pictureOf(tile);
    tile.unallocateArrays();
    for (int pieces = 0; pieces < 20; ++pieces) {
        outputOf([&] {
            const std::unique_ptr<SubTerrain> left = another();
            const std::unique_ptr<SubTerrain> waiting = another();
            for (int i = 0; i < pieces; ++i)
                if (!goOn(*left))
                    std::this_thread::sleep_for(std::chrono::milliseconds(1));
            for (int i = 0; i < pieces; ++i)
                goOn(*waiting);
            EXPECT_TRUE(waiting->load());
            EXPECT_FALSE(waiting->isLoading());
            EXPECT_EQ(pictureOf(*waiting), whole) << pieces;
        });
    }
}

TEST_F(TileLoadingTest, SharesWhatAnotherTileHasLoadedMeanwhile) {
    const std::unique_ptr<SubTerrain> second = another();
    std::string said;
    std::string saidAgain;
    said = outputOf([&] { EXPECT_TRUE(loadInPieces(tile)); });
    saidAgain = outputOf([&] { EXPECT_TRUE(goOn(*second)) << "there is nothing to wait for"; });
    EXPECT_EQ(second->content(), tile.content());
    EXPECT_EQ(saidAgain, said);
}

TEST_F(TileLoadingTest, FailsWithTheLinesOfWaitingForIt) {
    directory.write("set.temp", "words\n");
    const std::string said = outputOfLoad(false);
    EXPECT_EQ(outputOf([&] { EXPECT_TRUE(loadInPieces(tile)); }), said);
    EXPECT_FALSE(tile.isLoaded());
    EXPECT_FALSE(tile.isLoading());
    tile.setTopoFilePath("nowhere");
    EXPECT_THAT(outputOf([&] { EXPECT_TRUE(goOn(tile)); }), testing::HasSubstr("Topo File is missing"));
}
} // namespace
