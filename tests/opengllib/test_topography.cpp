// Topography loaders: samples, layouts, messages.
#include <cmath>
#include <cstdint>
#include <vector>

#include <gmock/gmock.h>

#include "capturedoutput.h"
#include "loadtopofile.h"
#include "rasterfiles.h"
#include "rows.h"
#include "temporarydirectory.h"

using namespace sorvane;

using testing::ElementsAre;

namespace {
std::string topoError(const std::string& message) {
    return errorLine("loadTopoFile", "opengllib/loadtopofile.cpp", message);
}
std::string ftopError(const std::string& message) {
    return errorLine("loadFTopFile", "opengllib/loadtopofile.cpp", message);
}
std::string shortRow(int row, int columns, int got) {
    return topoError(
        "When reading row " + std::to_string(row) + ", expected " + std::to_string(columns) +
        " items of size 2 bytes, but only received " + std::to_string(got) + ".");
}

const std::vector<std::uint16_t> kSix = {10, 20, 30, 40, 65535, 7};
const std::string kTwoRows = paddedRows(kSix, 3, 506);

GHead scaledHeader(float zscale, int packtype = 1) {
    GHead header = torvaleHeader(3, 2, packtype);
    header.zscale = zscale;
    return header;
}
} // namespace

TEST(TorvaleTopography, SkipsToTheRecordsOfThePackingButReadsTwoBytes) {
    const TemporaryDirectory directory;
    for (const auto& [packtype, padding] : Rows<int, int>{{0, 512 - 3}, {1, 512 - 6}, {2, 512 - 12}}) {
        std::string file = bytesOf(scaledHeader(0.5F, packtype)) + paddedRows(kSix, 3, padding);
        file.resize(file.size() - static_cast<std::size_t>(padding)); // the last row needs none
        GHead read{};
        EXPECT_THAT(
            taken(loadTopoFile(directory.write("a.top", file), read), 6), ElementsAre(5, 10, 15, 20, 32767.5F, 3.5F))
            << packtype;
    }
}

TEST(TorvaleTopography, FindsTheExtremesOfScaledSamples) {
    const TemporaryDirectory directory;
    for (const auto& [header, minimum, maximum] : Rows<GHead, float, float>{
             {scaledHeader(0.5F), 3.5F, 32767.5F},
             {scaledHeader(-2), -131070, -14},
             {scaledHeader(1e8F), 1e8F, 6.5535e12F},
             {scaledHeader(NAN), 1e8F, -1e8F},
             {torvaleHeader(3, 0, 1), 1e8F, -1e8F}, // no samples
             {torvaleHeader(0, 0x7fffffff, 1), 1e8F, -1e8F}}) {
        GHead read{};
        taken(loadTopoFile(directory.write("a.top", bytesOf(header) + kTwoRows), read), 0);
        EXPECT_EQ(read.MinVals[0], minimum) << header.zscale;
        EXPECT_EQ(read.MaxVals[0], maximum) << header.zscale;
    }
}

TEST(TorvaleTopography, ReportsWhatIsWrongWithTheFile) {
    const TemporaryDirectory directory;
    const std::string header = bytesOf(torvaleHeader(3, 2, 1));
    for (const auto& [file, output] : Rows<std::string, std::string>{
             {std::string(511, '\0'), ""},
             {bytesOf(torvaleHeader(3, 2, 3)) + kTwoRows, ""},
             {bytesOf(torvaleHeader(3, 2, -1)) + kTwoRows, ""},
             {header + kTwoRows.substr(0, 5), shortRow(1, 3, 2)},
             {header + kTwoRows.substr(0, 100), shortRow(2, 3, 0)},
             {bytesOf(torvaleHeader(0x7fffffff, 0x7fffffff, 1)) + kTwoRows,
              topoError("Unable to allocate 2147483647 * 2147483647 = 1 floats (4 bytes) for array pData.")},
             {bytesOf(torvaleHeader(-3, -2, 1)) + kTwoRows,
              topoError("Unable to allocate -2 * -3 = 6 floats (24 bytes) for array pData.")}}) {
        const std::string path = directory.write("a.top", file);
        GHead read{};
        EXPECT_EQ(outputOf([&] { EXPECT_EQ(loadTopoFile(path, read), nullptr); }), output);
    }
}

