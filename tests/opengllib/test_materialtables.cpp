// The text tables of materials: classes to materials, reflectances, temperatures.
#include <memory>
#include <vector>

#include <gmock/gmock.h>

#include "capturedoutput.h"
#include "decimalcommalocale.h"
#include "loadclstomatfile.h"
#include "loadmaterialtables.h"
#include "rows.h"
#include "temporarydirectory.h"

using namespace sorvane;

using testing::ElementsAre;

namespace {
struct ClassTable {
    unsigned char pairs[2 * kMaximumClassPairs]{};
    unsigned count = 99;

    std::vector<int> numbers() const { return {pairs, pairs + std::size_t{2} * count}; }
};

std::string lines(int count, const std::string& line) {
    std::string text;
    for (int i = 0; i < count; ++i)
        text += line;
    return text;
}

std::string refsError(const std::string& message) {
    return errorLine("loadRefsFile", "opengllib/loadmaterialtables.cpp", message);
}
std::string tempError(const std::string& message) {
    return errorLine("loadTempFile", "opengllib/loadmaterialtables.cpp", message);
}
} // namespace

TEST(ClassToMaterial, KeepsAPairForEachLine) {
    for (const auto& [text, numbers] : Rows<std::string, std::vector<int>>{
             {"", {}},
             {"  7\t8 ignored\r\n9 10", {7, 8, 9, 10}},
             {"257 -1\n", {1, 255}},
             // A line without numbers repeats those before it, a half one its second number.
             {"\n1 2\n# no\n5 x\n", {0, 0, 1, 2, 1, 2, 5, 2}},
             // A line of more than 255 characters goes on as the next line.
             {"1 2" + std::string(252, ' ') + "3 4\n", {1, 2, 3, 4}}}) {
        ClassTable table;
        EXPECT_TRUE(parseCLStoMat(text, table.pairs, table.count));
        EXPECT_EQ(table.numbers(), numbers) << text;
    }
}

TEST(ClassToMaterial, HoldsUpTo128Lines) {
    const TemporaryDirectory directory;
    ClassTable table;
    EXPECT_TRUE(loadCLStoMatFile(directory.write("full", lines(128, "1 2\n")), table.pairs, table.count));
    EXPECT_EQ(table.count, 128U);
    const std::string tooMany = directory.write("toomany", lines(129, "1 2\n"));
    EXPECT_EQ(
        outputOf([&] { EXPECT_FALSE(loadCLStoMatFile(tooMany, table.pairs, table.count)); }),
        errorLine("loadCLStoMatFile", "opengllib/loadclstomatfile.cpp", "Ran out of buffer, exiting."));
    EXPECT_EQ(
        outputOf([&] { EXPECT_FALSE(loadCLStoMatFile(directory.file("missing"), table.pairs, table.count)); }), "");
}

TEST(ClassToMaterial, TurnsClassesIntoMaterials) {
    const unsigned char table[] = {1, 10, 2, 30, 1, 20};
    const unsigned char classes[] = {2, 1, 1, 9};
    EXPECT_EQ(numMats(table, 3), 30);
    EXPECT_EQ(numMats(table, 0), 0);
    const std::unique_ptr<unsigned char[]> materials(cls2mat(classes, 3, table, 3));
    ASSERT_NE(materials, nullptr);
    EXPECT_EQ(materials[0], 30);
    EXPECT_EQ(materials[1], 10) << "the first pair counts";
    EXPECT_EQ(
        outputOf([&] { EXPECT_EQ(cls2mat(classes, 4, table, 3), nullptr); }),
        errorLine("cls2mat", "opengllib/loadclstomatfile.cpp", "Did not find a material for index 3 (clsNum 9)."));
}

TEST(MaterialReflectances, AreReadInPairs) {
    const DecimalCommaLocale locale;
    const TemporaryDirectory directory;
    float out[4]{};
    const std::string path = directory.write("refs", "0.5 1.5 more\n 2e0 -3\nnot read\n");
    EXPECT_EQ(outputOf([&] { EXPECT_TRUE(loadRefsFile(path, 2, out)); }), "");
    EXPECT_THAT(out, ElementsAre(0.5F, 1.5F, 2, -3));
    EXPECT_TRUE(parseRefs("", 0, nullptr));

    const std::string eof = "Unexpected EOF when trying to read material data. Expected 2 materials but only read ";
    for (const auto& [text, message] : Rows<std::string, std::string>{
             {"", eof + "-1."},
             {"1 2\n", eof + "0."},
             {"1\n", "Malformed line 2. Expected 2 floats, but received \"1\n\"."},
             {"1 2\nx y", "Malformed line 3. Expected 2 floats, but received \"x y\"."}})
        EXPECT_EQ(outputOf([&, &text = text] { EXPECT_FALSE(parseRefs(text, 2, out)); }), refsError(message));
    const std::string missing = directory.file("missing");
    EXPECT_EQ(
        outputOf([&] { EXPECT_FALSE(loadRefsFile(missing, 2, out)); }),
        refsError("Unable to open file \"" + missing + "\" for reading."));
}

TEST(MaterialTemperatures, AreReadInPairsAndPrinted) {
    const DecimalCommaLocale locale;
    const TemporaryDirectory directory;
    float out[4]{};
    const std::string path = directory.write("temp", "290.5 0.25\n300 0.5\n");
    EXPECT_EQ(
        outputOf([&] { EXPECT_TRUE(loadTempFile(path, 2, out)); }),
        "output result\n290.500000 0.250000\n300.000000 0.500000\n");
    EXPECT_THAT(out, ElementsAre(290.5F, 0.25F, 300, 0.5F));
    EXPECT_EQ(outputOf([&] { EXPECT_TRUE(loadTempFile(path, 0, nullptr)); }), "output result\n");

    const std::string eof = "Unexpected EOF when trying to read temp file. Expected 2 lines but only found ";
    for (const auto& [text, output] : Rows<std::string, std::string>{
             {"", tempError(eof + "1.")},
             {"1 2\n", tempError(eof + "2.")},
             {"1 2\n3 x\n", tempError("Malformed line 2: \"3 x\n\". Expected 2 floats.") +
                                "LoadTempFile::loadTempFile: unexpected line format: 3 x\n\n"}})
        EXPECT_EQ(outputOf([&, &text = text] { EXPECT_FALSE(parseTemp(text, 2, out)); }), output);
    const std::string missing = directory.file("missing");
    EXPECT_EQ(
        outputOf([&] { EXPECT_FALSE(loadTempFile(missing, 0, nullptr)); }),
        tempError("Unable to open \"" + missing + "\" for reading."));
}
