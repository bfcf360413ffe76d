// Radiance loaders: the three layouts, how they are told apart, messages.
#include <memory>
#include <vector>

#include <gmock/gmock.h>

#include "capturedoutput.h"
#include "loadradfile.h"
#include "rasterfiles.h"
#include "temporarydirectory.h"

using testing::ElementsAre;

namespace {
const std::string kOldStyle = "LoadRadMap::isOldRadMap: using old fortran style\n";
const std::string kTooShort = "LoadRadFile::loadRadFile didn't find enough elements.  Crying :'(\n";
const std::vector<float> kSix = {1, 2, 3, 4, 5, -6};

std::string radError(const std::string& message) {
    return errorLine("loadRADFile", "opengllib/loadradfile.cpp", message);
}

std::vector<float> taken(float* samples, std::size_t count) {
    const std::unique_ptr<float[]> owned(samples);
    return owned == nullptr ? std::vector<float>{-999.0F} : std::vector<float>(owned.get(), owned.get() + count);
}

struct Outputs {
    int internalFormat = -1, width = -1, height = -1, border = -1;
    unsigned format = 0, type = 0;
    int bytesPerSample = -1;
};
float* loadPadded(const std::string& path, Outputs& o, bool normalise) {
    return loadRADFile(
        path, o.internalFormat, o.width, o.height, o.border, o.format, o.type, o.bytesPerSample, normalise);
}
} // namespace

TEST(PaddedRadiance, ReadsFloatsAndSkipsToTheRecordsOfThePacking) {
    const TemporaryDirectory directory;
    struct Row {
        int packtype, padding, bytesPerSample;
    };
    for (const Row& row : {Row{0, 512 - 3, 1}, Row{1, 512 - 6, 2}, Row{2, 512 - 12, 4}}) {
        const std::string path =
            directory.write("a.rad", bytesOf(torvaleHeader(3, 2, row.packtype)) + paddedRows(kSix, 3, row.padding));
        Outputs o;
        EXPECT_THAT(taken(loadPadded(path, o, false), 6), ElementsAre(1, 2, 3, 4, 5, -6)) << row.packtype;
        EXPECT_EQ(o.internalFormat, 34840);
        EXPECT_EQ(o.border, 0);
        EXPECT_EQ(o.format, 6403U);
        EXPECT_EQ(o.type, 5126U);
        EXPECT_EQ(o.width, 3);
        EXPECT_EQ(o.height, 2);
        EXPECT_EQ(o.bytesPerSample, row.bytesPerSample);
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
        EXPECT_EQ(taken(loadPadded(path, o, false), samples.size()), samples) << columns;
    }
}

TEST(PaddedRadiance, IsMappedToZeroToOneWhenAsked) {
    const TemporaryDirectory directory;
    struct Row {
        std::vector<float> samples;
        std::vector<float> mapped;
    };
    // An all-negative raster keeps 1.1754944e-38 as its maximum.
    const Row rows[] = {{{2, 3, 4, 6}, {0, 0.25F, 0.5F, 1}}, {{-4, -2, -1, -3}, {0, 0.5F, 0.75F, 0.25F}}};
    for (const Row& row : rows) {
        Outputs o;
        const std::string path =
            directory.write("a.rad", bytesOf(torvaleHeader(4, 1, 2)) + paddedRows(row.samples, 4, 496));
        EXPECT_EQ(taken(loadPadded(path, o, true), 4), row.mapped);
    }
    Outputs o;
    EXPECT_NE(
        std::unique_ptr<float[]>(loadPadded(directory.write("a", bytesOf(torvaleHeader(4, 0, 2))), o, true)), nullptr);
}

TEST(PaddedRadiance, ReportsWhatIsWrongWithTheFile) {
    const TemporaryDirectory directory;
    const std::string two = paddedRows(kSix, 3, 500);
    struct Row {
        std::string file;
        std::string output;
    };
    const Row rows[] = {
        {std::string(511, '\0'), radError("Unable to read header from rad file.")},
        {bytesOf(torvaleHeader(3, 2, 3)) + two, ""},
        {bytesOf(torvaleHeader(3, 2, 2)) + two.substr(0, 512 + 11),
         radError("When reading row 2 of samples, expected 3 floats but only received 2.")},
        {bytesOf(torvaleHeader(3, 2, 2)) + two.substr(0, 500),
         radError("When reading row 2 of samples, expected 3 floats but only received 0.")},
        {bytesOf(torvaleHeader(3, -2, 2)) + two,
         radError("Could not allocate 3 * -2 = -6 floats (-24 bytes) for array pSamples.")},
    };
    for (const Row& row : rows) {
        const std::string path = directory.write("a.rad", row.file);
        Outputs o;
        EXPECT_EQ(outputOf([&] { EXPECT_EQ(loadPadded(path, o, false), nullptr); }), row.output);
        EXPECT_EQ(o.internalFormat, 34840);
    }
    Outputs o;
    const std::string folder = directory.path().string();
    EXPECT_EQ(
        outputOf([&] { EXPECT_EQ(loadPadded(folder, o, false), nullptr); }),
        radError("Unable to open \"" + folder + "\" for reading."));
    EXPECT_EQ(o.width, -1);
}