TEST(BkgTopography, EndsTheProcessWhenTheSamplesCanNotBeRead) {
    const TemporaryDirectory directory;
    const std::string eof = "Unexpected EOF found when loading TOP file. Expected ";
    const std::string memory = "Could not allocate ";
    for (const auto& [columns, rows, samples, message] : Rows<int, int, std::string, std::string>{
             {3, 2, std::string(23, 'x'), eof + "6 floats but only read 5."},
             {0x10000, 0x4000, "", eof + "1073741824 floats but only read 0."},
             {3, -2, "", memory + "3 * -2 = -6 floats (-24 bytes) for array out."},
             {0x7fffffff, 0x7fffffff, "", memory + "2147483647 * 2147483647 = 1 floats (4 bytes) for array out."}}) {
        const std::string path = writeBkg(directory.file("a.le-ftop"), bkgHeader(columns, rows), samples);
        BKG_header read{};
        EXPECT_EQ(
            outputOf([&] { EXPECT_TRUE(endsTheProcess([&] { loadFTopFile(path, read); })); }), ftopError(message));
    }
    const std::string folder = directory.path().string();
    EXPECT_EQ(
        outputOf([&] { EXPECT_EQ(loadTopoFile(folder + "/missing.le-ftop"), nullptr); }),
        ftopError("Unable to open and read header of \"" + folder + "/missing.le-ftop\"."));
}

TEST(Topography, IsChosenByTheExtensionAndGivesTheHeaderAsFarAsItIsAskedFor) {
    const TemporaryDirectory directory;
    GHead torvale = torvaleHeader(3, 2, 1);
    torvale.xCellSize = 6.5F;
    torvale.yCellSize = 7.5F;
    const std::string top = directory.write("a.top", bytesOf(torvale) + kTwoRows);
    BKG_header bkg = bkgHeader(1, 2);
    bkg.databaseMinimum = -3.0F;
    bkg.databaseMaximum = 4.0F;
    bkg.xStepSize = 8.0F;
    bkg.yStepSize = 9.0F;
    const std::string ftop = writeBkg(directory.file("a.le-ftop"), bkg, bytesOf(std::vector<float>{1.5F, -2.5F}));

    BKG_header read{};
    EXPECT_THAT(taken(loadTopoFile(top, read), 6), ElementsAre(10, 20, 30, 40, 65535, 7));
    EXPECT_EQ(read.sizeX, 3);
    EXPECT_EQ(read.databaseMaximum, 65535.0F);
    EXPECT_EQ(read.transform[1], 6.5);
    EXPECT_THAT(taken(loadTopoFile(ftop, read), 2), ElementsAre(1.5F, -2.5F));
    EXPECT_EQ(read.sizeX, 1);

    int cols = 0;
    int rows = 0;
    float v[4];
    EXPECT_THAT(taken(loadTopoFile(top, cols, rows, v[0], v[1], v[2], v[3]), 1), ElementsAre(10));
    EXPECT_THAT(v, ElementsAre(7, 65535, 6.5F, 7.5F));
    EXPECT_EQ(cols * 10 + rows, 32);
    EXPECT_THAT(taken(loadFTopFile(ftop, cols, rows, v[0], v[1], v[2], v[3]), 1), ElementsAre(1.5F));
    EXPECT_THAT(v, ElementsAre(-3, 4, 8, 9));
    EXPECT_EQ(cols * 10 + rows, 12);
    EXPECT_EQ(loadTopoFile(directory.file("missing"), cols, rows, v[0], v[1], v[2], v[3]), nullptr);
    EXPECT_EQ(cols * 10 + rows, 12);

    for (const std::string& path : {directory.file("a.dem"), directory.file("atop"), std::string("top")})
        EXPECT_EQ(
            outputOf([&] { EXPECT_EQ(loadTopoFile(path), nullptr); }),
            "LoadTopoFile::loadTopoFile( string, bkgheader): unrecognized file extension\n");
}
