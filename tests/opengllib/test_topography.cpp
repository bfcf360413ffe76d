// Topography loaders: samples, layouts, messages.
#include <cmath>
#include <cstdint>
#include <memory>
#include <vector>

#include <gmock/gmock.h>

#include "capturedoutput.h"
#include "loadtopofile.h"
#include "rasterfiles.h"
#include "temporarydirectory.h"

using testing::ElementsAre;

namespace {
std::vector<float> taken(float* samples, std::size_t count) {
    const std::unique_ptr<float[]> owned(samples);
    return owned == nullptr ? std::vector<float>{-999.0F} : std::vector<float>(owned.get(), owned.get() + count);
}

std::string topoError(const std::string& message) {
    return errorLine("loadTopoFile", "opengllib/loadtopofile.cpp", message);
}
std::string ftopError(const std::string& message) {
    return errorLine("loadFTopFile", "opengllib/loadtopofile.cpp", message);
}

const std::vector<std::uint16_t> kSix = {10, 20, 30, 40, 65535, 7};
} // namespace

TEST(TorvaleTopography, SkipsToTheRecordsOfThePackingButReadsTwoBytes) {
    const TemporaryDirectory directory;
    struct Row {
        int packtype, padding;
    };
    for (const Row& row : {Row{0, 512 - 3}, Row{1, 512 - 6}, Row{2, 512 - 12}}) {
        GHead header = torvaleHeader(3, 2, row.packtype);
        header.zscale = 0.5F;
        const std::string path = directory.write("a.top", bytesOf(header) + paddedRows(kSix, 3, row.padding));
        GHead read{};
        EXPECT_THAT(taken(loadTopoFile(path, read), 6), ElementsAre(5, 10, 15, 20, 32767.5F, 3.5F)) << row.packtype;
        EXPECT_EQ(read.MinVals[0], 3.5F);
        EXPECT_EQ(read.MaxVals[0], 32767.5F);
    }
}

TEST(TorvaleTopography, NeedsNoPaddingBehindTheLastRow) {
    const TemporaryDirectory directory;
    std::string file = bytesOf(torvaleHeader(3, 2, 1)) + paddedRows(kSix, 3, 506);
    file.resize(512 + 512 + 6);
    GHead read{};
    EXPECT_THAT(taken(loadTopoFile(directory.write("a.top", file), read), 6), ElementsAre(10, 20, 30, 40, 65535, 7));
}

TEST(TorvaleTopography, FindsTheExtremesOfScaledSamples) {
    const TemporaryDirectory directory;
    struct Row {
        float zscale, minimum, maximum;
    };
    for (const Row& row :
         {Row{-2, -131070, -14}, Row{0, 0, 0}, Row{1e6F, 7e6F, 6.5535e10F}, Row{1e8F, 1e8F, 6.5535e12F},
          Row{NAN, 1e8F, -1e8F}}) {
        GHead header = torvaleHeader(3, 2, 1);
        header.zscale = row.zscale;
        GHead read{};
        taken(loadTopoFile(directory.write("a.top", bytesOf(header) + paddedRows(kSix, 3, 506)), read), 6);
        EXPECT_EQ(read.MinVals[0], row.minimum) << row.zscale;
        EXPECT_EQ(read.MaxVals[0], row.maximum) << row.zscale;
    }
    for (const auto& [columns, rows] : {std::pair{3, 0}, std::pair{0, 0x7fffffff}}) {
        GHead read{};
        taken(loadTopoFile(directory.write("none.top", bytesOf(torvaleHeader(columns, rows, 1))), read), 0);
        EXPECT_EQ(read.MinVals[0], 1e8F) << "no samples";
        EXPECT_EQ(read.MaxVals[0], -1e8F) << "no samples";
    }
}

TEST(TorvaleTopography, ReportsWhatIsWrongWithTheFile) {
    const TemporaryDirectory directory;
    const std::string two = paddedRows(kSix, 3, 506);
    const auto shortRow = [](int row, int columns, int got) {
        return topoError(
            "When reading row " + std::to_string(row) + ", expected " + std::to_string(columns) +
            " items of size 2 bytes, but only received " + std::to_string(got) + ".");
    };
    struct Row {
        GHead header;
        std::string samples;
        std::string output;
    };
    const Row rows[] = {
        {torvaleHeader(3, 2, 3), two, ""},
        {torvaleHeader(3, 2, -1), two, ""},
        {torvaleHeader(3, 2, 1), "", shortRow(1, 3, 0)},
        {torvaleHeader(3, 2, 1), two.substr(0, 5), shortRow(1, 3, 2)},
        {torvaleHeader(3, 2, 1), two.substr(0, 100), shortRow(2, 3, 0)},
        {torvaleHeader(3, 2, 1), two.substr(0, 512 + 3), shortRow(2, 3, 1)},
        {torvaleHeader(3, 3, 1), two, shortRow(3, 3, 0)},
        {torvaleHeader(0x7fffffff, 0x7fffffff, 1), two, shortRow(1, 0x7fffffff, 512)},
        {torvaleHeader(-3, 2, 1), two, topoError("Unable to allocate 2 * -3 = -6 floats (-24 bytes) for array pData.")},
        {torvaleHeader(-3, -2, 1), two, topoError("Unable to allocate -2 * -3 = 6 floats (24 bytes) for array pData.")},
    };
    for (const Row& row : rows) {
        const std::string path = directory.write("a.top", bytesOf(row.header) + row.samples);
        GHead read{};
        EXPECT_EQ(outputOf([&] { EXPECT_EQ(loadTopoFile(path, read), nullptr); }), row.output);
    }
    GHead read{};
    const std::string headless = directory.write("a.top", std::string(511, '\0'));
    EXPECT_EQ(outputOf([&] { EXPECT_EQ(loadTopoFile(headless, read), nullptr); }), "");
}

