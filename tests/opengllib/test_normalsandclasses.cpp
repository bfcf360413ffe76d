// Loaders of surface normals and of material classes.
#include <vector>

#include <gmock/gmock.h>

#include "capturedoutput.h"
#include "loadclsfile.h"
#include "loadnormfile.h"
#include "rasterfiles.h"
#include "rows.h"
#include "temporarydirectory.h"

using namespace sorvane;

namespace {
using Floats = std::vector<float>;
using Classes = std::vector<unsigned char>;

const Floats kTwoNormals = {0, 0, 1, 0.6F, 0, 0.8F};

Floats normalsIn(const std::string& path) {
    Floats values;
    for (const Vertex3& normal : taken(loadNormFile(path), 2))
        values.insert(values.end(), {normal.x, normal.y, normal.z});
    return values;
}
std::string outputOfLoadingNormals(const std::string& path) {
    return outputOf([&] { EXPECT_EQ(loadNormFile(path), nullptr); });
}
std::string outputOfLoadingClasses(const std::string& path) {
    return outputOf([&] { EXPECT_EQ(loadCLSFile(path), nullptr); });
}
std::string torvalError(const std::string& message) {
    return errorLine("loadNormFileTORVAL", "opengllib/loadnormfile.cpp", message);
}
std::string morlanError(const std::string& message) {
    return errorLine("loadNormFileMORLAN", "opengllib/loadnormfile.cpp", message);
}
std::string clsError(const std::string& message) {
    return errorLine("loadCLSFileTORVALE", "opengllib/loadclsfile.cpp", message);
}
} // namespace

TEST(Normals, AreReadFromBothFamilies) {
    const TemporaryDirectory directory;
    const std::string samples = bytesOf(kTwoNormals);
    for (const int packtype : {0, 3, -7})
        EXPECT_EQ(normalsIn(directory.write("t.norm", bytesOf(torvaleHeader(1, 2, packtype)) + samples)), kTwoNormals);
    const BKG_header header = bkgHeader(2, 1, "NORM");
    EXPECT_EQ(normalsIn(writeBkg(directory.file("b.norm"), header, samples)), kTwoNormals);
    EXPECT_EQ(normalsIn(writeBkg(directory.file("s.norm"), header, samples.substr(0, 17))), (Floats{0, 0, 1, 0, 0, 0}));
}

TEST(Normals, ReportWhatIsWrongWithTheFile) {
    const TemporaryDirectory directory;
    const std::string missing = directory.file("missing.norm");
    const std::string unopened = "Unable to open \"" + missing + "\" for reading.";
    EXPECT_EQ(outputOfLoadingNormals(missing), torvalError(unopened));
    EXPECT_EQ(outputOf([&] { EXPECT_EQ(loadNormFileMORLAN(missing), nullptr); }), morlanError(unopened));
    for (const auto& [file, output] : Rows<std::string, std::string>{
             {std::string(511, '\0'), torvalError("Unable to read header from norm file.")},
             {bytesOf(torvaleHeader(1, 2, 4)), ""},
             {bytesOf(torvaleHeader(-5, 2, 0)),
              torvalError("Could not allocate 2 *  -5 = -10 objects of type Vertex3 for array pData.")}})
        EXPECT_EQ(outputOfLoadingNormals(directory.write("a.norm", file)), output);
    EXPECT_EQ(
        outputOfLoadingNormals(writeBkg(directory.file("b.norm"), bkgHeader(65536, 65536, "NORM"), "")),
        morlanError("Could not allocate 65536 *  65536 = 0 objects of type Vertex3 for array pData."));
    for (const char* signature : {"", "NORMAL", "TWELVE BYTES"}) {
        const std::string path = writeBkg(directory.file("b.norm"), bkgHeader(1, 2, signature), bytesOf(kTwoNormals));
        EXPECT_EQ(
            outputOfLoadingNormals(path),
            morlanError(
                "\"" + path + "\" is not a norm file (header signature says \"" + signature + "\" not \"NORM\")."));
    }
}

TEST(Classes, AreReadFromBothFamiliesWithTheLowByteOfSeveral) {
    const TemporaryDirectory directory;
    const Classes one = {1, 2, 3, 250, 5, 6};
    const std::vector<std::uint16_t> two = {0x0101, 0x2202, 3, 250, 5, 6};
    const std::vector<std::uint32_t> four = {0x01010101, 2, 3, 250, 5, 0xffffff06};
    for (const auto& [packtype, samples] : Rows<int, std::string>{
             {0, paddedRows(one, 3, 509)}, {1, paddedRows(two, 3, 506)}, {2, paddedRows(four, 3, 500)}})
        EXPECT_EQ(
            taken(loadCLSFile(directory.write("a.cls", bytesOf(torvaleHeader(3, 2, packtype)) + samples)), 6), one)
            << packtype;
    const std::string path = directory.file("b.cls");
    EXPECT_EQ(taken(loadCLSFile(writeBkg(path, bkgHeader(3, 2), bytesOf(one))), 6), one);
    EXPECT_EQ(taken(loadCLSFile(writeBkg(path, bkgHeader(3, 2), "\1\2")), 6), (Classes{1, 2, 0, 0, 0, 0}));
    EXPECT_EQ(loadCLSFile(writeBkg(path, bkgHeader(3, -2), "\1\2")), nullptr);
}

TEST(Classes, ReportWhatIsWrongWithTheFile) {
    const TemporaryDirectory directory;
    const auto shortRow = [](int row, int size, int got) {
        return clsError(
            "Error when reading samples. When trying to read row " + std::to_string(row) +
            " of samples, expected to receive 3 samples each of size " + std::to_string(size) +
            " bytes but only receieved " + std::to_string(got) + ".");
    };
    for (const auto& [file, output] : Rows<std::string, std::string>{
             {"", clsError("Unable to read header from CLS file.")},
             {bytesOf(torvaleHeader(3, 2, 3)) + "abc", ""},
             {bytesOf(torvaleHeader(3, 2, 0)) + "ab", shortRow(1, 1, 2)},
             {bytesOf(torvaleHeader(3, 2, 2)) + std::string(512 + 9, 'x'), shortRow(2, 4, 2)},
             {bytesOf(torvaleHeader(3, -2, 0)) + "abc",
              clsError("Could not allocate -6 unsigned chars (-6 bytes) for the array pSamples.")}})
        EXPECT_EQ(outputOfLoadingClasses(directory.write("a.cls", file)), output);
    const std::string missing = directory.file("missing.cls");
    EXPECT_EQ(outputOfLoadingClasses(missing), clsError("Unable to open file \"" + missing + "\" for reading."));
}