TEST(ContiguousRadiance, GivesWhatTheFileHolds) {
    const TemporaryDirectory directory;
    const std::string header = bytesOf(torvaleHeader(3, 2, 2));
    GHead read{};
    const std::string whole = directory.write("a.rad", header + bytesOf(kSix));
    EXPECT_EQ(outputOf([&] { EXPECT_EQ(taken(loadRadFile(whole, read), 6), kSix); }), "");
    const std::string shortFile = directory.write("b.rad", (header + bytesOf(kSix)).substr(0, 512 + 10));
    EXPECT_EQ(
        outputOf([&] { EXPECT_THAT(taken(loadRadFile(shortFile, read), 6), ElementsAre(1, 2, 0, 0, 0, 0)); }),
        kTooShort);
    const std::string huge = directory.write("c.rad", bytesOf(torvaleHeader(0x10000, 0x10000, 2)));
    EXPECT_EQ(outputOf([&] { EXPECT_EQ(loadRadFile(huge, read), nullptr); }), kTooShort);
    EXPECT_EQ(outputOf([&] { EXPECT_EQ(loadRadFile(directory.file("missing"), read), nullptr); }), "");
}

TEST(BkgRadiance, GivesWhatTheFileHoldsInSilence) {
    const TemporaryDirectory directory;
    BKG_header read{};
    const auto load = [&](int columns, int rows, const std::string& samples) {
        return loadRadFileMORLAN(writeBkg(directory.file("a.rad"), bkgHeader(columns, rows), samples), read);
    };
    const std::string output = outputOf([&] {
        EXPECT_EQ(taken(load(3, 2, bytesOf(kSix)), 6), kSix);
        EXPECT_THAT(taken(load(3, 2, bytesOf(1.5F)), 6), ElementsAre(1.5F, 0, 0, 0, 0, 0));
        EXPECT_EQ(load(-3, 2, ""), nullptr);
        EXPECT_EQ(load(0x7fffffff, 0x7fffffff, ""), nullptr);
        EXPECT_EQ(loadRadFileMORLAN(directory.file("missing"), read), nullptr);
    });
    EXPECT_EQ(output, "");
}

TEST(Radiance, IsLoadedAsTheFileAsks) {
    const TemporaryDirectory directory;
    const std::string bkg = writeBkg(directory.file("bkg.rad"), bkgHeader(3, 2), bytesOf(kSix));
    EXPECT_EQ(outputOf([&] { EXPECT_EQ(taken(loadRadFile(bkg), 6), kSix); }), "");

    const std::string header = bytesOf(torvaleHeader(3, 2, 2));
    const std::string padded = directory.write("padded.rad", header + paddedRows(kSix, 3, 500));
    EXPECT_TRUE(isOldRadMap(padded));
    EXPECT_EQ(outputOf([&] { EXPECT_EQ(taken(loadRadFile(padded), 6), kSix); }), kOldStyle);

    // A length counted in samples tells the layouts apart: six bytes are contiguous, seven are padded.
    const std::string six = directory.write("six.rad", (header + bytesOf(kSix)).substr(0, 512 + 6));
    EXPECT_EQ(outputOf([&] { EXPECT_THAT(taken(loadRadFile(six), 6), ElementsAre(1, 0, 0, 0, 0, 0)); }), kTooShort);
    const std::string seven = directory.write("seven.rad", (header + bytesOf(kSix)).substr(0, 512 + 7));
    EXPECT_EQ(
        outputOf([&] { EXPECT_EQ(loadRadFile(seven), nullptr); }),
        radError("When reading row 1 of samples, expected 3 floats but only received 1.") + kOldStyle);
    EXPECT_FALSE(isOldRadMap(directory.file("missing")));
}