TEST(BkgTopography, ReadsContiguousFloats) {
    const TemporaryDirectory directory;
    const std::string path =
        writeBkg(directory.file("a.le-ftop"), bkgHeader(3, 2), bytesOf(std::vector<float>{1, 2, 3, 4, 5, -6}));
    BKG_header read{};
    EXPECT_THAT(taken(loadFTopFile(path, read), 6), ElementsAre(1, 2, 3, 4, 5, -6));
    EXPECT_EQ(read.sizeX, 3);
}

TEST(BkgTopography, EndsTheProcessWhenTheSamplesCanNotBeRead) {
    const TemporaryDirectory directory;
    struct Row {
        int columns, rows;
        std::string samples;
        std::string message;
    };
    const Row rows[] = {
        {3, 2, std::string(23, 'x'), "Unexpected EOF found when loading TOP file. Expected 6 floats but only read 5."},
        {0x10000, 0x4000, "",
         "Unexpected EOF found when loading TOP file. Expected 1073741824 floats but only read 0."},
        {3, -2, "", "Could not allocate 3 * -2 = -6 floats (-24 bytes) for array out."},
        {0x7fffffff, 0x46000000, "",
         "Could not allocate 2147483647 * 1174405120 = -1174405120 floats (-402653184 bytes) for array out."},
        {0x7fffffff, 0x7fffffff, "", "Could not allocate 2147483647 * 2147483647 = 1 floats (4 bytes) for array out."},
    };
    for (const Row& row : rows) {
        const std::string path = writeBkg(directory.file("a.le-ftop"), bkgHeader(row.columns, row.rows), row.samples);
        BKG_header read{};
        const std::string output =
            outputOf([&] { EXPECT_TRUE(endsTheProcess([&] { loadFTopFile(path, read); })) << row.message; });
        EXPECT_EQ(output, ftopError(row.message));
    }
}

TEST(BkgTopography, ReportsAFileThatCanNotBeOpened) {
    const TemporaryDirectory directory;
    for (const std::string& path : {directory.file("missing.le-ftop"), directory.path().string()}) {
        BKG_header read{};
        EXPECT_EQ(
            outputOf([&] { EXPECT_EQ(loadFTopFile(path, read), nullptr); }),
            ftopError("Unable to open and read header of \"" + path + "\"."));
    }
}

TEST(Topography, IsChosenByTheExtension) {
    const TemporaryDirectory directory;
    GHead torvale = torvaleHeader(3, 2, 1);
    torvale.xCellSize = 6.5F;
    const std::string top = directory.write("a.top", bytesOf(torvale) + paddedRows(kSix, 3, 506));
    const std::string ftop =
        writeBkg(directory.file("a.le-ftop"), bkgHeader(1, 2), bytesOf(std::vector<float>{1.5F, 2.5F}));
    BKG_header read{};
    EXPECT_THAT(taken(loadTopoFile(top, read), 6), ElementsAre(10, 20, 30, 40, 65535, 7));
    EXPECT_EQ(read.sizeX, 3);
    EXPECT_EQ(read.databaseMaximum, 65535.0F);
    EXPECT_EQ(read.transform[1], 6.5);
    EXPECT_THAT(taken(loadTopoFile(ftop, read), 2), ElementsAre(1.5F, 2.5F));
    EXPECT_EQ(read.sizeX, 1);
    EXPECT_THAT(taken(loadTopoFile(ftop), 2), ElementsAre(1.5F, 2.5F));

    for (const std::string& path : {directory.file("a.dem"), directory.file("atop"), std::string("top"), std::string()})
        EXPECT_EQ(
            outputOf([&] { EXPECT_EQ(loadTopoFile(path), nullptr); }),
            "LoadTopoFile::loadTopoFile( string, bkgheader): unrecognized file extension\n");
}

TEST(Topography, GivesWhatAMeshNeedsOfTheHeader) {
    const TemporaryDirectory directory;
    GHead torvale = torvaleHeader(3, 2, 1);
    torvale.xCellSize = 6.5F;
    torvale.yCellSize = 7.5F;
    const std::string top = directory.write("a.top", bytesOf(torvale) + paddedRows(kSix, 3, 506));
    BKG_header bkg = bkgHeader(1, 2);
    bkg.databaseMinimum = -3.0F;
    bkg.databaseMaximum = 4.0F;
    bkg.xStepSize = 8.0F;
    bkg.yStepSize = 9.0F;
    const std::string ftop = writeBkg(directory.file("a.le-ftop"), bkg, bytesOf(std::vector<float>{1.5F, 2.5F}));

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
}
