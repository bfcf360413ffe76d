// Loaders of surface normals and of material classes.
#include <memory>
#include <vector>

#include <gmock/gmock.h>

#include "capturedoutput.h"
#include "loadclsfile.h"
#include "loadnormfile.h"
#include "rasterfiles.h"
#include "temporarydirectory.h"

using testing::ElementsAre;

namespace {
const std::vector<float> kTwoNormals = {0, 0, 1, 0.6F, 0, 0.8F};

std::vector<float> taken(Vertex3* normals, std::size_t count) {
    const std::unique_ptr<Vertex3[]> owned(normals);
    std::vector<float> values;
    for (std::size_t i = 0; owned != nullptr && i < count; ++i)
        values.insert(values.end(), {owned[i].x, owned[i].y, owned[i].z});
    return values;
}
std::vector<int> taken(unsigned char* classes, std::size_t count) {
    const std::unique_ptr<unsigned char[]> owned(classes);
    return owned == nullptr ? std::vector<int>{-1} : std::vector<int>(owned.get(), owned.get() + count);
}

std::string normError(const std::string& function, const std::string& message) {
    return errorLine(function, "opengllib/loadnormfile.cpp", message);
}
std::string clsError(const std::string& message) {
    return errorLine("loadCLSFileTORVALE", "opengllib/loadclsfile.cpp", message);
}
} // namespace

TEST(Normals, AreReadFromBothFamilies) {
    const TemporaryDirectory directory;
    const std::string samples = bytesOf(kTwoNormals);
    for (const int packtype : {0, 3, -7})
        EXPECT_EQ(
            taken(loadNormFile(directory.write("t.norm", bytesOf(torvaleHeader(1, 2, packtype)) + samples)), 2),
            kTwoNormals);
    EXPECT_EQ(
        taken(loadNormFile(writeBkg(directory.file("b.norm"), bkgHeader(2, 1, "NORM"), samples)), 2), kTwoNormals);
    const std::string shortFile = samples.substr(0, 12 + 5);
    EXPECT_THAT(
        taken(loadNormFile(writeBkg(directory.file("s.norm"), bkgHeader(2, 1, "NORM"), shortFile)), 2),
        ElementsAre(0, 0, 1, 0, 0, 0));
}

TEST(Normals, ReportWhatIsWrongWithTheFile) {
    const TemporaryDirectory directory;
    const auto outputOfLoading = [](const std::string& path) {
        return outputOf([&] { EXPECT_EQ(loadNormFile(path), nullptr); });
    };
    const std::string missing = directory.file("missing.norm");
    EXPECT_EQ(
        outputOfLoading(missing), normError("loadNormFileTORVAL", "Unable to open \"" + missing + "\" for reading."));
    EXPECT_EQ(
        outputOf([&] { EXPECT_EQ(loadNormFileMORLAN(missing), nullptr); }),
        normError("loadNormFileMORLAN", "Unable to open \"" + missing + "\" for reading."));
    EXPECT_EQ(
        outputOfLoading(directory.write("a.norm", std::string(511, '\0'))),
        normError("loadNormFileTORVAL", "Unable to read header from norm file."));
    EXPECT_EQ(outputOfLoading(directory.write("a.norm", bytesOf(torvaleHeader(1, 2, 4)))), "");
    EXPECT_EQ(
        outputOfLoading(directory.write("a.norm", bytesOf(torvaleHeader(-5, 2, 0)))),
        normError("loadNormFileTORVAL", "Could not allocate 2 *  -5 = -10 objects of type Vertex3 for array pData."));
    EXPECT_EQ(
        outputOfLoading(writeBkg(directory.file("b.norm"), bkgHeader(-5, 2, "NORM"), "")),
        normError("loadNormFileMORLAN", "Could not allocate -5 *  2 = -10 objects of type Vertex3 for array pData."));
    EXPECT_EQ(
        outputOfLoading(writeBkg(directory.file("b.norm"), bkgHeader(0x10000, 0x10000, "NORM"), "")),
        normError(
            "loadNormFileMORLAN", "Could not allocate 65536 *  65536 = 0 objects of type Vertex3 for array pData."));
    for (const char* signature : {"", "NOR", "NORMAL", "norm", "TWELVE BYTES"}) {
        const std::string path = writeBkg(directory.file("b.norm"), bkgHeader(1, 2, signature), bytesOf(kTwoNormals));
        EXPECT_EQ(
            outputOfLoading(path),
            normError(
                "loadNormFileMORLAN",
                "\"" + path + "\" is not a norm file (header signature says \"" + signature + "\" not \"NORM\")."));
    }
}

