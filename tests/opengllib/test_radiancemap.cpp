// Radiance loaders: the three layouts, how they are told apart, messages.
#include <memory>
#include <vector>

#include <gmock/gmock.h>

#include "capturedoutput.h"
#include "loadradfile.h"
#include "rasterfiles.h"
#include "rows.h"
#include "temporarydirectory.h"

using namespace sorvane;

using testing::ElementsAre;

namespace {
const std::string kOldStyle = "LoadRadMap::isOldRadMap: using old fortran style\n";
const std::string kTooShort = "LoadRadFile::loadRadFile didn't find enough elements.  Crying :'(\n";
const std::vector<float> kSix = {1, 2, 3, 4, 5, -6};
const std::string kHeader = bytesOf(torvaleHeader(3, 2, 2));

std::string radError(const std::string& message) {
    return errorLine("loadRADFile", "opengllib/loadradfile.cpp", message);
}

struct Outputs {
    int internalFormat = -1, width = -1, height = -1, border = -1;
    unsigned format = 0, type = 0;
    int bytesPerSample = -1;
};
float* loadPadded(const std::string& path, Outputs& o, bool normalise = false) {
    return loadRADFile(
        path, o.internalFormat, o.width, o.height, o.border, o.format, o.type, o.bytesPerSample, normalise);
}
} // namespace

TEST(PaddedRadiance, ReadsFloatsAndSkipsToTheRecordsOfThePacking) {
    const TemporaryDirectory directory;
    for (const auto& [packtype, bytes] : Rows<int, int>{{0, 1}, {1, 2}, {2, 4}}) {
        const std::string path =
            directory.write("a.rad", bytesOf(torvaleHeader(3, 2, packtype)) + paddedRows(kSix, 3, 512 - 3 * bytes));
        Outputs o;
        EXPECT_EQ(taken(loadPadded(path, o), 6), kSix) << packtype;
        EXPECT_EQ(o.internalFormat, 34840);
        EXPECT_EQ(o.border, 0);
        EXPECT_EQ(o.format, 6403U);
        EXPECT_EQ(o.type, 5126U);
        EXPECT_EQ(o.width * 10 + o.height, 32);
        EXPECT_EQ(o.bytesPerSample, bytes);
    }
}

TEST(PaddedRadiance, ReadsManyRowsAndRowsThatFillTheirRecords) {
    const TemporaryDirectory directory;
    constexpr int kRows = 1300; // more than go into one read
    for (const int columns : {2, 128}) {
        std::vector<float> samples(static_cast<std::size_t>(columns) * kRows);
        for (std::size_t i = 0; i < samples.size(); ++i)
            samples[i] = static_cast<float>(i);
        const std::string path = directory.write(
            "a.rad", bytesOf(torvaleHeader(columns, kRows, 2)) + paddedRows(samples, columns, 512 - 4 * columns));
        Outputs o;
        EXPECT_EQ(taken(loadPadded(path, o), samples.size()), samples) << columns;
    }
}

TEST(PaddedRadiance, IsMappedToZeroToOneWhenAsked) {
    const TemporaryDirectory directory;
    // An all-negative raster keeps 1.1754944e-38 as its maximum.
    using Samples = std::vector<float>;
    for (const auto& [samples, mapped] :
         Rows<Samples, Samples>{{{2, 3, 4, 6}, {0, 0.25F, 0.5F, 1}}, {{-4, -2, -1, -3}, {0, 0.5F, 0.75F, 0.25F}}}) {
        Outputs o;
        const std::string path = directory.write("a.rad", bytesOf(torvaleHeader(4, 1, 2)) + bytesOf(samples));
        EXPECT_EQ(taken(loadPadded(path, o, true), 4), mapped);
    }
    Outputs o;
    const std::string empty = directory.write("a", bytesOf(torvaleHeader(4, 0, 2)));
    EXPECT_NE(std::unique_ptr<float[]>(loadPadded(empty, o, true)), nullptr);
}