TEST(Classes, AreReadFromBothFamilies) {
    const TemporaryDirectory directory;
    const std::vector<unsigned char> bytes = {1, 2, 3, 250, 5, 6};
    const std::vector<int> expected(bytes.begin(), bytes.end());
    EXPECT_EQ(
        taken(loadCLSFile(directory.write("a.cls", bytesOf(torvaleHeader(3, 2, 0)) + paddedRows(bytes, 3, 509))), 6),
        expected);
    EXPECT_EQ(taken(loadCLSFile(writeBkg(directory.file("b.cls"), bkgHeader(3, 2), bytesOf(bytes))), 6), expected);
    EXPECT_THAT(
        taken(loadCLSFile(writeBkg(directory.file("b.cls"), bkgHeader(3, 2), "\1\2")), 6),
        ElementsAre(1, 2, 0, 0, 0, 0));
    EXPECT_THAT(taken(loadCLSFile(writeBkg(directory.file("b.cls"), bkgHeader(3, -2), "\1\2")), 6), ElementsAre(-1));
}

TEST(Classes, OfSeveralBytesKeepTheLowByte) {
    const TemporaryDirectory directory;
    const std::vector<std::uint16_t> two = {0x0101, 0x2202, 3, 250, 5, 6};
    EXPECT_THAT(
        taken(loadCLSFile(directory.write("a.cls", bytesOf(torvaleHeader(3, 2, 1)) + paddedRows(two, 3, 506))), 6),
        ElementsAre(1, 2, 3, 250, 5, 6));
    const std::vector<std::uint32_t> four = {0x01010101, 2, 3, 250, 5, 0xffffff06};
    EXPECT_THAT(
        taken(loadCLSFile(directory.write("a.cls", bytesOf(torvaleHeader(3, 2, 2)) + paddedRows(four, 3, 500))), 6),
        ElementsAre(1, 2, 3, 250, 5, 6));
}

TEST(Classes, ReportWhatIsWrongWithTheFile) {
    const TemporaryDirectory directory;
    const auto shortRow = [](int row, int size, int got) {
        return clsError(
            "Error when reading samples. When trying to read row " + std::to_string(row) +
            " of samples, expected to receive 3 samples each of size " + std::to_string(size) +
            " bytes but only receieved " + std::to_string(got) + ".");
    };
    struct Row {
        std::string file;
        std::string output;
    };
    const Row rows[] = {
        {"", clsError("Unable to read header from CLS file.")},
        {bytesOf(torvaleHeader(3, 2, 3)) + "abc", ""},
        {bytesOf(torvaleHeader(3, 2, 0)) + "ab", shortRow(1, 1, 2)},
        {bytesOf(torvaleHeader(3, 2, 0)) + std::string(512 + 1, 'x'), shortRow(2, 1, 1)},
        {bytesOf(torvaleHeader(3, 2, 2)) + std::string(512 + 9, 'x'), shortRow(2, 4, 2)},
        {bytesOf(torvaleHeader(3, -2, 0)) + "abc",
         clsError("Could not allocate -6 unsigned chars (-6 bytes) for the array pSamples.")},
    };
    for (const Row& row : rows) {
        const std::string path = directory.write("a.cls", row.file);
        EXPECT_EQ(outputOf([&] { EXPECT_EQ(loadCLSFile(path), nullptr); }), row.output);
    }
    const std::string missing = directory.file("missing.cls");
    EXPECT_EQ(
        outputOf([&] { EXPECT_EQ(loadCLSFile(missing), nullptr); }),
        clsError("Unable to open file \"" + missing + "\" for reading."));
}