TEST(PaddedRadiance, ReportsWhatIsWrongWithTheFile) {
    const TemporaryDirectory directory;
    const std::string two = paddedRows(kSix, 3, 500);
    const std::string rowTwo = "When reading row 2 of samples, expected 3 floats but only received ";
    for (const auto& [file, output] : Rows<std::string, std::string>{
             {std::string(511, '\0'), radError("Unable to read header from rad file.")},
             {bytesOf(torvaleHeader(3, 2, 3)) + two, ""},
             {kHeader + two.substr(0, 512 + 11), radError(rowTwo + "2.")},
             {bytesOf(torvaleHeader(3, -2, 2)) + two,
              radError("Could not allocate 3 * -2 = -6 floats (-24 bytes) for array pSamples.")}}) {
        const std::string path = directory.write("a.rad", file);
        Outputs o;
        EXPECT_EQ(outputOf([&] { EXPECT_EQ(loadPadded(path, o), nullptr); }), output);
        EXPECT_EQ(o.internalFormat, 34840);
    }
    Outputs o;
    const std::string folder = directory.path().string();
    EXPECT_EQ(
        outputOf([&] { EXPECT_EQ(loadPadded(folder, o), nullptr); }),
        radError("Unable to open \"" + folder + "\" for reading."));
    EXPECT_EQ(o.width, -1);
}

TEST(BkgRadiance, GivesWhatTheFileHoldsInSilence) {
    const TemporaryDirectory directory;
    BKG_header read{};
    const auto load = [&](int columns, int rows, const std::string& samples) {
        return loadRadFileMORLAN(writeBkg(directory.file("a.rad"), bkgHeader(columns, rows), samples), read);
    };
    const std::string output = outputOf([&] {
        EXPECT_THAT(taken(load(3, 2, bytesOf(1.5F)), 6), ElementsAre(1.5F, 0, 0, 0, 0, 0));
        EXPECT_EQ(load(-3, 2, ""), nullptr);
        EXPECT_EQ(load(0x7fffffff, 0x7fffffff, ""), nullptr);
        EXPECT_EQ(loadRadFileMORLAN(directory.file("missing"), read), nullptr);
    });
    EXPECT_EQ(output, "");
}

TEST(Radiance, IsLoadedAsTheFileAsks) {
    const TemporaryDirectory directory;
    writeBkg(directory.file("bkg.rad"), bkgHeader(3, 2), bytesOf(kSix));
    directory.write("padded.rad", kHeader + paddedRows(kSix, 3, 500));
    directory.write("contiguous.rad", kHeader + bytesOf(kSix).substr(0, 24));
    // A length counted in samples tells the layouts apart: six bytes are contiguous, seven are padded.
    directory.write("six.rad", kHeader + bytesOf(kSix).substr(0, 6));
    directory.write("seven.rad", kHeader + bytesOf(kSix).substr(0, 7));
    directory.write("huge.rad", bytesOf(torvaleHeader(0x2000, 0x2000, 2)));
    const std::string shortRow = "When reading row 1 of samples, expected 3 floats but only received 1.";
    for (const auto& [name, samples, printed] : Rows<const char*, std::vector<float>, std::string>{
             {"bkg.rad", kSix, ""},
             {"padded.rad", kSix, kOldStyle},
             {"six.rad", {1, 0, 0, 0, 0, 0}, kTooShort},
             {"seven.rad", {}, radError(shortRow) + kOldStyle},
             {"huge.rad", {0, 0, 0, 0, 0, 0}, kTooShort},
             {"missing.rad", {}, ""}}) {
        std::vector<float> loaded;
        const std::string path = directory.file(name);
        EXPECT_EQ(outputOf([&] { loaded = taken(loadRadFile(path), 6); }), printed) << name;
        EXPECT_EQ(loaded, samples) << name;
    }
    GHead read{};
    EXPECT_EQ(outputOf([&] { EXPECT_EQ(taken(loadRadFile(directory.file("contiguous.rad"), read), 6), kSix); }), "");
}
